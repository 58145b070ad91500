# Sources of host/sheet.
target_sources(goodsbookhost PRIVATE
  sheet/csv_file.cpp
  sheet/list_columns.cpp
  sheet/list_export.cpp
  sheet/progress.cpp
  sheet/sheet_table.cpp
  sheet/xlsx_file.cpp
)
