#include "host/controls/TDBGridEh.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>

#include "host/controls/grid_private.h"
#include "host/controls/progress.h"
#include "host/forms/Base.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TDBGridEh::TDBGridEh(QWidget* parent) : QTableView(parent), d_(std::make_unique<Private>(this)) {
  d_->setUp();
}

TDBGridEh::~TDBGridEh() {
  // What the base class still does with its model must not come back here.
  d_->model->disconnect(this);
  d_->following = true;
}

void TDBGridEh::setRecordSet(RecordSet* rows) {
  d_->setRecordSet(rows);
}
RecordSet* TDBGridEh::recordSet() const {
  return d_->model->recordSet();
}
const std::vector<GridColumn>& TDBGridEh::columns() const {
  return d_->model->gridColumns();
}
int TDBGridEh::columnOf(const QString& field) const {
  return d_->model->columnOf(field);
}

void TDBGridEh::setReadOnly(bool readOnly) {
  d_->readOnly = readOnly;
  d_->model->setReadOnly(readOnly);
  setTabKeyNavigation(!isReadOnly());
  viewport()->update();
}

bool TDBGridEh::isReadOnly() const {
  return d_->readOnly || d_->nextEditable(-1) < 0;
}
void TDBGridEh::setAllowAppend(bool on) {
  d_->allowAppend = on;
}
bool TDBGridEh::appendRow() {
  return d_->appendAtEnd();
}
void TDBGridEh::setRowNumbers(bool on) {
  verticalHeader()->setVisible(on);
}
void TDBGridEh::setSortable(bool on) {
  d_->sortable = on;
}

void TDBGridEh::setEmptyText(const QString& text) {
  d_->emptyText = text;
  viewport()->update();
}

void TDBGridEh::setFooterVisible(bool on) {
  d_->footerShown = on;
  d_->footer->setVisible(on);
  updateGeometries();
}

QString TDBGridEh::footerText(const QString& field) const {
  return columnOf(field) < 0 ? QString() : d_->footer->text(columnOf(field));
}

bool TDBGridEh::findText(const QString& text) {
  return d_->search->begin(text);
}

void TDBGridEh::setKeyField(const QString& field) {
  d_->search->setKeyField(field);
}

bool TDBGridEh::isSearchKey(const QKeyEvent& event) const {
  return d_->search->isOwnKey(event);
}

void TDBGridEh::setDrawColumnCell(DrawColumnCell draw) {
  d_->delegate->setDraw(std::move(draw));
  viewport()->update();
}

std::vector<RecordSet::Bookmark> TDBGridEh::selectedRows() const {
  const RecordSet* rows = recordSet();
  return rows == nullptr || !rows->isOpen() ? std::vector<RecordSet::Bookmark>() : d_->picks.inOrder(*rows);
}

int TDBGridEh::selectedRowCount() const {
  return d_->picks.count();
}

void TDBGridEh::selectRow(int row, bool on) {
  if (row < 0 || row >= d_->model->rowCount()) return;
  d_->picks.set(recordSet()->bookmarkAt(row), on);
  d_->showPicks();
}

void TDBGridEh::clearSelectedRows() {
  if (d_->picks.isEmpty()) return;
  d_->picks.clear();
  d_->showPicks();
}

QString TDBGridEh::selectedField() const {
  const int column = currentIndex().column();
  return column < 0 ? QString() : d_->model->column(column).field;
}

void TDBGridEh::setSelectedField(const QString& field) {
  const int column = columnOf(field);
  const int row = std::max(0, currentIndex().row());
  if (column >= 0 && row < d_->model->rowCount()) setCurrentIndex(d_->model->index(row, column));
}

bool TDBGridEh::editCell(int row, const QString& field, const QString& text) {
  const int column = columnOf(field);
  if (!d_->model->canEdit(column) || isColumnHidden(column) || row < 0 || row >= d_->model->rowCount())
    return false;
  if (!takeCell()) return false;
  const QModelIndex index = d_->model->index(row, column);
  setFocus();
  setCurrentIndex(index);
  if (currentIndex() != index) return false;  // the row that was left could not be posted
  if (d_->model->column(column).checkBox) {
    const bool wanted = text == u"1"_s;
    if (d_->model->isChecked(row, column) != wanted) clickCell(row, field);
    return d_->model->isChecked(row, column) == wanted;
  }
  if (d_->delegate->editor() == nullptr) edit(index);
  const QPointer<QLineEdit> editor = d_->delegate->editor();
  if (editor == nullptr) return false;
  editor->selectAll();
  const auto press = [&editor](int key, const QString& typed) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, typed);
    if (editor != nullptr) QApplication::sendEvent(editor, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, typed);
    if (editor != nullptr) QApplication::sendEvent(editor, &up);
  };
  press(Qt::Key_Delete, {});
  for (const QChar sign : text) {
    const int key = sign.toUpper().unicode();
    press(sign.unicode() < 0x80 ? key : static_cast<int>(Qt::Key_unknown), sign);
  }
  if (editor == nullptr) return false;
  const bool done = d_->delegate->commit(editor);
  if (editor != nullptr) closeEditor(editor, QAbstractItemDelegate::NoHint);
  setFocus();
  return done;
}

