#include "host/data/row_buffer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace goodsbook {
namespace {

constexpr std::size_t firstRows = 16;
constexpr std::size_t firstBytes = 4096;
constexpr std::size_t mostBytes = 0xFFFF'FFFF;  // places are 32 bits wide; only pictures could come near

}  // namespace

RowBuffer::RowBuffer(std::vector<FieldType> types)
    : types_(std::move(types)),
      masks_((types_.size() + 63) / 64),
      stride_(masks_ + types_.size()),
      anyNull_(masks_) {}

std::int64_t RowBuffer::keep(std::string_view bytes) {
  if (used_ + bytes.size() > bytes_.size()) {
    if (used_ + bytes.size() > mostBytes) throw std::length_error("too many bytes in one stretch of rows");
    bytes_.resize(std::max({firstBytes, bytes_.size() * 2, used_ + bytes.size()}));
  }
  if (!bytes.empty()) std::memcpy(bytes_.data() + used_, bytes.data(), bytes.size());
  const std::uint64_t place = std::uint64_t{used_} << 32U | bytes.size();
  used_ += bytes.size();
  return static_cast<std::int64_t>(place);
}

void RowBuffer::append(const engine::Row& row) {
  const std::size_t begin = count_ * stride_;
  if (begin + stride_ > slots_.size()) slots_.resize(std::max(slots_.size() * 2, firstRows * stride_));
  std::int64_t* masks = slots_.data() + begin;
  std::int64_t* slots = masks + masks_;
  std::fill_n(masks, masks_, 0);
  for (std::size_t i = 0; i < types_.size(); ++i) {
    const int column = static_cast<int>(i);
    // Only what reads as nothing can be null; not asking for the others is a good part of the speed.
    bool nothing = false;
    switch (types_[i]) {
      case FieldType::Integer:
      case FieldType::Boolean:
      case FieldType::DateTime:
        slots[i] = row.integer(column);
        nothing = slots[i] == 0;
        break;
      case FieldType::Float: {
        const double value = row.real(column);
        slots[i] = std::bit_cast<std::int64_t>(value);
        nothing = value == 0;
        break;
      }
      case FieldType::Text: {
        const auto text = row.text(column);
        slots[i] = keep(text);
        nothing = text.empty();
        break;
      }
      case FieldType::Blob: {
        const auto blob = row.blob(column);
        slots[i] = keep({reinterpret_cast<const char*>(blob.data()), blob.size()});
        nothing = blob.empty();
        break;
      }
    }
    if (nothing && row.isNull(column))
      masks[i / 64] |= static_cast<std::int64_t>(std::uint64_t{1} << (i % 64));
  }
  for (std::size_t i = 0; i < masks_; ++i) anyNull_[i] |= masks[i];
  ++count_;
}

void RowBuffer::clear() {
  count_ = 0;
  used_ = 0;
  std::fill(anyNull_.begin(), anyNull_.end(), 0);
}

}  // namespace goodsbook
