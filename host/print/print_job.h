#pragma once

#include <QPageLayout>
#include <QString>
#include <functional>

#include "host/export.h"

class QPrinter;
class QWidget;

namespace goodsbook {

// The margin on all sides of what this program prints.
GOODSBOOKHOST_EXPORT double printMargin(QPageLayout::Unit unit);

// Prints something: on the PDF that Desktop::takePrintTarget() names, else through a preview from which the
// user prints. `paint` draws all pages; it may be called several times (a preview paints anew when the paper
// changes), gets the window over which progress is shown, and may throw: a PDF that was begun is taken away
// again, a preview closes.
GOODSBOOKHOST_EXPORT void runPrintJob(QWidget* parent, const QString& title,
                                      QPageLayout::Orientation orientation,
                                      const std::function<void(QPrinter& printer, QWidget* over)>& paint);

// Where and on what something prints that its own dialog has shown before.
struct PrintPlace {
  QPageLayout page;
  int resolution = 0;  // dots an inch, and the unit of the painter; 0: the printer's own
  QString printer;     // as the system names it; empty: its default printer
  QString pdf;         // a file in place of a printer
};

// Prints without a preview. `paint` as above.
GOODSBOOKHOST_EXPORT void printAtOnce(QWidget* over, const QString& title, const PrintPlace& place,
                                      const std::function<void(QPrinter& printer, QWidget* over)>& paint);

}  // namespace goodsbook
