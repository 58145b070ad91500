#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "engine/syntax/ast.h"
#include "engine/syntax/sql_writer.h"

namespace goodsbook::engine {

// One method a kind of node. Parentheses are written where the tree would be read otherwise without them.
class Printer {
 public:
  explicit Printer(SqlWriter& writer) : writer_(writer) {}

  void print(const Script& script);
  void print(const Statement& statement);
  void print(const Query& query);
  void printValue(const Expression& expression) { print(expression, Tightness::Additive); }
  void printCondition(const Expression& expression) { print(expression, Tightness::Or); }

  // Expressions (printer_expression.cpp)
  void operator()(const Literal& node);
  void operator()(const NullLiteral& node);
  void operator()(const DefaultValue& node);
  void operator()(const ColumnRef& node);
  void operator()(const Star& node);
  void operator()(const Variable& node);
  void operator()(const Unary& node);
  void operator()(const Binary& node);
  void operator()(const Case& node);
  void operator()(const Cast& node);
  void operator()(const Convert& node);
  void operator()(const FunctionCall& node);
  void operator()(const ScalarSubquery& node);
  void operator()(const Comparison& node);
  void operator()(const Logical& node);
  void operator()(const Not& node);
  void operator()(const Like& node);
  void operator()(const InList& node);
  void operator()(const InQuery& node);
  void operator()(const Between& node);
  void operator()(const IsNull& node);
  void operator()(const Exists& node);

  // Tables and terms of a query (printer.cpp)
  void operator()(const NamedTable& node);
  void operator()(const DerivedTable& node);
  void operator()(const Join& node);
  void operator()(const Select& node);
  void operator()(const QueryPtr& node);

  // Statements (printer_statement.cpp)
  void operator()(const SelectStatement& node);
  void operator()(const ValueRows& node);
  void operator()(const DefaultValues& node);
  void operator()(const Insert& node);
  void operator()(const Update& node);
  void operator()(const Delete& node);
  void operator()(const If& node);
  void operator()(const Block& node);
  void operator()(const RaiseError& node);
  void operator()(const Print& node);
  void operator()(const Execute& node);
  void operator()(const SetOption& node);
  void operator()(const CreateTable& node);
  void operator()(const CreateIndex& node);
  void operator()(const AlterTableAdd& node);
  void operator()(const Drop& node);
  void operator()(const CreateProcedure& node);

 private:
  // Between the members of a list.
  class Commas {
   public:
    explicit Commas(SqlWriter& writer) : writer_(writer) {}
    void next() {
      if (!first_) writer_.comma();
      first_ = false;
    }

   private:
    SqlWriter& writer_;
    bool first_ = true;
  };

  enum class Tightness : std::uint8_t { Or, And, Not, Comparison, Additive, Multiplicative, Prefix, Primary };
  static Tightness tightnessOf(const Expression& expression);
  void print(const Expression& expression, Tightness weakest);
  void printList(const std::vector<ExpressionPtr>& values);
  void printType(const DataType& type);
  void printFrom(const std::vector<TableRefPtr>& tables);
  void printWhere(const ExpressionPtr& condition);
  void printNames(const std::vector<Name>& names);
  void printStatements(const std::vector<Statement>& statements);
  void printColumn(const ColumnDefinition& column);
  void printConstraint(const TableConstraint& constraint);
  void printConstraintName(const Name& name);
  void printElements(Commas& commas, const std::vector<ColumnDefinition>& columns,
                     const std::vector<TableConstraint>& constraints);
  void printIndexColumns(const std::vector<IndexColumn>& columns);
  void printParameter(const ProcedureParameter& parameter);

  SqlWriter& writer_;
};

}  // namespace goodsbook::engine
