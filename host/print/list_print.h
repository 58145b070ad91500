#pragma once

#include <QString>

#include "host/controls/TDBGridEh.h"
#include "host/export.h"

class QWidget;

namespace goodsbook {

// Prints what the grid shows: its visible columns in the user's order, all rows of the record set, the sums
// of the footer. Every page has a header (company, title, filter) and a footer (date, page n/m); columns are
// scaled to the page, long texts wrapped, wide lists printed landscape. Shows the preview, or writes the PDF
// that Desktop::takePrintTarget() names. Waits for rows that are still loading; a cancelled print prints
// nothing. Throws EDatabaseError or std::runtime_error with a Chinese text when the file cannot be written.
GOODSBOOKHOST_EXPORT void printList(QWidget* parent, const TDBGridEh& grid, const QString& title,
                                    const QString& filterText);

}  // namespace goodsbook
