# Sources of host/data.
target_sources(goodsbookhost PRIVATE
  data/errors.cpp data/errors.h
  data/database.cpp data/database.h
  data/field.h
  data/value_text.cpp data/value_text.h
  data/sql_sets.cpp data/sql_sets.h
  data/sql_json.cpp data/sql_json.h
)
