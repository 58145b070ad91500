#include <array>
#include <cstddef>
#include <optional>

#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

struct Parser::OperatorEntry {
  Precedence precedence;
  std::variant<BinaryOperator, ComparisonOperator, LogicalOperator, Keyword>
      meaning;  // a Keyword begins a predicate
};

// The operators that stand between or behind their operands.
const Parser::OperatorEntry* Parser::operatorAt(const Token& token) {
  using Entry = std::optional<OperatorEntry>;
  static const auto symbols = [] {
    std::array<Entry, 64> table{};
    const auto set = [&table](Symbol symbol, Precedence precedence, auto meaning) {
      table[static_cast<std::size_t>(symbol)] = {precedence, meaning};
    };
    set(Symbol::Star, Precedence::Multiplicative, BinaryOperator::Multiply);
    set(Symbol::Slash, Precedence::Multiplicative, BinaryOperator::Divide);
    set(Symbol::Percent, Precedence::Multiplicative, BinaryOperator::Modulo);
    set(Symbol::Plus, Precedence::Additive, BinaryOperator::Add);
    set(Symbol::Minus, Precedence::Additive, BinaryOperator::Subtract);
    set(Symbol::Ampersand, Precedence::Additive, BinaryOperator::BitAnd);
    set(Symbol::Pipe, Precedence::Additive, BinaryOperator::BitOr);
    set(Symbol::Caret, Precedence::Additive, BinaryOperator::BitXor);
    set(Symbol::Equal, Precedence::Comparison, ComparisonOperator::Equal);
    set(Symbol::NotEqual, Precedence::Comparison, ComparisonOperator::NotEqual);
    set(Symbol::Less, Precedence::Comparison, ComparisonOperator::Less);
    set(Symbol::LessEqual, Precedence::Comparison, ComparisonOperator::LessEqual);
    set(Symbol::Greater, Precedence::Comparison, ComparisonOperator::Greater);
    set(Symbol::GreaterEqual, Precedence::Comparison, ComparisonOperator::GreaterEqual);
    return table;
  }();
  static const auto keywords = [] {
    std::array<Entry, 256> table{};
    const auto set = [&table](Keyword keyword, Precedence precedence, auto meaning) {
      table[static_cast<std::size_t>(keyword)] = {precedence, meaning};
    };
    set(Keyword::Not, Precedence::Comparison, Keyword::Not);
    set(Keyword::Like, Precedence::Comparison, Keyword::Like);
    set(Keyword::In, Precedence::Comparison, Keyword::In);
    set(Keyword::Between, Precedence::Comparison, Keyword::Between);
    set(Keyword::Is, Precedence::Comparison, Keyword::Is);
    set(Keyword::And, Precedence::And, LogicalOperator::And);
    set(Keyword::Or, Precedence::Or, LogicalOperator::Or);
    return table;
  }();
  const Entry& entry = token.kind == TokenKind::Symbol ? symbols[static_cast<std::size_t>(token.symbol)]
                                                       : keywords[static_cast<std::size_t>(token.keyword)];
  return entry ? &*entry : nullptr;
}

// value: an expression without comparison or logic outside its parentheses
ExpressionPtr Parser::parseValue() {
  return requireValue(parseExpression(Precedence::Additive));
}

// condition: an expression that is true, false or unknown
ExpressionPtr Parser::parseCondition() {
  return requireCondition(parseExpression(Precedence::Or));
}

// expression: prefix [infix]… of operators that bind at least as tightly as `weakest`
ExpressionPtr Parser::parseExpression(Precedence weakest) {
  const Level level(*this);
  ExpressionPtr left = parsePrefix(weakest);
  while (const OperatorEntry* entry = operatorAt(peek())) {
    if (entry->precedence < weakest) break;
    left = parseInfix(std::move(left), *entry);
  }
  return left;
}

// prefix: NOT condition | {+ | - | ~} value | primary
// A sign binds less tightly than * and /: 100/-100*10 is 100/-(100*10).
ExpressionPtr Parser::parsePrefix(Precedence weakest) {
  const Position place = position();
  if (at(Keyword::Not) && weakest <= Precedence::Not) {
    take();
    ExpressionPtr operand = requireCondition(parseExpression(Precedence::Not));
    const int below = heightOf(operand);
    return make(Not{std::move(operand)}, place, below);
  }
  if (at(Symbol::Plus) || at(Symbol::Minus) || at(Symbol::Tilde)) {
    const Symbol sign = take().symbol;
    const auto op = sign == Symbol::Plus    ? UnaryOperator::Plus
                    : sign == Symbol::Minus ? UnaryOperator::Minus
                                            : UnaryOperator::BitNot;
    const auto tightness = op == UnaryOperator::BitNot ? Precedence::Prefix : Precedence::Multiplicative;
    ExpressionPtr operand = requireValue(parseExpression(tightness));
    const int below = heightOf(operand);
    return make(Unary{op, std::move(operand)}, place, below);
  }
  return parsePrimary();
}

ExpressionPtr Parser::parseInfix(ExpressionPtr left, const OperatorEntry& entry) {
  if (std::holds_alternative<BinaryOperator>(entry.meaning)) return parseBinary(std::move(left), entry);
  if (std::holds_alternative<ComparisonOperator>(entry.meaning))
    return parseComparison(std::move(left), entry);
  if (std::holds_alternative<LogicalOperator>(entry.meaning)) return parseLogical(std::move(left), entry);
  return parsePredicate(std::move(left));
}

