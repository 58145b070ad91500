# Sources of labels/.
target_sources(masterdata_screens PRIVATE
  ${CMAKE_SOURCE_DIR}/labels/label_rows.cpp
  ${CMAKE_SOURCE_DIR}/labels/U2102.cpp
  ${CMAKE_SOURCE_DIR}/labels/U2102f.cpp ${CMAKE_SOURCE_DIR}/labels/U2102f_layout.cpp
)
