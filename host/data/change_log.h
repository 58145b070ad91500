#pragma once

#include <unordered_map>
#include <vector>

#include "host/data/record_set.h"
#include "host/data/row_table.h"

namespace goodsbook {

// What was done to the rows since they were loaded or merged, a row at a time: several edits of one row are
// one entry, a row that was added and removed again leaves none, and neither does one that came back to what
// it was.
class ChangeLog {
 public:
  using Kind = RecordSet::Change::Kind;
  struct Entry {
    RowRef row;
    Kind kind;
    RowTable::Values oldValues;  // empty for added rows
    bool gone = false;
  };

  void inserted(RowRef row);
  void updated(RowRef row, const RowTable::Values& before, const RowTable::Values& after);
  void deleted(RowRef row, const RowTable::Values& before);
  void clear();

  bool isEmpty() const { return byRow_.empty(); }
  const std::vector<Entry>& entries() const { return entries_; }  // oldest first; skip those that are gone
  std::vector<RecordSet::Change> changes(const RowTable& table) const;

 private:
  Entry* find(RowRef row);
  void add(Entry entry);
  void drop(RowRef row);

  std::vector<Entry> entries_;
  std::unordered_map<RowRef, std::size_t> byRow_;
};

}  // namespace goodsbook
