#include "engine/runtime/collation.h"

#include <algorithm>
#include <array>

#include "engine/runtime/fold.h"
#include "engine/runtime/text.h"

namespace goodsbook::engine {
namespace {

const std::array<std::uint8_t, 128>& weights = asciiWeights();

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}
int sign(char32_t a, char32_t b) {
  return a < b ? -1 : a > b ? 1 : 0;
}

// Compares a rest with nothing: only blanks are nothing, and nothing sorts before a blank.
int compareRest(std::string_view rest) {
  for (std::size_t at = 0; at < rest.size();)
    if (weightOf(nextCharacter(rest, at)) != 0) return 1;
  return 0;
}

int compareWide(std::string_view a, std::string_view b) {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() && j < b.size()) {
    const char32_t left = weightOf(nextCharacter(a, i));
    const char32_t right = weightOf(nextCharacter(b, j));
    if (left != right) return sign(left, right);
  }
  return compareRest(a.substr(i)) - compareRest(b.substr(j));
}

}  // namespace

int compareTexts(std::string_view a, std::string_view b) noexcept {
  const std::size_t common = std::min(a.size(), b.size());
  std::size_t at = 0;
  for (; at < common; ++at) {
    const char x = a[at];
    const char y = b[at];
    if (x == y) continue;
    if (!isAscii(x) || !isAscii(y)) break;
    const std::uint8_t left = weights[static_cast<unsigned char>(x)];
    const std::uint8_t right = weights[static_cast<unsigned char>(y)];
    if (left != right) return left < right ? -1 : 1;
  }
  if (at == common && a.size() == b.size()) return 0;
  // A character of several bytes may differ in its last one only: go back to its start.
  while (at > 0 && ((at < a.size() && isContinuation(a[at])) || (at < b.size() && isContinuation(b[at]))))
    --at;
  return compareWide(a.substr(at), b.substr(at));
}

}  // namespace goodsbook::engine
