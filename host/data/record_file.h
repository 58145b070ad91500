#pragma once

#include <QString>

#include "host/data/row_order.h"
#include "host/data/row_table.h"

// Record sets in files: "GBRS", format version, a SHA-256 of what follows, then the fields and the rows. A
// file is written beside the old one and put in its place when it is whole.
namespace goodsbook {

// Writes the rows of `order`. Throws std::runtime_error with a text for the user; the old file is untouched
// then.
void writeRecordFile(const QString& path, const RowTable& table, const RowOrder& order);

// Throws std::runtime_error with a text for the user when the file is missing, damaged, cut off or of a newer
// version.
RowTable readRecordFile(const QString& path);

}  // namespace goodsbook
