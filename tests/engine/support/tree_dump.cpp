#include "tests/engine/support/tree_dump.h"

#include <vector>

namespace goodsbook::engine::test {
namespace {

std::string list(const std::string& head, const std::vector<std::string>& parts) {
  std::string text = "(" + head;
  for (const std::string& part : parts) {
    if (!part.empty()) text += " " + part;
  }
  return text + ")";
}

std::string quoted(std::string_view value) {
  return "<" + std::string(value) + ">";
}

std::string dump(const Name& name) {
  return name.empty() ? "" : quoted(name.text);
}

std::string dump(const ObjectName& object) {
  std::string text;
  if (!object.database.empty()) text += dump(object.database) + ".";
  if (!object.schema.empty() || !text.empty()) text += dump(object.schema) + ".";
  return text + dump(object.name);
}

std::string dump(const DataType& type) {
  return list("type", {dump(type.name), std::to_string(type.width), std::to_string(type.scale)});
}

std::string dump(const Query& query);
std::string dump(const ExpressionPtr& expression) {
  return expression ? test::dump(*expression) : "";
}

std::string dumpAll(const std::string& head, const std::vector<ExpressionPtr>& expressions) {
  std::vector<std::string> parts;
  for (const ExpressionPtr& expression : expressions) parts.push_back(dump(expression));
  return expressions.empty() ? "" : list(head, parts);
}

std::string dumpNames(const std::string& head, const std::vector<Name>& names) {
  std::vector<std::string> parts;
  for (const Name& name : names) parts.push_back(dump(name));
  return names.empty() ? "" : list(head, parts);
}

std::string maybe(bool given, const char* word) {
  return given ? word : "";
}
std::string marked(const char* head, const std::string& part) {
  return part.empty() ? "" : list(head, {part});
}

struct ExpressionDumper {
  std::string operator()(const Literal& node) const {
    static constexpr const char* kinds[] = {"text", "ntext", "int", "decimal", "float", "binary"};
    return kinds[static_cast<int>(node.kind)] + quoted(node.value);
  }
  std::string operator()(const NullLiteral&) const { return "null"; }
  std::string operator()(const DefaultValue&) const { return "default"; }
  std::string operator()(const ColumnRef& node) const {
    return (node.qualifier.empty() ? "" : dump(node.qualifier) + ".") + dump(node.column);
  }
  std::string operator()(const Star& node) const {
    return (node.qualifier.empty() ? "" : dump(node.qualifier) + ".") + "*";
  }
  std::string operator()(const Variable& node) const { return std::string(node.name.text); }
  std::string operator()(const Unary& node) const {
    static constexpr const char* signs[] = {"+", "-", "~"};
    return list(signs[static_cast<int>(node.op)], {dump(node.operand)});
  }
  std::string operator()(const Binary& node) const {
    static constexpr const char* signs[] = {"+", "-", "*", "/", "%", "&", "|", "^"};
    return list(signs[static_cast<int>(node.op)], {dump(node.left), dump(node.right)});
  }
  std::string operator()(const Case& node) const {
    std::vector<std::string> parts{dump(node.operand)};
    for (const CaseBranch& branch : node.branches) {
      parts.push_back(list("when", {dump(branch.when), dump(branch.then)}));
    }
    parts.push_back(marked("else", dump(node.otherwise)));
    return list("case", parts);
  }
  std::string operator()(const Cast& node) const {
    return list("cast", {dump(node.operand), dump(node.type)});
  }
  std::string operator()(const Convert& node) const {
    return list("convert", {dump(node.type), dump(node.operand), marked("style", dump(node.style))});
  }
  std::string operator()(const FunctionCall& node) const {
    return list("call " + dump(node.name) + maybe(node.distinct, " distinct"),
                {dumpAll("args", node.arguments)});
  }
  std::string operator()(const ScalarSubquery& node) const { return list("scalar", {dump(*node.query)}); }
  std::string operator()(const Comparison& node) const {
    static constexpr const char* signs[] = {"=", "<>", "<", "<=", ">", ">="};
    return list(signs[static_cast<int>(node.op)], {dump(node.left), dump(node.right)});
  }
  std::string operator()(const Logical& node) const {
    return dumpAll(node.op == LogicalOperator::And ? "and" : "or", node.operands);
  }
  std::string operator()(const Not& node) const { return list("not", {dump(node.operand)}); }
  std::string operator()(const Like& node) const {
    return list(maybe(node.negated, "not-") + "like",
                {dump(node.operand), dump(node.pattern), marked("escape", dump(node.escape))});
  }
  std::string operator()(const InList& node) const {
    return list(maybe(node.negated, "not-") + "in", {dump(node.operand), dumpAll("items", node.items)});
  }
  std::string operator()(const InQuery& node) const {
    return list(maybe(node.negated, "not-") + "in", {dump(node.operand), dump(*node.query)});
  }
  std::string operator()(const Between& node) const {
    return list(maybe(node.negated, "not-") + "between",
                {dump(node.operand), dump(node.low), dump(node.high)});
  }
  std::string operator()(const IsNull& node) const {
    return list(maybe(node.negated, "not-") + "is-null", {dump(node.operand)});
  }
  std::string operator()(const Exists& node) const { return list("exists", {dump(*node.query)}); }
};

struct TableDumper {
  std::string operator()(const NamedTable& node) const {
    return list("table", {dump(node.name), dump(node.alias)});
  }
  std::string operator()(const DerivedTable& node) const {
    return list("derived", {dump(*node.query), dump(node.alias), dumpNames("columns", node.columns)});
  }
  std::string operator()(const Join& node) const {
    static constexpr const char* kinds[] = {"inner", "left", "right", "full", "cross"};
    return list(kinds[static_cast<int>(node.kind)],
                {std::visit(*this, node.left->node), std::visit(*this, node.right->node), dump(node.on)});
  }
};

std::string dumpFrom(const std::vector<TableRefPtr>& tables) {
  std::vector<std::string> parts;
  for (const TableRefPtr& table : tables) parts.push_back(std::visit(TableDumper{}, table->node));
  return tables.empty() ? "" : list("from", parts);
}

std::string dump(const Select& select) {
  std::vector<std::string> parts{maybe(select.distinct, "distinct"), marked("top", dump(select.top))};
  for (const SelectItem& item : select.items) {
    const std::string expression = dump(item.expression);
    parts.push_back(item.alias.empty() ? expression : list("as", {expression, dump(item.alias)}));
  }
  parts.push_back(dumpFrom(select.from));
  parts.push_back(marked("where", dump(select.where)));
  parts.push_back(dumpAll("group", select.groupBy));
  parts.push_back(marked("having", dump(select.having)));
  return list("select", parts);
}

std::string dump(const Query& query) {
  std::vector<std::string> parts;
  for (const QueryTerm& term : query.terms) {
    if (!parts.empty()) parts.emplace_back(term.op == SetOperator::UnionAll ? "union-all" : "union");
    const auto* select = std::get_if<Select>(&term.operand);
    parts.push_back(select != nullptr ? dump(*select) : dump(*std::get<QueryPtr>(term.operand)));
  }
  for (const OrderItem& item : query.orderBy) {
    parts.push_back(list(item.descending ? "desc" : "asc", {dump(item.expression)}));
  }
  return parts.size() == 1 && std::holds_alternative<Select>(query.terms[0].operand) ? parts[0]
                                                                                     : list("query", parts);
}

std::string dumpStatements(const std::string& head, const std::vector<Statement>& statements) {
  std::vector<std::string> parts;
  for (const Statement& statement : statements) parts.push_back(test::dump(statement));
  return list(head, parts);
}

std::string dump(KeyKind kind) {
  return kind == KeyKind::None ? "" : kind == KeyKind::PrimaryKey ? "primary" : "unique";
}

std::string dump(const ColumnDefinition& column) {
  static constexpr const char* nulls[] = {"", "null", "not-null"};
  const std::string identity = column.hasIdentity ? "identity:" + std::to_string(column.identity.seed) + ":" +
                                                        std::to_string(column.identity.increment)
                                                  : "";
  return list("column",
              {dump(column.name), dump(column.type), nulls[static_cast<int>(column.nullability)], identity,
               marked("default", dump(column.defaultValue)), marked("named", dump(column.defaultName)),
               dump(column.key), marked("key", dump(column.keyName))});
}

std::string dumpIndexColumns(const std::vector<IndexColumn>& columns) {
  std::vector<std::string> parts;
  for (const IndexColumn& column : columns)
    parts.push_back(dump(column.name) + maybe(column.descending, "desc"));
  return list("columns", parts);
}

std::vector<std::string> elements(const std::vector<ColumnDefinition>& columns,
                                  const std::vector<TableConstraint>& constraints) {
  std::vector<std::string> parts;
  for (const ColumnDefinition& column : columns) parts.push_back(dump(column));
  for (const TableConstraint& key : constraints) {
    parts.push_back(list("key", {dump(key.name), dump(key.kind), dumpIndexColumns(key.columns)}));
  }
  return parts;
}

struct StatementDumper {
  std::string operator()(const SelectStatement& node) const { return dump(*node.query); }
  std::string operator()(const ValueRows& node) const {
    std::vector<std::string> parts;
    for (const auto& row : node.rows) parts.push_back(dumpAll("row", row));
    return list("values", parts);
  }
  std::string operator()(const DefaultValues&) const { return "default-values"; }
  std::string operator()(const QueryPtr& query) const { return dump(*query); }
  std::string operator()(const Insert& node) const {
    return list("insert",
                {dump(node.table), dumpNames("columns", node.columns), std::visit(*this, node.source)});
  }
  std::string operator()(const Update& node) const {
    std::vector<std::string> parts{dump(node.target)};
    for (const Assignment& set : node.assignments) {
      parts.push_back(
          list("set", {ExpressionDumper{}(ColumnRef{set.qualifier, set.column}), dump(set.value)}));
    }
    parts.push_back(dumpFrom(node.from));
    parts.push_back(marked("where", dump(node.where)));
    return list("update", parts);
  }
  std::string operator()(const Delete& node) const {
    return list("delete", {dump(node.target), dumpFrom(node.from), marked("where", dump(node.where))});
  }
  std::string operator()(const If& node) const {
    return list("if", {dump(node.condition), test::dump(*node.then),
                       node.otherwise ? marked("else", test::dump(*node.otherwise)) : ""});
  }
  std::string operator()(const Block& node) const { return dumpStatements("block", node.statements); }
  std::string operator()(const RaiseError& node) const {
    return list("raiserror",
                {dump(node.message), dump(node.severity), dump(node.state), dumpAll("args", node.arguments)});
  }
  std::string operator()(const Print& node) const { return list("print", {dump(node.message)}); }
  std::string operator()(const Execute& node) const {
    std::vector<std::string> parts{dump(node.procedure)};
    for (const Argument& argument : node.arguments) {
      parts.push_back(std::string(argument.parameter.text) + ":" + dump(argument.value));
    }
    return list("exec", parts);
  }
  std::string operator()(const SetOption& node) const {
    std::vector<std::string> parts{dump(node.option)};
    if (!node.table.empty()) parts.push_back(dump(node.table));
    parts.push_back(node.on ? "on" : "off");
    return list("set", parts);
  }
  std::string operator()(const CreateTable& node) const {
    return list("create-table " + dump(node.table), elements(node.columns, node.constraints));
  }
  std::string operator()(const AlterTableAdd& node) const {
    std::vector<std::string> parts = elements(node.columns, node.constraints);
    for (const ColumnDefault& added : node.defaults) {
      parts.push_back(list(
          "default", {added.name.empty() ? "" : dump(added.name), dump(added.column), dump(added.value)}));
    }
    return list("alter-table " + dump(node.table), parts);
  }
  std::string operator()(const CreateIndex& node) const {
    return list("create-index", {maybe(node.unique, "unique"), dump(node.name), dump(node.table),
                                 dumpIndexColumns(node.columns)});
  }
  std::string operator()(const Drop& node) const {
    static constexpr const char* kinds[] = {"drop-table", "drop-index", "drop-procedure"};
    std::vector<std::string> parts{maybe(node.ifExists, "if-exists")};
    for (const DropItem& item : node.items) {
      parts.push_back(dump(item.name) + (item.table.empty() ? "" : "@" + dump(item.table)));
    }
    return list(kinds[static_cast<int>(node.kind)], parts);
  }
  std::string operator()(const CreateProcedure& node) const {
    std::vector<std::string> parts{dump(node.name)};
    for (const ProcedureParameter& parameter : node.parameters) {
      parts.push_back(
          list(std::string(parameter.name.text), {dump(parameter.type), dump(parameter.defaultValue)}));
    }
    parts.push_back(dumpStatements("body", node.body));
    return list("create-procedure", parts);
  }
};

}  // namespace

std::string dump(const Expression& expression) {
  return std::visit(ExpressionDumper{}, expression.node);
}

std::string dump(const Statement& statement) {
  return std::visit(StatementDumper{}, statement.node);
}

std::string dump(const Script& script) {
  std::string text;
  for (const Statement& statement : script.statements) text += dump(statement) + "\n";
  return text;
}

}  // namespace goodsbook::engine::test
