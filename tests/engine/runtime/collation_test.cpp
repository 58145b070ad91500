#include "engine/runtime/collation.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "engine/error.h"
#include "engine/runtime/fold.h"
#include "engine/runtime/like.h"
#include "engine/runtime/text.h"

namespace goodsbook::engine {
namespace {

TEST(Collation, CaseWidthAndBlanksBehindDoNotCount) {
  for (const auto& [a, b] : std::vector<std::pair<std::string, std::string>>{{"abc", "ABC"},
                                                                             {"a", "a  "},
                                                                             {"", "   "},
                                                                             {"Ａ", "a"},
                                                                             {"ａｂ１", "AB1"},
                                                                             {"É", "é"},
                                                                             {"я", "Я"},
                                                                             {"中文", "中文 "},
                                                                             {"a　", "A"},
                                                                             {"Σ", "ς"}}) {
    EXPECT_EQ(compareTexts(a, b), 0) << a << "|" << b;
    EXPECT_EQ(compareTexts(b, a), 0) << a << "|" << b;
  }
}

TEST(Collation, OtherTextsDiffer) {
  for (const auto& [smaller, larger] : std::vector<std::pair<std::string, std::string>>{{"a", "B"},
                                                                                        {"B", "c"},
                                                                                        {"10", "9"},
                                                                                        {" a", "a"},
                                                                                        {"a", "a1"},
                                                                                        {"a1", "b"},
                                                                                        {"b", "B2"},
                                                                                        {"e", "é"},
                                                                                        {"9", "a"},
                                                                                        {"_", "0"},
                                                                                        {"z", "中"},
                                                                                        {"中", "文"},
                                                                                        {"a", "a\t"},
                                                                                        {"", "!"}}) {
    EXPECT_LT(compareTexts(smaller, larger), 0) << smaller << "|" << larger;
    EXPECT_GT(compareTexts(larger, smaller), 0) << smaller << "|" << larger;
  }
}

std::string randomText(std::mt19937& random) {
  static const std::vector<std::string> pieces{"a", "B", "b", " ", "1", "中",   "文", "Ａ",
                                               "é", "É", "_", "%", "x", "\xe4", "　"};
  std::string text;
  for (auto count = random() % 7; count > 0; --count) text += pieces[random() % pieces.size()];
  return text;
}

TEST(Collation, IsAnOrder) {
  std::mt19937 random(1);
  std::vector<std::string> texts;
  for (int i = 0; i < 120; ++i) texts.push_back(randomText(random));
  const auto sign = [](int order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
  for (const std::string& a : texts)
    for (const std::string& b : texts) {
      EXPECT_EQ(sign(compareTexts(a, b)), -sign(compareTexts(b, a))) << a << "|" << b;
      for (const std::string& c : texts) {
        if (compareTexts(a, b) > 0 || compareTexts(b, c) > 0) continue;
        EXPECT_LE(compareTexts(a, c), 0) << a << "|" << b << "|" << c;
      }
    }
}

// The plainest way to match, for comparison: every text is its folded characters.
bool matchesSlowly(const std::u32string& pattern, std::size_t p, const std::u32string& text, std::size_t t) {
  if (p == pattern.size()) return text.find_first_not_of(U' ', t) == std::u32string::npos;
  if (pattern[p] == U'%') {
    for (std::size_t rest = t; rest <= text.size(); ++rest)
      if (matchesSlowly(pattern, p + 1, text, rest)) return true;
    return false;
  }
  return t < text.size() && (pattern[p] == U'_' || pattern[p] == text[t]) &&
         matchesSlowly(pattern, p + 1, text, t + 1);
}

std::u32string folded(const std::string& text) {
  std::u32string result;
  for (std::size_t at = 0; at < text.size();) result.push_back(foldCharacter(nextCharacter(text, at)));
  return result;
}

TEST(LikePattern, MatchesAsThePlainestMatcherDoes) {
  std::mt19937 random(2);
  for (int i = 0; i < 20'000; ++i) {
    const std::string text = randomText(random) + randomText(random);
    const std::string pattern = random() % 2 == 0 ? randomText(random) : "%" + randomText(random) + "%";
    EXPECT_EQ(LikePattern(pattern).matches(text), matchesSlowly(folded(pattern), 0, folded(text), 0))
        << "'" << text << "' like '" << pattern << "'";
  }
}

struct Likes {
  const char* text;
  const char* pattern;
  const char* escape;
  bool matches;
};

void PrintTo(const Likes& row, std::ostream* out) {
  *out << row.text << " like " << row.pattern;
}

class LikeTest : public testing::TestWithParam<Likes> {};

TEST_P(LikeTest, MatchesOrNot) {
  const Likes& row = GetParam();
  EXPECT_EQ(LikePattern(row.pattern, row.escape).matches(row.text), row.matches);
}

const Likes likes[] = {
    {"abc", "a%", "", true},      {"abc", "%C", "", true},      {"abc", "_B_", "", true},
    {"a%c", "a[%]c", "", true},   {"abc", "a[%]c", "", false},  {"a_c", "a[_]c", "", true},
    {"a[c", "a[[]c", "", true},   {"a[c", "%[%", "", false},    {"abc", "a[", "", false},
    {"b", "[a-c]", "", true},     {"B", "[a-c]", "", true},     {"d", "[a-c]", "", false},
    {"d", "[^a-c]", "", true},    {"", "[^a-c]", "", false},    {"-", "[a-]", "", true},
    {"50%", "50!%", "!", true},   {"505", "50!%", "!", false},  {"a!b", "a!!b", "!", true},
    {"abc  ", "abc", "", true},   {"abc", "abc ", "", false},   {"ＡＢＣ", "%b%", "", true},
    {"中文字", "%文%", "", true}, {"中文字", "__字", "", true}, {"abc", "", "", false},
    {"  ", "", "", true},         {"x", "%%", "", true},        {"xay", "%_a_%", "", true},
    {"abcabd", "%abd", "", true}, {"]", "]", "", true},         {"é", "%e%", "", false},
};

INSTANTIATE_TEST_SUITE_P(Rows, LikeTest, testing::ValuesIn(likes));

TEST(LikePattern, RefusesAnEscapeOfSeveralCharacters) {
  try {
    LikePattern("a", "!!");
    FAIL();
  } catch (const SqlError& error) {
    EXPECT_EQ(error.diagnostic().number, 506);
  }
}

TEST(Text, IsCountedAndFoundInCharacters) {
  EXPECT_EQ(characterCount("中文ab"), 4U);
  EXPECT_EQ(offsetOfCharacter("中文ab", 1), 3U);
  EXPECT_EQ(offsetOfCharacter("ab", 5), 2U);
  EXPECT_EQ(findText("B", "中ab", 1), 3U);
  EXPECT_EQ(findText("x", "abc", 1), 0U);
  EXPECT_EQ(findText("", "abc", 1), 0U);
  EXPECT_EQ(findText("a", "aXa", 2), 3U);
  EXPECT_EQ(replaceText("aXbx", "x", "中"), "a中b中");
  EXPECT_EQ(replaceText("Ａb", "a", ""), "b");
  EXPECT_EQ(toUpper("abcé中"), "ABCÉ中");
  EXPECT_EQ(toLower("ABCЯ"), "abcя");
}

}  // namespace
}  // namespace goodsbook::engine
