#include "host/print/list_layout.h"

#include <QPaintDevice>
#include <QTextLayout>
#include <algorithm>
#include <numeric>

namespace goodsbook {
namespace {

constexpr double pointsPerPixel = 0.75;
constexpr double mostSqueeze = 0.8;  // narrower than that, a list reads better across the long side
constexpr double mostStretch = 1.6;  // a list of two short columns need not span the sheet

double naturalWidth(const std::vector<PrintColumn>& columns) {
  return std::accumulate(columns.begin(), columns.end(), 0.0,
                         [](double sum, const PrintColumn& c) { return sum + c.width; });
}

}  // namespace

ListLayout::ListLayout(const std::vector<PrintColumn>& columns, QSizeF body, const QFont& font,
                       QPaintDevice* device)
    : bodyHeight_(body.height()),
      font_(font),
      device_(device),
      metrics_(font, device),
      padding_(metrics_.height() / 5),
      widest_(std::max(metrics_.maxWidth(), metrics_.height())) {
  const double natural = std::max(naturalWidth(columns), 1.0);
  const double unitsPerPixel = pointsPerPixel * device->logicalDpiX() / 72.0;
  const double scale = std::min(body.width() / natural, mostStretch * unitsPerPixel);
  double left = 0;
  for (const PrintColumn& column : columns) {
    lefts_.push_back(left);
    widths_.push_back(column.width * scale);
    left += widths_.back();
  }
}

bool ListLayout::wantsLandscape(const std::vector<PrintColumn>& columns, double pointsAcross) {
  return naturalWidth(columns) * pointsPerPixel * mostSqueeze > pointsAcross;
}

QTextOption ListLayout::wrapping(Qt::Alignment alignment) {
  QTextOption option(alignment);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  return option;
}

double ListLayout::totalWidth() const {
  return widths_.empty() ? 0 : lefts_.back() + widths_.back();
}

double ListLayout::heightOf(const QStringList& cells) const {
  double tallest = metrics_.height();
  for (int column = 0; column < columnCount() && column < cells.size(); ++column) {
    const QString& text = cells[column];
    const double room = width(column) - 2 * padding_;
    if (static_cast<double>(text.size()) * widest_ <= room && !text.contains(u'\n')) continue;
    tallest = std::max(tallest, textHeight(text, room));
  }
  return std::min(tallest + 2 * padding_, bodyHeight_);
}

double ListLayout::textHeight(const QString& text, double width) const {
  QTextLayout layout(QString(text).replace(u'\n', QChar::LineSeparator), font_, device_);
  layout.setTextOption(wrapping());
  layout.beginLayout();
  double height = 0;
  for (QTextLine line = layout.createLine(); line.isValid() && height < bodyHeight_;
       line = layout.createLine()) {
    line.setLineWidth(width);
    height += std::max(line.height() + line.leading(), metrics_.lineSpacing());
  }
  layout.endLayout();
  return height;
}

void ListLayout::addRow(const QStringList& cells) {
  const double height = heightOf(cells);
  if (used_ > 0 && used_ + height > bodyHeight_) {
    pageStarts_.push_back(rowCount());
    used_ = 0;
  }
  heights_.push_back(static_cast<float>(height));
  used_ += height;
}

std::pair<int, int> ListLayout::rowsOf(int page) const {
  const int behind = page + 1 < pageCount() ? pageStarts_[static_cast<std::size_t>(page) + 1] : rowCount();
  return {pageStarts_[static_cast<std::size_t>(page)], behind};
}

}  // namespace goodsbook
