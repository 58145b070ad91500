#include "host/controls/grid_delegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

#include "host/controls/edits.h"
#include "host/controls/grid_model.h"
#include "host/forms/screen_events.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Keys that lead from the cell to another one.
bool leavesCell(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
      return key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::ShiftModifier;
    case Qt::Key_Home:
    case Qt::Key_End:
      return (key.modifiers() & Qt::ControlModifier) != 0;
    default:
      return false;
  }
}

}  // namespace

GridDelegate::GridDelegate(TDBGridEh* grid, GridModel* model, const GridPicks* picks)
    : QStyledItemDelegate(grid), grid_(grid), model_(model), picks_(picks) {}

QWidget* GridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
  (void)option;
  const GridColumn& column = model_->column(index.column());
  const bool isNumber = column.numberEdit || model_->isNumber(index.column());
  TCustomDBEditEh* edit = nullptr;
  if (column.ellipsis) {
    auto* lookup = new TExtEdit(parent);
    connect(lookup, &TExtEdit::ButtonClick, this,
            [this, row = index.row(), field = column.field] { Q_EMIT ellipsisClicked(row, field); });
    edit = lookup;
  } else if (isNumber) {
    auto* number = new TDBNumberEditEh(parent);
    number->setDecimalPlaces(column.decimalPlaces);
    edit = number;
  } else {
    edit = new TCustomDBEditEh(parent);
  }
  const Field& field = model_->recordSet()->field(model_->fieldOf(index.column()));
  edit->setTypingLimit(column.typingLimit > 0          ? column.typingLimit
                       : field.type == FieldType::Text ? field.size
                                                       : 0);
  edit->setUpperCase(column.upperCase);
  edit->setFrame(false);
  edit->setAutoFillBackground(true);
  edit->setAlignment(model_->alignment(index.column()));
  edit->setObjectName(grid_->objectName() + u'.' + column.field);
  editor_ = edit;
  return edit;
}

void GridDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
  if (editor == editor_) editor_ = nullptr;
  QStyledItemDelegate::destroyEditor(editor, index);
}

void GridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  auto* edit = static_cast<QLineEdit*>(editor);
  if (edit->isModified()) return;  // the record set tells of other fields of the row while one is typed
  shown_ = model_->editText(index.row(), index.column());
  edit->setText(shown_);
}

void GridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
  auto* edit = static_cast<QLineEdit*>(editor);
  if (edit->text() == shown_) return;
  const RecordSet* rows = model_->recordSet();
  if (rows == nullptr || index.row() >= rows->rowCount()) return;
  const QString text = edit->text();
  shown_ = text;  // told once, also when the editor goes while the user reads the message
  edit->setModified(false);
  const bool isText = rows->field(model_->fieldOf(index.column())).type == FieldType::Text;
  refused_ = !model->setData(index, text.isEmpty() && !isText ? QVariant() : QVariant(text), Qt::EditRole);
}

bool GridDelegate::hasInput() const {
  return editor_ != nullptr && editor_->text() != shown_;
}

bool GridDelegate::read(QLineEdit* editor) {
  const QPointer<QLineEdit> alive(editor);
  const QString before = shown_;
  refused_ = false;
  leftRefused_ = nullptr;
  Q_EMIT commitData(editor);
  if (refused_ && alive != nullptr) shown_ = before;
  return !refused_;
}

bool GridDelegate::commit(QLineEdit* editor) {
  const QPointer<QLineEdit> alive(editor);
  if (read(editor)) return true;
  if (alive != nullptr) {
    editor->selectAll();
    editor->setFocus();
  }
  return false;
}

bool GridDelegate::staysOpen(QLineEdit* editor) {
  const QWidget* to = QApplication::focusWidget();
  if (to == editor) return false;  // a menu comes up: the view knows
  // Another window, a message among them, only interrupts the typing; Cancel is about to drop it.
  if (to == nullptr || to->window() != editor->window() || isCancel(to)) return true;
  const QPointer<QLineEdit> alive(editor);
  if (read(editor)) return false;
  leftRefused_ = alive;
  // Its screen gives it the focus back at once, unless the message took the focus from what it went to.
  QMetaObject::invokeMethod(
      this, [this] { takeBackFocus(leftRefused_); }, Qt::QueuedConnection);
  return true;
}

bool GridDelegate::takeBackFocus(const QWidget* editor) {
  const QPointer<QLineEdit> refused = std::exchange(leftRefused_, nullptr);
  if (refused == nullptr || refused != editor) return false;
  refused->selectAll();
  refused->setFocus();
  return true;
}

void GridDelegate::close(QLineEdit* editor) {
  Q_EMIT closeEditor(editor, NoHint);
}

void GridDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
  (void)index;
  editor->setGeometry(option.rect);
}

bool GridDelegate::eventFilter(QObject* watched, QEvent* event) {
  auto* editor = qobject_cast<QLineEdit*>(watched);
  if (editor != nullptr && editor == editor_ && event->type() == QEvent::FocusOut && staysOpen(editor))
    return false;
  if (editor == nullptr || event->type() != QEvent::KeyPress)
    return QStyledItemDelegate::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  if (!leavesCell(*key)) return QStyledItemDelegate::eventFilter(watched, event);
  const QPointer<QLineEdit> alive(editor);
  if (!commit(editor)) return true;
  if (alive != nullptr) close(editor);
  if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
    Q_EMIT enterPressed();
  } else {
    QKeyEvent onward(QEvent::KeyPress, key->key(), key->modifiers());
    QApplication::sendEvent(grid_, &onward);
  }
  return true;
}

}  // namespace goodsbook
