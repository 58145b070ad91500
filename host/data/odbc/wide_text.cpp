#include "host/data/odbc/wide_text.h"

#include <cstddef>
#include <cstdint>

namespace goodsbook {
namespace {

constexpr std::uint32_t firstHigh = 0xD800, firstLow = 0xDC00, behindLow = 0xE000, replacement = 0xFFFD;

// From U+0080 on.
std::size_t encode(std::uint32_t point, char* out) {
  if (point < 0x800) {
    out[0] = static_cast<char>(0xC0U | point >> 6U);
    out[1] = static_cast<char>(0x80U | (point & 0x3FU));
    return 2;
  }
  if (point < 0x10000) {
    out[0] = static_cast<char>(0xE0U | point >> 12U);
    out[1] = static_cast<char>(0x80U | (point >> 6U & 0x3FU));
    out[2] = static_cast<char>(0x80U | (point & 0x3FU));
    return 3;
  }
  out[0] = static_cast<char>(0xF0U | point >> 18U);
  out[1] = static_cast<char>(0x80U | (point >> 12U & 0x3FU));
  out[2] = static_cast<char>(0x80U | (point >> 6U & 0x3FU));
  out[3] = static_cast<char>(0x80U | (point & 0x3FU));
  return 4;
}

}  // namespace

std::string_view toUtf8(std::span<const SQLWCHAR> wide, std::vector<char>& buffer) {
  constexpr std::size_t mostBytesAUnit = 3;
  if (buffer.size() < wide.size() * mostBytesAUnit) buffer.resize(wide.size() * mostBytesAUnit);
  char* out = buffer.data();
  for (std::size_t i = 0; i < wide.size(); ++i) {
    std::uint32_t point = wide[i];
    if (point < 0x80) {
      *out++ = static_cast<char>(point);
      continue;
    }
    if (point >= firstHigh && point < behindLow) {
      const bool pair =
          point < firstLow && i + 1 < wide.size() && wide[i + 1] >= firstLow && wide[i + 1] < behindLow;
      point = pair ? 0x10000 + ((point - firstHigh) << 10U) + (wide[++i] - firstLow) : replacement;
    }
    out += encode(point, out);
  }
  return {buffer.data(), static_cast<std::size_t>(out - buffer.data())};
}

}  // namespace goodsbook
