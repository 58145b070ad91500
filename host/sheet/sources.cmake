# Sources of host/sheet.
target_sources(goodsbookhost PRIVATE
  sheet/biff_records.cpp
  sheet/compound_file.cpp
  sheet/csv_reader.cpp
  sheet/csv_text.cpp
  sheet/date_format.cpp
  sheet/decimal_digits.cpp
  sheet/fraction_format.cpp
  sheet/number_format.cpp
  sheet/number_format_reader.cpp
  sheet/office_convert.cpp
  sheet/sheet_errors.cpp
  sheet/sheet_reader.cpp
  sheet/sheet_xml.cpp
  sheet/xls_reader.cpp
  sheet/xlsx_reader.cpp
  sheet/xlsx_strings.cpp
  sheet/zip_archive.cpp
  sheet/csv_file.cpp
  sheet/list_columns.cpp
  sheet/list_export.cpp
  sheet/sheet_table.cpp
  sheet/xlsx_file.cpp
)
