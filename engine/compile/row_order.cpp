#include "engine/compile/row_order.h"

#include <algorithm>
#include <map>

#include "engine/compile/nodes.h"

namespace goodsbook::engine {
namespace {

// The base tables of a join by source.
using Tables = std::map<int, const TableInfo*>;

void collectTables(const BoundFrom& from, const Catalog& catalog, Tables& tables) {
  if (const auto* source = std::get_if<BoundSource>(&from.content)) {
    if (!source->query) tables[source->id] = catalog.findTable(source->table);
    return;
  }
  const auto& join = std::get<BoundJoin>(from.content);
  collectTables(*join.left, catalog, tables);
  collectTables(*join.right, catalog, tables);
}

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

// Whether SQLite can start from the rows that a condition lets through: `indexed column = value`, or a column
// among the rows of a query.
bool canStartFrom(const Node& condition, const Tables& tables) {
  if (std::holds_alternative<InQueryNode>(condition.content)) return true;
  const auto* infix = std::get_if<InfixNode>(&condition.content);
  if (infix == nullptr) return false;
  const auto fits = [&](const NodePtr& part) { return canStartFrom(*part, tables); };
  if (infix->op == "AND") return std::any_of(infix->operands.begin(), infix->operands.end(), fits);
  const auto* column = std::get_if<ColumnNode>(&infix->operands.front()->content);
  if (infix->op != "=" || column == nullptr ||
      std::holds_alternative<ColumnNode>(infix->operands[1]->content))
    return false;
  const auto found = tables.find(column->source);
  if (found == tables.end() || found->second == nullptr) return false;
  const auto at = found->second->find(column->column);
  const std::vector<std::size_t>& indexed = found->second->indexed;
  return at && std::find(indexed.begin(), indexed.end(), *at) != indexed.end();
}

}  // namespace

void keepRowOrder(BoundQuery& query, const Catalog& catalog) {
  if (query.terms.size() != 1 || !query.orderBy.empty()) return;
  const auto* select = std::get_if<BoundSelect>(&query.terms.front().content);
  if (select == nullptr || !select->where || select->distinct || select->grouped || select->limit ||
      select->from.empty())
    return;
  Tables tables;
  for (const BoundFromPtr& part : select->from) collectTables(*part, catalog, tables);
  const BoundSource* first = firstTable(*select->from.front());
  if (first == nullptr || tables.size() < 2 || !canStartFrom(*select->where, tables)) return;
  if (const TableInfo* table = tables.at(first->id))
    query.orderBy.push_back({.node = makeNode(ColumnNode{first->id, table->rowName})});
}

}  // namespace goodsbook::engine