bool TDBGridEh::hasOpenInput() const {
  return d_->delegate->hasInput();
}

bool TDBGridEh::takeCell() {
  const QPointer<QLineEdit> editor = d_->delegate->editor();
  if (editor == nullptr) return true;
  if (!d_->delegate->commit(editor)) return false;
  if (editor != nullptr) d_->delegate->close(editor);
  return true;
}

void TDBGridEh::dropCell() {
  if (QLineEdit* editor = d_->delegate->editor())
    closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

bool TDBGridEh::takeBackFocus(const QWidget* editor) {
  return d_->delegate->takeBackFocus(editor);
}

void TDBGridEh::clickCell(int row, const QString& field, bool doubleClick) {
  const int column = columnOf(field);
  if (column < 0 || row < 0 || row >= d_->model->rowCount() || isColumnHidden(column)) return;
  const QModelIndex index = d_->model->index(row, column);
  scrollTo(index);
  const QRect seen = visualRect(index) & viewport()->rect();
  const QPointF place = seen.center();
  const QPointer<QWidget> target = viewport();
  const auto send = [&](QEvent::Type type) {
    if (target == nullptr) return;
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, place, target->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
  };
  setFocus(Qt::MouseFocusReason);
  send(QEvent::MouseButtonPress);
  send(QEvent::MouseButtonRelease);
  if (!doubleClick) return;
  send(QEvent::MouseButtonDblClick);
  send(QEvent::MouseButtonRelease);
}

void TDBGridEh::copyToClipboard() {
  const RecordSet* rows = recordSet();
  if (rows == nullptr || rows->isEmpty()) return;
  std::vector<int> lines = d_->picks.positions(*rows);
  if (lines.empty()) lines.push_back(rows->currentRow());
  std::vector<int> columns;
  for (int visual = 0; visual < horizontalHeader()->count(); ++visual) {
    const int column = horizontalHeader()->logicalIndex(visual);
    if (!isColumnHidden(column) && !d_->model->column(column).button) columns.push_back(column);
  }
  QString copied;
  const auto add = [&](QString text, bool last) {
    // Tabs and line breaks are what parts cells and rows.
    static const QRegularExpression parting(u"[\\t\\r\\n]+"_s);
    copied += text.replace(parting, u" "_s) + QChar(last ? u'\n' : u'\t');
  };
  for (const int column : columns) add(d_->model->title(column), column == columns.back());
  Progress progress(window(), tr("正在复制…"), static_cast<int>(lines.size()));
  int done = 0;
  for (const int row : lines) {
    for (const int column : columns) add(d_->model->text(row, column), column == columns.back());
    progress.step(++done);
  }
  QGuiApplication::clipboard()->setText(copied);
}

bool TDBGridEh::event(QEvent* event) {
  // These keys are shortcuts of lists, too.
  if (event->type() == QEvent::ShortcutOverride && isSearchKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

bool TDBGridEh::focusNextPrevChild(bool next) {
  // Past the item view, which would begin again at the other end.
  // NOLINTNEXTLINE(bugprone-parent-virtual-call)
  return !d_->nextStop(currentIndex(), next).isValid() ? QAbstractScrollArea::focusNextPrevChild(next)
                                                       : QTableView::focusNextPrevChild(next);
}

QModelIndex TDBGridEh::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  if (!takeCell()) return currentIndex();  // keys that its line passes on to the grid
  const bool byTab = action == MoveNext || action == MovePrevious;
  if (!byTab || isReadOnly()) return QTableView::moveCursor(action, modifiers);
  const QModelIndex to = d_->nextStop(currentIndex(), action == MoveNext);
  return to.isValid() ? to : currentIndex();
}

void TDBGridEh::keyPressEvent(QKeyEvent* event) {
  event->ignore();
  const QPointer<TDBGridEh> alive(this);
  Q_EMIT keyPressed(event);
  if (event->isAccepted() || alive == nullptr) return;
  event->accept();
  if (event->matches(QKeySequence::Copy)) {
    guarded(this, [this] { copyToClipboard(); });
    return;
  }
  bool handled = false;
  const bool ended = guarded(this, [&] {
    handled = (d_->search->isPossible() && d_->search->handleKey(*event)) || d_->handleCellKey(*event) ||
              d_->handleRowKey(*event);
  });
  if (handled || !ended) return;
  if (event->key() == Qt::Key_Escape) {
    event->ignore();  // the screen's
    return;
  }
  QTableView::keyPressEvent(event);
}

void TDBGridEh::inputMethodEvent(QInputMethodEvent* event) {
  if (!d_->search->isPossible()) {
    QTableView::inputMethodEvent(event);
    return;
  }
  guarded(this, [&] {
    if (!event->commitString().isEmpty()) d_->search->type(event->commitString());
  });
  event->accept();
}

void TDBGridEh::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  const bool wasCurrent = index.isValid() && index == currentIndex() && hasFocus();
  const int before = currentIndex().row();
  d_->search->stop();
  QTableView::mousePressEvent(event);
  if (event->button() != Qt::LeftButton || !index.isValid() || currentIndex() != index) return;
  d_->pressedRow = index.row();
  d_->pressedColumn = index.column();
  d_->pressedCurrent = wasCurrent && event->modifiers() == Qt::NoModifier;
  d_->pickByMouse(index.row(), before, event->modifiers());
}

void TDBGridEh::mouseReleaseEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  const bool isClick = event->button() == Qt::LeftButton && index.isValid() &&
                       index.row() == d_->pressedRow && index.column() == d_->pressedColumn;
  QTableView::mouseReleaseEvent(event);
  d_->pressedRow = d_->pressedColumn = -1;
  if (!isClick || event->modifiers() != Qt::NoModifier) return;
  if (d_->model->column(index.column()).button) {
    d_->pressButton(index.row(), index.column());
  } else if (d_->isToggled(index.column())) {
    d_->toggle(index.row(), index.column());
  } else if (d_->pressedCurrent && d_->model->canEdit(index.column()) && d_->delegate->editor() == nullptr) {
    edit(index);
  }
}

