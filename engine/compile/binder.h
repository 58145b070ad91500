#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/catalog/catalog.h"
#include "engine/compile/bound.h"
#include "engine/compile/plan.h"
#include "engine/compile/scope.h"
#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// A value in SQLite's terms with its type in T-SQL's.
struct BoundValue {
  NodePtr node{};
  SqlType type{};
  bool stored = false;  // a table's column: SQLite knows its collation
  int parameter = -1;   // of a constant: its place in Plan::parameters, so that conversions happen there
  const Literal* literal = nullptr;  // the literal behind it
};

// Binds one statement: looks every name up, decides every type, conversion and collation, and writes into the
// plan which values the statement needs. Decisions are made here, text in the emitter.
class Binder {
 public:
  // `variables` are the parameters of the procedure whose body is bound. `firstOrdinal` is the number of the
  // statement's first literal.
  Binder(const Catalog& catalog, std::span<const ParameterInfo> variables, int firstOrdinal, Plan& plan);

  // Inserts into this table give the values of its identity column themselves.
  void takeIdentitiesOf(std::string_view table) { identitiesOf_ = table; }

  void bindSelect(const Query& query);
  void bindInsert(const Insert& insert);
  void bindUpdate(const Update& update);
  void bindDelete(const Delete& statement);
  void bindIfCondition(const Expression& condition);

 private:
  enum class Clause : std::uint8_t { Items, Where, On, GroupBy, Having, OrderBy, Assignment };
  enum class Purpose : std::uint8_t { Implicit, Cut, Assign };
  struct Target {  // what an assignment goes to
    const TableInfo* table;
    std::size_t column;
  };
  // What is put aside while a select inside another one is bound.
  struct Context {
    Clause clause;
    bool inAggregate;
    bool sawAggregate;
  };
  struct WriteTarget {
    const TableInfo* table = nullptr;
    int source = 0;
  };

  // Queries (bind_query.cpp, bind_from.cpp, bind_group.cpp)
  BoundQuery bindQuery(const Query& query, const Scope* outer, bool orderAllowed);
  BoundSelect bindSelectCore(const Select& select, const Scope* outer, const std::vector<OrderItem>& orderBy,
                             std::vector<BoundOrder>& order);
  void bindGroupBy(const Select& select, const Scope& scope, BoundSelect& bound,
                   std::vector<std::string>& keys);
  void bindItems(const Select& select, const Scope& scope, BoundSelect& bound);
  void expandStar(const Star& star, const Scope& scope, BoundSelect& bound);
  NodePtr bindTop(const Expression& top, const Scope& scope);
  BoundOrder bindOrder(const OrderItem& item, const Scope& scope, BoundSelect& bound);
  BoundOrder bindCompoundOrder(const OrderItem& item, const BoundQuery& bound);
  void mergeTerms(BoundQuery& bound);
  std::vector<BoundFromPtr> bindFrom(const std::vector<TableRefPtr>& tables, Scope& scope);
  BoundFromPtr bindTable(const TableRef& table, Scope& scope);
  BoundFromPtr bindNamedTable(const NamedTable& table, Scope& scope);
  BoundFromPtr bindDerivedTable(const DerivedTable& table, Scope& scope);
  BoundFromPtr bindJoin(const Join& join, Scope& scope);
  void addSource(Scope& scope, Source source);
  const TableInfo& requireTable(const ObjectName& name) const;
  void coerceColumn(BoundQuery& query, std::size_t column, SqlType to, Purpose purpose,
                    const Target* target = nullptr);

