#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include "host/U_function.h"
#include "host/controls/grid_private.h"
#include "host/forms/Base.h"

// Rows and cells of the grid: following the record set, picking, the keys.
namespace goodsbook {

TDBGridEh::Private::Private(TDBGridEh* grid)
    : q(grid), model(new GridModel(grid)), delegate(new GridDelegate(grid, model, &picks)) {}

void TDBGridEh::Private::setUp() {
  // Before the view is told of rows that go: what it makes current meanwhile is not the user's choice.
  connect(model, &QAbstractItemModel::rowsAboutToBeRemoved, q, [this] { following = true; });
  connect(model, &QAbstractItemModel::modelAboutToBeReset, q, [this] { following = true; });
  q->setModel(model);
  q->setItemDelegate(delegate);
  q->setSelectionMode(QAbstractItemView::NoSelection);
  q->setSelectionBehavior(QAbstractItemView::SelectItems);
  q->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                     QAbstractItemView::AnyKeyPressed);
  q->setAlternatingRowColors(true);
  q->setWordWrap(false);
  q->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  q->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  q->setCornerButtonEnabled(false);
  q->setTabKeyNavigation(false);
  q->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  q->verticalHeader()->setVisible(false);
  q->verticalHeader()->setHighlightSections(false);
  QHeaderView* header = q->horizontalHeader();
  header->setSectionsMovable(true);
  header->setSectionsClickable(true);
  header->setHighlightSections(false);
  header->setMinimumSectionSize(16);
  header->setContextMenuPolicy(Qt::CustomContextMenu);
  // A click on a title sorts; the view's own answer would make the first row current.
  QObject::disconnect(header, &QHeaderView::sectionPressed, q, nullptr);
  QObject::disconnect(header, &QHeaderView::sectionEntered, q, nullptr);
  footer = new GridFooter(q, model);
  search = new GridSearch(q, model);
  connect(model, &QAbstractItemModel::rowsRemoved, q, [this] {
    following = false;
    followRecordSet();
  });
  connect(model, &QAbstractItemModel::modelReset, q, [this] {
    following = false;
    afterReset();
  });
  connect(header, &QHeaderView::sectionClicked, q, [this](int column) { sortBy(column); });
  connect(header, &QWidget::customContextMenuRequested, q, [this](QPoint place) { showHeaderMenu(place); });
  connect(delegate, &GridDelegate::enterPressed, q, [this] { goOnFromCell(); });
  connect(delegate, &GridDelegate::ellipsisClicked, q, [this](int row, const QString& field) {
    if (q->takeCell()) Q_EMIT q->columnButtonClicked(row, field);
  });
  connect(model, &RecordSetModel::editRefused, q,
          [this](const QString& text) { guarded(q, [&] { DISPINFO(text, 5); }); });
  applyRowHeight();
  applyEvenRowColor();
}

void TDBGridEh::Private::applyRowHeight() {
  QHeaderView* rows = q->verticalHeader();
  if (rowHeight != 0 && rows->defaultSectionSize() != rowHeight) return;  // the screen has one of its own
  rowHeight = q->fontMetrics().height() + 8;
  rows->setMinimumSectionSize(rowHeight);
  rows->setDefaultSectionSize(rowHeight);
}

void TDBGridEh::Private::setRecordSet(RecordSet* rows) {
  if (RecordSet* before = model->recordSet()) before->disconnect(q);
  picks.clear();
  model->setRecordSet(rows);
  if (rows == nullptr) return;
  connect(rows, &RecordSet::currentRowChanged, q, [this] { followRecordSet(); });
  connect(rows, &RecordSet::opened, q, [this] {
    picks.clear();
    showPicks();
  });
  connect(rows, &RecordSet::rowsRemoved, q, [this, rows] {
    picks.keepPresent(*rows);
    showPicks();
  });
  connect(rows, &RecordSet::stateChanged, q, [this] { q->viewport()->update(); });
}

void TDBGridEh::Private::afterReset() {
  q->setTabKeyNavigation(!q->isReadOnly());  // only an open record set tells which cells can be edited
  RecordSet* rows = model->recordSet();
  if (rows == nullptr || !rows->isOpen()) return;
  QStringList fields;
  for (int i = 0; i < rows->fieldCount(); ++i) fields << rows->field(i).name;
  if (fields != appliedFields) {
    applyColumns();
    appliedFields = fields;
    if (!pendingLayout.isEmpty()) applyLayout(pendingLayout);
  }
  showSort();
  followRecordSet();
}

