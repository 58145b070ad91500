#include "engine/syntax/printer.h"

#include "engine/syntax/printer_impl.h"

namespace goodsbook::engine {
namespace {

template <class Node>
std::string printed(const Node& node) {
  SqlWriter writer;
  Printer(writer).print(node);
  return writer.take();
}

std::string_view wordsOf(JoinKind kind) {
  switch (kind) {
    case JoinKind::Inner:
      return "INNER JOIN";
    case JoinKind::Left:
      return "LEFT JOIN";
    case JoinKind::Right:
      return "RIGHT JOIN";
    case JoinKind::Full:
      return "FULL JOIN";
    case JoinKind::Cross:
      return "CROSS JOIN";
  }
  return {};
}

}  // namespace

std::string print(const Script& script) {
  return printed(script);
}

std::string print(const Statement& statement) {
  return printed(statement);
}

std::string print(const Query& query) {
  return printed(query);
}

std::string print(const Expression& expression) {
  SqlWriter writer;
  Printer(writer).printCondition(expression);
  return writer.take();
}

void Printer::print(const Query& query) {
  bool first = true;
  for (const QueryTerm& term : query.terms) {
    if (!first) writer_.word(term.op == SetOperator::UnionAll ? "UNION ALL" : "UNION");
    first = false;
    std::visit(*this, term.operand);
  }
  if (query.orderBy.empty()) return;
  writer_.word("ORDER BY");
  Commas commas(writer_);
  for (const OrderItem& item : query.orderBy) {
    commas.next();
    printValue(*item.expression);
    if (item.descending) writer_.word("DESC");
  }
}

void Printer::operator()(const QueryPtr& node) {
  writer_.open();
  print(*node);
  writer_.close();
}

void Printer::operator()(const Select& node) {
  writer_.word("SELECT");
  if (node.distinct) writer_.word("DISTINCT");
  if (node.top) {
    writer_.word("TOP");
    writer_.open();
    printValue(*node.top);
    writer_.close();
  }
  Commas commas(writer_);
  for (const SelectItem& item : node.items) {
    commas.next();
    printValue(*item.expression);
    if (item.alias.empty()) continue;
    writer_.word("AS");
    writer_.name(item.alias.text);
  }
  printFrom(node.from);
  printWhere(node.where);
  if (!node.groupBy.empty()) {
    writer_.word("GROUP BY");
    printList(node.groupBy);
  }
  if (node.having) {
    writer_.word("HAVING");
    printCondition(*node.having);
  }
}

void Printer::printFrom(const std::vector<TableRefPtr>& tables) {
  if (tables.empty()) return;
  writer_.word("FROM");
  Commas commas(writer_);
  for (const TableRefPtr& table : tables) {
    commas.next();
    std::visit(*this, table->node);
  }
}

void Printer::printWhere(const ExpressionPtr& condition) {
  if (!condition) return;
  writer_.word("WHERE");
  printCondition(*condition);
}

void Printer::operator()(const NamedTable& node) {
  writer_.object(node.name);
  if (node.alias.empty()) return;
  writer_.word("AS");
  writer_.name(node.alias.text);
}

void Printer::operator()(const DerivedTable& node) {
  writer_.open();
  print(*node.query);
  writer_.close();
  writer_.word("AS");
  writer_.name(node.alias.text);
  if (!node.columns.empty()) printNames(node.columns);
}

void Printer::operator()(const Join& node) {
  std::visit(*this, node.left->node);
  writer_.word(wordsOf(node.kind));
  const bool parenthesised = std::holds_alternative<Join>(node.right->node);
  if (parenthesised) writer_.open();
  std::visit(*this, node.right->node);
  if (parenthesised) writer_.close();
  if (!node.on) return;
  writer_.word("ON");
  printCondition(*node.on);
}

void Printer::printNames(const std::vector<Name>& names) {
  writer_.open();
  Commas commas(writer_);
  for (const Name& name : names) {
    commas.next();
    writer_.name(name.text);
  }
  writer_.close();
}

}  // namespace goodsbook::engine
