#include <algorithm>

#include "host/data/errors.h"
#include "host/data/field_value.h"
#include "host/data/record_set.h"
#include "host/data/record_set_private.h"
#include "host/data/text_fold.h"
#include "host/data/value_text.h"

namespace goodsbook {
namespace {

// What locate looks for, ready to be compared with cells.
class Sought {
 public:
  Sought(FieldType type, const QVariant& stored) : type_(type), null_(!stored.isValid()) {
    switch (type) {
      case FieldType::Text:
        bytes_ = stored.toString().toUtf8();
        break;
      case FieldType::Blob:
        bytes_ = stored.toByteArray();
        break;
      case FieldType::DateTime:
        integer_ = null_ ? 0 : fromDateTime(stored.toDateTime());
        break;
      case FieldType::Float:
        real_ = stored.toDouble();
        break;
      default:
        integer_ = stored.toLongLong();
        break;
    }
  }

  bool matches(const Cell& cell) const {
    if (null_ || cell.null) return null_ && cell.null;
    const std::string_view bytes(bytes_.constData(), static_cast<std::size_t>(bytes_.size()));
    switch (type_) {
      case FieldType::Text:
        return equalFolded(cell.bytes, bytes);
      case FieldType::Blob:
        return cell.bytes == bytes;
      case FieldType::Float:
        return cell.real == real_;
      default:
        return cell.integer == integer_;
    }
  }

 private:
  FieldType type_;
  bool null_;
  std::int64_t integer_ = 0;
  double real_ = 0;
  QByteArray bytes_;
};

}  // namespace

int RecordSet::rowCount() const {
  return isOpen() ? d_->rows().size() : 0;
}

int RecordSet::currentRow() const {
  return d_->current;
}

bool RecordSet::bof() const {
  return isEmpty() || d_->triedBefore;
}

bool RecordSet::eof() const {
  return isEmpty() || d_->triedBehind;
}

void RecordSet::first() {
  d_->leaveEdit();
  if (!isEmpty()) d_->goTo(0);
}

void RecordSet::last() {
  waitForAll();
  d_->leaveEdit();
  if (!isEmpty()) d_->goTo(rowCount() - 1);
}

void RecordSet::next() {
  const int vanished = d_->leaveEdit();
  if (isEmpty()) return;
  if (vanished != Private::nowhere) {
    // The row behind the one that the filter took away has moved up to its place.
    d_->triedBehind = vanished >= rowCount();
    return;
  }
  if (d_->current + 1 >= rowCount()) waitForAll();
  if (d_->current + 1 < rowCount()) {
    d_->goTo(d_->current + 1);
  } else {
    d_->setCurrent(d_->current);
    d_->triedBehind = true;
  }
}

void RecordSet::prior() {
  const int vanished = d_->leaveEdit();
  if (isEmpty()) return;
  const int from = vanished != Private::nowhere ? vanished : d_->current;
  if (from > 0) {
    d_->goTo(from - 1);
  } else {
    d_->setCurrent(d_->current);
    d_->triedBefore = true;
  }
}

void RecordSet::moveTo(int row) {
  if (isEmpty()) return;
  const int target = std::clamp(row, 0, rowCount() - 1);
  if (target == currentRow()) {  // nothing is left, so nothing is posted
    d_->setCurrent(target);
    return;
  }
  const RowRef ref = d_->rows().at(target);
  d_->leaveEdit();
  if (isEmpty()) return;
  const int found = d_->positionOf(ref, target);
  d_->goTo(found >= 0 ? found : std::min(target, rowCount() - 1));
}

bool RecordSet::locate(const QString& fieldName, const QVariant& value) {
  const int index = d_->indexOf(fieldName);
  QVariant stored;
  try {
    stored = fromStored(field(index).type, toStored(field(index), value));
  } catch (const EDatabaseError&) {
    return false;  // no row can hold what the field cannot
  }
  d_->leaveEdit();
  const Sought sought(field(index).type, stored);
  int from = 0;
  const auto search = [&] {
    for (; from < rowCount(); ++from) {
      if (!sought.matches(d_->table.cell(d_->rows().at(from), index))) continue;
      d_->goTo(from);
      return true;
    }
    return false;
  };
  if (search()) return true;
  if (!isLoading()) return false;
  waitForAll();
  if (!d_->sortField.isEmpty()) from = 0;  // the end of the load has sorted the rows
  return search();
}

RecordSet::Bookmark RecordSet::bookmark() const {
  return bookmarkAt(d_->current);
}

RecordSet::Bookmark RecordSet::bookmarkAt(int row) const {
  return row >= 0 && row < rowCount() ? static_cast<Bookmark>(d_->rows().at(row)) : -1;
}

bool RecordSet::gotoBookmark(Bookmark bookmark) {
  const int row = rowOf(bookmark);
  if (row < 0) return false;
  moveTo(row);
  return true;
}

int RecordSet::rowOf(Bookmark bookmark) const {
  if (bookmark < 0 || bookmark > 0xFFFF'FFFF || !isOpen()) return -1;
  return d_->positionOf(static_cast<RowRef>(bookmark), d_->current);
}

// --- order and choice

void RecordSet::setSort(const QString& fieldName, bool descending) {
  if (!fieldName.isEmpty() && isOpen()) d_->indexOf(fieldName);
  d_->leaveEdit();
  waitForAll();
  d_->sortField = fieldName;
  d_->sortDescending = descending;
  if (isOpen()) d_->rearrange();
}

QString RecordSet::sortField() const {
  return d_->sortField;
}

bool RecordSet::sortDescending() const {
  return d_->sortDescending;
}

bool RecordSet::setFilter(const QString& filter) {
  if (isOpen() && !filter.trimmed().isEmpty() && !RowFilter::parse(filter, d_->table.fields())) return false;
  d_->leaveEdit();
  d_->filterText = filter.trimmed();
  d_->resolveFilter();
  if (isOpen() && d_->filtered) d_->rearrange();
  return true;
}

QString RecordSet::filter() const {
  return d_->filterText;
}

void RecordSet::setFiltered(bool on) {
  if (d_->filtered == on) return;
  d_->leaveEdit();
  d_->filtered = on;
  if (isOpen()) d_->rearrange();
}

bool RecordSet::isFiltered() const {
  return d_->filtered;
}

void RecordSet::disableControls() {
  ++d_->suspended;
  d_->beginReset();
}

void RecordSet::enableControls() {
  if (d_->suspended == 0) return;
  --d_->suspended;
  d_->endReset();
}

bool RecordSet::controlsDisabled() const {
  return d_->suspended > 0;
}

}  // namespace goodsbook
