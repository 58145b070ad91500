#pragma once

#include <array>
#include <cstdint>

// Case and width of single characters.
namespace goodsbook::engine {

char32_t lowerCharacter(char32_t character);
char32_t upperCharacter(char32_t character);

// Characters that compare as equal fold to the same: case and width do not count, accents do.
char32_t foldCharacter(char32_t character);

// The order of characters: blank, marks, digits, letters, then the rest by code point. Equal exactly where
// foldCharacter is.
char32_t weightOf(char32_t character);

// weightOf for ASCII.
const std::array<std::uint8_t, 128>& asciiWeights();

}  // namespace goodsbook::engine
