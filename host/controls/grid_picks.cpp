#include "host/controls/grid_picks.h"

#include <algorithm>

namespace goodsbook {

void GridPicks::clear() {
  order_.clear();
  known_.clear();
}

void GridPicks::set(Bookmark row, bool on) {
  if (on) {
    if (known_.insert(row).second) order_.push_back(row);
  } else if (known_.erase(row) > 0) {
    order_.erase(std::find(order_.begin(), order_.end(), row));
  }
}

std::vector<RecordSet::Bookmark> GridPicks::inOrder(const RecordSet& rows) const {
  std::vector<Bookmark> present;
  for (const Bookmark row : order_) {
    if (rows.rowOf(row) >= 0) present.push_back(row);
  }
  return present;
}

}  // namespace goodsbook
