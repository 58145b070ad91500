# Sources of reference/.
target_sources(masterdata_screens PRIVATE
  ${CMAKE_SOURCE_DIR}/reference/code_table.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2103.cpp ${CMAKE_SOURCE_DIR}/reference/U2103_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2123.cpp ${CMAKE_SOURCE_DIR}/reference/U2123_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2124.cpp ${CMAKE_SOURCE_DIR}/reference/U2124_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2125.cpp ${CMAKE_SOURCE_DIR}/reference/U2125_1.cpp
)
