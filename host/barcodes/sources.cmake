# Sources of host/barcodes.
target_sources(goodsbookhost PRIVATE
  barcodes/offline_key.h barcodes/offline_key.cpp
  barcodes/barcode_library.h barcodes/barcode_library.cpp
  barcodes/barcode_table.h barcodes/barcode_table.cpp
  barcodes/library_builder.h barcodes/library_builder.cpp
)
