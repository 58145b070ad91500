#include "host/controls/grid_footer.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include "host/controls/grid_model.h"
#include "host/data/display_format.h"
#include "host/data/value_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
constexpr int textMargin = 4;
}

GridFooter::GridFooter(TDBGridEh* grid, GridModel* model) : QWidget(grid), grid_(grid), model_(model) {
  connect(model, &QAbstractItemModel::modelReset, this, [this] { invalidate(); });
  connect(model, &QAbstractItemModel::dataChanged, this, [this] { invalidate(); });
  connect(model, &QAbstractItemModel::rowsInserted, this, [this] { invalidate(); });
  connect(model, &QAbstractItemModel::rowsRemoved, this, [this] { invalidate(); });
  const QHeaderView* header = grid->horizontalHeader();
  connect(header, &QHeaderView::sectionResized, this, [this] { update(); });
  connect(header, &QHeaderView::sectionMoved, this, [this] { update(); });
  connect(grid->horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { update(); });
  hide();
}

int GridFooter::wantedHeight() const {
  return fontMetrics().height() + 6;
}

void GridFooter::invalidate() {
  isValid_ = false;
  update();
}

QString GridFooter::text(int index) {
  const RecordSet* rows = model_->recordSet();
  if (rows == nullptr || !rows->isOpen()) return {};
  if (!isValid_ && !rows->isLoading()) {
    sums_.clear();
    for (int i = 0; i < model_->columnCount(); ++i) {
      const GridColumn& column = model_->column(i);
      if (!column.sum || model_->fieldOf(i) < 0) continue;
      const Field& field = rows->field(model_->fieldOf(i));
      const QString format = column.displayFormat.isEmpty() ? field.displayFormat : column.displayFormat;
      const double sum = rows->sum(field.name);
      // Sums of prices carry binary dust that no price has.
      sums_[i] =
          format.isEmpty() ? floatText(QString::number(sum, 'g', 12).toDouble()) : formatNumber(sum, format);
    }
    isValid_ = true;
  }
  if (const auto sum = sums_.find(index); sum != sums_.end()) return isValid_ ? sum->second : u"…"_s;
  return {};
}

void GridFooter::paintEvent(QPaintEvent* event) {
  (void)event;
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Button));
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawLine(0, 0, width(), 0);
  const QHeaderView* header = grid_->horizontalHeader();
  const int left = grid_->verticalHeader()->isVisible() ? grid_->verticalHeader()->width() : 0;
  painter.setClipRect(left, 0, width() - left, height());
  bool isLabelled = false;
  for (int visual = 0; visual < header->count(); ++visual) {
    const int column = header->logicalIndex(visual);
    if (header->isSectionHidden(column)) continue;
    const QRect cell(left + header->sectionViewportPosition(column), 1, header->sectionSize(column),
                     height() - 1);
    QString shown = text(column);
    Qt::Alignment alignment = Qt::AlignRight | Qt::AlignVCenter;
    if (shown.isEmpty() && !isLabelled) {
      shown = tr("合计");
      alignment = Qt::AlignLeft | Qt::AlignVCenter;
    }
    isLabelled = true;
    if (cell.right() < left || cell.left() > width()) continue;
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(cell.topRight(), cell.bottomRight());
    painter.setPen(palette().color(QPalette::ButtonText));
    painter.drawText(cell.adjusted(textMargin, 0, -textMargin, 0), alignment, shown);
  }
}

}  // namespace goodsbook
