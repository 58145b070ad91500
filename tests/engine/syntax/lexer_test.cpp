#include "engine/syntax/lexer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace goodsbook::engine {
namespace {

struct LexerRow {
  const char* name;
  const char* batch;
  std::vector<std::string> words;  // kind:value
};

void PrintTo(const LexerRow& row, std::ostream* out) {
  *out << row.name;
}

std::string told(const Token& token) {
  static constexpr const char* kinds[] = {"end",     "word",    "quoted", "variable", "text",   "national",
                                          "integer", "decimal", "float",  "binary",   "symbol", "invalid"};
  return std::string(kinds[static_cast<int>(token.kind)]) + ":" + std::string(token.value);
}

class LexerTest : public testing::TestWithParam<LexerRow> {};

TEST_P(LexerTest, CutsIntoWords) {
  Script script;
  tokenize(GetParam().batch, script);
  std::vector<std::string> words;
  for (const Token& token : script.tokens) words.push_back(told(token));
  ASSERT_FALSE(words.empty());
  EXPECT_EQ(words.back(), "end:");
  words.pop_back();
  EXPECT_EQ(words, GetParam().words);
}

const LexerRow rows[] = {
    {"an empty batch has no word", "", {}},
    {"blanks of every kind part words",
     " a\tb\r\nc\vd\fe ",
     {"word:a", "word:b", "word:c", "word:d", "word:e"}},
    {"a number ends where a letter begins",
     "adw=5insert",
     {"word:adw", "symbol:=", "integer:5", "word:insert"}},
    {"a number ends before where", "5where", {"integer:5", "word:where"}},
    {"a number ends before exec, which begins with an e", "5exec", {"integer:5", "word:exec"}},
    {"a number ends before else", "5else 6end", {"integer:5", "word:else", "integer:6", "word:end"}},
    {"a decimal ends where a letter begins", "1.5from", {"decimal:1.5", "word:from"}},
    {"an exponent ends where a letter begins", "1e2from", {"float:1e2", "word:from"}},
    {"decimals may begin or end with their point",
     ".5 2. 0.25",
     {"decimal:.5", "decimal:2.", "decimal:0.25"}},
    {"exponents have signs", "1e2 1.5E-1 2e+3", {"float:1e2", "float:1.5E-1", "float:2e+3"}},
    {"hex digits follow 0x", "0x1aF0 0X 0xZ", {"binary:1aF0", "binary:", "binary:", "word:Z"}},
    {"a text ends at its quote", "'a'where", {"text:a", "word:where"}},
    {"two quotes are one", "'it''s' '''' ''", {"text:it's", "text:'", "text:"}},
    {"texts with N", "N'中''文' n'x' N", {"national:中'文", "national:x", "word:N"}},
    {"a name that ends with N is no N text", "an'x'", {"word:an", "text:x"}},
    {"names in brackets", "[a b] [a]]b] [select]", {"quoted:a b", "quoted:a]b", "quoted:select"}},
    {"names in double quotes", "\"a\"\"b\"", {"quoted:a\"b"}},
    {"names of Chinese letters", "商品.名称", {"word:商品", "symbol:.", "word:名称"}},
    {"names with digits and signs", "_a1$#@ #t ##t", {"word:_a1$#@", "word:#t", "word:##t"}},
    {"variables", "@a @@b @中", {"variable:@a", "variable:@@b", "variable:@中"}},
    {"a comment to the end of the line", "a--b 'c\nd", {"word:a", "word:d"}},
    {"comments in comments", "a/*1/*2*/3*/b", {"word:a", "word:b"}},
    {"no comments inside texts", "'--a' '/*b*/'", {"text:--a", "text:/*b*/"}},
    {"a minus before a number is a mark of its own", "a-1", {"word:a", "symbol:-", "integer:1"}},
    {"marks of two characters",
     "<>!=<=>=!<!>+=",
     {"symbol:<>", "symbol:!=", "symbol:<=", "symbol:>=", "symbol:!<", "symbol:!>", "symbol:+="}},
    {"marks of one character",
     "(),;.+-*/%&|^~=<>",
     {"symbol:(", "symbol:)", "symbol:,", "symbol:;", "symbol:.", "symbol:+", "symbol:-", "symbol:*",
      "symbol:/", "symbol:%", "symbol:&", "symbol:|", "symbol:^", "symbol:~", "symbol:=", "symbol:<>"}},
    {"an open quote ends the words", "a 'b c", {"word:a", "invalid:b c"}},
    {"an open bracket ends the words", "a [b", {"word:a", "invalid:b"}},
    {"an open comment ends the words", "a /* /* */ b", {"word:a", "invalid:"}},
    {"an unknown mark ends the words", "a ? b", {"word:a", "invalid:?"}},
};

INSTANTIATE_TEST_SUITE_P(Rows, LexerTest, testing::ValuesIn(rows));

TEST(LexerPlaceTest, WordsKnowWhereTheyStand) {
  Script script;
  tokenize("a\r\n 'b\nc' /*\n*/ d", script);
  ASSERT_EQ(script.tokens.size(), 4U);
  EXPECT_EQ(script.tokens[1].position.offset, 4U);
  EXPECT_EQ(script.tokens[1].position.line, 2U);
  EXPECT_EQ(script.tokens[2].position.line, 4U);
  EXPECT_EQ(script.tokens[3].position.offset, 17U);
}

}  // namespace
}  // namespace goodsbook::engine
