#include <array>
#include <charconv>
#include <cstddef>

#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {
namespace {

LiteralKind literalKind(TokenKind kind) {
  switch (kind) {
    case TokenKind::National:
      return LiteralKind::NationalText;
    case TokenKind::Integer:
      return LiteralKind::Integer;
    case TokenKind::Decimal:
      return LiteralKind::Decimal;
    case TokenKind::Float:
      return LiteralKind::Float;
    case TokenKind::Binary:
      return LiteralKind::Binary;
    default:
      return LiteralKind::Text;
  }
}

}  // namespace

// primary: literal | @variable | (expression) | (query) | word
ExpressionPtr Parser::parsePrimary() {
  switch (peek().kind) {
    case TokenKind::Text:
    case TokenKind::National:
    case TokenKind::Integer:
    case TokenKind::Decimal:
    case TokenKind::Float:
    case TokenKind::Binary:
      return parseLiteral();
    case TokenKind::Variable: {
      const Token& token = take();
      if (token.value.starts_with("@@")) throwNotSupported(token, token.value);
      return make(Variable{{token.value, token.position}}, token.position);
    }
    case TokenKind::Word:
    case TokenKind::Quoted:
      return parseWord();
    default:
      if (at(Symbol::LeftParen)) return parseParenthesised();
      failHere();
  }
}

// word: NULL | CASE … | CAST … | CONVERT … | IIF … | EXISTS (query) | CURRENT_TIMESTAMP | function | column
ExpressionPtr Parser::parseWord() {
  const Position place = position();
  const bool call = at(Symbol::LeftParen, 1);
  switch (peek().keyword) {
    case Keyword::Null:
      take();
      return make(NullLiteral{}, place);
    case Keyword::Case:
      return parseCase();
    case Keyword::Convert:
      return parseConvert();
    case Keyword::Exists: {
      take();
      QueryPtr query = parseParenthesisedQuery();
      const int below = query->height;
      return make(Exists{std::move(query)}, place, below);
    }
    case Keyword::CurrentTimestamp:
      take();
      return make(FunctionCall{{"GETDATE", place}, {}, false}, place);
    case Keyword::Cast:
      if (call) return parseCast();
      break;
    case Keyword::Iif:
      if (call) return parseChoice();
      break;
    case Keyword::TryCast:
    case Keyword::TryConvert:
      if (call) throwNotSupported(peek(), peek().text);
      break;
    case Keyword::Coalesce:
    case Keyword::Nullif:
    case Keyword::Left:
    case Keyword::Right:
      if (!call) failHere();
      return parseFunction();
    default:
      break;
  }
  if (!atName()) failHere();
  return call ? parseFunction() : parseColumnRef();
}

ExpressionPtr Parser::parseLiteral() {
  const std::size_t index = TokenCursor::index();
  const Token& token = take();
  ExpressionPtr literal =
      make(Literal{literalKind(token.kind), token.value, Literal::structural}, token.position);
  literals_.push_back({index, &std::get<Literal>(literal->node)});
  return literal;
}

// parenthesised: (query) | (expression)
ExpressionPtr Parser::parseParenthesised() {
  const Position place = position();
  if (atParenthesisedQuery()) {
    QueryPtr query = parseParenthesisedQuery();
    const int below = query->height;
    return make(ScalarSubquery{std::move(query)}, place, below);
  }
  take();
  ExpressionPtr expression = parseExpression(Precedence::Or);
  expect(Symbol::RightParen);
  return expression;
}

// case: CASE [value] {WHEN value-or-condition THEN value}… [ELSE value] END
ExpressionPtr Parser::parseCase() {
  const Position place = take().position;
  Case node;
  if (!at(Keyword::When)) node.operand = parseValue();
  int below = heightOf(node.operand);
  if (!at(Keyword::When)) failHere();
  while (accept(Keyword::When)) {
    ExpressionPtr when = node.operand ? parseValue() : parseCondition();
    expect(Keyword::Then);
    ExpressionPtr then = parseValue();
    below = std::max({below, heightOf(when), heightOf(then)});
    node.branches.push_back({std::move(when), std::move(then)});
  }
  if (accept(Keyword::Else)) node.otherwise = parseValue();
  expect(Keyword::End);
  below = std::max(below, heightOf(node.otherwise));
  return make(std::move(node), place, below);
}

// cast: CAST(value AS type)
ExpressionPtr Parser::parseCast() {
  const Position place = take().position;
  expect(Symbol::LeftParen);
  ExpressionPtr operand = parseValue();
  expect(Keyword::As);
  const DataType type = parseDataType();
  expect(Symbol::RightParen);
  const int below = heightOf(operand);
  return make(Cast{std::move(operand), type}, place, below);
}

