# Sources of host/forms.
target_sources(goodsbookhost PRIVATE
  forms/Base.cpp forms/Base.h
  forms/body_params.cpp
  forms/list_statement.cpp
  forms/tree_node.cpp
  forms/tree_rows.cpp
)
