# Sources of host/print.
target_sources(goodsbookhost PRIVATE
  print/list_layout.cpp
  print/list_print.cpp
  print/list_report.cpp
  print/pdf_text.cpp
  print/print_job.h print/print_job.cpp
)
