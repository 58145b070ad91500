#include "engine/syntax/syntax_error.h"

#include <cstddef>
#include <string>

#include "engine/error.h"
#include "engine/syntax/keywords.h"
#include "engine/syntax/parser.h"

namespace goodsbook::engine {
namespace {

constexpr int syntaxSeverity = 15;
constexpr std::size_t longestQuote = 60;  // bytes of a batch that a message repeats

// The beginning of a word, cut between two characters of UTF-8.
std::string quote(std::string_view word) {
  if (word.size() <= longestQuote) return std::string(word);
  std::size_t end = longestQuote;
  while (end > 0 && (static_cast<unsigned char>(word[end]) & 0xC0U) == 0x80U) --end;
  return std::string(word.substr(0, end)) + "…";
}

[[noreturn]] void fail(const Token& place, int number, std::string text) {
  throw SqlError({number, syntaxSeverity, 1, static_cast<int>(place.position.line), std::move(text)});
}

[[noreturn]] void failAsLexer(const Token& word) {
  switch (word.error) {
    case 105:
      fail(word, 105, "字符串 '" + quote(word.value) + "' 后的引号不完整。");
    case 113:
      fail(word, 113, "缺少注释结束标记 '*/'。");
    case 1038:
      fail(word, 1038, "不能使用空的名称 [] 或 \"\"。");
    default:
      fail(word, 102, "'" + quote(word.value) + "' 附近有语法错误。");
  }
}

}  // namespace

void throwSyntaxError(const Token& near) {
  if (near.kind == TokenKind::Invalid) failAsLexer(near);
  if (near.kind == TokenKind::Word && isReserved(near.keyword)) {
    fail(near, 156, "关键字 '" + quote(near.text) + "' 附近有语法错误。");
  }
  fail(near, 102, "'" + quote(near.text) + "' 附近有语法错误。");
}

void throwNotSupported(const Token& place, std::string_view what) {
  fail(place, notSupportedError, "不支持 " + quote(what) + "。");
}

void throwTooDeep(const Token& place) {
  fail(place, 191, "'" + quote(place.text) + "' 附近的语句嵌套得太深，请拆成较小的语句。");
}

void throwConditionNeeded(const Token& near) {
  fail(near, 4145, "'" + quote(near.text) + "' 附近需要条件，给出的却是一个值。");
}

void throwNotFirst(const Token& place, std::string_view statement) {
  fail(place, 111, "'" + std::string(statement) + "' 必须是批处理中的第一条语句。");
}

void throwAt(const Token& place, int number, std::string_view text) {
  fail(place, number, std::string(text));
}

}  // namespace goodsbook::engine
