#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace goodsbook {

constexpr std::uint32_t segmentShift = 11;
constexpr std::uint32_t segmentRows = 1U << segmentShift;
constexpr std::uint32_t segmentMask = segmentRows - 1;

// The newest rows of a column, as they come in.
struct OpenSegment {
  std::uint32_t count = 0;
  bool anyNull = false;
  std::array<std::uint64_t, segmentRows / 64> nulls{};
  std::vector<std::int64_t> numbers;  // one a row; floats by their bits
  std::string bytes;                  // texts and blobs, one behind the other
  std::vector<std::uint32_t> ends;    // where each ends in `bytes`

  bool isNull(std::uint32_t row) const { return (nulls[row / 64] >> (row % 64) & 1U) != 0; }
  std::string_view text(std::uint32_t row) const {
    const std::uint32_t begin = row == 0 ? 0 : ends[row - 1];
    return std::string_view(bytes).substr(begin, ends[row] - begin);
  }
  void clear();
};

// A full stretch of a column, packed into one piece of memory: numbers as narrow as their range allows, texts
// of few distinct values as codes into a dictionary, nulls as bits only where there are any. It never changes
// again, so copies of a column share it.
class PackedSegment {
 public:
  static PackedSegment ofIntegers(const OpenSegment& open);
  static PackedSegment ofFloats(const OpenSegment& open);
  static PackedSegment ofTexts(const OpenSegment& open);

  bool isNull(std::uint32_t row) const;
  std::int64_t number(std::uint32_t row) const;
  std::string_view text(std::uint32_t row) const;
  std::size_t memoryBytes() const { return size_; }

 private:
  PackedSegment(const OpenSegment& open, std::size_t payload);

  std::shared_ptr<std::byte[]> data_;
  std::uint32_t size_ = 0;
  std::uint32_t values_ = 0;   // where the values begin, behind the null bits
  std::uint16_t entries_ = 0;  // texts: rows, or entries of the dictionary
  std::uint8_t width_ = 0;     // bytes a number, or a text's end; 0 where all rows hold the same
  std::uint8_t codeWidth_ = 0;
  bool dictionary_ = false;
  std::int64_t base_ = 0;  // added to each number
};

}  // namespace goodsbook
