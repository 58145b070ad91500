#pragma once

#include <QString>
#include <functional>

#include "host/export.h"

namespace goodsbook {

// What happens while a barcode library is built; both are called on the way.
struct LibraryBuildEvents {
  std::function<void(qint64 lines, int percent)> progress;  // every 100,000 lines
  std::function<void(qint64 line, const QString& fault)> wrongLine;
};

struct LibraryBuildResult {
  qint64 written = 0;
  qint64 wrong = 0;
};

// Makes an offline barcode library from a table (barcode_table.h) and puts it in the place of `library`,
// whose folder is made when it is missing. Lines that cannot be taken are told and left out; a barcode may
// stand in several lines. The old library stays as it was, and in use, until the new one is complete and on
// the disk; std::runtime_error with a Chinese text when it cannot be made or the table has no good line.
GOODSBOOKHOST_EXPORT LibraryBuildResult buildBarcodeLibrary(const QString& table, const QString& library,
                                                            const LibraryBuildEvents& events);

}  // namespace goodsbook
