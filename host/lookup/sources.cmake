# Sources of host/lookup.
target_sources(goodsbookhost PRIVATE
  lookup/lookup_table.h lookup/lookup_table.cpp
  lookup/match.h lookup/match.cpp
  lookup/picker.h lookup/picker.cpp
  lookup/pickers.h lookup/pickers.cpp
)
