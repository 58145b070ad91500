# Sources of host/sheet.
target_sources(goodsbookhost PRIVATE
  sheet/csv_file.cpp
  sheet/progress.cpp
  sheet/sheet_table.cpp
  sheet/xlsx_file.cpp
)
