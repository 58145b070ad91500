#pragma once

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/syntax/ast.h"
#include "engine/syntax/parser.h"
#include "engine/syntax/syntax_error.h"
#include "engine/syntax/token_cursor.h"

namespace goodsbook::engine {

// Recursive descent: one method a rule, the rule above it. Each parser_*.cpp holds the rules of one kind.
class Parser : private TokenCursor {
 public:
  Parser(std::string_view batch, Script& script) : TokenCursor(script), batch_(batch) {}
  void parseBatch();

 private:
  // How tightly an operator binds, weakest first.
  enum class Precedence : std::uint8_t { Or, And, Not, Comparison, Additive, Multiplicative, Prefix };
  struct OperatorEntry;
  static const OperatorEntry* operatorAt(const Token& token);

  // One level deeper while it lives.
  class Level {
   public:
    explicit Level(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > maximumHeight) throwTooDeep(parser_.peek());
    }
    ~Level() { --parser_.depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  // Statements (parser_statement.cpp)
  void parseStatements(std::vector<Statement>& statements);
  Statement parseStatement();
  Statement::Node parseStatementBody();
  Statement::Node parseIf();
  Statement::Node parseBlock();
  Statement::Node parseRaiseError();
  Statement::Node parsePrint();
  Statement::Node parseSet();
  Statement::Node parseExecute();
  Argument parseArgument();
  ExpressionPtr parseArgumentValue();
  [[noreturn]] void refuseStatement() const;

  // Changes of rows (parser_change.cpp)
  Statement::Node parseInsert();
  ValueRows parseValueRows();
  ExpressionPtr parseValueOrDefault();
  Statement::Node parseUpdate();
  Assignment parseAssignment();
  Statement::Node parseDelete();

  // Definitions (parser_definition.cpp)
  Statement::Node parseCreate();
  Statement::Node parseCreateTable();
  Statement::Node parseCreateIndex();
  Statement::Node parseCreateProcedure();
  ProcedureParameter parseParameter();
  Statement::Node parseAlter();
  ColumnDefault parseAddedDefault();
  Statement::Node parseDrop();
  template <class Owner>
  void parseTableElement(Owner& owner);
  ColumnDefinition parseColumnDefinition();
  bool parseColumnAttribute(ColumnDefinition& column);
  bool parseColumnConstraint(ColumnDefinition& column, Name constraint);
  void parseIdentity(ColumnDefinition& column);
  TableConstraint parseTableConstraint();
  KeyKind parseKeyKind();
  std::vector<IndexColumn> parseIndexColumns();
  ExpressionPtr parseConstant();
  std::int64_t parseSignedInteger();

  // Queries (parser_query.cpp)
  QueryPtr parseQuery();
  void parseQueryTerm(QueryTerm& term);
  Select parseSelect();
  void parseTop(Select& select);
  SelectItem parseSelectItem();
  ExpressionPtr parseStar();
  Name parseColumnAlias();
  void parseGroupBy(Select& select);
  void parseOrderBy(Query& query);
  QueryPtr parseParenthesisedQuery();
  bool atParenthesisedQuery() const;
  std::size_t closingParenthesis(std::size_t ahead) const;

  // Tables of a FROM (parser_table.cpp)
  std::vector<TableRefPtr> parseFrom();
  TableRefPtr parseTableSource();
  bool atJoin() const;
  TableRefPtr parseJoin(TableRefPtr left);
  JoinKind parseJoinKind();
  TableRefPtr parseTablePrimary();
  TableRefPtr parseDerivedTable();
  Name parseTableAlias();
  TableRefPtr makeTable(decltype(TableRef::node) node, Position position, int below);

  // Expressions (parser_expression.cpp) and their smallest parts (parser_primary.cpp)
  ExpressionPtr parseValue();      // fails where a condition stands
  ExpressionPtr parseCondition();  // fails where a value stands
  ExpressionPtr parseExpression(Precedence weakest);
  ExpressionPtr parsePrefix(Precedence weakest);
  ExpressionPtr parseInfix(ExpressionPtr left, const OperatorEntry& entry);
  ExpressionPtr parseBinary(ExpressionPtr left, const OperatorEntry& entry);
  ExpressionPtr parseComparison(ExpressionPtr left, const OperatorEntry& entry);
  ExpressionPtr parseLogical(ExpressionPtr left, const OperatorEntry& entry);
  ExpressionPtr parsePredicate(ExpressionPtr left);
  ExpressionPtr parseLike(ExpressionPtr left, bool negated);
  ExpressionPtr parseIn(ExpressionPtr left, bool negated);
  ExpressionPtr parseBetween(ExpressionPtr left, bool negated);
  ExpressionPtr parseIsNull(ExpressionPtr left);
  ExpressionPtr parsePrimary();
  ExpressionPtr parseWord();
  ExpressionPtr parseLiteral();
  ExpressionPtr parseParenthesised();
  ExpressionPtr parseCase();
  ExpressionPtr parseCast();
  ExpressionPtr parseConvert();
  ExpressionPtr parseChoice();
  ExpressionPtr parseFunction();
  ExpressionPtr parseColumnRef();
  std::vector<ExpressionPtr> parseValueList();
  ExpressionPtr requireValue(ExpressionPtr expression) const;
  ExpressionPtr requireCondition(ExpressionPtr expression) const;
  const Token& tokenAt(Position place) const;

  // Names and types (parser_primary.cpp)
  ObjectName parseObjectName();
  std::vector<Name> parseNameList();
  DataType parseDataType();
  int parseTypeNumber();

  // Nodes
  template <class Node>
  ExpressionPtr make(Node node, Position place, int below = 0) {
    return std::make_unique<Expression>(Expression{std::move(node), place, grow(below)});
  }
  std::uint16_t grow(int below);
  static int heightOf(const ExpressionPtr& expression) { return expression ? expression->height : 0; }
  static int highest(const std::vector<ExpressionPtr>& expressions);

  // The literals from `first` on of those read so far are part of their statement's shape.
  std::size_t literalCount() const noexcept { return literals_.size(); }
  void markStructural(std::size_t first);
  void numberLiterals();

  struct LiteralPlace {
    std::size_t token;
    Literal* literal;
  };

  std::string_view batch_;
  std::vector<LiteralPlace> literals_;
  int depth_ = 0;
  int tallest_ = 0;  // of the nodes made in the query at hand
};

}  // namespace goodsbook::engine
