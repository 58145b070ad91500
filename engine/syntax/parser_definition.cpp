#include <charconv>
#include <cstddef>
#include <string>

#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

// create: CREATE {TABLE | [UNIQUE] … INDEX | PROC[EDURE]} …
Statement::Node Parser::parseCreate() {
  const Token& word = take();
  switch (peek().keyword) {
    case Keyword::Table:
      return parseCreateTable();
    case Keyword::Unique:
    case Keyword::Clustered:
    case Keyword::Nonclustered:
    case Keyword::Index:
      return parseCreateIndex();
    case Keyword::Proc:
    case Keyword::Procedure:
      if (word.position.offset != script_.tokens.front().position.offset)
        throwNotFirst(word, "CREATE PROCEDURE");
      return parseCreateProcedure();
    default:
      if (!at(TokenKind::Word)) failHere();
      throwNotSupported(word, "CREATE " + std::string(peek().text));
  }
}

// create table: TABLE name (column or constraint, …)
Statement::Node Parser::parseCreateTable() {
  take();
  CreateTable table;
  table.table = parseObjectName();
  expect(Symbol::LeftParen);
  do {
    parseTableElement(table);
  } while (accept(Symbol::Comma));
  expect(Symbol::RightParen);
  refuse(Keyword::On, "CREATE TABLE … ON");
  refuse(Keyword::With, "CREATE TABLE … WITH");
  return table;
}

// table element: table constraint | column definition
template <class Owner>
void Parser::parseTableElement(Owner& owner) {
  refuse(Keyword::Index, "INDEX");
  refuse(Keyword::Check, "CHECK");
  refuse(Keyword::Foreign, "FOREIGN KEY");
  if (at(Keyword::Constraint) || at(Keyword::Primary) || at(Keyword::Unique)) {
    owner.constraints.push_back(parseTableConstraint());
  } else {
    owner.columns.push_back(parseColumnDefinition());
  }
}

// column definition: name type [attribute]…
ColumnDefinition Parser::parseColumnDefinition() {
  ColumnDefinition column;
  column.name = takeName();
  refuse(Keyword::As, "AS");
  column.type = parseDataType();
  while (parseColumnAttribute(column)) {
  }
  return column;
}

// attribute: NULL | NOT NULL | IDENTITY … | [CONSTRAINT name] column constraint
bool Parser::parseColumnAttribute(ColumnDefinition& column) {
  refuse(Keyword::Collate, "COLLATE");
  refuse(Keyword::Sparse, "SPARSE");
  if (accept(Keyword::Null)) {
    column.nullability = Nullability::Null;
  } else if (accept(Keyword::Not)) {
    expect(Keyword::Null);
    column.nullability = Nullability::NotNull;
  } else if (accept(Keyword::Identity)) {
    parseIdentity(column);
  } else if (accept(Keyword::Constraint)) {
    const Name name = takeName();
    if (!parseColumnConstraint(column, name)) failHere();
  } else {
    return parseColumnConstraint(column, {});
  }
  return true;
}

// column constraint: DEFAULT constant | key kind
bool Parser::parseColumnConstraint(ColumnDefinition& column, Name constraint) {
  refuse(Keyword::Check, "CHECK");
  refuse(Keyword::References, "REFERENCES");
  refuse(Keyword::Foreign, "FOREIGN KEY");
  if (accept(Keyword::Default)) {
    column.defaultValue = parseConstant();
    column.defaultName = constraint;
  } else if (at(Keyword::Primary) || at(Keyword::Unique)) {
    column.key = parseKeyKind();
    column.keyName = constraint;
  } else {
    return false;
  }
  return true;
}

// identity: IDENTITY [(seed, increment)]
void Parser::parseIdentity(ColumnDefinition& column) {
  column.hasIdentity = true;
  if (!accept(Symbol::LeftParen)) return;
  column.identity.seed = parseSignedInteger();
  expect(Symbol::Comma);
  column.identity.increment = parseSignedInteger();
  expect(Symbol::RightParen);
}

// table constraint: [CONSTRAINT name] key kind (column [ASC | DESC], …)
TableConstraint Parser::parseTableConstraint() {
  TableConstraint constraint;
  constraint.position = position();
  if (accept(Keyword::Constraint)) constraint.name = takeName();
  refuse(Keyword::Check, "CHECK");
  refuse(Keyword::Foreign, "FOREIGN KEY");
  refuse(Keyword::Default, "DEFAULT … FOR");
  constraint.kind = parseKeyKind();
  constraint.columns = parseIndexColumns();
  return constraint;
}

// key kind: {PRIMARY KEY | UNIQUE} [CLUSTERED | NONCLUSTERED]
KeyKind Parser::parseKeyKind() {
  KeyKind kind = KeyKind::Unique;
  if (accept(Keyword::Primary)) {
    expect(Keyword::Key);
    kind = KeyKind::PrimaryKey;
  } else {
    expect(Keyword::Unique);
  }
  if (!accept(Keyword::Clustered)) accept(Keyword::Nonclustered);
  return kind;
}

// index columns: (name [ASC | DESC], …)
std::vector<IndexColumn> Parser::parseIndexColumns() {
  std::vector<IndexColumn> columns;
  expect(Symbol::LeftParen);
  do {
    IndexColumn column;
    column.name = takeName();
    if (!accept(Keyword::Asc)) column.descending = accept(Keyword::Desc);
    columns.push_back(column);
  } while (accept(Symbol::Comma));
  expect(Symbol::RightParen);
  return columns;
}