  // Values (bind_value.cpp, bind_operator.cpp, bind_function.cpp, bind_aggregate.cpp)
  BoundValue bindValue(const Expression& expression, const Scope& scope);
  BoundValue bindLiteral(const Literal& literal);
  BoundValue bindVariable(const Variable& variable);
  BoundValue bindColumn(const ColumnRef& reference, const Scope& scope);
  BoundValue bindUnary(const Unary& unary, const Scope& scope);
  BoundValue bindBinary(const Binary& binary, const Scope& scope);
  BoundValue bindNumbers(BinaryOperator op, BoundValue left, BoundValue right);
  BoundValue bindDateArithmetic(BinaryOperator op, BoundValue left, BoundValue right);
  BoundValue bindCase(const Case& expression, const Scope& scope);
  BoundValue bindCast(const Expression& operand, const DataType& type, const Expression* style,
                      const Scope& scope);
  BoundValue bindSubquery(const Query& query, const Scope& scope);
  BoundValue bindFunction(const FunctionCall& call, const Scope& scope);
  BoundValue bindAggregate(const FunctionCall& call, const Scope& scope);
  BoundValue bindCoalesce(const FunctionCall& call, const Scope& scope);
  BoundValue bindIsNullFunction(const FunctionCall& call, const Scope& scope);
  BoundValue bindNullIf(const FunctionCall& call, const Scope& scope);
  BoundValue bindRound(const FunctionCall& call, const Scope& scope);
  BoundValue bindNumberFunction(const FunctionCall& call, std::string_view sqlName, bool whole,
                                const Scope& scope);
  BoundValue bindDateFunction(const FunctionCall& call, const Scope& scope);
  BoundValue now();

  // Conditions (bind_condition.cpp)
  NodePtr bindCondition(const Expression& expression, const Scope& scope);
  NodePtr bindComparison(ComparisonOperator op, BoundValue left, BoundValue right);
  NodePtr bindLike(const Like& like, const Scope& scope);
  NodePtr bindInList(const InList& in, const Scope& scope);
  NodePtr bindInQuery(const InQuery& in, const Scope& scope);
  NodePtr bindBetween(const Between& between, const Scope& scope);

  // Conversions (bind_conversion.cpp)
  BoundValue coerce(BoundValue value, SqlType to, Purpose purpose, const Target* target = nullptr,
                    int style = -1);
  void coerceParameter(BoundValue& value, SqlType to, Purpose purpose, const Target* target, int style);
  BoundValue toText(BoundValue value);
  BoundValue toWhole(BoundValue value);
  BoundValue toNumber(BoundValue value);
  BoundValue toDateTime(BoundValue value);
  void harmonize(BoundValue& left, BoundValue& right);
  SqlType mergedType(const BoundValue& left, const BoundValue& right);
  NodePtr collated(BoundValue value) const;  // with its collation spelled out where SQLite does not know it
  BoundValue addParameter(ParameterSource source, SqlType type);
  void pin(const BoundValue& value);

  // Writes (bind_insert.cpp, bind_update.cpp)
  std::vector<std::size_t> insertColumns(const Insert& insert, const TableInfo& table) const;
  NodePtr bindDefault(const TableInfo& table, std::size_t column);
  NodePtr bindAssigned(const Expression& value, const Target& target, const Scope& scope);
  std::string insertRows(const ValueRows& values, const Insert& insert, const TableInfo& table,
                         const std::vector<std::size_t>& columns, std::size_t given);
  std::string insertQuery(const Query& query, const Insert& insert, const TableInfo& table,
                          const std::vector<std::size_t>& columns, std::size_t given);
  BoundSelect wrapForInsert(BoundQuery query);
  struct BoundAssignment {
    std::size_t column;
    NodePtr value;
  };
  std::vector<BoundAssignment> bindAssignments(const Update& update, const TableInfo& table,
                                               const Scope& scope);
  WriteTarget bindWriteTarget(const ObjectName& target, const std::vector<TableRefPtr>& from, Scope& scope,
                              std::vector<BoundFromPtr>& bound);
  NodePtr rowOf(const WriteTarget& target) const;

  const Catalog& catalog_;
  std::span<const ParameterInfo> variables_;
  int firstOrdinal_;
  Plan& plan_;
  std::string_view identitiesOf_;
  int nextSource_ = 1;
  Clause clause_ = Clause::Items;
  bool inAggregate_ = false;
  bool sawAggregate_ = false;
};

}  // namespace goodsbook::engine
