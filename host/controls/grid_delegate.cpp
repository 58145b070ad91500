#include "host/controls/grid_delegate.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>

#include "host/controls/edits.h"
#include "host/controls/grid_model.h"
#include "host/controls/grid_picks.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

QColor mixed(const QColor& base, const QColor& over, double share) {
  const auto part = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
  return {part(base.red(), over.red()), part(base.green(), over.green()), part(base.blue(), over.blue())};
}

}  // namespace

GridDelegate::GridDelegate(TDBGridEh* grid, GridModel* model, const GridPicks* picks)
    : QStyledItemDelegate(grid), grid_(grid), model_(model), picks_(picks) {}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const RecordSet* rows = model_->recordSet();
  if (rows == nullptr || index.row() >= rows->rowCount()) return;
  const GridColumn& column = model_->column(index.column());
  const bool isCurrentRow = index.row() == rows->currentRow();
  const bool isPicked = !picks_->isEmpty() && picks_->contains(rows->bookmarkAt(index.row()));
  const bool isCurrentCell = index == grid_->currentIndex();
  // A grid to choose rows from shows the whole row as current, one to type into the cell.
  const bool byRow = grid_->isReadOnly() && picks_->isEmpty();
  option->state.setFlag(QStyle::State_Selected, isPicked || (isCurrentRow && (byRow || isCurrentCell)));
  option->state.setFlag(QStyle::State_MouseOver, false);
  if (isCurrentRow && !option->state.testFlag(QStyle::State_Selected)) {
    option->backgroundBrush =
        mixed(option->palette.color(QPalette::Base), option->palette.color(QPalette::Highlight), 0.25);
  }
  option->textElideMode = Qt::ElideRight;
  if (column.checkBox || column.button) {
    option->text.clear();
    option->features.setFlag(QStyleOptionViewItem::HasCheckIndicator, false);
  } else if (column.hideRepeats && index.row() > 0 && !isCurrentRow &&
             option->text == model_->text(index.row() - 1, index.column())) {
    option->text.clear();
  }
  if (draw_) draw_(index.row(), column.field, *option);
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const GridColumn& column = model_->column(index.column());
  if (column.checkBox) {
    QStyleOptionViewItem box = option;
    initStyleOption(&box, index);
    box.state.setFlag(model_->isChecked(index.row(), index.column()) ? QStyle::State_On : QStyle::State_Off);
    paintCheckBox(painter, box);
  } else if (column.button) {
    paintButton(painter, option, index);
  }
}

void GridDelegate::paintCheckBox(QPainter* painter, QStyleOptionViewItem& option) const {
  const QStyle* style = grid_->style();
  const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, grid_),
                   style->pixelMetric(QStyle::PM_IndicatorHeight, &option, grid_));
  option.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
  option.state.setFlag(QStyle::State_HasFocus, false);
  style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &option, painter, grid_);
}

void GridDelegate::paintButton(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
  QStyleOptionButton button;
  button.rect = option.rect.adjusted(1, 1, -1, -1);
  button.palette = option.palette;
  button.fontMetrics = option.fontMetrics;
  button.direction = option.direction;
  button.state = QStyle::State_Raised | (grid_->isEnabled() ? QStyle::State_Enabled : QStyle::State_None);
  button.text = model_->text(index.row(), index.column());
  if (button.text.isEmpty()) button.text = u"…"_s;
  grid_->style()->drawControl(QStyle::CE_PushButton, &button, painter, grid_);
}

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

bool GridDelegate::commit(QLineEdit* editor) {
  const QPointer<QLineEdit> alive(editor);
  const QString before = shown_;
  refused_ = false;
  Q_EMIT commitData(editor);
  if (alive == nullptr || !refused_) return true;
  shown_ = before;
  editor->selectAll();
  editor->setFocus();
  return false;
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
  if (editor == nullptr || event->type() != QEvent::KeyPress)
    return QStyledItemDelegate::eventFilter(watched, event);
  auto* key = static_cast<QKeyEvent*>(event);
  const bool moves =
      key->modifiers() == Qt::NoModifier && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down);
  switch (key->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (!moves) break;
      [[fallthrough]];
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Backtab: {
      if (!commit(editor)) return true;
      close(editor);
      const bool isEnter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
      if (isEnter) {
        Q_EMIT enterPressed();
      } else {
        QKeyEvent onward(QEvent::KeyPress, key->key(), key->modifiers());
        QApplication::sendEvent(grid_, &onward);
      }
      return true;
    }
    default:
      break;
  }
  return QStyledItemDelegate::eventFilter(watched, event);
}

}  // namespace goodsbook
