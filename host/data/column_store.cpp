#include "host/data/column_store.h"

#include <stdexcept>

namespace goodsbook {
namespace {

// Ends are 32 bits wide; only pictures could ever come near.
constexpr std::size_t mostBytes = 0xFFFF'FFFF;

void appendBytes(OpenSegment& open, std::string_view bytes) {
  if (open.bytes.size() + bytes.size() > mostBytes)
    throw std::length_error("too many bytes in one stretch of a column");
  open.bytes.append(bytes);
}

}  // namespace

void ColumnStore::append(const engine::Row& row, int column) {
  if (open_.count == segmentRows) pack();
  const std::uint32_t at = open_.count++;
  const bool null = row.isNull(column);
  if (null) {
    open_.anyNull = true;
    open_.nulls[at / 64] |= std::uint64_t{1} << (at % 64);
  }
  switch (type_) {
    case FieldType::Integer:
    case FieldType::Boolean:
    case FieldType::DateTime:
      // A null repeats its neighbour, so that it widens nothing.
      open_.numbers.push_back(null ? (at == 0 ? 0 : open_.numbers.back()) : row.integer(column));
      break;
    case FieldType::Float:
      open_.numbers.push_back(null ? (at == 0 ? 0 : open_.numbers.back())
                                   : std::bit_cast<std::int64_t>(row.real(column)));
      break;
    case FieldType::Text:
      if (!null) appendBytes(open_, row.text(column));
      open_.ends.push_back(static_cast<std::uint32_t>(open_.bytes.size()));
      break;
    case FieldType::Blob:
      if (!null) {
        const auto blob = row.blob(column);
        appendBytes(open_, {reinterpret_cast<const char*>(blob.data()), blob.size()});
      }
      open_.ends.push_back(static_cast<std::uint32_t>(open_.bytes.size()));
      break;
  }
}

void ColumnStore::pack() {
  switch (type_) {
    case FieldType::Text:
    case FieldType::Blob:
      packed_.push_back(PackedSegment::ofTexts(open_));
      break;
    case FieldType::Float:
      packed_.push_back(PackedSegment::ofFloats(open_));
      break;
    default:
      packed_.push_back(PackedSegment::ofIntegers(open_));
      break;
  }
  open_.clear();
}

void ColumnStore::finish() {
  if (open_.count != 0) pack();
  open_ = OpenSegment{};
  packed_.shrink_to_fit();
}

std::size_t ColumnStore::memoryBytes() const {
  std::size_t total = packed_.capacity() * sizeof(PackedSegment) + open_.bytes.capacity() +
                      open_.numbers.capacity() * sizeof(std::int64_t) +
                      open_.ends.capacity() * sizeof(std::uint32_t);
  for (const auto& segment : packed_) total += segment.memoryBytes();
  return total;
}

}  // namespace goodsbook
