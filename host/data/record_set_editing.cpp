#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/data/field_value.h"
#include "host/data/record_set.h"
#include "host/data/record_set_private.h"

namespace goodsbook {
namespace {

bool sameValues(const RowTable::Values& a, const RowTable::Values& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameStored);
}

}  // namespace

// --- the parts

int RecordSet::Private::leaveEdit() {
  if (!isEditing()) return nowhere;
  if (!q.isModified()) {
    q.cancel();
    return nowhere;
  }
  const int row = current;
  const RowRef ref = currentRef();
  q.post();
  return positionOf(ref, row) < 0 ? row : nowhere;
}

void RecordSet::Private::tellState() {
  if (tellsViews()) Q_EMIT q.stateChanged();
}

void RecordSet::Private::endEdit() {
  state = State::Browse;
  buffer.clear();
  touched = false;
}

void RecordSet::Private::startNew(int position) {
  if (state == State::Closed) throw std::logic_error("the record set is closed");
  hasReturn = hasCurrent();
  returnTo = hasReturn ? currentRef() : 0;
  Q_EMIT q.beforeScroll();
  if (tellsViews()) Q_EMIT q.aboutToInsertRows(position, position);
  const RowRef row = table.newRow();
  if (view) {
    base.insert(position < view->size() ? base.find(view->at(position)) : base.size(), row);
    view->insert(position, row);
  } else {
    base.insert(position, row);
  }
  state = State::Insert;
  buffer.assign(table.fields().size(), QVariant());
  setCurrent(position);
  if (tellsViews()) Q_EMIT q.rowsInserted();
  tellState();
  try {
    Q_EMIT q.newRecord();
  } catch (...) {
    q.cancel();
    throw;
  }
  touched = false;
  tellScrolled();
}

int RecordSet::Private::hideIfFilteredOut() {
  if (!view || passes(currentRef())) return nowhere;
  const int row = current;
  if (tellsViews()) Q_EMIT q.aboutToRemoveRows(row, row);
  view->erase(row);
  setCurrent(std::min(row, view->size() - 1));
  if (tellsViews()) Q_EMIT q.rowsRemoved();
  return row;
}

// --- editing

void RecordSet::append() {
  waitForAll();
  d_->leaveEdit();
  d_->startNew(rowCount());
}

void RecordSet::insert() {
  waitForAll();
  d_->leaveEdit();
  d_->startNew(std::max(d_->current, 0));
}

void RecordSet::edit() {
  if (d_->isEditing()) return;
  if (isEmpty()) {
    append();
    return;
  }
  d_->buffer = d_->table.values(d_->currentRef());
  d_->touched = false;
  d_->state = State::Edit;
  d_->tellState();
}

void RecordSet::setValue(const QString& fieldName, const QVariant& value) {
  const auto index = static_cast<std::size_t>(d_->indexOf(fieldName));
  const Field& target = d_->table.fields()[index];
  QVariant stored = toStored(target, value);
  if (!d_->isEditing()) edit();
  QVariant before = std::exchange(d_->buffer[index], std::move(stored));
  const bool wasTouched = std::exchange(d_->touched, true);
  try {
    Q_EMIT validateField(target.name);
  } catch (...) {
    if (d_->isEditing()) {
      d_->buffer[index] = std::move(before);
      d_->touched = wasTouched;
    }
    throw;
  }
  if (d_->tellsViews()) Q_EMIT rowChanged(d_->current);
}

bool RecordSet::isModified() const {
  switch (d_->state) {
    case State::Insert:
      return d_->touched;
    case State::Edit:
      return !sameValues(d_->buffer, d_->table.values(d_->currentRef()));
    default:
      return false;
  }
}

