#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "host/export.h"
#include "host/print/list_layout.h"

class QPrinter;

namespace goodsbook {

// A list on paper: what stands in its cells and around them.
struct ListReport {
  QString company, title, filter, date;
  std::vector<PrintColumn> columns;
  int rowCount = 0;
  std::function<QStringList(int row)> cells;
  std::vector<bool>
      hideRepeats;   // by column: a text equal to the one above is left out, except on top of a page
  QStringList sums;  // empty: no sums row
  std::function<void(int done)> onRow = [](int) {};  // counts to 2 × rowCount; may throw to give up
};

// Paints all pages. std::runtime_error with a Chinese text when the printer cannot be written to.
GOODSBOOKHOST_EXPORT void paintReport(const ListReport& report, QPrinter& printer);

}  // namespace goodsbook
