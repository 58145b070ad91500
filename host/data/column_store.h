#pragma once

#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

#include "engine/row.h"
#include "host/data/field.h"
#include "host/data/packed_segment.h"

namespace goodsbook {

// The loaded values of one field, in the order in which the rows came.
class ColumnStore {
 public:
  explicit ColumnStore(FieldType type) : type_(type) {}

  void append(const engine::Row& row, int column);  // the column's type is the field's
  void finish();                                    // packs what is left; nothing is appended any more

  bool isNull(std::uint32_t row) const {
    const std::uint32_t segment = row >> segmentShift;
    return segment < packed_.size() ? packed_[segment].isNull(row & segmentMask)
                                    : open_.isNull(row & segmentMask);
  }
  std::int64_t integer(std::uint32_t row) const {
    const std::uint32_t segment = row >> segmentShift;
    return segment < packed_.size() ? packed_[segment].number(row & segmentMask)
                                    : open_.numbers[row & segmentMask];
  }
  double real(std::uint32_t row) const { return std::bit_cast<double>(integer(row)); }
  std::string_view bytes(std::uint32_t row) const {
    const std::uint32_t segment = row >> segmentShift;
    return segment < packed_.size() ? packed_[segment].text(row & segmentMask)
                                    : open_.text(row & segmentMask);
  }

  std::size_t memoryBytes() const;

 private:
  void pack();

  FieldType type_;
  std::vector<PackedSegment> packed_;
  OpenSegment open_;
};

}  // namespace goodsbook
