#include <cstddef>

#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

// query: term [UNION [ALL] term]… [ORDER BY …]
QueryPtr Parser::parseQuery() {
  const Level level(*this);
  const int tallestOutside = std::exchange(tallest_, 0);
  const std::size_t firstLiteral = literals_.size();
  auto query = std::make_unique<Query>();
  query->position = position();
  parseQueryTerm(query->terms.emplace_back());
  while (accept(Keyword::Union)) {
    QueryTerm& term = query->terms.emplace_back();
    term.op = accept(Keyword::All) ? SetOperator::UnionAll : SetOperator::Union;
    parseQueryTerm(term);
  }
  refuse(Keyword::Except, "EXCEPT");
  refuse(Keyword::Intersect, "INTERSECT");
  if (at(Keyword::Order)) {
    const std::size_t beforeOrder = literals_.size();
    parseOrderBy(*query);
    const auto* select = std::get_if<Select>(&query->terms.front().operand);
    const bool mustMatch =
        query->terms.size() > 1 || select == nullptr || select->distinct || !select->groupBy.empty();
    // The values of such an ORDER BY are compared with those of the select list when the statement is
    // compiled.
    if (mustMatch && literals_.size() > beforeOrder) markStructural(firstLiteral);
  }
  refuse(Keyword::For, "FOR");
  refuse(Keyword::Option, "OPTION");
  query->height = grow(tallest_);
  tallest_ = std::max<int>(tallestOutside, query->height);
  return query;
}

// term: select | (query)
void Parser::parseQueryTerm(QueryTerm& term) {
  if (!at(Symbol::LeftParen)) {
    term.operand = parseSelect();
    return;
  }
  QueryPtr inner = parseParenthesisedQuery();
  if (inner->terms.size() == 1 && inner->orderBy.empty()) {
    term.operand = std::move(inner->terms.front().operand);
  } else {
    term.operand = std::move(inner);
  }
}

// select: SELECT [ALL | DISTINCT] [TOP …] item, … [FROM …] [WHERE …] [GROUP BY …] [HAVING …]
Select Parser::parseSelect() {
  const std::size_t firstLiteral = literals_.size();
  Select select;
  select.position = expect(Keyword::Select).position;
  if (!accept(Keyword::All)) select.distinct = accept(Keyword::Distinct);
  parseTop(select);
  do {
    select.items.push_back(parseSelectItem());
  } while (accept(Symbol::Comma));
  refuse(Keyword::Into, "SELECT INTO");
  if (at(Keyword::From)) select.from = parseFrom();
  if (accept(Keyword::Where)) select.where = parseCondition();
  const std::size_t beforeGroup = literals_.size();
  parseGroupBy(select);
  const bool groupsByLiteral = literals_.size() > beforeGroup;
  if (accept(Keyword::Having)) select.having = parseCondition();
  // What is grouped by must be found again in the select list when the statement is compiled.
  if (groupsByLiteral) markStructural(firstLiteral);
  return select;
}

// top: TOP number | TOP (value)
void Parser::parseTop(Select& select) {
  if (!accept(Keyword::Top)) return;
  if (accept(Symbol::LeftParen)) {
    select.top = parseValue();
    expect(Symbol::RightParen);
  } else if (at(TokenKind::Integer) || at(TokenKind::Variable)) {
    select.top = parsePrimary();
  } else {
    failHere();
  }
  refuse(Keyword::Percent, "TOP … PERCENT");
  refuse(Keyword::With, "TOP … WITH TIES");
}

// item: * | table.* | alias = value | value [[AS] alias]
SelectItem Parser::parseSelectItem() {
  SelectItem item;
  item.expression = parseStar();
  if (item.expression) return item;
  if (at(Symbol::Equal, 1) || at(Symbol::PlusEqual, 1)) {
    if (at(TokenKind::Variable)) throwNotSupported(peek(), "SELECT " + std::string(peek().text) + " =");
    if ((atName() || at(TokenKind::Text)) && at(Symbol::Equal, 1)) {
      item.alias = parseColumnAlias();
      take();
      item.expression = parseValue();
      return item;
    }
  }
  item.expression = parseValue();
  const bool named = accept(Keyword::As) || atName() || at(TokenKind::Text) || at(TokenKind::National);
  if (named) item.alias = parseColumnAlias();
  return item;
}

// star: [[[database.]schema.]table.]*     (null where something else stands)
ExpressionPtr Parser::parseStar() {
  const Position place = position();
  std::size_t ahead = 0;
  while (atName(ahead) && at(Symbol::Dot, ahead + 1)) ahead += 2;
  if (!at(Symbol::Star, ahead) || ahead > 6) return nullptr;
  Star star;
  for (; ahead > 0; ahead -= 2) {
    star.qualifier.database = star.qualifier.schema;
    star.qualifier.schema = star.qualifier.name;
    star.qualifier.name = takeName();
    take();
  }
  take();
  return make(star, place);
}

// column alias: name | 'text'
Name Parser::parseColumnAlias() {
  if (at(TokenKind::Text) || at(TokenKind::National)) {
    const Token& token = takeStructural();
    if (token.value.empty()) throwAt(token, 1038, "列的别名不能为空。");
    return {token.value, token.position};
  }
  return takeName();
}

// group by: GROUP BY value, …
void Parser::parseGroupBy(Select& select) {
  if (!accept(Keyword::Group)) return;
  expect(Keyword::By);
  refuse(Keyword::All, "GROUP BY ALL");
  select.groupBy = parseValueList();
  refuse(Keyword::With, "GROUP BY … WITH");
}

// order by: ORDER BY value [ASC | DESC], …
void Parser::parseOrderBy(Query& query) {
  expect(Keyword::Order);
  expect(Keyword::By);
  do {
    OrderItem item;
    const std::size_t first = literals_.size();
    item.expression = parseValue();
    if (std::holds_alternative<Literal>(item.expression->node)) {
      script_.tokens[literals_[first].token].structural = true;  // the place of a column
      literals_.pop_back();
    }
    if (!accept(Keyword::Asc)) item.descending = accept(Keyword::Desc);
    query.orderBy.push_back(std::move(item));
  } while (accept(Symbol::Comma));
  refuse(Keyword::Offset, "OFFSET");
}

// parenthesised query: (query)
QueryPtr Parser::parseParenthesisedQuery() {
  const Level level(*this);
  expect(Symbol::LeftParen);
  QueryPtr query = parseQuery();
  expect(Symbol::RightParen);
  return query;
}

// Whether the parenthesis that comes next holds a query, not a value that begins with a subquery or a join
// that begins with a derived table.
bool Parser::atParenthesisedQuery() const {
  if (!at(Symbol::LeftParen)) return false;
  std::size_t depth = 1;
  while (at(Symbol::LeftParen, depth)) ++depth;
  if (!at(Keyword::Select, depth)) return false;
  if (depth == 1) return true;
  const Token& next = peek(closingParenthesis(1) + 1);
  return next.symbol == Symbol::RightParen || next.keyword == Keyword::Union ||
         next.keyword == Keyword::Except || next.keyword == Keyword::Intersect ||
         next.keyword == Keyword::Order;
}

// Where the parenthesis closes that opens `ahead` words from here.
std::size_t Parser::closingParenthesis(std::size_t ahead) const {
  std::size_t open = 0;
  for (; !at(TokenKind::End, ahead); ++ahead) {
    if (at(Symbol::LeftParen, ahead)) ++open;
    if (at(Symbol::RightParen, ahead) && --open == 0) break;
  }
  return ahead;
}

}  // namespace goodsbook::engine
