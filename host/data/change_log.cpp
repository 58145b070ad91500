#include "host/data/change_log.h"

#include <algorithm>
#include <utility>

#include "host/data/field_value.h"

namespace goodsbook {
namespace {

bool sameValues(const RowTable::Values& a, const RowTable::Values& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameStored);
}

std::vector<QVariant> typedValues(const RowTable& table, const RowTable::Values& stored) {
  std::vector<QVariant> values;
  values.reserve(stored.size());
  for (std::size_t i = 0; i < stored.size(); ++i)
    values.push_back(fromStored(table.fields()[i].type, stored[i]));
  return values;
}

}  // namespace

ChangeLog::Entry* ChangeLog::find(RowRef row) {
  const auto found = byRow_.find(row);
  return found == byRow_.end() ? nullptr : &entries_[found->second];
}

void ChangeLog::add(Entry entry) {
  byRow_[entry.row] = entries_.size();
  entries_.push_back(std::move(entry));
}

void ChangeLog::drop(RowRef row) {
  find(row)->gone = true;
  byRow_.erase(row);
}

void ChangeLog::inserted(RowRef row) {
  add({row, Kind::Inserted, {}});
}

void ChangeLog::updated(RowRef row, const RowTable::Values& before, const RowTable::Values& after) {
  const Entry* entry = find(row);
  if (entry == nullptr) {
    add({row, Kind::Updated, before});
  } else if (entry->kind == Kind::Updated && sameValues(entry->oldValues, after)) {
    drop(row);
  }
}

void ChangeLog::deleted(RowRef row, const RowTable::Values& before) {
  Entry* entry = find(row);
  if (entry == nullptr) {
    add({row, Kind::Deleted, before});
  } else if (entry->kind == Kind::Inserted) {
    drop(row);
  } else {
    entry->kind = Kind::Deleted;
  }
}

void ChangeLog::clear() {
  entries_.clear();
  byRow_.clear();
}

std::vector<RecordSet::Change> ChangeLog::changes(const RowTable& table) const {
  std::vector<RecordSet::Change> list;
  for (const auto& entry : entries_) {
    if (entry.gone) continue;
    auto& change = list.emplace_back();
    change.kind = entry.kind;
    change.oldValues = typedValues(table, entry.oldValues);
    if (entry.kind == Kind::Deleted) continue;
    change.newValues = table.values(entry.row);
    change.isChanged.resize(change.newValues.size());
    for (std::size_t i = 0; i < change.newValues.size(); ++i) {
      const bool changed = entry.kind == Kind::Inserted
                               ? change.newValues[i].isValid()
                               : !sameStored(entry.oldValues[i], change.newValues[i]);
      change.isChanged[i] = changed;
      if (!changed) change.newValues[i] = QVariant();
    }
  }
  return list;
}

}  // namespace goodsbook
