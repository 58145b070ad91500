#pragma once

#include <unordered_set>
#include <vector>

#include "host/data/record_set.h"

namespace goodsbook {

// The rows of a grid that the user picked, in the order of picking.
class GridPicks {
 public:
  using Bookmark = RecordSet::Bookmark;

  bool contains(Bookmark row) const { return known_.contains(row); }
  bool isEmpty() const { return known_.empty(); }
  int count() const { return static_cast<int>(order_.size()); }
  void clear();
  void keepPresent(const RecordSet& rows);  // forgets those that are gone from `rows`
  void set(Bookmark row, bool on);
  void toggle(Bookmark row) { set(row, !contains(row)); }

  // In the order of picking, without those that are gone from `rows`.
  std::vector<Bookmark> inOrder(const RecordSet& rows) const;
  std::vector<int> positions(const RecordSet& rows) const;  // of those rows

 private:
  std::vector<Bookmark> order_;
  std::unordered_set<Bookmark> known_;
};

}  // namespace goodsbook
