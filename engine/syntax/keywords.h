#pragma once

#include <cstdint>
#include <string_view>

#include "engine/syntax/token.h"

namespace goodsbook::engine {

// The words of keywords.def. Reserved, Refused and RefusedFree stand for all words of their group.
enum class Keyword : std::uint8_t {
  None,
#define KEYWORD(enumerator, text) enumerator,
#define CONTEXT(enumerator, text) enumerator,
#define RESERVED(text)
#define REFUSED(text)
#define REFUSED_FREE(text)
#include "engine/syntax/keywords.def"
#undef KEYWORD
#undef CONTEXT
#undef RESERVED
#undef REFUSED
#undef REFUSED_FREE
  Reserved,
  Refused,
  RefusedFree,
};

// The keyword that a word is, whatever the case of its letters.
Keyword keywordOf(std::string_view word) noexcept;

// Whether the word can be a name only in brackets or quotes.
bool isReserved(Keyword keyword) noexcept;

}  // namespace goodsbook::engine