// binary: value operator value, from left to right
ExpressionPtr Parser::parseBinary(ExpressionPtr left, const OperatorEntry& entry) {
  left = requireValue(std::move(left));
  const Position place = take().position;
  const auto tighter =
      entry.precedence == Precedence::Additive ? Precedence::Multiplicative : Precedence::Prefix;
  ExpressionPtr right = requireValue(parseExpression(tighter));
  const int below = std::max(heightOf(left), heightOf(right));
  return make(Binary{std::get<BinaryOperator>(entry.meaning), std::move(left), std::move(right)}, place,
              below);
}

// comparison: value {= | <> | < | <= | > | >=} value
ExpressionPtr Parser::parseComparison(ExpressionPtr left, const OperatorEntry& entry) {
  left = requireValue(std::move(left));
  const Position place = take().position;
  for (Keyword quantifier : {Keyword::All, Keyword::Any, Keyword::Some}) refuse(quantifier, peek().text);
  ExpressionPtr right = parseValue();
  const int below = std::max(heightOf(left), heightOf(right));
  return make(Comparison{std::get<ComparisonOperator>(entry.meaning), std::move(left), std::move(right)},
              place, below);
}

// logical: condition {AND | OR} condition …
ExpressionPtr Parser::parseLogical(ExpressionPtr left, const OperatorEntry& entry) {
  const auto op = std::get<LogicalOperator>(entry.meaning);
  const Keyword keyword = op == LogicalOperator::And ? Keyword::And : Keyword::Or;
  const auto tighter = op == LogicalOperator::And ? Precedence::Not : Precedence::And;
  const Position place = position();
  Logical chain{op, {}};
  left = requireCondition(std::move(left));
  if (auto* inner = std::get_if<Logical>(&left->node); inner != nullptr && inner->op == op) {
    chain.operands = std::move(inner->operands);
  } else {
    chain.operands.push_back(std::move(left));
  }
  while (accept(keyword)) chain.operands.push_back(requireCondition(parseExpression(tighter)));
  const int below = highest(chain.operands);
  return make(std::move(chain), place, below);
}

// predicate: value {[NOT] LIKE … | [NOT] IN … | [NOT] BETWEEN … | IS [NOT] NULL}
ExpressionPtr Parser::parsePredicate(ExpressionPtr left) {
  left = requireValue(std::move(left));
  if (at(Keyword::Is)) return parseIsNull(std::move(left));
  const bool negated = accept(Keyword::Not);
  if (at(Keyword::Like)) return parseLike(std::move(left), negated);
  if (at(Keyword::In)) return parseIn(std::move(left), negated);
  if (at(Keyword::Between)) return parseBetween(std::move(left), negated);
  failHere();
}

// like: value [NOT] LIKE value [ESCAPE value]
ExpressionPtr Parser::parseLike(ExpressionPtr left, bool negated) {
  const Position place = expect(Keyword::Like).position;
  ExpressionPtr pattern = parseValue();
  ExpressionPtr escape = accept(Keyword::Escape) ? parseValue() : nullptr;
  const int below = std::max({heightOf(left), heightOf(pattern), heightOf(escape)});
  return make(Like{std::move(left), std::move(pattern), std::move(escape), negated}, place, below);
}

// in: value [NOT] IN (value, …) | value [NOT] IN (query)
ExpressionPtr Parser::parseIn(ExpressionPtr left, bool negated) {
  const Position place = expect(Keyword::In).position;
  if (!at(Symbol::LeftParen)) failHere();
  if (atParenthesisedQuery()) {
    QueryPtr query = parseParenthesisedQuery();
    const int below = std::max<int>(heightOf(left), query->height);
    return make(InQuery{std::move(left), std::move(query), negated}, place, below);
  }
  take();
  std::vector<ExpressionPtr> items = parseValueList();
  expect(Symbol::RightParen);
  const int below = std::max(heightOf(left), highest(items));
  return make(InList{std::move(left), std::move(items), negated}, place, below);
}

// between: value [NOT] BETWEEN value AND value
ExpressionPtr Parser::parseBetween(ExpressionPtr left, bool negated) {
  const Position place = expect(Keyword::Between).position;
  ExpressionPtr low = parseValue();
  expect(Keyword::And);
  ExpressionPtr high = parseValue();
  const int below = std::max({heightOf(left), heightOf(low), heightOf(high)});
  return make(Between{std::move(left), std::move(low), std::move(high), negated}, place, below);
}

// is null: value IS [NOT] NULL
ExpressionPtr Parser::parseIsNull(ExpressionPtr left) {
  const Position place = expect(Keyword::Is).position;
  const bool negated = accept(Keyword::Not);
  expect(Keyword::Null);
  const int below = heightOf(left);
  return make(IsNull{std::move(left), negated}, place, below);
}

ExpressionPtr Parser::requireValue(ExpressionPtr expression) const {
  if (isCondition(*expression)) throwSyntaxError(tokenAt(expression->position));
  return expression;
}

ExpressionPtr Parser::requireCondition(ExpressionPtr expression) const {
  if (!isCondition(*expression)) {
    if (at(TokenKind::Invalid)) failHere();
    throwConditionNeeded(atEnd() ? previous() : peek());
  }
  return expression;
}

const Token& Parser::tokenAt(Position place) const {
  return *std::lower_bound(
      script_.tokens.begin(), script_.tokens.end(), place.offset,
      [](const Token& token, std::uint32_t offset) { return token.position.offset < offset; });
}

}  // namespace goodsbook::engine
