#include "host/data/packed_segment.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace goodsbook {
namespace {

constexpr std::size_t nullBytes = segmentRows / 8;
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

template <typename Source>
void storeAll(std::byte* to, std::uint8_t width, std::uint32_t count, Source&& source) {
  const auto run = [&]<typename T>(T) {
    for (std::uint32_t i = 0; i < count; ++i) store<T>(to, i, source(i));
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

  explicit Dictionary(const OpenSegment& open) : codes_(open.count) {
    std::array<std::uint16_t, 1024> slots{};
    for (std::uint32_t row = 0; row < open.count; ++row) {
      const auto text = open.text(row);
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
  const std::vector<std::string_view>& entries() const { return entries_; }
  std::size_t bytes() const { return bytes_; }

 private:
  std::vector<std::uint8_t> codes_;
  std::vector<std::string_view> entries_;
  std::size_t bytes_ = 0;
  bool complete_ = false;
};

}  // namespace

void OpenSegment::clear() {
  count = 0;
  anyNull = false;
  nulls.fill(0);
  numbers.clear();
  bytes.clear();
  ends.clear();
}

PackedSegment::PackedSegment(const OpenSegment& open, std::size_t payload)
    : size_(static_cast<std::uint32_t>((open.anyNull ? nullBytes : 0) + payload)),
      values_(open.anyNull ? nullBytes : 0) {
  if (size_ == 0) return;
  data_ = std::make_shared_for_overwrite<std::byte[]>(size_);
  if (open.anyNull) std::memcpy(data_.get(), open.nulls.data(), nullBytes);
}

PackedSegment PackedSegment::ofIntegers(const OpenSegment& open) {
  const auto [least, most] = std::minmax_element(open.numbers.begin(), open.numbers.end());
  const auto base = static_cast<std::uint64_t>(*least);
  const std::uint8_t width = widthFor(static_cast<std::uint64_t>(*most) - base);
  PackedSegment packed(open, std::size_t{width} * open.count);
  packed.width_ = width;
  packed.base_ = *least;
  storeAll(packed.data_.get() + packed.values_, width, open.count,
           [&](std::uint32_t i) { return static_cast<std::uint64_t>(open.numbers[i]) - base; });
  return packed;
}

PackedSegment PackedSegment::ofFloats(const OpenSegment& open) {
  const std::int64_t first = open.numbers.front();
  const bool same =
      std::all_of(open.numbers.begin(), open.numbers.end(), [=](auto bits) { return bits == first; });
  const std::uint8_t width = same ? 0 : eightBytes;
  PackedSegment packed(open, std::size_t{width} * open.count);
  packed.width_ = width;
  packed.base_ = same ? first : 0;
  if (!same)
    std::memcpy(packed.data_.get() + packed.values_, open.numbers.data(), open.count * sizeof(std::int64_t));
  return packed;
}

PackedSegment PackedSegment::ofTexts(const OpenSegment& open) {
  const Dictionary dictionary(open);
  const std::size_t plain = std::size_t{widthOfEnds(open.bytes.size())} * open.count + open.bytes.size();
  const std::size_t codeWidth = dictionary.entries().size() > 1 ? 1 : 0;
  const std::size_t coded = codeWidth * open.count + dictionary.bytes() +
                            widthOfEnds(dictionary.bytes()) * dictionary.entries().size();
  if (!dictionary.complete() || plain <= coded) {
    PackedSegment packed(open, plain);
    packed.width_ = widthOfEnds(open.bytes.size());
    packed.entries_ = static_cast<std::uint16_t>(open.count);
    std::byte* ends = packed.data_.get() + packed.values_;
    storeAll(ends, packed.width_, open.count, [&](std::uint32_t i) { return open.ends[i]; });
    std::memcpy(ends + std::size_t{packed.width_} * open.count, open.bytes.data(), open.bytes.size());
    return packed;
  }
  PackedSegment packed(open, coded);
  packed.dictionary_ = true;
  packed.codeWidth_ = static_cast<std::uint8_t>(codeWidth);
  packed.width_ = widthOfEnds(dictionary.bytes());
  packed.entries_ = static_cast<std::uint16_t>(dictionary.entries().size());
  // Ends, texts, codes: the ends begin where a plain segment has them.
  std::byte* ends = packed.data_.get() + packed.values_;
  std::byte* texts = ends + std::size_t{packed.width_} * packed.entries_;
  std::uint32_t end = 0;
  for (std::uint32_t i = 0; i < packed.entries_; ++i) {
    const auto text = dictionary.entries()[i];
    std::memcpy(texts + end, text.data(), text.size());
    end += static_cast<std::uint32_t>(text.size());
    if (packed.width_ == 2) {
      store<std::uint16_t>(ends, i, end);
    } else {
      store<std::uint32_t>(ends, i, end);
    }
  }
  if (codeWidth != 0) std::memcpy(texts + end, dictionary.codes().data(), open.count);
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