void TDBGridEh::Private::followRecordSet() {
  const RecordSet* rows = model->recordSet();
  if (following || rows == nullptr || !rows->isOpen()) return;
  const int row = rows->currentRow();
  if (row == q->currentIndex().row()) return;
  following = true;
  int column = q->currentIndex().column();
  if (column < 0 || q->isColumnHidden(column)) column = firstCurrent();
  q->setCurrentIndex(row >= 0 && row < model->rowCount() && column >= 0 ? model->index(row, column)
                                                                        : QModelIndex());
  following = false;
}

void TDBGridEh::Private::leadRecordSet(int row) {
  RecordSet* rows = model->recordSet();
  if (rows == nullptr || rows->currentRow() == row) return;
  following = true;
  guarded(q, [&] { rows->moveTo(row); });
  following = false;
  followRecordSet();
}

int TDBGridEh::Private::firstShown() const {
  const QHeaderView* header = q->horizontalHeader();
  for (int visual = 0; visual < header->count(); ++visual) {
    if (!header->isSectionHidden(header->logicalIndex(visual))) return header->logicalIndex(visual);
  }
  return -1;
}

int TDBGridEh::Private::firstCurrent() const {
  const int key = search->keyColumn();
  return key >= 0 ? key : firstShown();
}

int TDBGridEh::Private::entryColumn() const {
  int column = nextEditable(-1);
  while (column >= 0 && model->column(column).checkBox) column = nextEditable(column);
  return column >= 0 ? column : nextEditable(-1);
}

bool TDBGridEh::Private::isStop(int column) const {
  return !q->isColumnHidden(column) && (model->canEdit(column) || model->column(column).button);
}

QModelIndex TDBGridEh::Private::nextStop(const QModelIndex& cell, bool next) const {
  if (!cell.isValid()) return {};
  const QHeaderView* header = q->horizontalHeader();
  const int step = next ? 1 : -1;
  const int edge = next ? 0 : header->count() - 1;
  int visual = header->visualIndex(cell.column()) + step;
  for (int row = cell.row(); row >= 0 && row < model->rowCount(); row += step, visual = edge) {
    for (; visual >= 0 && visual < header->count(); visual += step) {
      const int column = header->logicalIndex(visual);
      if (isStop(column)) return model->index(row, column);
    }
  }
  return {};
}

int TDBGridEh::Private::nextEditable(int column) const {
  const QHeaderView* header = q->horizontalHeader();
  for (int visual = column < 0 ? 0 : header->visualIndex(column) + 1; visual < header->count(); ++visual) {
    const int next = header->logicalIndex(visual);
    if (!header->isSectionHidden(next) && model->canEdit(next)) return next;
  }
  return -1;
}

void TDBGridEh::Private::toggle(int row, int column) {
  model->setData(model->index(row, column), model->isChecked(row, column) ? Qt::Unchecked : Qt::Checked,
                 Qt::CheckStateRole);
}

void TDBGridEh::Private::pressButton(int row, int column) {
  guarded(q, [&] { Q_EMIT q->columnButtonClicked(row, model->column(column).field); });
}

void TDBGridEh::Private::goOnFromCell() {
  const QModelIndex current = q->currentIndex();
  // Enter in a new row before anything was typed: there is none to come.
  if (!current.isValid() || dropEmptyRow()) {
    Q_EMIT q->enteredBehindLast();
    return;
  }
  if (const int next = nextEditable(current.column()); next >= 0) {
    q->setCurrentIndex(model->index(current.row(), next));
    return;
  }
  const int first = nextEditable(-1);
  if (current.row() + 1 < model->rowCount()) {
    q->setCurrentIndex(model->index(current.row() + 1, first));
  } else if (allowAppend) {
    appendAtEnd();
  } else {
    Q_EMIT q->enteredBehindLast();
  }
}

bool TDBGridEh::Private::handleCellKey(const QKeyEvent& event) {
  const QModelIndex current = q->currentIndex();
  const bool isPlain = event.modifiers() == Qt::NoModifier || event.modifiers() == Qt::KeypadModifier;
  const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  if (isEnter && isPlain && !q->isReadOnly()) {
    goOnFromCell();
    return true;
  }
  if (!current.isValid()) return false;
  const GridColumn& column = model->column(current.column());
  const bool opens = (event.key() == Qt::Key_F4 && isPlain) ||
                     (event.key() == Qt::Key_Down && event.modifiers() == Qt::AltModifier);
  if (opens && (column.button || (column.ellipsis && model->canEdit(current.column())))) {
    pressButton(current.row(), current.column());
    return true;
  }
  if (event.key() == Qt::Key_Space && isPlain) {
    if (column.button) {
      pressButton(current.row(), current.column());
    } else if (isToggled(current.column())) {
      toggle(current.row(), current.column());
    } else {
      return column.checkBox;
    }
    return true;
  }
  RecordSet* rows = model->recordSet();
  if (event.key() == Qt::Key_Escape &&
      (rows->state() == RecordSet::State::Edit || rows->state() == RecordSet::State::Insert)) {
    guarded(q, [&] { rows->cancel(); });
    return true;
  }
  return false;
}