void TDBGridEh::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  QTableView::mouseDoubleClickEvent(event);
  if (event->button() != Qt::LeftButton || !index.isValid()) return;
  if (d_->model->column(index.column()).button || d_->isToggled(index.column())) {
    d_->pressedRow = index.row();
    d_->pressedColumn = index.column();
  } else if (!d_->model->canEdit(index.column())) {
    Q_EMIT rowDoubleClicked(index.row());
  }
}

void TDBGridEh::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  const RecordSet* rows = recordSet();
  if (d_->emptyText.isEmpty() || d_->model->rowCount() > 0 || (rows != nullptr && rows->isLoading())) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const QRect room = viewport()->rect().adjusted(24, 12, -24, -12);
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, d_->emptyText);
}

void TDBGridEh::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (d_ == nullptr) return;
  if (event->type() == QEvent::PaletteChange) d_->applyEvenRowColor();
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) d_->applyRowHeight();
}

void TDBGridEh::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  d_->search->stop();
}

void TDBGridEh::updateGeometries() {
  if (d_ == nullptr || d_->placingFooter) return;
  d_->placingFooter = true;
  QTableView::updateGeometries();
  if (d_->footerShown) {
    QMargins margins = viewportMargins();
    margins.setBottom(d_->footer->wantedHeight());
    setViewportMargins(margins);
    d_->placeFooter();
  }
  d_->placingFooter = false;
}

void TDBGridEh::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  setAttribute(Qt::WA_InputMethodEnabled, current.isValid());
  // Rows are painted by what is current: both rows as a whole.
  for (const QModelIndex& index : {current, previous}) {
    if (!index.isValid()) continue;
    const QRect cell = visualRect(index);
    viewport()->update(0, cell.top(), viewport()->width(), cell.height());
  }
  if (d_->following || !current.isValid()) return;
  d_->search->stop();
  if (current.row() != previous.row()) d_->leadRecordSet(current.row());
  if (current.column() != previous.column()) Q_EMIT columnEntered(d_->model->column(current.column()).field);
}

}  // namespace goodsbook