// constant: a value of the definition
ExpressionPtr Parser::parseConstant() {
  const std::size_t first = literals_.size();
  ExpressionPtr value = parseValue();
  markStructural(first);
  return value;
}

// signed integer: [+ | -] digits
std::int64_t Parser::parseSignedInteger() {
  const bool negative = accept(Symbol::Minus);
  if (!negative) accept(Symbol::Plus);
  if (!at(TokenKind::Integer)) failHere();
  const std::string_view digits = peek().value;
  std::int64_t number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (read.ec != std::errc{}) failHere();
  takeStructural();
  return negative ? -number : number;
}

// create index: [UNIQUE] [CLUSTERED | NONCLUSTERED] INDEX name ON table (column, …)
Statement::Node Parser::parseCreateIndex() {
  CreateIndex index;
  index.unique = accept(Keyword::Unique);
  if (!accept(Keyword::Clustered)) accept(Keyword::Nonclustered);
  expect(Keyword::Index);
  index.name = takeName();
  expect(Keyword::On);
  index.table = parseObjectName();
  index.columns = parseIndexColumns();
  refuse(Keyword::Include, "INCLUDE");
  refuse(Keyword::Where, "CREATE INDEX … WHERE");
  refuse(Keyword::With, "CREATE INDEX … WITH");
  refuse(Keyword::On, "CREATE INDEX … ON");
  return index;
}

// create procedure: {PROC | PROCEDURE} name [(] [parameter, …] [)] AS statement …
Statement::Node Parser::parseCreateProcedure() {
  take();
  CreateProcedure procedure;
  procedure.name = parseObjectName();
  const bool parenthesised = accept(Symbol::LeftParen);
  if (at(TokenKind::Variable)) {
    do {
      procedure.parameters.push_back(parseParameter());
    } while (accept(Symbol::Comma));
  }
  if (parenthesised) expect(Symbol::RightParen);
  refuse(Keyword::With, "CREATE PROCEDURE … WITH");
  expect(Keyword::As);
  parseStatements(procedure.body);
  if (procedure.body.empty() || !atEnd()) failHere();
  return procedure;
}

// parameter: @name [AS] type [= constant]
ProcedureParameter Parser::parseParameter() {
  const Token& token = expect(TokenKind::Variable);
  ProcedureParameter parameter;
  parameter.name = {token.value, token.position};
  accept(Keyword::As);
  parameter.type = parseDataType();
  if (accept(Symbol::Equal)) parameter.defaultValue = parseConstant();
  refuse(Keyword::Output, "OUTPUT");
  refuse(Keyword::Out, "OUTPUT");
  return parameter;
}

// added default: [CONSTRAINT name] DEFAULT constant FOR column
ColumnDefault Parser::parseAddedDefault() {
  ColumnDefault added;
  if (accept(Keyword::Constraint)) added.name = takeName();
  expect(Keyword::Default);
  added.value = parseConstant();
  expect(Keyword::For);
  added.column = takeName();
  return added;
}

// alter: ALTER TABLE name ADD column, constraint or default, …
Statement::Node Parser::parseAlter() {
  const Token& word = take();
  if (!accept(Keyword::Table)) {
    if (!at(TokenKind::Word)) failHere();
    throwNotSupported(word, "ALTER " + std::string(peek().text));
  }
  AlterTableAdd node;
  node.table = parseObjectName();
  if (!accept(Keyword::Add)) {
    if (!at(TokenKind::Word)) failHere();
    throwNotSupported(word, "ALTER TABLE … " + std::string(peek().text));
  }
  do {
    if (at(Keyword::Default) || (at(Keyword::Constraint) && at(Keyword::Default, 2))) {
      node.defaults.push_back(parseAddedDefault());
    } else {
      parseTableElement(node);
    }
  } while (accept(Symbol::Comma));
  return node;
}

// drop: DROP {TABLE | INDEX | PROC[EDURE]} [IF EXISTS] name [ON table], …
Statement::Node Parser::parseDrop() {
  const Token& word = take();
  Drop drop;
  if (accept(Keyword::Table)) {
    drop.kind = DropKind::Table;
  } else if (accept(Keyword::Index)) {
    drop.kind = DropKind::Index;
  } else if (accept(Keyword::Proc) || accept(Keyword::Procedure)) {
    drop.kind = DropKind::Procedure;
  } else {
    if (!at(TokenKind::Word)) failHere();
    throwNotSupported(word, "DROP " + std::string(peek().text));
  }
  if (accept(Keyword::If)) {
    expect(Keyword::Exists);
    drop.ifExists = true;
  }
  do {
    DropItem item;
    item.name = parseObjectName();
    if (drop.kind == DropKind::Index) {
      if (accept(Keyword::On)) {
        item.table = parseObjectName();
      } else {
        if (item.name.schema.empty()) failHere();
        item.table = {{}, item.name.database, item.name.schema};
        item.name = {{}, {}, item.name.name};
      }
    }
    drop.items.push_back(item);
  } while (accept(Symbol::Comma));
  return drop;
}

}  // namespace goodsbook::engine
