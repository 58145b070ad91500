#pragma once

#include <QByteArray>
#include <QVariant>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/data/field.h"
#include "host/data/packed_segment.h"
#include "host/data/row_buffer.h"

namespace goodsbook {

// Names a row for as long as the set is open: its number among the loaded rows, or, with the highest bit, its
// number among the rows that were added later.
using RowRef = std::uint32_t;
constexpr RowRef addedBit = 0x8000'0000;

// One value, read without a conversion where the row is as loaded.
struct Cell {
  bool null = true;
  std::int64_t integer = 0;  // Integer, Boolean, DateTime (milliseconds since 1900-01-01)
  double real = 0;           // Float
  std::string_view
      bytes;  // Text (UTF-8), Blob; lives until the next change of the row and no longer than the cell
  QByteArray held;
};

// The rows of a record set: loaded rows in columns, and over them the rows that were edited or added, one by
// one.
class RowTable {
 public:
  using Values = std::vector<QVariant>;  // stored values by field index

  RowTable() = default;
  explicit RowTable(std::vector<Field> fields);

  const std::vector<Field>& fields() const { return fields_; }
  std::vector<Field>& fields() { return fields_; }

  void appendLoaded(const engine::Row& row);
  void finishLoad();
  std::uint32_t loadedCount() const { return packed_ + buffer_.count(); }

  RowRef newRow() { return addedBit | added_++; }
  void put(RowRef row, Values values) { edited_.insert_or_assign(row, std::move(values)); }
  void forget(RowRef row) { edited_.erase(row); }
  bool hasEdits() const { return !edited_.empty(); }
  // Typed numbers become numbers in all rows.
  void settleTypedNumbers();

  bool isNull(RowRef row, int field) const;
  Cell cell(RowRef row, int field) const;
  QVariant stored(RowRef row, int field) const;
  Values values(RowRef row) const;

  std::size_t memoryBytes() const;

 private:
  const Values* editsOf(RowRef row) const;
  void pack();
  bool isLoadedNull(RowRef row, std::size_t field) const;
  std::int64_t loadedNumber(RowRef row, std::size_t field) const;
  std::string_view loadedText(RowRef row, std::size_t field) const;

  std::vector<Field> fields_;
  std::vector<std::vector<PackedSegment>> columns_;  // by field
  std::uint32_t packed_ = 0;                         // rows in them
  RowBuffer buffer_;                                 // rows behind them
  std::uint32_t added_ = 0;
  std::unordered_map<RowRef, Values> edited_;
};

}  // namespace goodsbook
