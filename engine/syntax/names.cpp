#include "engine/syntax/names.h"

#include <algorithm>
#include <cstdint>

namespace goodsbook::engine {
namespace {

constexpr char upper(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

bool sameName(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return upper(x) == upper(y); });
}

std::size_t NameHash::operator()(std::string_view name) const noexcept {
  std::uint64_t hash = 14695981039346656037U;  // FNV-1a
  for (char c : name) hash = (hash ^ static_cast<unsigned char>(upper(c))) * 1099511628211U;
  return static_cast<std::size_t>(hash);
}

}  // namespace goodsbook::engine
