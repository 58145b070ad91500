# Sources of host/controls.
target_sources(goodsbookhost PRIVATE
  controls/edits.h controls/edits.cpp
  controls/button_edits.cpp
  controls/TASQLite3.h controls/TASQLite3.cpp
)
