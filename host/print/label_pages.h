#pragma once

#include <QPageLayout>
#include <functional>

#include "host/export.h"
#include "host/print/label_painter.h"

class QPainter;

namespace goodsbook {

// Labels to print: the layout, the printer, and where the rows come from.
struct GOODSBOOKHOST_EXPORT LabelJob {
  LabelLayout layout;
  LabelPrinter printer;
  int firstPlace = 0;  // of the first sheet that still has a label, from 0
  int count = 0;
  std::function<LabelRow(int index)> row;

  int pageCount() const;     // at least one
  QPageLayout page() const;  // without margins
  QSize pageDots() const;
};

// Paints one page, from 0; nothing is kept of it.
GOODSBOOKHOST_EXPORT void paintLabelPage(QPainter& painter, LabelPainter& labels, const LabelJob& job,
                                         int page, LabelWarnings& warnings);

// Every label's outline and number, and rulers, to see how a printer's offset and scale have to be set.
GOODSBOOKHOST_EXPORT void paintTestPage(QPainter& painter, const LabelJob& job);

}  // namespace goodsbook
