#pragma once

#include <QString>
#include <span>
#include <vector>

#include "host/export.h"

namespace goodsbook {

struct TreeRow {
  QString code, parent;
};

struct TreePlace {
  int row;     // index into the rows given
  int parent;  // index into the places, before this one; -1: top level, orphanParent: its parent code names
               // no row
  static constexpr int orphanParent = -2;
};

// The rows as a tree, parents before children, in the order given among brothers; every row stands in it
// exactly once. Codes compare without case and blanks around. A row whose parent is empty, the root value or
// a row that is already inside a ring of rows leads back to the top: rings are opened at their first row,
// which counts as an orphan.
GOODSBOOKHOST_EXPORT std::vector<TreePlace> treeOf(std::span<const TreeRow> rows, const QString& rootValue);

}  // namespace goodsbook
