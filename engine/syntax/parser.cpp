#include "engine/syntax/parser.h"

#include <algorithm>
#include <utility>

#include "engine/syntax/lexer.h"
#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

Script parse(std::string_view batch) {
  Script script;
  tokenize(batch, script);
  Parser(batch, script).parseBatch();
  return script;
}

// batch: [statement [;]]…
void Parser::parseBatch() {
  parseStatements(script_.statements);
  if (!atEnd()) failHere();
  numberLiterals();
}

// One node more above `below` levels of nodes.
std::uint16_t Parser::grow(int below) {
  if (below >= maximumHeight) throwTooDeep(peek());
  tallest_ = std::max(tallest_, below + 1);
  return static_cast<std::uint16_t>(below + 1);
}

int Parser::highest(const std::vector<ExpressionPtr>& expressions) {
  int height = 0;
  for (const ExpressionPtr& expression : expressions) height = std::max(height, heightOf(expression));
  return height;
}

void Parser::markStructural(std::size_t first) {
  for (std::size_t i = first; i < literals_.size(); ++i) script_.tokens[literals_[i].token].structural = true;
}

void Parser::numberLiterals() {
  int ordinal = 0;
  for (const LiteralPlace& place : literals_) {
    Token& token = script_.tokens[place.token];
    if (!token.structural) place.literal->ordinal = token.ordinal = ordinal++;
  }
}

}  // namespace goodsbook::engine
