# Sources of host/forms.
target_sources(goodsbookhost PRIVATE
  forms/Base.cpp forms/Base.h
  forms/Base_common.cpp forms/Base_common.h
  forms/Base_condition.cpp forms/Base_condition.h
  forms/Base_detail.cpp forms/Base_detail.h
  forms/Base_dialog.cpp forms/Base_dialog.h
  forms/Base_node.cpp forms/Base_node.h
  forms/Base_node_d.cpp forms/Base_node_d.h
  forms/Base_outer.cpp forms/Base_outer.h
  forms/Base_panel.cpp forms/Base_panel.h
  forms/Base_qry.cpp forms/Base_qry.h
  forms/Sys_filter.cpp forms/Sys_filter.h
  forms/body_params.cpp
  forms/edit_list_screen.cpp forms/edit_list_screen.h
  forms/field_set.cpp
  forms/form_builder.cpp
  forms/list_actions.cpp
  forms/list_screen.cpp forms/list_screen.h
  forms/list_statement.cpp
  forms/ok_cancel_screen.cpp forms/ok_cancel_screen.h
  forms/row_delete.cpp
  forms/row_guard.cpp
  forms/row_uses.cpp
  forms/screen_events.cpp forms/screen_events.h
  forms/table_relations.cpp
  forms/tree_find.cpp forms/tree_find.h
  forms/tree_node.cpp
  forms/tree_rows.cpp
)
