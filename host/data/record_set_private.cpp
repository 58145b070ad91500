#include "host/data/record_set_private.h"

#include <algorithm>
#include <stdexcept>

#include "host/data/sort_rows.h"

namespace goodsbook {

int RecordSet::Private::indexOf(const QString& fieldName) const {
  const int index = q.fieldIndex(fieldName);
  if (index < 0) throw std::invalid_argument("no field " + fieldName.toStdString());
  return index;
}

QVariant RecordSet::Private::stored(int row, int field) const {
  if (row < 0 || row >= rows().size()) return {};
  if (isEditing() && row == current) return buffer[static_cast<std::size_t>(field)];
  return table.stored(rows().at(row), field);
}

RowOrder RecordSet::Private::postedRows() const {
  RowOrder posted = base;
  if (state == State::Insert) posted.erase(posted.find(currentRef()));
  return posted;
}

void RecordSet::Private::beginReset() {
  if (resets++ == 0) Q_EMIT q.aboutToReset();
}

void RecordSet::Private::endReset() {
  if (--resets > 0) return;
  Q_EMIT q.wasReset();
  Q_EMIT q.stateChanged();
  Q_EMIT q.currentRowChanged(current);
}

void RecordSet::Private::drop() {
  // A load that has shown nothing yet still holds the views back.
  if (loading && state == State::Closed) --resets;
  ++epoch;
  loading = false;
  published = 0;
  state = State::Closed;
  table = RowTable();
  base = baseline = RowOrder();
  view.reset();
  filter.reset();
  log.clear();
  buffer.clear();
  setCurrent(-1);
}

void RecordSet::Private::replaceRows(RowTable newTable) {
  table = std::move(newTable);
  published = table.loadedCount();
  base = baseline = RowOrder::asLoaded(published);
  state = State::Browse;
  resolveFilter();
  rebuildView();
  setCurrent(rows().size() > 0 ? 0 : -1);
}

void RecordSet::Private::tellOpened() {
  Q_EMIT q.opened();
  if (hasCurrent()) tellScrolled();
}

void RecordSet::Private::resolveFilter() {
  filter = filterText.isEmpty() ? std::nullopt : RowFilter::parse(filterText, table.fields());
}

void RecordSet::Private::rebuildView() {
  const int sortIndex = loading || sortField.isEmpty() ? -1 : q.fieldIndex(sortField);
  const bool chooses = filtered && filter;
  if (sortIndex < 0 && !chooses) {
    view.reset();
    return;
  }
  std::vector<RowRef> list = base.list();
  if (chooses) std::erase_if(list, [this](RowRef row) { return !passes(row); });
  if (sortIndex >= 0) sortRows(table, sortIndex, sortDescending, list);
  view = RowOrder(std::move(list));
}

void RecordSet::Private::rearrange() {
  bool moved = false;
  {
    const Reset reset(*this);
    const bool had = hasCurrent();
    const RowRef row = had ? currentRef() : 0;
    rebuildView();
    const int found = had ? rows().find(row) : -1;
    moved = found < 0;
    setCurrent(found >= 0 || rows().size() == 0 ? found : 0);
  }
  Q_EMIT q.orderChanged();
  if (moved) tellScrolled();
}

int RecordSet::Private::positionOf(RowRef row, int hint) const {
  if (hint >= 0 && hint < rows().size() && rows().at(hint) == row) return hint;
  return rows().find(row);
}

void RecordSet::Private::setCurrent(int row) {
  current = row;
  triedBefore = triedBehind = false;
}

void RecordSet::Private::goTo(int row) {
  if (row == current) {
    setCurrent(row);
    return;
  }
  Q_EMIT q.beforeScroll();
  setCurrent(row);
  tellScrolled();
}

void RecordSet::Private::tellScrolled() {
  if (tellsViews()) Q_EMIT q.currentRowChanged(current);
  Q_EMIT q.afterScroll(current);
}

}  // namespace goodsbook
