#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "host/data/record_set.h"
#include "host/export.h"

namespace goodsbook {

struct SheetColumn {
  int field = 0;  // in the record set
  QString title = {};
  int width = 0;        // pixels on screen
  QString format = {};  // display format, as fields have it; empty for the type's own
};

// What is written: all visible rows of `rows`, these columns. `onRow` is called before each row and may throw
// to give up.
struct SheetTable {
  const RecordSet& rows;
  std::vector<SheetColumn> columns;
  QString title = {};
  std::function<void(int row)> onRow = [](int) {};
};

// The text of a cell where there are only texts: by the column's format, flags in words.
QString cellText(const SheetTable& table, int row, const SheetColumn& column);

// Both write the file whole or not at all and throw std::runtime_error with a Chinese text when they cannot.
GOODSBOOKHOST_EXPORT void writeXlsx(const SheetTable& table, const QString& path,
                                    int rowsPerSheet = 1'048'575);
GOODSBOOKHOST_EXPORT void writeCsv(const SheetTable& table, const QString& path);

}  // namespace goodsbook
