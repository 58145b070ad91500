#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace goodsbook::engine {

// A pattern of LIKE, made ready once and matched against many texts: % _ [set] [^set] and an escape
// character. Case, width and blanks at the end of the text do not count. A [ that is never closed matches
// nothing.
class LikePattern {
 public:
  // `escape` is empty or one character; error 506 otherwise.
  explicit LikePattern(std::string_view pattern, std::string_view escape = {});

  bool matches(std::string_view text) const;

 private:
  struct Range {
    char32_t low;
    char32_t high;
  };
  struct Part {
    enum class Kind : unsigned char { Character, One, Many, Set } kind = Kind::Character;
    bool negated = false;
    char32_t character = 0;
    std::vector<Range> ranges{};
  };
  enum class Form : unsigned char { Contains, Parts, Nothing };

  std::size_t readSet(const std::u32string& pattern, std::size_t at, char32_t escape);
  void findForm();
  bool contains(std::string_view text) const;
  bool matchesParts(std::string_view text) const;
  static bool matchesOne(const Part& part, char32_t character);

  std::vector<Part> parts_;
  std::string needle_;  // folded, of the form %needle%
  Form form_ = Form::Parts;
};

}  // namespace goodsbook::engine
