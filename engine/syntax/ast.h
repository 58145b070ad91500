#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/syntax/token.h"

// The tree of a batch. Nodes are a closed set of variants, so that a pass that forgets one does not build.
// All texts are views into the batch or into the Script that holds the tree; both must outlive it.
namespace goodsbook::engine {

// ---- Names
// ---------------------------------------------------------------------------------------------------------

// A name keeps the spelling in which it was written; compare with sameName(). Empty means that it was left
// out.
struct Name {
  std::string_view text;
  Position position;
  bool empty() const noexcept { return text.empty(); }
};

// A table, a procedure or the qualifier of a column: database.schema.name, the front parts mostly left out.
struct ObjectName {
  Name database;
  Name schema;
  Name name;
  bool empty() const noexcept { return name.empty(); }
};

// ---- Types
// ---------------------------------------------------------------------------------------------------------

// A type as written: varchar(20), varbinary(max), decimal(9,2), int. Which names exist is the binder's
// matter.
struct DataType {
  static constexpr int notGiven = -1;
  static constexpr int maximum = -2;  // (max)
  Name name;                          // nvarchar, "double precision" and the like are one word here
  int width = notGiven;               // width or precision
  int scale = notGiven;
};

// ---- Expressions
// ---------------------------------------------------------------------------------------------------

struct Expression;
struct Query;
using ExpressionPtr = std::unique_ptr<Expression>;
using QueryPtr = std::unique_ptr<Query>;

enum class LiteralKind : std::uint8_t { Text, NationalText, Integer, Decimal, Float, Binary };

struct Literal {
  static constexpr int structural = -1;
  LiteralKind kind = LiteralKind::Text;
  // Text without quotes, doubled ones undone; numbers as written, never with a sign; hex digits after 0x.
  std::string_view value;
  // Which replaceable literal of the batch this is, counted from 0, or `structural` where the value belongs
  // to the statement's shape (an ordinal of ORDER BY, a style of CONVERT …). See shape.h.
  int ordinal = structural;
};
struct NullLiteral {};
struct DefaultValue {};  // DEFAULT, in VALUES, SET and EXEC only
struct ColumnRef {
  ObjectName qualifier;
  Name column;
};
struct Star {  // *, t.*: in a select list and in COUNT(*) only
  ObjectName qualifier;
};
struct Variable {  // @name, with its @
  Name name;
};

enum class UnaryOperator : std::uint8_t { Plus, Minus, BitNot };
struct Unary {
  UnaryOperator op;
  ExpressionPtr operand;
};

enum class BinaryOperator : std::uint8_t { Add, Subtract, Multiply, Divide, Modulo, BitAnd, BitOr, BitXor };
struct Binary {  // Add is also the joining of texts
  BinaryOperator op;
  ExpressionPtr left;
  ExpressionPtr right;
};

struct CaseBranch {
  ExpressionPtr when;  // a value of a simple CASE, a condition of a searched one
  ExpressionPtr then;
};
struct Case {
  ExpressionPtr operand;  // null for a searched CASE
  std::vector<CaseBranch> branches;
  ExpressionPtr otherwise;  // may be null
};
struct Cast {
  ExpressionPtr operand;
  DataType type;
};
struct Convert {
  DataType type;
  ExpressionPtr operand;
  ExpressionPtr style;  // may be null
};
struct FunctionCall {
  Name name;  // any name: which functions exist is the binder's matter
  std::vector<ExpressionPtr>
      arguments;  // COUNT(*) has one Star; a date part is a ColumnRef without qualifier
  bool distinct = false;
};
struct ScalarSubquery {
  QueryPtr query;
};

// ---- Conditions: expressions that are true, false or unknown
// ---------------------------------------------------------

enum class ComparisonOperator : std::uint8_t { Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };
struct Comparison {
  ComparisonOperator op;
  ExpressionPtr left;
  ExpressionPtr right;
};
enum class LogicalOperator : std::uint8_t { And, Or };
struct Logical {  // a chain `a AND b AND c` is one node; two operands or more
  LogicalOperator op;
  std::vector<ExpressionPtr> operands;
};
struct Not {
  ExpressionPtr operand;
};
struct Like {
  ExpressionPtr operand;
  ExpressionPtr pattern;
  ExpressionPtr escape;  // may be null
  bool negated = false;
};
struct InList {
  ExpressionPtr operand;
  std::vector<ExpressionPtr> items;
  bool negated = false;
};
struct InQuery {
  ExpressionPtr operand;
  QueryPtr query;
  bool negated = false;
};
struct Between {
  ExpressionPtr operand;
  ExpressionPtr low;
  ExpressionPtr high;
  bool negated = false;
};
struct IsNull {
  ExpressionPtr operand;
  bool negated = false;
};
struct Exists {
  QueryPtr query;
};

struct Expression {
  using Node = std::variant<Literal, NullLiteral, DefaultValue, ColumnRef, Star, Variable, Unary, Binary,
                            Case, Cast, Convert, FunctionCall, ScalarSubquery, Comparison, Logical, Not, Like,
                            InList, InQuery, Between, IsNull, Exists>;
  Node node;
  Position position;         // of its first word; of a Binary, Comparison or Logical of its operator
  std::uint16_t height = 1;  // levels of nodes from here down, at most maximumHeight (parser.h)
};

// True for the nodes of the group "Conditions".
bool isCondition(const Expression& expression) noexcept;

// ---- Tables of a FROM
// ----------------------------------------------------------------------------------------------

struct TableRef;
using TableRefPtr = std::unique_ptr<TableRef>;

struct NamedTable {
  ObjectName name;
  Name alias;  // may be empty
};
struct DerivedTable {
  QueryPtr query;
  Name alias;                 // always given
  std::vector<Name> columns;  // `(…) t(a, b)`; mostly empty
};
enum class JoinKind : std::uint8_t { Inner, Left, Right, Full, Cross };
struct Join {
  JoinKind kind;
  TableRefPtr left;
  TableRefPtr right;  // may itself be a Join: parentheses, or an ON that comes later
  ExpressionPtr on;   // null for Cross only
};
struct TableRef {
  std::variant<NamedTable, DerivedTable, Join> node;
  Position position;
  std::uint16_t height = 1;
};

// ---- Queries
// -------------------------------------------------------------------------------------------------------

struct SelectItem {
  ExpressionPtr expression;  // a Star, or a value
  Name alias;                // of all three forms: `x AS a`, `x a`, `a = x`
};
struct OrderItem {
  ExpressionPtr expression;  // an integer Literal is a position in the select list
  bool descending = false;
};
struct Select {
  Position position;
  bool distinct = false;
  ExpressionPtr top;  // may be null
  std::vector<SelectItem> items;
  std::vector<TableRefPtr> from;  // the parts between commas; empty for a select without FROM
  ExpressionPtr where;
  std::vector<ExpressionPtr> groupBy;
  ExpressionPtr having;
};
enum class SetOperator : std::uint8_t { Union, UnionAll };
struct QueryTerm {
  SetOperator op =
      SetOperator::Union;  // how it is joined to the terms before it; of no meaning for the first
  std::variant<Select, QueryPtr> operand;  // a query only where it was written in parentheses
};
struct Query {
  Position position;
  std::uint16_t height = 1;      // levels of nodes from here down
  std::vector<QueryTerm> terms;  // one or more, joined from left to right
  std::vector<OrderItem> orderBy;
};

// ---- Statements
// ----------------------------------------------------------------------------------------------------

struct Statement;
using StatementPtr = std::unique_ptr<Statement>;

struct SelectStatement {
  QueryPtr query;
};

struct ValueRows {
  std::vector<std::vector<ExpressionPtr>>
      rows;  // not all of the same length where the batch is wrong (error 10709)
};
struct DefaultValues {};
struct Insert {
  ObjectName table;
  std::vector<Name> columns;  // empty: every column in the order of the table
  std::variant<ValueRows, QueryPtr, DefaultValues> source;
};

struct Assignment {
  ObjectName qualifier;
  Name column;
  ExpressionPtr value;  // `a += x` is told as a + x
};
struct Update {
  ObjectName target;  // a table, or an alias of `from`
  std::vector<Assignment> assignments;
  std::vector<TableRefPtr> from;
  ExpressionPtr where;
};
struct Delete {
  ObjectName target;
  std::vector<TableRefPtr> from;
  ExpressionPtr where;
};

struct If {
  ExpressionPtr condition;
  StatementPtr then;
  StatementPtr otherwise;  // may be null
};
struct Block {
  std::vector<Statement> statements;
};
struct RaiseError {
  ExpressionPtr message;
  ExpressionPtr severity;
  ExpressionPtr state;
  std::vector<ExpressionPtr> arguments;
};
struct Print {
  ExpressionPtr message;
};
struct Argument {
  Name parameter;       // with its @; empty for a positional one
  ExpressionPtr value;  // a Literal (signed numbers as Unary Minus), NullLiteral, DefaultValue, Variable; a
                        // bare word is a text Literal
};
struct Execute {
  ObjectName procedure;
  std::vector<Argument> arguments;
};
struct SetOption {  // SET NOCOUNT ON: what has an effect is the binder's matter
  Name option;
  ObjectName table;  // of IDENTITY_INSERT
  bool on = false;
};

enum class Nullability : std::uint8_t { NotGiven, Null, NotNull };
enum class KeyKind : std::uint8_t { None, PrimaryKey, Unique };
struct Identity {
  std::int64_t seed = 1;
  std::int64_t increment = 1;
};
struct ColumnDefinition {
  Name name;
  DataType type;
  Nullability nullability = Nullability::NotGiven;
  bool hasIdentity = false;
  Identity identity;
  ExpressionPtr defaultValue;  // may be null
  Name defaultName;            // of the constraint, may be empty
  KeyKind key = KeyKind::None;
  Name keyName;  // of the constraint, may be empty
};
struct IndexColumn {
  Name name;
  bool descending = false;
};
struct TableConstraint {
  Name name;  // may be empty
  Position position;
  KeyKind kind = KeyKind::PrimaryKey;
  std::vector<IndexColumn> columns;
};
struct CreateTable {
  ObjectName table;
  std::vector<ColumnDefinition> columns;
  std::vector<TableConstraint> constraints;
};
struct CreateIndex {
  Name name;
  ObjectName table;
  std::vector<IndexColumn> columns;
  bool unique = false;
};
struct ColumnDefault {  // of a column that is there
  Name name;            // of the constraint, may be empty
  Name column;
  ExpressionPtr value;
};
struct AlterTableAdd {
  ObjectName table;
  std::vector<ColumnDefinition> columns;
  std::vector<TableConstraint> constraints;
  std::vector<ColumnDefault> defaults;
};
enum class DropKind : std::uint8_t { Table, Index, Procedure };
struct DropItem {
  ObjectName name;
  ObjectName table;  // of an index: `DROP INDEX i ON t` and `DROP INDEX t.i`
};
struct Drop {
  DropKind kind;
  bool ifExists = false;
  std::vector<DropItem> items;
};
struct ProcedureParameter {
  Name name;  // with its @
  DataType type;
  ExpressionPtr defaultValue;  // may be null: then an argument is needed
};
struct CreateProcedure {
  ObjectName name;
  std::vector<ProcedureParameter> parameters;
  std::vector<Statement> body;  // it has the rest of the batch
};

struct Statement {
  using Node = std::variant<SelectStatement, Insert, Update, Delete, If, Block, RaiseError, Print, Execute,
                            SetOption, CreateTable, CreateIndex, AlterTableAdd, Drop, CreateProcedure>;
  Node node;
  Position position;
  std::string_view text;         // as written, from the first word to the last
  std::uint32_t firstToken = 0;  // its words in Script::tokens: [firstToken, endToken)
  std::uint32_t endToken = 0;
};

// A parsed batch.
struct Script {
  std::vector<Token> tokens;          // ends with a token of kind End
  std::deque<std::string> unescaped;  // texts that are not in the batch as such
  std::vector<Statement> statements;
};

}  // namespace goodsbook::engine
