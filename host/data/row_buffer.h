#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/row.h"
#include "host/data/field.h"

namespace goodsbook {

// The newest rows of a load, one behind the other as they come in: writing them costs no more than copying.
// Once it is full, its rows are packed column by column.
class RowBuffer {
 public:
  RowBuffer() = default;
  explicit RowBuffer(std::vector<FieldType> types);

  void append(const engine::Row& row);
  void clear();  // keeps the memory
  std::uint32_t count() const { return count_; }

  bool isNull(std::uint32_t row, std::uint32_t column) const {
    return (static_cast<std::uint64_t>(slots_[row * stride_ + column / 64]) >> (column % 64) & 1U) != 0;
  }
  bool hasNulls(std::uint32_t column) const {
    return (static_cast<std::uint64_t>(anyNull_[column / 64]) >> (column % 64) & 1U) != 0;
  }
  std::int64_t number(std::uint32_t row, std::uint32_t column) const {  // floats by their bits; 0 for null
    return slots_[row * stride_ + masks_ + column];
  }
  std::string_view text(std::uint32_t row, std::uint32_t column) const {  // empty for null
    const auto place = static_cast<std::uint64_t>(number(row, column));
    return std::string_view(bytes_.data(), used_).substr(place >> 32U, place & 0xFFFF'FFFFU);
  }

  std::size_t memoryBytes() const { return slots_.capacity() * sizeof(std::int64_t) + bytes_.capacity(); }

 private:
  std::int64_t keep(std::string_view bytes);

  std::vector<FieldType> types_;
  std::size_t masks_ = 0;              // words of null bits in front of each row
  std::size_t stride_ = 0;             // words a row
  std::vector<std::int64_t> anyNull_;  // null bits of all rows together
  std::uint32_t count_ = 0;
  std::vector<std::int64_t> slots_;
  std::vector<char>
      bytes_;  // of texts and blobs; a slot holds where they begin and, in the lower half, how many
  std::size_t used_ = 0;
};

}  // namespace goodsbook
