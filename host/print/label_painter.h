#pragma once

#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QRect>
#include <QSet>
#include <QStringList>

#include "host/export.h"
#include "host/print/bar_code.h"
#include "host/print/label_layout.h"

namespace goodsbook {

// What one printer needs so that labels come out where they belong.
struct GOODSBOOKHOST_EXPORT LabelPrinter {
  int dpi = 300;
  QPointF offset;       // millimetres to the right and down
  QPointF scale{1, 1};  // of distances; bars keep whole dots

  int dots(double millimetres) const;  // a length without offset and scale
  QRect dots(const QRectF& millimetres) const;
};

// What the user should know of the labels printed, each thing once. The first thousand are kept, the others
// counted: somebody who prints without barcodes has as many as labels.
class GOODSBOOKHOST_EXPORT LabelWarnings {
 public:
  void add(const LabelRow& row, const QString& what);
  void add(const QString& text);  // of no label alone
  bool isEmpty() const { return texts_.isEmpty(); }
  const QStringList& texts() const { return texts_; }
  QString summary() const;  // a few of them, and how many more there are
  QString all() const;      // those kept, and how many more there are

 private:
  QString first(qsizetype most) const;

  QStringList texts_;
  QSet<std::size_t> known_;  // hashes of all, kept or not
};

// Draws labels, in dots of the printer: a painter's unit has to be one dot. Bars are whole dots wide, with
// their quiet zone, as wide as the place allows and no wider than scanners like. Texts are wrapped at their
// place, then shrunk; what does not fit then ends in "…" and is told, as is everything that a scanner could
// not read.
class GOODSBOOKHOST_EXPORT LabelPainter {
 public:
  LabelPainter(const LabelLayout& layout, const LabelPrinter& printer);

  void paint(QPainter& painter, QPointF corner, const LabelRow& row, LabelWarnings& warnings);

  // Whether bars of modules of that many dots are too narrow for the scanners of a shop.
  static bool isTooNarrow(int moduleDots, int dpi);

 private:
  void paintText(QPainter& painter, const LabelItem& item, const QRect& place, const QString& text,
                 const LabelRow& row, LabelWarnings& warnings);
  void paintBars(QPainter& painter, const LabelItem& item, QRect place, const LabelRow& row,
                 LabelWarnings& warnings);
  int pixels(double points) const;

  const LabelLayout& layout_;
  LabelPrinter printer_;
  QString lastText_;  // copies of one label stand together
  BarCode lastCode_;
};

}  // namespace goodsbook