void RecordSet::post() {
  if (!d_->isEditing()) return;
  Q_EMIT beforePost();
  if (!d_->isEditing()) return;  // a handler has ended it
  const RowRef row = d_->currentRef();
  if (d_->state == State::Insert) {
    d_->table.put(row, d_->buffer);
    d_->log.inserted(row);
  } else {
    const RowTable::Values before = d_->table.values(row);
    if (!sameValues(before, d_->buffer)) {
      d_->table.put(row, d_->buffer);
      d_->log.updated(row, before, d_->buffer);
    }
  }
  d_->endEdit();
  if (d_->tellsViews()) Q_EMIT rowChanged(d_->current);
  d_->tellState();
  Q_EMIT afterPost();
  if (d_->state == State::Browse && d_->hasCurrent() && d_->hideIfFilteredOut() != Private::nowhere)
    d_->tellScrolled();
}

void RecordSet::cancel() {
  if (!d_->isEditing()) return;
  if (d_->state == State::Edit) {
    d_->endEdit();
    if (d_->tellsViews()) Q_EMIT rowChanged(d_->current);
    d_->tellState();
    return;
  }
  const int row = d_->current;
  const RowRef ref = d_->currentRef();
  if (d_->tellsViews()) Q_EMIT aboutToRemoveRows(row, row);
  d_->base.erase(d_->view ? d_->base.find(ref) : row);
  if (d_->view) d_->view->erase(row);
  d_->endEdit();
  const int back = d_->hasReturn ? d_->positionOf(d_->returnTo, row - 1) : -1;
  d_->setCurrent(back >= 0 ? back : std::min(row, rowCount() - 1));
  if (d_->tellsViews()) Q_EMIT rowsRemoved();
  d_->tellState();
  d_->tellScrolled();
}

void RecordSet::remove() {
  if (d_->state == State::Insert) {
    cancel();
    return;
  }
  if (!d_->hasCurrent()) return;
  Q_EMIT beforeScroll();
  const int row = d_->current;
  const RowRef ref = d_->currentRef();
  const bool wasEditing = d_->isEditing();
  if (d_->tellsViews()) Q_EMIT aboutToRemoveRows(row, row);
  d_->endEdit();
  d_->log.deleted(ref, d_->table.values(ref));
  d_->base.erase(d_->view ? d_->base.find(ref) : row);
  if (d_->view) d_->view->erase(row);
  d_->setCurrent(std::min(row, rowCount() - 1));
  if (d_->tellsViews()) Q_EMIT rowsRemoved();
  if (wasEditing) d_->tellState();
  d_->tellScrolled();
}

void RecordSet::clear() {
  if (!isOpen()) return;
  {
    const Private::Reset reset(*d_);
    std::vector<Field> fields = d_->table.fields();
    d_->drop();
    d_->replaceRows(RowTable(std::move(fields)));
  }
  d_->tellScrolled();
}

// --- change log

bool RecordSet::hasChanges() const {
  return !d_->log.isEmpty();
}

std::vector<RecordSet::Change> RecordSet::changes() const {
  return d_->log.changes(d_->table);
}

void RecordSet::mergeChangeLog() {
  d_->leaveEdit();
  for (const auto& entry : d_->log.entries()) {
    if (entry.gone ? entry.kind == Change::Kind::Inserted : entry.kind == Change::Kind::Deleted) {
      d_->table.forget(entry.row);
    }
  }
  d_->log.clear();
  d_->table.settleTypedNumbers();
  d_->baseline = d_->base;
}

void RecordSet::CancelUpdates() {
  cancel();
  waitForAll();
  if (d_->log.isEmpty()) return;
  bool moved = false;
  {
    const Private::Reset reset(*d_);
    const bool had = d_->hasCurrent();
    const RowRef row = had ? d_->currentRef() : 0;
    const int position = d_->current;
    for (const auto& entry : d_->log.entries()) {
      if (entry.kind == Change::Kind::Inserted) {
        d_->table.forget(entry.row);
      } else if (!entry.gone) {
        d_->table.put(entry.row, entry.oldValues);
      }
    }
    d_->log.clear();
    d_->base = d_->baseline;
    d_->rebuildView();
    const int found = had ? d_->rows().find(row) : -1;
    moved = found < 0;
    d_->setCurrent(found >= 0 ? found : std::min(std::max(position, 0), rowCount() - 1));
  }
  if (moved) d_->tellScrolled();
}

}  // namespace goodsbook
