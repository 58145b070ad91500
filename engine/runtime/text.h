#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Texts are UTF-8 and counted in characters (code points). Broken UTF-8 counts a byte as a character.
namespace goodsbook::engine {

// The code point that starts at a byte; `at` moves behind it.
char32_t nextCharacter(std::string_view text, std::size_t& at);
// Whether nextCharacter() has met a byte that is no part of UTF-8.
constexpr bool isBrokenByte(char32_t character) {
  return character >= 0xdc80 && character <= 0xdcff;
}
void appendCharacter(std::string& text, char32_t character);

std::size_t characterCount(std::string_view text);
// The byte at which a character starts (counted from 0), text.size() when there are not as many.
std::size_t offsetOfCharacter(std::string_view text, std::size_t character);

std::string_view withoutTrailingBlanks(std::string_view text);
std::string_view withoutLeadingBlanks(std::string_view text);

std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);

// Ignoring case and width, as all comparisons of texts do. Positions are characters from 1, 0 for not found.
std::size_t findText(std::string_view wanted, std::string_view text, std::size_t firstCharacter);
std::string replaceText(std::string_view text, std::string_view wanted, std::string_view replacement);

}  // namespace goodsbook::engine