// convert: CONVERT(type, value [, style])
ExpressionPtr Parser::parseConvert() {
  const Position place = take().position;
  expect(Symbol::LeftParen);
  const DataType type = parseDataType();
  expect(Symbol::Comma);
  ExpressionPtr operand = parseValue();
  ExpressionPtr style;
  if (accept(Symbol::Comma)) {
    const std::size_t first = literals_.size();
    style = parseValue();
    markStructural(first);
  }
  expect(Symbol::RightParen);
  const int below = std::max(heightOf(operand), heightOf(style));
  return make(Convert{type, std::move(operand), std::move(style)}, place, below);
}

// choice: IIF(condition, value, value), which is a CASE
ExpressionPtr Parser::parseChoice() {
  const Position place = take().position;
  expect(Symbol::LeftParen);
  ExpressionPtr when = parseCondition();
  expect(Symbol::Comma);
  ExpressionPtr then = parseValue();
  expect(Symbol::Comma);
  ExpressionPtr otherwise = parseValue();
  expect(Symbol::RightParen);
  const int below = std::max({heightOf(when), heightOf(then), heightOf(otherwise)});
  Case node;
  node.branches.push_back({std::move(when), std::move(then)});
  node.otherwise = std::move(otherwise);
  return make(std::move(node), place, below);
}

// function: name(*) | name([ALL | DISTINCT] value, …) | name()
ExpressionPtr Parser::parseFunction() {
  const Token& word = take();
  FunctionCall call{{word.value, word.position}, {}, false};
  expect(Symbol::LeftParen);
  if (at(Symbol::Star) && at(Symbol::RightParen, 1)) {
    call.arguments.push_back(make(Star{}, take().position));
  } else if (!at(Symbol::RightParen)) {
    if (!accept(Keyword::All)) call.distinct = accept(Keyword::Distinct);
    call.arguments = parseValueList();
  }
  expect(Symbol::RightParen);
  refuse(Keyword::Over, "OVER");
  const int below = highest(call.arguments);
  return make(std::move(call), word.position, below);
}

// column: [[[database.]schema.]table.]name
ExpressionPtr Parser::parseColumnRef() {
  const Position place = position();
  if (!at(Symbol::Dot, 1)) return make(ColumnRef{{}, takeName()}, place);
  std::array<Name, 4> parts;
  std::size_t count = 0;
  do {
    if (count == parts.size()) failHere();
    parts[count] = at(Symbol::Dot) && count > 0 ? Name{} : takeName();
    ++count;
  } while (accept(Symbol::Dot));
  if (at(Symbol::LeftParen)) throwNotSupported(tokenAt(place), parts[0].text);
  ColumnRef column;
  column.column = parts[count - 1];
  if (count > 1) column.qualifier.name = parts[count - 2];
  if (count > 2) column.qualifier.schema = parts[count - 3];
  if (count > 3) column.qualifier.database = parts[count - 4];
  return make(column, place);
}

// values: value, …
std::vector<ExpressionPtr> Parser::parseValueList() {
  std::vector<ExpressionPtr> values;
  do {
    values.push_back(parseValue());
  } while (accept(Symbol::Comma));
  return values;
}

// object name: [[database.][schema].]name
ObjectName Parser::parseObjectName() {
  ObjectName object;
  object.name = takeName();
  for (int parts = 1; accept(Symbol::Dot); ++parts) {
    if (parts == 3) failHere();
    object.database = object.schema;
    object.schema = object.name;
    object.name = at(Symbol::Dot) ? Name{} : takeName();
  }
  if (object.name.empty()) failHere();
  return object;
}

// names: (name, …)
std::vector<Name> Parser::parseNameList() {
  std::vector<Name> names;
  expect(Symbol::LeftParen);
  do {
    names.push_back(takeName());
  } while (accept(Symbol::Comma));
  expect(Symbol::RightParen);
  return names;
}

// type: name [(number | MAX [, number])]
DataType Parser::parseDataType() {
  DataType type;
  if (at(Keyword::Double)) {
    type.name = {"float", take().position};
    expect(Keyword::Precision);
    return type;
  }
  type.name = takeName();
  if (!accept(Symbol::LeftParen)) return type;
  if (accept(Keyword::Max)) {
    type.width = DataType::maximum;
  } else {
    type.width = parseTypeNumber();
    if (accept(Symbol::Comma)) type.scale = parseTypeNumber();
  }
  expect(Symbol::RightParen);
  return type;
}

int Parser::parseTypeNumber() {
  if (!at(TokenKind::Integer)) failHere();
  const std::string_view digits = peek().value;
  int number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (read.ec != std::errc{}) failHere();
  takeStructural();
  return number;
}

}  // namespace goodsbook::engine
