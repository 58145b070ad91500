#include "host/controls/grid_search.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <chrono>

#include "host/controls/grid_model.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

GridSearch::GridSearch(TDBGridEh* grid, GridModel* model)
    : QObject(grid), grid_(grid), model_(model), hint_(new QLabel(grid->viewport())) {
  hint_->setAutoFillBackground(true);
  hint_->setBackgroundRole(QPalette::ToolTipBase);
  hint_->setForegroundRole(QPalette::ToolTipText);
  hint_->setFrameShape(QFrame::Box);
  hint_->setMargin(3);
  hint_->hide();
  timeout_.setSingleShot(true);
  timeout_.setInterval(std::chrono::seconds(5));
  connect(&timeout_, &QTimer::timeout, this, [this] { stop(); });
}

void GridSearch::stop() {
  if (isMoving_) return;
  typed_.clear();
  timeout_.stop();
  hint_->hide();
}

bool GridSearch::isPossible() const {
  const int current = grid_->currentIndex().column();
  if (current < 0 || model_->canEdit(current) || model_->column(current).button) return false;
  const int column = searchColumn();
  return column >= 0 && !model_->canEdit(column);
}

bool GridSearch::isOwnKey(const QKeyEvent& event) const {
  if (!isActive()) return false;
  if (event.key() == Qt::Key_F3) return (event.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
  return event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier;
}

int GridSearch::keyColumn() const {
  const int column = model_->columnOf(keyField_);
  return column >= 0 && !grid_->isColumnHidden(column) ? column : -1;
}

bool GridSearch::isSearched(int column) const {
  return column >= 0 && !grid_->isColumnHidden(column) && !model_->column(column).checkBox &&
         !model_->column(column).button;
}

int GridSearch::searchColumn() const {
  const int current = grid_->currentIndex().column();
  if (isSearched(current)) return current;
  if (isSearched(keyColumn())) return keyColumn();
  const QHeaderView* header = grid_->horizontalHeader();
  for (int visual = 0; visual < header->count(); ++visual) {
    if (isSearched(header->logicalIndex(visual))) return header->logicalIndex(visual);
  }
  return -1;
}

bool GridSearch::handleKey(const QKeyEvent& event) {
  const Qt::KeyboardModifiers command =
      event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  if (isOwnKey(event)) {
    if (event.key() == Qt::Key_Escape) {
      stop();
    } else {
      const int step = event.modifiers() & Qt::ShiftModifier ? -1 : 1;
      showHint(find(typed_, grid_->currentIndex().row() + step, step));
    }
    return true;
  }
  if (isActive() && event.key() == Qt::Key_Backspace) {
    const QString shorter = typed_.chopped(1);
    if (shorter.isEmpty()) {
      stop();
    } else {
      typed_ = shorter;
      showHint(find(shorter, 0, 1));
    }
    return true;
  }
  if (command != Qt::NoModifier || event.text().isEmpty() || !event.text().at(0).isPrint()) return false;
  if (!isActive() && event.key() == Qt::Key_Space) return false;
  type(event.text());
  return true;
}

void GridSearch::type(const QString& text) {
  if (!grid_->currentIndex().isValid()) return;
  const QString wanted = typed_ + text;
  const bool found = find(wanted, std::max(0, grid_->currentIndex().row()), 1);
  if (found || typed_.isEmpty()) typed_ = wanted;  // a letter too many does not lose the row
  showHint(found);
}

bool GridSearch::begin(const QString& text) {
  typed_ = text;
  const bool found = find(text, grid_->currentIndex().row() + 1, 1);
  showHint(found);
  return found;
}

bool GridSearch::find(const QString& text, int from, int step) {
  RecordSet* rows = model_->recordSet();
  const int column = searchColumn();
  if (rows == nullptr || column < 0) return false;
  rows->waitForAll();
  const int count = rows->rowCount();
  for (int i = 0; i < count; ++i) {
    const int row = ((from + i * step) % count + count) % count;
    if (!model_->text(row, column).startsWith(text, Qt::CaseInsensitive)) continue;
    isMoving_ = true;
    grid_->setCurrentIndex(model_->index(row, column));
    isMoving_ = false;
    return true;
  }
  return false;
}

void GridSearch::showHint(bool found) {
  hint_->setText((found ? tr("查找：%1") : tr("查找：%1 (没有找到)")).arg(typed_));
  hint_->adjustSize();
  const QSize room = grid_->viewport()->size();
  hint_->move(std::max(0, room.width() - hint_->width() - 4), room.height() - hint_->height() - 4);
  hint_->show();
  hint_->raise();
  timeout_.start();
}

}  // namespace goodsbook
