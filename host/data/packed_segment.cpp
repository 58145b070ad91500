#include "host/data/packed_segment.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <vector>

namespace goodsbook {
namespace {

constexpr std::uint8_t eightBytes = 8;

template <typename T>
T load(const std::byte* from, std::uint32_t index) {
  T value;
  std::memcpy(&value, from + index * sizeof(T), sizeof(T));
  return value;
}

template <typename T>
void store(std::byte* to, std::uint32_t index, std::uint64_t value) {
  const T narrow = static_cast<T>(value);
  std::memcpy(to + index * sizeof(T), &narrow, sizeof(T));
}

std::uint64_t loadWide(const std::byte* from, std::uint32_t index, std::uint8_t width) {
  switch (width) {
    case 1:
      return load<std::uint8_t>(from, index);
    case 2:
      return load<std::uint16_t>(from, index);
    case 4:
      return load<std::uint32_t>(from, index);
    case eightBytes:
      return load<std::uint64_t>(from, index);
    default:
      return 0;
  }
}

void storeAll(std::byte* to, std::uint8_t width, std::span<const std::int64_t> values, std::uint64_t base) {
  const auto run = [&]<typename T>(T) {
    for (std::uint32_t i = 0; i < values.size(); ++i)
      store<T>(to, i, static_cast<std::uint64_t>(values[i]) - base);
  };
  switch (width) {
    case 1:
      run(std::uint8_t{});
      break;
    case 2:
      run(std::uint16_t{});
      break;
    case 4:
      run(std::uint32_t{});
      break;
    case eightBytes:
      run(std::uint64_t{});
      break;
    default:
      break;
  }
}

std::uint8_t widthFor(std::uint64_t range) {
  if (range == 0) return 0;
  if (range <= 0xFF) return 1;
  if (range <= 0xFFFF) return 2;
  return range <= 0xFFFFFFFF ? 4 : eightBytes;
}

std::uint8_t widthOfEnds(std::size_t bytes) {
  return bytes <= 0xFFFF ? 2 : 4;
}

// The distinct texts of a segment while they are few; a small open hash table, given up as soon as they are
// many.
class Dictionary {
 public:
  static constexpr std::size_t limit = 255;

  explicit Dictionary(std::span<const std::string_view> texts) : codes_(texts.size()) {
    std::array<std::uint16_t, 1024> slots{};
    for (std::size_t row = 0; row < texts.size(); ++row) {
      const auto text = texts[row];
      if (row > 0 && text == texts[row - 1]) {
        codes_[row] = codes_[row - 1];
        continue;
      }
      std::size_t slot = std::hash<std::string_view>{}(text) % slots.size();
      while (slots[slot] != 0 && entries_[slots[slot] - 1U] != text) slot = (slot + 1) % slots.size();
      if (slots[slot] == 0) {
        if (entries_.size() == limit) return;
        entries_.push_back(text);
        bytes_ += text.size();
        slots[slot] = static_cast<std::uint16_t>(entries_.size());
      }
      codes_[row] = static_cast<std::uint8_t>(slots[slot] - 1);
    }
    complete_ = true;
  }

  bool complete() const { return complete_; }
  const std::vector<std::uint8_t>& codes() const { return codes_; }
  std::span<const std::string_view> entries() const { return entries_; }
  std::size_t bytes() const { return bytes_; }