bool TDBGridEh::Private::appendAtEnd() {
  RecordSet* rows = model->recordSet();
  if (!allowAppend || q->isReadOnly() || rows == nullptr || !rows->isOpen()) return false;
  if (!q->takeCell()) return false;
  if (rows->state() == RecordSet::State::Insert && !rows->isModified()) return false;
  if (!guarded(q, [&] { rows->append(); })) return false;
  followRecordSet();
  if (const int first = entryColumn(); first >= 0 && rows->currentRow() >= 0) {
    q->setCurrentIndex(model->index(rows->currentRow(), first));
  }
  return true;
}

bool TDBGridEh::Private::dropEmptyRow() {
  RecordSet* rows = model->recordSet();
  if (!allowAppend || rows == nullptr || rows->state() != RecordSet::State::Insert || rows->isModified())
    return false;
  return guarded(q, [&] { rows->cancel(); });
}

bool TDBGridEh::Private::leaveByTab(const QKeyEvent& event) {
  const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  if (!isTab || !(event.modifiers() & Qt::ControlModifier)) return false;
  return q->QAbstractScrollArea::focusNextPrevChild(event.key() == Qt::Key_Tab);
}

void TDBGridEh::Private::showPicks() {
  q->viewport()->update();
  Q_EMIT q->picksChanged();
}

void TDBGridEh::Private::pickRange(int from, int to) {
  const RecordSet* rows = model->recordSet();
  const int step = from <= to ? 1 : -1;
  for (int row = from; row != to + step; row += step) picks.set(rows->bookmarkAt(row), true);
  showPicks();
}

void TDBGridEh::Private::pickByMouse(int row, int before, Qt::KeyboardModifiers modifiers) {
  const RecordSet* rows = model->recordSet();
  if (modifiers & Qt::ShiftModifier) {
    if (anchor < 0 || anchor >= model->rowCount()) anchor = std::max(0, before);
    if (!(modifiers & Qt::ControlModifier)) picks.clear();
    pickRange(anchor, row);
    return;
  }
  if (modifiers & Qt::ControlModifier) {
    // The row that was current looks chosen: it is the first one picked.
    if (picks.isEmpty() && before >= 0 && before != row) picks.set(rows->bookmarkAt(before), true);
    picks.toggle(rows->bookmarkAt(row));
  } else {
    picks.clear();
  }
  anchor = row;
  showPicks();
}

bool TDBGridEh::Private::handleRowKey(const QKeyEvent& event) {
  const int row = q->currentIndex().row();
  const int last = model->rowCount() - 1;
  if (leaveByTab(event)) return true;
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  if (event.matches(QKeySequence::SelectAll)) {
    if (model->recordSet() == nullptr || !model->recordSet()->isOpen()) return true;
    model->recordSet()->waitForAll();
    if (model->rowCount() > 0) pickRange(0, model->rowCount() - 1);
    return true;
  }
  if (event.key() == Qt::Key_T && modifiers == Qt::ControlModifier && row >= 0) {
    sortBy(q->currentIndex().column());
    return true;
  }
  if (event.key() == Qt::Key_Space && modifiers == Qt::ControlModifier && row >= 0) {
    picks.toggle(model->recordSet()->bookmarkAt(row));
    anchor = row;
    showPicks();
    return true;
  }
  if (event.key() == Qt::Key_Down && modifiers == Qt::NoModifier && row == last) return appendAtEnd();
  if (event.key() == Qt::Key_Up && modifiers == Qt::NoModifier && row == last) return dropEmptyRow();
  const bool isUpDown = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
  if (isUpDown && modifiers == Qt::ShiftModifier && row >= 0) {
    const int to = std::clamp(row + (event.key() == Qt::Key_Up ? -1 : 1), 0, last);
    if (picks.isEmpty() || anchor < 0 || anchor > last) anchor = row;
    q->setCurrentIndex(model->index(to, q->currentIndex().column()));
    picks.clear();
    pickRange(anchor, to);
    return true;
  }
  const bool isEnd = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
  const bool byRow = modifiers == Qt::NoModifier ? q->isReadOnly() : modifiers == Qt::ControlModifier;
  if (isEnd && byRow && row >= 0) {
    if (event.key() == Qt::Key_End) model->recordSet()->waitForAll();
    const int to = event.key() == Qt::Key_Home ? 0 : model->rowCount() - 1;
    q->setCurrentIndex(model->index(to, q->currentIndex().column()));
    return true;
  }
  return false;
}

}  // namespace goodsbook
