# Sources of products/.
target_sources(masterdata_screens PRIVATE
  ${CMAKE_SOURCE_DIR}/products/merge.cpp ${CMAKE_SOURCE_DIR}/products/import_run.cpp
  ${CMAKE_SOURCE_DIR}/products/string_list.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101_imp.cpp ${CMAKE_SOURCE_DIR}/products/U2101_imp_layout.cpp
  ${CMAKE_SOURCE_DIR}/products/jpeg_proof.cpp ${CMAKE_SOURCE_DIR}/products/picture.cpp ${CMAKE_SOURCE_DIR}/products/quiet_rows.cpp
  ${CMAKE_SOURCE_DIR}/products/unit_rows.cpp ${CMAKE_SOURCE_DIR}/products/product_editor.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101.cpp ${CMAKE_SOURCE_DIR}/products/U2101f.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101_1.cpp ${CMAKE_SOURCE_DIR}/products/U2101_1_layout.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101_1_picture.cpp ${CMAKE_SOURCE_DIR}/products/U2101_1_save.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101_tm.cpp ${CMAKE_SOURCE_DIR}/products/U2101_sj.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101_2.cpp ${CMAKE_SOURCE_DIR}/products/U2101_4.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101_4p.cpp ${CMAKE_SOURCE_DIR}/products/caption_label.cpp
  ${CMAKE_SOURCE_DIR}/products/quick_editor.cpp ${CMAKE_SOURCE_DIR}/products/quick_editor_layout.cpp
  ${CMAKE_SOURCE_DIR}/products/quick_editor_save.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101a_1.cpp ${CMAKE_SOURCE_DIR}/products/U2101a_2.cpp
  ${CMAKE_SOURCE_DIR}/products/U2101a_3.cpp
)
