#include "engine/runtime/like.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "engine/runtime/failure.h"
#include "engine/runtime/fold.h"
#include "engine/runtime/text.h"

namespace goodsbook::engine {
namespace {

// ASCII bytes in small letters; all others as they are.
constexpr std::array<char, 256> lowerBytes = [] {
  std::array<char, 256> bytes{};
  for (std::size_t c = 0; c < 256; ++c) bytes[c] = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  return bytes;
}();

// First bytes of characters that fold to other bytes: letters with two cases and full-width forms. Everything
// else, the Chinese characters among it, can be compared byte by byte.
constexpr std::array<std::uint8_t, 256> foldingBytes = [] {
  std::array<std::uint8_t, 256> bytes{};
  for (std::size_t c = 0xc3; c <= 0xd4; ++c) bytes[c] = 1;
  for (const std::size_t c : {0xe1, 0xe2, 0xe3, 0xef}) bytes[c] = 1;
  return bytes;
}();

std::size_t index(char c) {
  return static_cast<unsigned char>(c);
}

bool isRestBlank(const std::u32string& text, std::size_t from) {
  return text.find_first_not_of(weightOf(U' '), from) == std::u32string::npos;
}

std::u32string decode(std::string_view text) {
  std::u32string result;
  for (std::size_t at = 0; at < text.size();) result.push_back(nextCharacter(text, at));
  return result;
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern, std::string_view escape) {
  const std::u32string escapes = decode(escape);
  if (escapes.size() > 1) fail(506, concat("在 LIKE 谓词中指定的转义字符“", escape, "”无效。"));
  const char32_t escapeCharacter = escapes.empty() ? U'\0' : escapes.front();
  const std::u32string source = decode(pattern);
  for (std::size_t at = 0; at < source.size() && form_ != Form::Nothing;) {
    const char32_t c = source[at++];
    if (c == escapeCharacter && escapeCharacter != 0 && at < source.size()) {
      parts_.push_back({.character = weightOf(source[at++])});
    } else if (c == U'%') {
      if (parts_.empty() || parts_.back().kind != Part::Kind::Many)
        parts_.push_back({.kind = Part::Kind::Many});
    } else if (c == U'_') {
      parts_.push_back({.kind = Part::Kind::One});
    } else if (c == U'[') {
      at = readSet(source, at, escapeCharacter);
    } else {
      parts_.push_back({.character = weightOf(c)});
    }
  }
  const bool broken = std::any_of(source.begin(), source.end(), isBrokenByte);
  if (escapes.empty() && !broken) findForm();
  if (form_ != Form::Contains) return;
  for (const char32_t c : source)
    if (c != U'%') appendCharacter(needle_, foldCharacter(c));
}

// Only characters between two %, all of them as written: what a filter box sends.
void LikePattern::findForm() {
  if (form_ == Form::Nothing || parts_.size() < 3) return;
  if (parts_.front().kind != Part::Kind::Many || parts_.back().kind != Part::Kind::Many) return;
  for (std::size_t i = 1; i + 1 < parts_.size(); ++i)
    if (parts_[i].kind != Part::Kind::Character) return;
  form_ = Form::Contains;
}

std::size_t LikePattern::readSet(const std::u32string& pattern, std::size_t at, char32_t escape) {
  Part set{.kind = Part::Kind::Set};
  if (at < pattern.size() && pattern[at] == U'^') {
    set.negated = true;
    ++at;
  }
  const auto character = [&]() -> char32_t {
    if (escape != 0 && pattern[at] == escape && at + 1 < pattern.size()) ++at;
    return weightOf(pattern[at++]);
  };
  while (at < pattern.size() && pattern[at] != U']') {
    Range range{};
    range.low = range.high = character();
    if (at + 1 < pattern.size() && pattern[at] == U'-' && pattern[at + 1] != U']') {
      ++at;
      range.high = character();
    }
    set.ranges.push_back(range);
  }
  if (at >= pattern.size()) {
    form_ = Form::Nothing;
    return at;
  }
  parts_.push_back(std::move(set));
  return at + 1;
}

bool LikePattern::matches(std::string_view text) const {
  switch (form_) {
    case Form::Contains:
      return contains(text);
    case Form::Parts:
      return matchesParts(text);
    case Form::Nothing:
      return false;
  }
  return false;
}

bool LikePattern::contains(std::string_view text) const {
  const char first = needle_.front();
  const std::size_t length = needle_.size();
  std::uint8_t folding = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    folding |= foldingBytes[index(c)];
    if (lowerBytes[index(c)] != first || at + length > text.size()) continue;
    std::size_t same = 1;
    while (same < length && lowerBytes[index(text[at + same])] == needle_[same]) ++same;
    if (same == length) return true;
  }
  return folding != 0 && matchesParts(text);
}

bool LikePattern::matchesOne(const Part& part, char32_t c) {
  if (part.kind == Part::Kind::Character) return part.character == c;
  if (part.kind == Part::Kind::One) return true;
  for (const Range& range : part.ranges)
    if (c >= range.low && c <= range.high) return !part.negated;
  return part.negated;
}

bool LikePattern::matchesParts(std::string_view text) const {
  std::u32string subject;
  for (std::size_t at = 0; at < text.size();) subject.push_back(weightOf(nextCharacter(text, at)));
  constexpr std::size_t none = static_cast<std::size_t>(-1);
  std::size_t at = 0;
  std::size_t part = 0;
  std::size_t starPart = none;  // the last % met, and where its match ends for now
  std::size_t starAt = 0;
  for (;;) {
    if (part < parts_.size() && parts_[part].kind == Part::Kind::Many) {
      starPart = part++;
      starAt = at;
    } else if (part < parts_.size() && at < subject.size() && matchesOne(parts_[part], subject[at])) {
      ++part;
      ++at;
    } else if (part == parts_.size() && isRestBlank(subject, at)) {
      return true;
    } else if (starPart != none && starAt < subject.size()) {
      part = starPart + 1;
      at = ++starAt;
    } else {
      return false;
    }
  }
}

}  // namespace goodsbook::engine
