#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <array>
#include <cstddef>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// What a label can show of its row.
enum class LabelField : std::size_t {
  Code,
  Barcode,
  Name,
  Specification,
  Unit,
  Price,
  MemberPrice,
  Origin,
  Company
};
constexpr std::size_t labelFieldCount = 9;

struct LabelRow {
  std::array<QString, labelFieldCount> texts;

  const QString& operator[](LabelField field) const { return texts[static_cast<std::size_t>(field)]; }
  QString& operator[](LabelField field) { return texts[static_cast<std::size_t>(field)]; }
  bool operator==(const LabelRow&) const = default;
};

// One thing on a label. Lengths are millimetres from the label's upper left corner, sizes of letters points.
struct LabelItem {
  enum class Kind { Text, BarCode, Line } kind = Kind::Text;
  QRectF place;
  int line = 0;      // in the file
  QString pattern;   // Text: with fields in braces
  double size = 8;   // of the letters; a text that needs more room is wrapped, then shrunk ...
  double least = 5;  // ... down to this
  bool bold = false;
  bool digits = true;  // BarCode: its text below the bars
  Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;

  // The pattern filled in; empty when it names fields and all of them are empty.
  GOODSBOOKHOST_EXPORT QString text(const LabelRow& row) const;
};

// How labels lie on a sheet or a roll, and what stands on them. Lengths are millimetres.
struct LabelLayout {
  QString name;
  QSizeF paper;  // of one sheet; on a roll of one row of labels
  QSizeF label;
  int columns = 1, rows = 1;
  QPointF margin;  // of the first label
  QPointF gap;     // between labels
  std::vector<LabelItem> items;

  int perSheet() const { return columns * rows; }
  QPointF corner(int place) const {  // of the label at that place of a sheet, counted by rows from 0
    const int row = place / columns, column = place % columns;
    return {margin.x() + (label.width() + gap.x()) * column, margin.y() + (label.height() + gap.y()) * row};
  }
};

// Reads a layout. What is wrong with it is thrown as std::runtime_error with a Chinese text that names the
// file, the line and the word.
GOODSBOOKHOST_EXPORT LabelLayout readLabelLayout(const QString& text, const QString& fileName);

}  // namespace goodsbook
