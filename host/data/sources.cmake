# Sources of host/data.
target_sources(goodsbookhost PRIVATE
  data/errors.cpp data/errors.h
  data/database.cpp data/database.h
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
