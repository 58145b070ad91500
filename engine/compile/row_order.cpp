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

}  // namespace

void keepRowOrder(BoundQuery& query, const Catalog& catalog) {
  if (query.terms.size() != 1 || !query.orderBy.empty()) return;
  const auto* select = std::get_if<BoundSelect>(&query.terms.front().content);
  if (select == nullptr || !select->where || select->distinct || select->grouped || select->limit ||
      select->from.empty())
    return;
  const bool joined =
      select->from.size() > 1 || std::holds_alternative<BoundJoin>(select->from.front()->content);
  const BoundSource* first = joined ? firstTable(*select->from.front()) : nullptr;
  const TableInfo* table = first == nullptr ? nullptr : catalog.findTable(first->table);
  if (table != nullptr && canStartFrom(*select->where, first->id, *table))
    query.orderBy.push_back({.node = makeNode(ColumnNode{first->id, table->rowName})});
}

}  // namespace goodsbook::engine
