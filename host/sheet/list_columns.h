#pragma once

#include <QString>
#include <vector>

#include "host/controls/TDBGridEh.h"

namespace goodsbook {

// One column as the grid shows it.
struct ShownColumn {
  int index = 0;  // in grid.columns() and in the grid's model
  QString title;
  int width = 0;  // pixels
};

// The visible columns, in the order in which the user sees them.
std::vector<ShownColumn> shownColumns(const TDBGridEh& grid);

}  // namespace goodsbook
