#include "engine/syntax/shape.h"

#include <algorithm>
#include <cstddef>

namespace goodsbook::engine {
namespace {

constexpr std::string_view largestInt = "2147483647";

bool fitsInt(std::string_view digits) {
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  return digits.size() < largestInt.size() || (digits.size() == largestInt.size() && digits <= largestInt);
}

struct Mark {
  LiteralKind kind;
  char sign;  // none that can be part of a word
};

Mark markOf(const Token& token) {
  switch (token.kind) {
    case TokenKind::National:
      return {LiteralKind::NationalText, '\x02'};
    case TokenKind::Integer:
      return {LiteralKind::Integer,
              fitsInt(token.value) ? '\x03' : '\x04'};  // a longer one is of another type
    case TokenKind::Decimal:
      return {LiteralKind::Decimal, '\x05'};
    case TokenKind::Float:
      return {LiteralKind::Float, '\x06'};
    case TokenKind::Binary:
      return {LiteralKind::Binary, '\x07'};
    default:
      return {LiteralKind::Text, '\x01'};
  }
}

}  // namespace

void shapeOf(const Script& script, const Statement& statement, Shape& shape) {
  shape.text.clear();
  shape.values.clear();
  shape.firstOrdinal = 0;
  for (std::uint32_t i = statement.firstToken; i != statement.endToken; ++i) {
    const Token& token = script.tokens[i];
    if (i != statement.firstToken) shape.text += ' ';
    if (token.ordinal < 0) {
      shape.text += token.text;
      continue;
    }
    const Mark mark = markOf(token);
    if (shape.values.empty()) shape.firstOrdinal = token.ordinal;
    shape.text += mark.sign;
    shape.values.push_back({mark.kind, token.value});
  }
}

}  // namespace goodsbook::engine
