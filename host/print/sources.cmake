# Sources of host/print.
find_path(ZINT_INCLUDE_DIR zint.h REQUIRED)
find_library(ZINT_LIBRARY zint REQUIRED)
target_sources(goodsbookhost PRIVATE
  print/bar_code.cpp print/bar_code.h
  print/label_check.cpp print/label_check.h
  print/label_dialog.h print/label_dialog.cpp
  print/label_preview.h print/label_preview.cpp
  print/label_print.cpp print/label_print.h
  print/label_settings.cpp print/label_settings.h
  print/label_layout.cpp print/label_layout.h
  print/label_layouts.cpp print/label_layouts.h
  print/label_pages.cpp print/label_pages.h
  print/label_painter.cpp print/label_painter.h
  print/text_fit.cpp print/text_fit.h
  print/layouts/layouts.qrc
  print/list_layout.cpp
  print/list_print.cpp
  print/list_report.cpp
  print/pdf_text.cpp
  print/print_job.h print/print_job.cpp
)
target_include_directories(goodsbookhost PRIVATE ${ZINT_INCLUDE_DIR})
target_link_libraries(goodsbookhost PRIVATE ${ZINT_LIBRARY})
