#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

// from: FROM table source, …
std::vector<TableRefPtr> Parser::parseFrom() {
  expect(Keyword::From);
  std::vector<TableRefPtr> tables;
  do {
    tables.push_back(parseTableSource());
  } while (accept(Symbol::Comma));
  return tables;
}

// table source: table [join]…
TableRefPtr Parser::parseTableSource() {
  const Level level(*this);
  TableRefPtr left = parseTablePrimary();
  while (atJoin()) left = parseJoin(std::move(left));
  return left;
}

bool Parser::atJoin() const {
  switch (peek().keyword) {
    case Keyword::Join:
    case Keyword::Inner:
    case Keyword::Left:
    case Keyword::Right:
    case Keyword::Full:
    case Keyword::Cross:
    case Keyword::Outer:
      return true;
    default:
      return false;
  }
}

// join: left kind JOIN table [join]… ON condition | left CROSS JOIN table
// Joins between a table and its ON belong to the right side: A JOIN B JOIN C ON c1 ON c2 is A JOIN (B JOIN C
// ON c1) ON c2.
TableRefPtr Parser::parseJoin(TableRefPtr left) {
  const Level level(*this);
  const Position place = position();
  const JoinKind kind = parseJoinKind();
  TableRefPtr right = parseTablePrimary();
  ExpressionPtr on;
  if (kind != JoinKind::Cross) {
    while (atJoin()) right = parseJoin(std::move(right));
    expect(Keyword::On);
    on = parseCondition();
  }
  const int below = std::max({static_cast<int>(left->height), static_cast<int>(right->height), heightOf(on)});
  return makeTable(Join{kind, std::move(left), std::move(right), std::move(on)}, place, below);
}

// join kind: [INNER] JOIN | {LEFT | RIGHT | FULL} [OUTER] JOIN | CROSS JOIN
JoinKind Parser::parseJoinKind() {
  if (at(Keyword::Apply, 1)) throwNotSupported(peek(), std::string(peek().text) + " APPLY");
  JoinKind kind = JoinKind::Inner;
  switch (peek().keyword) {
    case Keyword::Left:
      kind = JoinKind::Left;
      break;
    case Keyword::Right:
      kind = JoinKind::Right;
      break;
    case Keyword::Full:
      kind = JoinKind::Full;
      break;
    case Keyword::Cross:
      kind = JoinKind::Cross;
      break;
    case Keyword::Outer:
      failHere();
    default:
      break;
  }
  if (!at(Keyword::Join)) take();
  if (kind != JoinKind::Inner && kind != JoinKind::Cross) accept(Keyword::Outer);
  expect(Keyword::Join);
  return kind;
}

// table: name [[AS] alias] | derived table | (table source that is a join)
TableRefPtr Parser::parseTablePrimary() {
  if (atParenthesisedQuery()) return parseDerivedTable();
  if (at(Symbol::LeftParen)) {
    const Level level(*this);
    take();
    TableRefPtr inner = parseTableSource();
    if (!std::holds_alternative<Join>(inner->node)) failHere();
    expect(Symbol::RightParen);
    return inner;
  }
  if (at(TokenKind::Variable)) throwNotSupported(peek(), peek().text);
  const Position place = position();
  NamedTable table;
  table.name = parseObjectName();
  if (at(Symbol::LeftParen)) throwNotSupported(peek(), std::string(table.name.name.text) + "(…)");
  table.alias = parseTableAlias();
  refuse(Keyword::With, "WITH (…)");
  refuse(Keyword::TableSample, "TABLESAMPLE");
  return makeTable(table, place, 0);
}

// derived table: (query) [AS] alias [(column, …)]
TableRefPtr Parser::parseDerivedTable() {
  const Position place = position();
  DerivedTable table;
  table.query = parseParenthesisedQuery();
  table.alias = parseTableAlias();
  if (table.alias.empty()) failHere();
  if (at(Symbol::LeftParen)) table.columns = parseNameList();
  const int below = table.query->height;
  return makeTable(std::move(table), place, below);
}

// table alias: [[AS] name]
Name Parser::parseTableAlias() {
  refuse(Keyword::Pivot, "PIVOT");
  refuse(Keyword::Unpivot, "UNPIVOT");
  if (accept(Keyword::As) || atName()) return takeName();
  return {};
}

TableRefPtr Parser::makeTable(decltype(TableRef::node) node, Position place, int below) {
  return std::make_unique<TableRef>(TableRef{std::move(node), place, grow(below)});
}

}  // namespace goodsbook::engine