 private:
  std::vector<std::uint8_t> codes_;
  std::vector<std::string_view> entries_;
  std::size_t bytes_ = 0;
  bool complete_ = false;
};

// Writes where each text ends and, behind that, the texts; gives the place behind them.
std::byte* storeTexts(std::byte* to, std::uint8_t width, std::span<const std::string_view> texts) {
  std::byte* bytes = to + width * texts.size();
  std::uint32_t end = 0;
  for (std::uint32_t i = 0; i < texts.size(); ++i) {
    if (!texts[i].empty()) std::memcpy(bytes + end, texts[i].data(), texts[i].size());
    end += static_cast<std::uint32_t>(texts[i].size());
    if (width == 2) {
      store<std::uint16_t>(to, i, end);
    } else {
      store<std::uint32_t>(to, i, end);
    }
  }
  return bytes + end;
}

}  // namespace

PackedSegment::PackedSegment(const NullBits& nulls, std::size_t payload)
    : size_(static_cast<std::uint32_t>((nulls.any ? sizeof(nulls.words) : 0) + payload)),
      values_(nulls.any ? sizeof(nulls.words) : 0) {
  if (size_ == 0) return;
  data_ = std::make_shared_for_overwrite<std::byte[]>(size_);
  if (nulls.any) std::memcpy(data_.get(), nulls.words.data(), sizeof(nulls.words));
}

PackedSegment PackedSegment::ofIntegers(std::span<const std::int64_t> values, const NullBits& nulls) {
  const auto [least, most] = std::minmax_element(values.begin(), values.end());
  const auto base = static_cast<std::uint64_t>(*least);
  const std::uint8_t width = widthFor(static_cast<std::uint64_t>(*most) - base);
  PackedSegment packed(nulls, width * values.size());
  packed.width_ = width;
  packed.base_ = *least;
  storeAll(packed.payload(), width, values, base);
  return packed;
}

PackedSegment PackedSegment::ofFloats(std::span<const std::int64_t> bits, const NullBits& nulls) {
  const bool same =
      std::all_of(bits.begin(), bits.end(), [&](std::int64_t value) { return value == bits.front(); });
  PackedSegment packed(nulls, same ? 0 : bits.size_bytes());
  packed.width_ = same ? 0 : eightBytes;
  packed.base_ = same ? bits.front() : 0;
  if (!same) std::memcpy(packed.payload(), bits.data(), bits.size_bytes());
  return packed;
}

PackedSegment PackedSegment::ofTexts(std::span<const std::string_view> texts, const NullBits& nulls) {
  const Dictionary dictionary(texts);
  std::size_t bytes = 0;
  for (const auto text : texts) bytes += text.size();
  const auto entries = dictionary.entries();
  const std::uint8_t codeWidth = entries.size() > 1 ? 1 : 0;
  const std::size_t plain = widthOfEnds(bytes) * texts.size() + bytes;
  const std::size_t coded =
      widthOfEnds(dictionary.bytes()) * entries.size() + dictionary.bytes() + codeWidth * texts.size();
  const bool codes = dictionary.complete() && coded < plain;

  PackedSegment packed(nulls, codes ? coded : plain);
  packed.dictionary_ = codes;
  packed.codeWidth_ = codeWidth;
  packed.width_ = widthOfEnds(codes ? dictionary.bytes() : bytes);
  packed.entries_ = static_cast<std::uint16_t>(codes ? entries.size() : texts.size());
  std::byte* behind = storeTexts(packed.payload(), packed.width_, codes ? entries : texts);
  if (codes && codeWidth != 0) std::memcpy(behind, dictionary.codes().data(), texts.size());
  return packed;
}

bool PackedSegment::isNull(std::uint32_t row) const {
  return values_ != 0 && (load<std::uint64_t>(data_.get(), row / 64) >> (row % 64) & 1U) != 0;
}

std::int64_t PackedSegment::number(std::uint32_t row) const {
  if (width_ == 0) return base_;
  const std::uint64_t offset = loadWide(data_.get() + values_, row, width_);
  return static_cast<std::int64_t>(offset + static_cast<std::uint64_t>(base_));
}

std::string_view PackedSegment::text(std::uint32_t row) const {
  const std::byte* ends = data_.get() + values_;
  const std::byte* texts = ends + std::size_t{width_} * entries_;
  std::uint32_t entry = row;
  if (dictionary_) {
    const auto allTexts = loadWide(ends, entries_ - 1U, width_);
    entry = codeWidth_ == 0 ? 0 : load<std::uint8_t>(texts + allTexts, row);
  }
  const std::size_t begin = entry == 0 ? 0 : loadWide(ends, entry - 1, width_);
  const std::size_t end = loadWide(ends, entry, width_);
  return {reinterpret_cast<const char*>(texts) + begin, end - begin};
}

}  // namespace goodsbook
