#include "engine/compile/row_order.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>

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

using Conjunct = std::function<bool(const Node&)>;

bool anyConjunct(const Node& condition, const Conjunct& holds) {
  const auto* infix = std::get_if<InfixNode>(&condition.content);
  if (infix == nullptr || infix->op != "AND") return holds(condition);
  return std::any_of(infix->operands.begin(), infix->operands.end(),
                     [&](const NodePtr& part) { return anyConjunct(*part, holds); });
}

bool isRowsOfQuery(const Node& condition) {
  const auto* in = std::get_if<InQueryNode>(&condition.content);
  return in != nullptr && std::holds_alternative<ColumnNode>(in->operand->content);
}

// Tells the tables of a join for `indexed column = value`.
class Indexes {
 public:
  Indexes(const BoundFrom& from, const Catalog& catalog) { collect(from, catalog); }

  // The source whose index finds the rows of such a condition.
  std::optional<int> sourceOf(const Node& condition) const {
    const auto* infix = std::get_if<InfixNode>(&condition.content);
    if (infix == nullptr || infix->op != "=") return std::nullopt;
    const auto* column = std::get_if<ColumnNode>(&infix->operands[0]->content);
    if (column == nullptr || std::holds_alternative<ColumnNode>(infix->operands[1]->content))
      return std::nullopt;
    const auto table = tables_.find(column->source);
    if (table == tables_.end()) return std::nullopt;
    const auto at = table->second->find(column->column);
    const auto& indexed = table->second->indexed;
    if (!at || std::find(indexed.begin(), indexed.end(), *at) == indexed.end()) return std::nullopt;
    return column->source;
  }

 private:
  void collect(const BoundFrom& from, const Catalog& catalog) {
    if (const auto* join = std::get_if<BoundJoin>(&from.content)) {
      collect(*join->left, catalog);
      collect(*join->right, catalog);
      return;
    }
    const auto& source = std::get<BoundSource>(from.content);
    if (const TableInfo* table = source.query ? nullptr : catalog.findTable(source.table))
      tables_[source.id] = table;
  }

  std::map<int, const TableInfo*> tables_;
};

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
  const Indexes indexes(*select->from.front(), catalog);
  const auto finds = [&](const Conjunct& holds) {
    return select->where && anyConjunct(*select->where, holds);
  };
  if (finds([&](const Node& part) { return isRowsOfQuery(part) || indexes.sourceOf(part) == first->id; }))
    // Few rows are sorted in no time.
    query.orderBy.push_back({.node = makeNode(ColumnNode{first->id, table->rowName})});
  else if (!finds([&](const Node& part) { return indexes.sourceOf(part).has_value(); }))
    readAsWritten(*select->from.front());  // all rows of a large list had better come in their order
}

}  // namespace goodsbook::engine
