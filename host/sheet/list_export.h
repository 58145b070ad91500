#pragma once

#include <QString>

#include "host/controls/TDBGridEh.h"
#include "host/export.h"

class QWidget;

namespace goodsbook {

// Asks for a file and writes what the grid shows into it: its visible columns in the user's order, all rows
// of the record set. ".xlsx" gives typed cells (codes stay text), ".csv" gives UTF-8 with a byte order mark.
// Waits for rows that are still loading. The file appears whole or not at all; a cancelled choice or export
// leaves nothing. Throws std::runtime_error with a Chinese text when the file cannot be written.
GOODSBOOKHOST_EXPORT void exportList(QWidget* parent, const TDBGridEh& grid, const QString& title);

}  // namespace goodsbook
