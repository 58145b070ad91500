#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "host/controls/grid_delegate.h"
#include "host/controls/grid_model.h"
#include "host/controls/grid_picks.h"

using namespace Qt::StringLiterals;

// How a grid paints its cells. Pages of cells are painted while a list is scrolled: this goes past the
// style's own item painting, which lays every text out anew, twice.
namespace goodsbook {

namespace {

constexpr int textMargin = 4;

QColor mixed(const QColor& base, const QColor& over, double share) {
  const auto part = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
  return {part(base.red(), over.red()), part(base.green(), over.green()), part(base.blue(), over.blue())};
}

}  // namespace

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  const RecordSet* rows = model_->recordSet();
  if (rows == nullptr || index.row() >= rows->rowCount()) return;
  const GridColumn& column = model_->column(index.column());
  option->index = index;
  option->text = column.checkBox || column.button ? QString() : model_->text(index.row(), index.column());
  option->displayAlignment = model_->alignment(index.column());
  const bool isCurrentRow = index.row() == rows->currentRow();
  const bool isPicked = !picks_->isEmpty() && picks_->contains(rows->bookmarkAt(index.row()));
  const bool isCurrentCell = isCurrentRow && index == grid_->currentIndex();
  // A grid to choose rows from shows the whole row as current, one to type into the cell.
  const bool byRow = picks_->isEmpty() && grid_->isReadOnly();
  option->state.setFlag(QStyle::State_Selected, isPicked || (isCurrentRow && (byRow || isCurrentCell)));
  option->state.setFlag(QStyle::State_HasFocus, isCurrentCell && grid_->hasFocus());
  if (isCurrentRow && !option->state.testFlag(QStyle::State_Selected)) {
    option->backgroundBrush =
        mixed(option->palette.color(QPalette::Base), option->palette.color(QPalette::Highlight), 0.25);
  }
  if (column.hideRepeats && index.row() > 0 &&
      option->text == model_->text(index.row() - 1, index.column())) {
    option->text.clear();
  }
  if (draw_) draw_(index.row(), column.field, *option);
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& given,
                         const QModelIndex& index) const {
  QStyleOptionViewItem option = given;
  initStyleOption(&option, index);
  const GridColumn& column = model_->column(index.column());
  const bool isSelected = option.state.testFlag(QStyle::State_Selected);
  const QPalette::ColorGroup group = !option.state.testFlag(QStyle::State_Enabled) ? QPalette::Disabled
                                     : option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                                   : QPalette::Inactive;
  if (isSelected) {
    painter->fillRect(option.rect, option.palette.brush(group, QPalette::Highlight));
  } else if (option.backgroundBrush.style() != Qt::NoBrush) {
    painter->fillRect(option.rect, option.backgroundBrush);
  }
  if (column.checkBox) {
    option.state.setFlag(model_->isChecked(index.row(), index.column()) ? QStyle::State_On
                                                                        : QStyle::State_Off);
    paintCheckBox(painter, option);
  } else if (column.button) {
    paintButton(painter, option, index);
  } else {
    painter->setPen(option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    if (painter->font() != option.font) painter->setFont(option.font);
    const QRect room = option.rect.adjusted(textMargin, 0, -textMargin, 0);
    texts_.draw(*painter, room, option.displayAlignment, option.text);
  }
  if (option.state.testFlag(QStyle::State_HasFocus) && !grid_->isReadOnly()) paintFocus(painter, option);
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
  const QString text =
      event->type() == QEvent::ToolTip ? model_->text(index.row(), index.column()) : QString();
  const bool isCut = option.fontMetrics.horizontalAdvance(text) > option.rect.width() - 2 * textMargin;
  if (!index.isValid() || !isCut || model_->column(index.column()).checkBox) {
    QToolTip::hideText();
    return false;
  }
  QToolTip::showText(event->globalPos(), text, view, option.rect);
  return true;
}

void GridDelegate::paintFocus(QPainter* painter, const QStyleOptionViewItem& option) const {
  QStyleOptionFocusRect focus;
  focus.QStyleOption::operator=(option);
  focus.backgroundColor = option.palette.color(QPalette::Highlight);
  grid_->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, grid_);
}

void GridDelegate::paintCheckBox(QPainter* painter, QStyleOptionViewItem& option) const {
  const QStyle* style = grid_->style();
  const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, grid_),
                   style->pixelMetric(QStyle::PM_IndicatorHeight, &option, grid_));
  option.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
  option.state.setFlag(QStyle::State_HasFocus, false);
  style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &option, painter, grid_);
  // The style's own frame vanishes on the rows of a dark palette.
  painter->setPen(mixed(option.palette.color(QPalette::Base), option.palette.color(QPalette::Text), 0.5));
  painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
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

}  // namespace goodsbook
