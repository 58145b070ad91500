#include <QApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QScrollBar>
#include <algorithm>

#include "host/controls/grid_private.h"
#include "host/forms/Base.h"

using namespace Qt::StringLiterals;

// Columns of the grid: widths, order, hiding, sorting and how that is remembered.
namespace goodsbook {

namespace {

constexpr int layoutVersion = 1;
constexpr int padding = 14;

}  // namespace

void TDBGridEh::setColumns(std::vector<GridColumn> columns) {
  d_->programHidden.clear();
  for (const GridColumn& column : columns) d_->programHidden.push_back(!column.visible);
  d_->userHidden.clear();
  d_->appliedFields.clear();
  d_->model->setGridColumns(std::move(columns));
  d_->applyColumns();
}

void TDBGridEh::setColumnVisible(const QString& field, bool visible) {
  const auto column = static_cast<std::size_t>(columnOf(field));
  if (columnOf(field) < 0) return;
  d_->programHidden.resize(d_->model->gridColumns().size(), false);
  d_->programHidden[column] = !visible;
  d_->applyHidden();
}

void TDBGridEh::setEvenRowColor(const QColor& color) {
  d_->evenRow = color;
  d_->applyEvenRowColor();
}

QByteArray TDBGridEh::saveLayout() const {
  return d_->layout();
}

void TDBGridEh::restoreLayout(const QByteArray& layout) {
  d_->pendingLayout = layout;
  d_->applyLayout(layout);
}

void TDBGridEh::Private::placeFooter() {
  // The view reckoned its scroll ranges without the footer. Each bar that appears takes room from the other.
  for (int pass = 0; pass < 2; ++pass) {
    const QSize room = q->viewport()->size();
    const int rowsInSight = room.height() / q->verticalHeader()->defaultSectionSize();
    q->verticalScrollBar()->setPageStep(rowsInSight);
    q->verticalScrollBar()->setRange(0, std::max(0, model->rowCount() - rowsInSight));
    q->horizontalScrollBar()->setPageStep(room.width());
    q->horizontalScrollBar()->setRange(0, std::max(0, q->horizontalHeader()->length() - room.width()));
  }
  const QRect room = q->viewport()->geometry();
  QHeaderView* numbers = q->verticalHeader();
  numbers->resize(numbers->width(), room.height());
  if (numbers->isHidden()) QMetaObject::invokeMethod(numbers, "updateGeometries");  // as the view itself does
  if (q->verticalScrollBar()->maximum() == 0) {
    numbers->setOffset(0);  // all rows are in sight, from the top
  } else if (q->verticalScrollBar()->value() == q->verticalScrollBar()->maximum()) {
    numbers->setOffsetToLastSection();
  }
  const int left = q->verticalHeader()->isVisible() ? q->verticalHeader()->width() : 0;
  footer->setGeometry(room.left() - left, room.bottom() + 1, room.width() + left, footer->wantedHeight());
}

int TDBGridEh::Private::defaultWidth(int column) const {
  const QFontMetrics metrics = q->fontMetrics();
  const int title = metrics.horizontalAdvance(model->title(column)) + padding + 12;  // the sort mark's room
  int characters = 10;
  if (const int field = model->fieldOf(column); field >= 0) {
    const Field& info = model->recordSet()->field(field);
    if (info.type == FieldType::Boolean) characters = 4;
    if (info.type == FieldType::DateTime) characters = 19;
    if (info.type == FieldType::Text && info.size > 0) characters = std::clamp(info.size, 4, 30);
  }
  return std::max(title, characters * metrics.averageCharWidth() + padding);
}

void TDBGridEh::Private::applyColumns() {
  QHeaderView* header = q->horizontalHeader();
  for (int column = 0; column < model->columnCount(); ++column) {
    const int width = model->column(column).width;
    header->resizeSection(column, width > 0 ? width : defaultWidth(column));
    header->moveSection(header->visualIndex(column), column);
  }
  programHidden.resize(model->gridColumns().size(), false);
  userHidden.assign(model->gridColumns().size(), false);
  applyHidden();
}

void TDBGridEh::Private::applyHidden() {
  userHidden.resize(model->gridColumns().size(), false);
  for (std::size_t i = 0; i < model->gridColumns().size(); ++i) {
    q->setColumnHidden(static_cast<int>(i), programHidden[i] || userHidden[i]);
  }
}

void TDBGridEh::Private::showHeaderMenu(QPoint place) {
  auto* menu = new QMenu(q);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const QHeaderView* header = q->horizontalHeader();
  int shown = 0;
  for (std::size_t i = 0; i < userHidden.size(); ++i) shown += !programHidden[i] && !userHidden[i] ? 1 : 0;
  for (int visual = 0; visual < header->count(); ++visual) {
    const int column = header->logicalIndex(visual);
    const auto i = static_cast<std::size_t>(column);
    if (programHidden[i]) continue;  // what a screen hides, costs for one, is not the user's to show
    QAction* action = menu->addAction(model->title(column));
    action->setCheckable(true);
    action->setChecked(!userHidden[i]);
    action->setEnabled(userHidden[i] || shown > 1);
    connect(action, &QAction::toggled, q, [this, i](bool on) {
      userHidden[i] = !on;
      applyHidden();
    });
  }
  menu->addSeparator();
  connect(menu->addAction(tr("取消排序")), &QAction::triggered, q, [this] { sort({}, false); });
  connect(menu->addAction(tr("恢复默认列")), &QAction::triggered, q, [this] { applyColumns(); });
  connect(menu->addAction(tr("复制(含标题)")), &QAction::triggered, q,
          [this] { guarded(q, [this] { q->copyToClipboard(); }); });
  menu->popup(header->mapToGlobal(place));
}

void TDBGridEh::Private::sortBy(int column) {
  if (!q->takeCell()) return;
  const QString field = model->column(column).field;
  const RecordSet* rows = model->recordSet();
  if (sortable && rows != nullptr && rows->isOpen() && model->fieldOf(column) >= 0) {
    const bool isSorted = rows->sortField().compare(field, Qt::CaseInsensitive) == 0;
    if (!isSorted) {
      sort(field, false);
    } else if (!rows->sortDescending()) {
      sort(field, true);
    } else {
      sort({}, false);  // the third click gives back the order of the list
    }
  }
  guarded(q, [&] { Q_EMIT q->titleClicked(field); });
}

void TDBGridEh::Private::sort(const QString& field, bool descending) {
  RecordSet* rows = model->recordSet();
  if (rows == nullptr || !rows->isOpen()) return;
  // The view forgets both with the old order.
  const int column = q->currentIndex().column();
  const int scrolled = q->horizontalScrollBar()->value();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  guarded(q, [&] {
    rows->waitForAll();
    rows->setSort(field, descending);
  });
  QApplication::restoreOverrideCursor();
  if (column >= 0) q->setCurrentIndex(model->index(q->currentIndex().row(), column));
  q->horizontalScrollBar()->setValue(scrolled);
  showSort();
}

void TDBGridEh::Private::showSort() {
  const RecordSet* rows = model->recordSet();
  const int column = rows == nullptr || rows->sortField().isEmpty() ? -1 : model->columnOf(rows->sortField());
  QHeaderView* header = q->horizontalHeader();
  header->setSortIndicatorShown(column >= 0);
  if (column < 0) return;
  header->setSortIndicator(column, rows->sortDescending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void TDBGridEh::Private::applyEvenRowColor() {
  if (colouring) return;
  colouring = true;
  const QColor base = q->palette().color(QPalette::Base);
  QColor even = evenRow;
  if (!even.isValid()) {
    even = base.lightness() < 128 ? base.lighter(118) : base.darker(104);
    if (base.lightness() < 20) even = QColor(30, 30, 30);
  } else if (base.lightness() < 128) {
    // Only the hue of a colour made for light palettes fits a dark one.
    even = QColor::fromHsl(std::max(0, even.hslHue()), std::min(even.hslSaturation(), 60),
                           std::min(255, base.lightness() + 14));
  }
  QPalette colours = q->viewport()->palette();
  colours.setColor(QPalette::AlternateBase, even);
  q->viewport()->setPalette(colours);
  colouring = false;
}

QByteArray TDBGridEh::Private::layout() const {
  QHeaderView* header = q->horizontalHeader();
  const RecordSet* rows = model->recordSet();
  QJsonArray columns;
  for (int visual = 0; visual < header->count(); ++visual) {
    const int column = header->logicalIndex(visual);
    const auto i = static_cast<std::size_t>(column);
    const bool isHidden = i < userHidden.size() && userHidden[i];
    QJsonObject saved{{u"field"_s, model->column(column).field}, {u"hidden"_s, isHidden}};
    if (isHidden) header->showSection(column);  // a hidden section tells no width
    if (!header->isSectionHidden(column)) saved.insert(u"width"_s, header->sectionSize(column));
    if (isHidden) header->hideSection(column);
    columns.append(saved);
  }
  const QJsonObject all{{u"version"_s, layoutVersion},
                        {u"columns"_s, columns},
                        {u"sort"_s, rows == nullptr ? QString() : rows->sortField()},
                        {u"descending"_s, rows != nullptr && rows->sortDescending()}};
  return QJsonDocument(all).toJson(QJsonDocument::Compact);
}

void TDBGridEh::Private::applyLayout(const QByteArray& text) {
  const QJsonObject all = QJsonDocument::fromJson(text).object();
  if (all.value(u"version"_s).toInt() != layoutVersion) return;
  QHeaderView* header = q->horizontalHeader();
  userHidden.resize(model->gridColumns().size(), false);
  programHidden.resize(model->gridColumns().size(), false);
  int visual = 0;
  for (const QJsonValue& value : all.value(u"columns"_s).toArray()) {
    const QJsonObject saved = value.toObject();
    const int column = model->columnOf(saved.value(u"field"_s).toString());
    if (column < 0) continue;
    header->moveSection(header->visualIndex(column), visual++);
    if (const int width = saved.value(u"width"_s).toInt(); width > 0) {
      header->showSection(column);
      header->resizeSection(column, std::min(width, 2000));
    }
    userHidden[static_cast<std::size_t>(column)] = saved.value(u"hidden"_s).toBool();
  }
  applyHidden();
  // Set before the list is opened the sort waits for it.
  RecordSet* rows = model->recordSet();
  const QString field = all.value(u"sort"_s).toString();
  const bool descending = all.value(u"descending"_s).toBool();
  const bool isNew = rows != nullptr && (rows->sortField() != field || rows->sortDescending() != descending);
  if (isNew && (field.isEmpty() || !rows->isOpen() || rows->hasField(field))) {
    guarded(q, [&] { rows->setSort(field, descending); });
  }
  showSort();
}

}  // namespace goodsbook
