#include "host/controls/grid_picks.h"

#include <algorithm>
#include <unordered_map>

namespace goodsbook {

void GridPicks::clear() {
  order_.clear();
  known_.clear();
}

void GridPicks::keepPresent(const RecordSet& rows) {
  if (order_.empty()) return;
  order_ = inOrder(rows);
  known_ = {order_.begin(), order_.end()};
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
  for (const int position : positions(rows)) present.push_back(rows.bookmarkAt(position));
  return present;
}

std::vector<int> GridPicks::positions(const RecordSet& rows) const {
  std::vector<int> found;
  constexpr std::size_t few = 64;  // looked for one by one; more by a table of all rows
  if (order_.size() <= few) {
    for (const Bookmark row : order_) {
      const int position = rows.rowOf(row);
      if (position >= 0) found.push_back(position);
    }
    return found;
  }
  std::unordered_map<Bookmark, int> places;
  places.reserve(static_cast<std::size_t>(rows.rowCount()));
  for (int row = 0; row < rows.rowCount(); ++row) places.emplace(rows.bookmarkAt(row), row);
  for (const Bookmark row : order_) {
    if (const auto place = places.find(row); place != places.end()) found.push_back(place->second);
  }
  return found;
}

}  // namespace goodsbook
