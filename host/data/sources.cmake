# Sources of host/data.
target_sources(goodsbookhost PRIVATE
  data/errors.cpp data/errors.h
  data/audit_line.cpp data/audit_line.h
  data/copy/database_copy.cpp data/copy/database_copy.h
  data/copy/row_literals.cpp data/copy/row_literals.h
  data/database.cpp data/database.h
  data/beside.h
  data/retry.h
  data/server_attendant.h
  data/server_check.cpp data/server_database.h
  data/odbc/blob_update.cpp data/odbc/blob_update.h
  data/odbc/connect_problem.cpp data/odbc/connect_problem.h
  data/odbc/connection_lost.h
  data/odbc/connection_text.cpp data/odbc/connection_text.h
  data/odbc/dialect.cpp data/odbc/dialect.h
  data/odbc/installed_drivers.cpp
  data/odbc/loose_work.cpp data/odbc/loose_work.h
  data/odbc/odbc_connection.cpp data/odbc/odbc_connection.h
  data/odbc/odbc_database.cpp data/odbc/odbc_database.h
  data/odbc/odbc_handle.cpp data/odbc/odbc_handle.h
  data/odbc/odbc_messages.cpp data/odbc/odbc_messages.h
  data/odbc/odbc_pool.cpp data/odbc/odbc_pool.h
  data/odbc/odbc_reading.cpp data/odbc/odbc_reading.h
  data/odbc/odbc_wait.cpp data/odbc/odbc_wait.h
  data/odbc/row_block.cpp data/odbc/row_block.h
  data/odbc/server_address.cpp data/odbc/server_address.h
  data/odbc/wide_text.cpp data/odbc/wide_text.h
  data/field.h
  data/value_text.cpp data/value_text.h
  data/engine_errors.h
  data/connection_pool.cpp data/connection_pool.h
  data/embedded_database.cpp
  data/statement_text.cpp data/statement_text.h
  data/numbering.cpp data/numbering.h
  data/U_dataop.cpp data/U_dataop.h
  data/sql_sets.cpp data/sql_sets.h
  data/sql_json.cpp data/sql_json.h
  data/display_format.cpp data/display_format.h
  data/field_value.cpp data/field_value.h
  data/text_fold.cpp data/text_fold.h
  data/packed_segment.cpp data/packed_segment.h
  data/row_buffer.cpp data/row_buffer.h
  data/row_table.cpp data/row_table.h
  data/row_order.cpp data/row_order.h
  data/sort_rows.cpp data/sort_rows.h
  data/filter_node.h
  data/filter_parser.cpp data/filter_parser.h
  data/row_filter.cpp data/row_filter.h
  data/change_log.cpp data/change_log.h
  data/record_file.cpp data/record_file.h
  data/record_set.cpp data/record_set.h
  data/record_set_navigation.cpp
  data/record_set_editing.cpp
  data/record_set_private.cpp data/record_set_private.h
  data/record_set_model.cpp data/record_set_model.h
  data/progressive_load.cpp data/progressive_load.h
)
