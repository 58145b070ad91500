#include "engine/syntax/keywords.h"

#include <array>
#include <cstddef>

#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

struct Entry {
  std::string_view text;
  Keyword keyword;
  bool reserved;
};

constexpr auto entries = std::to_array<Entry>({
#define KEYWORD(enumerator, text) {text, Keyword::enumerator, true},
#define CONTEXT(enumerator, text) {text, Keyword::enumerator, false},
#define RESERVED(text) {text, Keyword::Reserved, true},
#define REFUSED(text) {text, Keyword::Refused, true},
#define REFUSED_FREE(text) {text, Keyword::RefusedFree, false},
#include "engine/syntax/keywords.def"
#undef KEYWORD
#undef CONTEXT
#undef RESERVED
#undef REFUSED
#undef REFUSED_FREE
});

constexpr std::size_t slotCount = 1024;  // a power of two, a good deal more than there are words
static_assert(entries.size() * 4 < slotCount);
constexpr std::size_t longestWord = 20;

constexpr std::size_t slotOf(std::string_view word) noexcept {
  std::uint32_t hash = 2166136261U;
  for (char c : word)
    hash = (hash ^ (static_cast<unsigned char>(c) & 0xDFU)) * 16777619U;  // letters of one case
  return (hash ^ (hash >> 15U)) % slotCount;
}

// Open addressing, filled by the compiler; 0 is an empty slot.
constexpr auto slots = [] {
  std::array<std::uint16_t, slotCount> table{};
  for (std::size_t i = 0; i < entries.size(); ++i) {
    std::size_t slot = slotOf(entries[i].text);
    while (table[slot] != 0) slot = (slot + 1) % slotCount;
    table[slot] = static_cast<std::uint16_t>(i + 1);
  }
  return table;
}();

constexpr auto reservedWords = [] {
  std::array<bool, 256> table{};
  for (const Entry& entry : entries) table[static_cast<std::size_t>(entry.keyword)] = entry.reserved;
  return table;
}();

}  // namespace

Keyword keywordOf(std::string_view word) noexcept {
  if (word.size() < 2 || word.size() > longestWord) return Keyword::None;
  for (std::size_t slot = slotOf(word); slots[slot] != 0; slot = (slot + 1) % slotCount) {
    const Entry& entry = entries[slots[slot] - 1U];
    if (sameName(entry.text, word)) return entry.keyword;
  }
  return Keyword::None;
}

bool isReserved(Keyword keyword) noexcept {
  return reservedWords[static_cast<std::size_t>(keyword)];
}

}  // namespace goodsbook::engine
