// Writes the first letters of all single characters as a header: asking ICU while the program runs would cost
// whoever saves first a third of a second for its rules. usage: zpy_letters_generator FILE
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <cstdio>
#include <fstream>
#include <memory>

namespace {

constexpr char nothing = '.';
constexpr int lineLength = 64;

char plain(char16_t character) {
  if (character >= u'a' && character <= u'z') return static_cast<char>(character - u'a' + u'A');
  const bool stays = (character >= u'A' && character <= u'Z') || (character >= u'0' && character <= u'9');
  return stays ? static_cast<char>(character) : nothing;
}

char letterOf(char16_t character, const icu::Transliterator& latin) {
  constexpr char16_t firstFull = 0xff01, lastFull = 0xff5e, fullToHalf = 0xfee0, beyondAscii = 0x80;
  if (character >= firstFull && character <= lastFull)
    character = static_cast<char16_t>(character - fullToHalf);
  if (character < beyondAscii) return plain(character);
  UErrorCode error = U_ZERO_ERROR;
  const UScriptCode script = uscript_getScript(character, &error);
  if (script != USCRIPT_HAN && script != USCRIPT_LATIN) return nothing;
  if (script == USCRIPT_LATIN && !u_isalpha(character)) return nothing;
  icu::UnicodeString text(character);
  latin.transliterate(text);
  return text.isEmpty() ? nothing : plain(text[0]);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: zpy_letters_generator FILE\n");
    return 2;
  }
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<icu::Transliterator> latin(
      icu::Transliterator::createInstance("Han-Latin; Latin-ASCII", UTRANS_FORWARD, error));
  if (!latin) {
    std::fprintf(stderr, "no Han-Latin transliteration: %s\n", u_errorName(error));
    return 1;
  }
  std::ofstream file(argv[1]);
  file << "#pragma once\n\n#include <string_view>\n\nnamespace goodsbook::Zpy {\n\n"
          "// By character of the basic plane; '.' for one that leaves no trace.\n"
          "inline constexpr std::string_view letters =";
  for (int character = 0; character <= 0xffff; ++character) {
    if (character % lineLength == 0) file << (character == 0 ? "\n    \"" : "\"\n    \"");
    file << letterOf(static_cast<char16_t>(character), *latin);
  }
  file << "\";\n\n}  // namespace goodsbook::Zpy\n";
  file.close();
  return file ? 0 : 1;
}
