#include "host/data/text_fold.h"

#include <QChar>
#include <QList>
#include <QString>
#include <algorithm>

namespace goodsbook {
namespace {

constexpr bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}
constexpr bool continues(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

char32_t foldCharacter(char32_t c) {
  constexpr char32_t fullWidthFirst = 0xFF01, fullWidthLast = 0xFF5E, fullWidthOffset = 0xFEE0,
                     wideBlank = 0x3000;
  if (c >= fullWidthFirst && c <= fullWidthLast) c -= fullWidthOffset;
  if (c == wideBlank) c = ' ';
  return QChar::toCaseFolded(c);
}

// Ideographs and kana have neither case nor width: lead bytes E3 (from the second row on) to E9.
bool isPlainThreeBytes(std::string_view rest) {
  const auto lead = static_cast<unsigned char>(rest[0]);
  return rest.size() >= 3 && lead >= 0xE3 && lead <= 0xE9 && !(lead == 0xE3 && rest[1] == '\x80');
}

}  // namespace

void foldText(std::string_view text, std::string& key) {
  const std::size_t start = key.size();
  for (std::size_t i = 0; i < text.size();) {
    if (isAscii(text[i])) {
      key.push_back(lower(text[i++]));
    } else if (isPlainThreeBytes(text.substr(i))) {
      key.append(text.substr(i, 3));
      i += 3;
    } else {
      std::size_t end = i + 1;
      while (end < text.size() && continues(text[end])) ++end;
      const QString character = QString::fromUtf8(text.data() + i, static_cast<qsizetype>(end - i));
      for (const char32_t c : character.toUcs4()) {
        const QString folded = QString::fromUcs4(std::data({foldCharacter(c)}), 1);
        key += folded.toStdString();
      }
      i = end;
    }
  }
  while (key.size() > start && key.back() == ' ') key.pop_back();
}

int compareFolded(std::string_view a, std::string_view b) {
  a = withoutTrailingBlanks(a);
  b = withoutTrailingBlanks(b);
  const std::size_t common = std::min(a.size(), b.size());
  std::size_t i = 0;
  while (i < common && isAscii(a[i]) && isAscii(b[i]) && lower(a[i]) == lower(b[i])) ++i;
  const bool asciiSoFar = (i == a.size() || isAscii(a[i])) && (i == b.size() || isAscii(b[i]));
  if (!asciiSoFar) {
    if (a == b) return 0;
    std::string keyA;
    std::string keyB;
    foldText(a.substr(i), keyA);
    foldText(b.substr(i), keyB);
    return keyA.compare(keyB);
  }
  if (i < common) return static_cast<unsigned char>(lower(a[i])) - static_cast<unsigned char>(lower(b[i]));
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool likeFolded(std::string_view text, std::string_view pattern) {
  std::string key;
  foldText(text, key);
  // One step back to the last % suffices: an earlier one can take nothing that the last cannot.
  std::size_t t = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t starText = 0;
  const auto nextCharacter = [&key](std::size_t at) {
    ++at;
    while (at < key.size() && continues(key[at])) ++at;
    return at;
  };
  while (t < key.size()) {
    if (p < pattern.size() && pattern[p] == '%') {
      star = p++;
      starText = t;
    } else if (p < pattern.size() && pattern[p] == '_') {
      t = nextCharacter(t);
      ++p;
    } else if (p < pattern.size() && pattern[p] == key[t]) {
      ++t;
      ++p;
    } else if (star != std::string_view::npos) {
      starText = nextCharacter(starText);
      t = starText;
      p = star + 1;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '%') ++p;
  return p == pattern.size();
}

}  // namespace goodsbook
