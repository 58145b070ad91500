#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace goodsbook {

constexpr std::uint32_t segmentShift = 10;
constexpr std::uint32_t segmentRows = 1U << segmentShift;
constexpr std::uint32_t segmentMask = segmentRows - 1;

// Which rows of a segment are null.
struct NullBits {
  std::array<std::uint64_t, segmentRows / 64> words{};
  bool any = false;

  void set(std::uint32_t row) {
    words[row / 64] |= std::uint64_t{1} << (row % 64);
    any = true;
  }
};

// A stretch of at most segmentRows values of a column, packed into one piece of memory: numbers as narrow as
// their range allows, texts of few distinct values as codes into a dictionary, nulls as bits only where there
// are any. It never changes, so copies of a column share it.
class PackedSegment {
 public:
  // At least one value; what stands at a null's place is kept but means nothing.
  static PackedSegment ofIntegers(std::span<const std::int64_t> values, const NullBits& nulls);
  static PackedSegment ofFloats(std::span<const std::int64_t> bits, const NullBits& nulls);
  static PackedSegment ofTexts(std::span<const std::string_view> texts, const NullBits& nulls);

  bool isNull(std::uint32_t row) const;
  std::int64_t number(std::uint32_t row) const;
  std::string_view text(std::uint32_t row) const;
  std::size_t memoryBytes() const { return size_; }

 private:
  PackedSegment(const NullBits& nulls, std::size_t payload);
  std::byte* payload() { return data_.get() + values_; }

  std::shared_ptr<std::byte[]> data_;
  std::uint32_t size_ = 0;
  std::uint32_t values_ = 0;   // where the values begin, behind the null bits
  std::uint16_t entries_ = 0;  // texts: rows, or entries of the dictionary
  std::uint8_t width_ = 0;     // bytes a number, or a text's end; 0 where all numbers are the same
  std::uint8_t codeWidth_ = 0;
  bool dictionary_ = false;
  std::int64_t base_ = 0;  // added to each number
};

}  // namespace goodsbook
