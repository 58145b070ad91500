#include "engine/runtime/text.h"

#include <vector>

#include "engine/runtime/fold.h"

namespace goodsbook::engine {
namespace {

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

// A text's folded characters and where each starts; one entry more for the end.
struct Folded {
  std::u32string characters;
  std::vector<std::size_t> offsets;

  explicit Folded(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
      offsets.push_back(at);
      characters.push_back(foldCharacter(nextCharacter(text, at)));
    }
    offsets.push_back(text.size());
  }
};

}  // namespace

char32_t nextCharacter(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(at);
  const std::size_t length = first < 0xc2 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : first < 0xf5 ? 4 : 1;
  const auto single = [&] {  // a broken byte is a character of its own, like no other
    const unsigned char c = byte(at++);
    return c < 0x80 ? char32_t{c} : char32_t{0xdc00u | c};
  };
  if (length == 1 || at + length > text.size()) return single();
  char32_t character = first & (0x7fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!isContinuation(text[at + i])) return single();
    character = (character << 6) | (byte(at + i) & 0x3fu);
  }
  at += length;
  return character;
}

void appendCharacter(std::string& text, char32_t c) {
  const auto push = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    push(c);
  } else if (c < 0x800) {
    push(0xc0 | (c >> 6));
    push(0x80 | (c & 0x3f));
  } else if (isBrokenByte(c)) {
    push(c & 0xff);
  } else if (c < 0x10000) {
    push(0xe0 | (c >> 12));
    push(0x80 | ((c >> 6) & 0x3f));
    push(0x80 | (c & 0x3f));
  } else {
    push(0xf0 | (c >> 18));
    push(0x80 | ((c >> 12) & 0x3f));
    push(0x80 | ((c >> 6) & 0x3f));
    push(0x80 | (c & 0x3f));
  }
}

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text) count += isContinuation(c) ? 0 : 1;
  return count;
}

std::size_t offsetOfCharacter(std::string_view text, std::size_t character) {
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    if (isContinuation(text[at])) continue;
    if (character == 0) break;
    --character;
  }
  return at;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  return text;
}

std::string toUpper(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();)
    appendCharacter(result, upperCharacter(nextCharacter(text, at)));
  return result;
}

std::string toLower(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();)
    appendCharacter(result, lowerCharacter(nextCharacter(text, at)));
  return result;
}

std::size_t findText(std::string_view wanted, std::string_view text, std::size_t firstCharacter) {
  if (wanted.empty()) return 0;
  const Folded pattern(wanted);
  const Folded subject(text);
  const std::size_t found =
      subject.characters.find(pattern.characters, firstCharacter == 0 ? 0 : firstCharacter - 1);
  return found == std::u32string::npos ? 0 : found + 1;
}

std::string replaceText(std::string_view text, std::string_view wanted, std::string_view replacement) {
  if (wanted.empty()) return std::string(text);
  const Folded pattern(wanted);
  const Folded subject(text);
  std::string result;
  std::size_t done = 0;
  for (;;) {
    const std::size_t found = subject.characters.find(pattern.characters, done);
    const std::size_t end = found == std::u32string::npos ? subject.characters.size() : found;
    result.append(text.substr(subject.offsets[done], subject.offsets[end] - subject.offsets[done]));
    if (found == std::u32string::npos) return result;
    result.append(replacement);
    done = found + pattern.characters.size();
  }
}

}  // namespace goodsbook::engine
