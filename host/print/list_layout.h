#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QSizeF>
#include <QStringList>
#include <QTextOption>
#include <utility>
#include <vector>

#include "host/export.h"

class QPaintDevice;

namespace goodsbook {

struct PrintColumn {
  QString title;
  double width = 0;  // as on screen; columns share the page in proportion
  Qt::Alignment alignment = Qt::AlignLeft;
};

// Where the rows of a list go on pages. Lengths are units of the paint device. Rows are added from top to
// bottom and go to the next page when the body of the page is full; a row is never split, one that is taller
// than a page is cut.
class GOODSBOOKHOST_EXPORT ListLayout {
 public:
  // `body` is what is left of a page for rows, headings excluded.
  ListLayout(const std::vector<PrintColumn>& columns, QSizeF body, const QFont& font, QPaintDevice* device);

  // Whether the columns, in the points of their width on screen, would be squeezed too much on a page of that
  // width.
  static bool wantsLandscape(const std::vector<PrintColumn>& columns, double pointsAcross);

  int columnCount() const { return static_cast<int>(widths_.size()); }
  double left(int column) const { return lefts_[static_cast<std::size_t>(column)]; }
  double width(int column) const { return widths_[static_cast<std::size_t>(column)]; }
  double totalWidth() const;
  double padding() const { return padding_; }

  double heightOf(const QStringList& cells) const;  // texts wrapped to their columns
  void addRow(const QStringList& cells);

  int rowCount() const { return static_cast<int>(heights_.size()); }
  double height(int row) const { return heights_[static_cast<std::size_t>(row)]; }
  int pageCount() const { return static_cast<int>(pageStarts_.size()); }  // at least one
  std::pair<int, int> rowsOf(int page) const;  // first and behind the last, pages from 0

  // How cells wrap: at blanks where there are any.
  static QTextOption wrapping(Qt::Alignment alignment = Qt::AlignLeft);

 private:
  double textHeight(const QString& text, double width) const;

  double bodyHeight_;
  QFont font_;
  QPaintDevice* device_;
  QFontMetricsF metrics_;
  double padding_;
  double widest_;  // no character is wider
  std::vector<double> lefts_, widths_;
  std::vector<float> heights_;
  std::vector<int> pageStarts_{0};
  double used_ = 0;  // of the last page
};

}  // namespace goodsbook
