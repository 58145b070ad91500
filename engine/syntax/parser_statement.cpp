#include <string>

#include "engine/syntax/parser_impl.h"

namespace goodsbook::engine {

// statements: [statement | ;]…, up to the end of the batch or of the block
void Parser::parseStatements(std::vector<Statement>& statements) {
  for (;;) {
    while (accept(Symbol::Semicolon)) {
    }
    if (atEnd() || at(Keyword::End)) return;
    statements.push_back(parseStatement());
  }
}

Statement Parser::parseStatement() {
  const Level level(*this);
  Statement statement;
  statement.position = position();
  statement.firstToken = static_cast<std::uint32_t>(index());
  statement.node = parseStatementBody();
  statement.endToken = static_cast<std::uint32_t>(index());
  const Token& last = previous();
  const std::size_t start = statement.position.offset;
  statement.text = batch_.substr(start, last.position.offset + last.text.size() - start);
  return statement;
}

// statement: the one that its first word tells
Statement::Node Parser::parseStatementBody() {
  switch (peek().keyword) {
    case Keyword::Select:
      return SelectStatement{parseQuery()};
    case Keyword::Insert:
      return parseInsert();
    case Keyword::Update:
      return parseUpdate();
    case Keyword::Delete:
      return parseDelete();
    case Keyword::If:
      return parseIf();
    case Keyword::Begin:
      return parseBlock();
    case Keyword::Raiserror:
      return parseRaiseError();
    case Keyword::Print:
      return parsePrint();
    case Keyword::Exec:
    case Keyword::Execute:
      return parseExecute();
    case Keyword::Set:
      return parseSet();
    case Keyword::Create:
      return parseCreate();
    case Keyword::Alter:
      return parseAlter();
    case Keyword::Drop:
      return parseDrop();
    default:
      if (atParenthesisedQuery()) return SelectStatement{parseQuery()};
      refuseStatement();
  }
}

void Parser::refuseStatement() const {
  switch (peek().keyword) {
    case Keyword::Refused:
    case Keyword::RefusedFree:
    case Keyword::With:
      throwNotSupported(peek(), peek().text);
    default:
      failHere();
  }
}

// if: IF condition statement [[;] ELSE statement]
Statement::Node Parser::parseIf() {
  take();
  If node;
  node.condition = parseCondition();
  node.then = std::make_unique<Statement>(parseStatement());
  if (at(Symbol::Semicolon) && at(Keyword::Else, 1)) take();
  if (accept(Keyword::Else)) node.otherwise = std::make_unique<Statement>(parseStatement());
  return node;
}

// block: BEGIN statement … END
Statement::Node Parser::parseBlock() {
  const Token& begin = take();
  for (Keyword word :
       {Keyword::Tran, Keyword::Transaction, Keyword::Distributed, Keyword::Try, Keyword::Catch}) {
    if (at(word)) throwNotSupported(begin, "BEGIN " + std::string(peek().text));
  }
  Block block;
  parseStatements(block.statements);
  if (block.statements.empty()) failHere();
  expect(Keyword::End);
  return block;
}

// raiserror: RAISERROR(message, severity, state [, value]…)
Statement::Node Parser::parseRaiseError() {
  const Token& word = take();
  if (!at(Symbol::LeftParen) && !atEnd()) throwNotSupported(word, "RAISERROR number 'text'");
  expect(Symbol::LeftParen);
  RaiseError node;
  node.message = parseValue();
  expect(Symbol::Comma);
  node.severity = parseValue();
  expect(Symbol::Comma);
  node.state = parseValue();
  if (accept(Symbol::Comma)) node.arguments = parseValueList();
  expect(Symbol::RightParen);
  refuse(Keyword::With, "RAISERROR … WITH");
  return node;
}

// print: PRINT value
Statement::Node Parser::parsePrint() {
  take();
  return Print{parseValue()};
}

// set: SET option {ON | OFF} | SET IDENTITY_INSERT table {ON | OFF}
Statement::Node Parser::parseSet() {
  const Token& set = take();
  const Token& word = peek();
  if (word.kind != TokenKind::Word && word.kind != TokenKind::Variable) failHere();
  SetOption option;
  if (at(Keyword::IdentityInsert)) {
    const Token& name = take();
    option.option = {name.text, name.position};
    option.table = parseObjectName();
    if (!at(Keyword::On) && !at(Keyword::Off)) failHere();
    option.on = take().keyword == Keyword::On;
    return option;
  }
  if (!atName() || !(at(Keyword::On, 1) || at(Keyword::Off, 1))) {
    throwNotSupported(set, "SET " + std::string(word.text));
  }
  option.option = takeName();
  option.on = take().keyword == Keyword::On;
  return option;
}

// execute: {EXEC | EXECUTE} procedure [argument, …]
Statement::Node Parser::parseExecute() {
  const Token& word = take();
  if (at(Symbol::LeftParen)) throwNotSupported(word, "EXEC (…)");
  if (at(TokenKind::Variable)) throwNotSupported(word, "EXEC " + std::string(peek().text));
  Execute node;
  node.procedure = parseObjectName();
  const bool hasArguments = at(TokenKind::Variable) || at(TokenKind::Text) || at(TokenKind::National) ||
                            at(TokenKind::Integer) || at(TokenKind::Decimal) || at(TokenKind::Float) ||
                            at(TokenKind::Binary) || at(Symbol::Minus) || at(Symbol::Plus) ||
                            at(Keyword::Null) || at(Keyword::Default) || atName();
  if (hasArguments) {
    do {
      node.arguments.push_back(parseArgument());
    } while (accept(Symbol::Comma));
  }
  refuse(Keyword::With, "EXEC … WITH");
  return node;
}

// argument: [@parameter =] argument value
Argument Parser::parseArgument() {
  Argument argument;
  if (at(TokenKind::Variable) && at(Symbol::Equal, 1)) {
    const Token& token = take();
    argument.parameter = {token.value, token.position};
    take();
  }
  argument.value = parseArgumentValue();
  refuse(Keyword::Output, "OUTPUT");
  refuse(Keyword::Out, "OUTPUT");
  return argument;
}

// argument value: [+ | -] literal | NULL | DEFAULT | @variable | word
ExpressionPtr Parser::parseArgumentValue() {
  const Position place = position();
  if (at(Keyword::Default)) return make(DefaultValue{}, take().position);
  if (at(Symbol::Minus) || at(Symbol::Plus)) {
    const auto op = take().symbol == Symbol::Minus ? UnaryOperator::Minus : UnaryOperator::Plus;
    if (!at(TokenKind::Integer) && !at(TokenKind::Decimal) && !at(TokenKind::Float)) failHere();
    return make(Unary{op, parseLiteral()}, place, 1);
  }
  if (atName()) {
    const Token& word = takeStructural();
    return make(Literal{LiteralKind::Text, word.value, Literal::structural}, place);
  }
  if (at(Keyword::Null) || at(Symbol::LeftParen) || at(TokenKind::Word)) {
    expect(Keyword::Null);
    return make(NullLiteral{}, place);
  }
  return parsePrimary();
}

}  // namespace goodsbook::engine
