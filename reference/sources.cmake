# Sources of reference/.
target_sources(masterdata_screens PRIVATE
  ${CMAKE_SOURCE_DIR}/reference/flat_list.cpp
  ${CMAKE_SOURCE_DIR}/reference/code_table.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2103.cpp ${CMAKE_SOURCE_DIR}/reference/U2103_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2123.cpp ${CMAKE_SOURCE_DIR}/reference/U2123_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2124.cpp ${CMAKE_SOURCE_DIR}/reference/U2124_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2125.cpp ${CMAKE_SOURCE_DIR}/reference/U2125_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/composed.cpp
  ${CMAKE_SOURCE_DIR}/reference/tree_table.cpp
  ${CMAKE_SOURCE_DIR}/reference/quick_filter.cpp
  ${CMAKE_SOURCE_DIR}/reference/partner.h ${CMAKE_SOURCE_DIR}/reference/partner_list.cpp ${CMAKE_SOURCE_DIR}/reference/partner_editor.cpp ${CMAKE_SOURCE_DIR}/reference/partner_statements.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2104.cpp ${CMAKE_SOURCE_DIR}/reference/U2104_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2107.cpp ${CMAKE_SOURCE_DIR}/reference/U2107_1.cpp ${CMAKE_SOURCE_DIR}/reference/U2107_2.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2108.cpp ${CMAKE_SOURCE_DIR}/reference/U2108_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2111.cpp ${CMAKE_SOURCE_DIR}/reference/U2111_1.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2112.cpp ${CMAKE_SOURCE_DIR}/reference/U2112_1.cpp ${CMAKE_SOURCE_DIR}/reference/U2112f.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2113.cpp ${CMAKE_SOURCE_DIR}/reference/U2113_1.cpp ${CMAKE_SOURCE_DIR}/reference/U2113f.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2114.cpp ${CMAKE_SOURCE_DIR}/reference/U2114_1.cpp ${CMAKE_SOURCE_DIR}/reference/U2114f.cpp
  ${CMAKE_SOURCE_DIR}/reference/U2122.cpp ${CMAKE_SOURCE_DIR}/reference/U2122_1.cpp
)
