#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

// insert: INSERT [INTO] table [(column, …)] {VALUES … | query | DEFAULT VALUES}
Statement::Node Parser::parseInsert() {
  take();
  refuse(Keyword::Top, "INSERT TOP");
  accept(Keyword::Into);
  Insert insert;
  insert.table = parseObjectName();
  refuse(Keyword::With, "WITH (…)");
  if (at(Symbol::LeftParen) && !atParenthesisedQuery()) insert.columns = parseNameList();
  refuse(Keyword::Output, "OUTPUT");
  refuse(Keyword::Exec, "INSERT … EXEC");
  refuse(Keyword::Execute, "INSERT … EXEC");
  if (accept(Keyword::Values)) {
    insert.source = parseValueRows();
  } else if (at(Keyword::Select) || at(Symbol::LeftParen)) {
    insert.source = parseQuery();
  } else if (accept(Keyword::Default)) {
    expect(Keyword::Values);
    insert.source = DefaultValues{};
  } else {
    failHere();
  }
  return insert;
}

// rows: (value-or-default, …), …
ValueRows Parser::parseValueRows() {
  ValueRows values;
  do {
    expect(Symbol::LeftParen);
    auto& row = values.rows.emplace_back();
    do {
      row.push_back(parseValueOrDefault());
    } while (accept(Symbol::Comma));
    expect(Symbol::RightParen);
  } while (accept(Symbol::Comma));
  return values;
}

// value or default: value | DEFAULT
ExpressionPtr Parser::parseValueOrDefault() {
  if (at(Keyword::Default)) return make(DefaultValue{}, take().position);
  return parseValue();
}

// update: UPDATE target SET assignment, … [FROM …] [WHERE condition]
Statement::Node Parser::parseUpdate() {
  take();
  refuse(Keyword::Top, "UPDATE TOP");
  if (at(Keyword::Statistics)) throwNotSupported(peek(), "UPDATE STATISTICS");
  Update update;
  update.target = parseObjectName();
  refuse(Keyword::With, "WITH (…)");
  expect(Keyword::Set);
  do {
    update.assignments.push_back(parseAssignment());
  } while (accept(Symbol::Comma));
  refuse(Keyword::Output, "OUTPUT");
  if (at(Keyword::From)) update.from = parseFrom();
  if (accept(Keyword::Where)) update.where = parseCondition();
  refuse(Keyword::Option, "OPTION");
  return update;
}

// assignment: column {= | += | -= | *= | /= | %= | &= | |= | ^=} value-or-default
Assignment Parser::parseAssignment() {
  if (at(TokenKind::Variable)) throwNotSupported(peek(), "SET " + std::string(peek().text) + " =");
  ExpressionPtr target = parseColumnRef();
  const ColumnRef column = std::get<ColumnRef>(target->node);
  Assignment assignment{column.qualifier, column.column, nullptr};
  if (accept(Symbol::Equal)) {
    assignment.value = parseValueOrDefault();
    return assignment;
  }
  const Position place = position();
  BinaryOperator op{};
  switch (peek().symbol) {
    case Symbol::PlusEqual:
      op = BinaryOperator::Add;
      break;
    case Symbol::MinusEqual:
      op = BinaryOperator::Subtract;
      break;
    case Symbol::StarEqual:
      op = BinaryOperator::Multiply;
      break;
    case Symbol::SlashEqual:
      op = BinaryOperator::Divide;
      break;
    case Symbol::PercentEqual:
      op = BinaryOperator::Modulo;
      break;
    case Symbol::AmpersandEqual:
      op = BinaryOperator::BitAnd;
      break;
    case Symbol::PipeEqual:
      op = BinaryOperator::BitOr;
      break;
    case Symbol::CaretEqual:
      op = BinaryOperator::BitXor;
      break;
    default:
      failHere();
  }
  take();
  ExpressionPtr value = parseValue();
  const int below = heightOf(value);
  assignment.value = make(Binary{op, std::move(target), std::move(value)}, place, below);
  return assignment;
}

// delete: DELETE [FROM] target [FROM …] [WHERE condition]
Statement::Node Parser::parseDelete() {
  take();
  refuse(Keyword::Top, "DELETE TOP");
  accept(Keyword::From);
  Delete statement;
  statement.target = parseObjectName();
  refuse(Keyword::With, "WITH (…)");
  refuse(Keyword::Output, "OUTPUT");
  if (at(Keyword::From)) statement.from = parseFrom();
  if (accept(Keyword::Where)) statement.where = parseCondition();
  refuse(Keyword::Option, "OPTION");
  return statement;
}

}  // namespace goodsbook::engine
