#include "engine/compile/row_order.h"

#include <algorithm>

#include "engine/compile/nodes.h"

namespace goodsbook::engine {
namespace {

// The first table of a join whose rows are all there; null where it is derived or can be missing.
const BoundSource* firstTable(const BoundFrom& from) {
  const BoundFrom* part = &from;
  while (const auto* join = std::get_if<BoundJoin>(&part->content)) {
    if (join->kind != "JOIN" && join->kind != "LEFT JOIN") return nullptr;
    part = join->left.get();
  }
  const auto& source = std::get<BoundSource>(part->content);
  return source.query ? nullptr : &source;
}

// Whether SQLite can start from the rows of a table that a condition lets through: `indexed column = value`,
// or its rows among those of a query.
bool canStartFrom(const Node& condition, int source, const TableInfo& table) {
  const auto isColumn = [&](const Node& node) {
    const auto* column = std::get_if<ColumnNode>(&node.content);
    return column != nullptr && column->source == source ? column : nullptr;
  };
  if (const auto* in = std::get_if<InQueryNode>(&condition.content)) return isColumn(*in->operand) != nullptr;
  const auto* infix = std::get_if<InfixNode>(&condition.content);
  if (infix == nullptr) return false;
  if (infix->op == "AND")
    return std::any_of(infix->operands.begin(), infix->operands.end(),
                       [&](const NodePtr& part) { return canStartFrom(*part, source, table); });
  const ColumnNode* column = infix->op == "=" ? isColumn(*infix->operands.front()) : nullptr;
  if (column == nullptr || std::holds_alternative<ColumnNode>(infix->operands[1]->content)) return false;
  const auto at = table.find(column->column);
  return at && std::find(table.indexed.begin(), table.indexed.end(), *at) != table.indexed.end();
}

bool speaksOfOthers(const Node& condition, int source) {
  bool others = false;
  walkNode(condition, [&](const Node& part) {
    const auto* column = std::get_if<ColumnNode>(&part.content);
    others = others || !isSimple(part) || (column != nullptr && column->source != source);
    return !others;
  });
  return others;
}

// SQLite reads the tables of a CROSS JOIN in the order in which they are written.
void readAsWritten(BoundFrom& from) {
  for (auto* join = std::get_if<BoundJoin>(&from.content); join != nullptr;
       join = std::get_if<BoundJoin>(&join->left->content))
    if (join->kind == "JOIN") join->kind = "CROSS JOIN";
}

}  // namespace

void keepRowOrder(BoundQuery& query, const Catalog& catalog) {
  if (query.terms.size() != 1 || !query.orderBy.empty()) return;
  auto* select = std::get_if<BoundSelect>(&query.terms.front().content);
  if (select == nullptr || select->distinct || select->grouped || select->limit || select->from.size() != 1 ||
      !std::holds_alternative<BoundJoin>(select->from.front()->content))
    return;
  const BoundSource* first = firstTable(*select->from.front());
  const TableInfo* table = first == nullptr ? nullptr : catalog.findTable(first->table);
  if (table == nullptr) return;
  // Few rows are sorted in no time; all rows of a large list had better come in their order.
  const bool isSorted = select->where && (canStartFrom(*select->where, first->id, *table) ||
                                          speaksOfOthers(*select->where, first->id));
  if (isSorted)
    query.orderBy.push_back({.node = makeNode(ColumnNode{first->id, table->rowName})});
  else
    readAsWritten(*select->from.front());
}

}  // namespace goodsbook::engine
