# Sources of host/controls.
target_sources(goodsbookhost PRIVATE
  controls/TDBGridEh.h controls/TDBGridEh.cpp
  controls/edits.h controls/edits.cpp
  controls/button_edits.cpp
  controls/cell_text.h controls/cell_text.cpp
  controls/link_label.h controls/link_label.cpp
  controls/name_label.h controls/name_label.cpp
  controls/grid_columns.cpp
  controls/grid_delegate.h controls/grid_delegate.cpp
  controls/grid_footer.h controls/grid_footer.cpp
  controls/grid_model.h controls/grid_model.cpp
  controls/grid_painting.cpp
  controls/grid_picks.h controls/grid_picks.cpp
  controls/grid_rows.cpp
  controls/grid_search.h controls/grid_search.cpp
  controls/progress.h controls/progress.cpp
  controls/storage.h controls/storage.cpp
  controls/TASQLite3.h controls/TASQLite3.cpp
  controls/window_attendant.h controls/window_attendant.cpp
)
