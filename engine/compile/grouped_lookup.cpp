#include "engine/compile/grouped_lookup.h"

#include <algorithm>
#include <map>
#include <optional>

#include "engine/compile/clone.h"
#include "engine/compile/emitter.h"
#include "engine/compile/nodes.h"

namespace goodsbook::engine {
namespace {

bool isPlainSelect(const BoundSelect& select) {
  return !select.distinct && !select.limit && !select.having && !select.grouped;
}

const BoundSource* onlyTable(const BoundSelect& select) {
  if (select.from.size() != 1) return nullptr;
  return std::get_if<BoundSource>(&select.from.front()->content);
}

bool leadsAnIndex(const Catalog& catalog, const std::string& table, const std::string& column) {
  const TableInfo* info = catalog.findTable(table);
  const auto place = info == nullptr ? std::nullopt : info->find(column);
  return place && std::find(info->indexed.begin(), info->indexed.end(), *place) != info->indexed.end();
}

// A derived table that can be looked up group by group: one group key, read from one table or a UNION ALL of
// such.
class Grouped {
 public:
  static std::optional<Grouped> of(const BoundSource& source, const Catalog& catalog) {
    if (!source.query || source.query->terms.size() != 1 || !source.query->orderBy.empty())
      return std::nullopt;
    const auto* select = std::get_if<BoundSelect>(&source.query->terms.front().content);
    if (select == nullptr || select->groupBy.size() != 1 || select->distinct || select->limit ||
        select->having)
      return std::nullopt;
    const auto* key = std::get_if<ColumnNode>(&select->groupBy.front()->content);
    const BoundSource* rows = onlyTable(*select);
    if (key == nullptr || rows == nullptr || key->source != rows->id) return std::nullopt;
    Grouped grouped{source.id, *select, *rows, *key};
    if (!grouped.isIndexed(catalog) || !grouped.readItems()) return std::nullopt;
    return grouped;
  }

  int id() const { return id_; }
  bool isKey(const std::string& column) const { return column == keyColumn_; }

  // The value of a column for the group whose key is `key`.
  NodePtr value(const std::string& column, const ColumnNode& key) const {
    for (std::size_t i = 0; i < select_->items.size(); ++i)
      if (derivedColumn(i) == column)
        return makeNode(SubqueryNode{lookUp(copy(*select_->items[i].node), select_->items[i].type, key)});
    return nullptr;
  }

  NodePtr exists(const ColumnNode& key) const {
    return makeNode(ExistsNode{lookUp(wholeNode(1), {Kind::Int}, key)});
  }

 private:
  Grouped(int id, const BoundSelect& select, const BoundSource& rows, ColumnNode key)
      : id_(id), select_(&select), rows_(&rows), key_(std::move(key)) {}

  static NodePtr copy(const Node& node) {
    return cloneNode(node, [](const ColumnNode& column) { return makeNode(column); });
  }

  // Which of a part's own columns the key is.
  const ColumnNode* keyOf(const BoundSelect& part) const {
    for (std::size_t i = 0; i < part.items.size(); ++i)
      if (derivedColumn(i) == key_.column) return std::get_if<ColumnNode>(&part.items[i].node->content);
    return nullptr;
  }

  bool isIndexed(const Catalog& catalog) const {
    if (!rows_->query) return leadsAnIndex(catalog, rows_->table, key_.column);
    if (!rows_->query->orderBy.empty()) return false;
    return std::all_of(rows_->query->terms.begin(), rows_->query->terms.end(), [&](const BoundTerm& term) {
      const auto* part = std::get_if<BoundSelect>(&term.content);
      const bool first = &term == &rows_->query->terms.front();
      if (part == nullptr || !isPlainSelect(*part) || (!term.all && !first)) return false;
      const BoundSource* table = onlyTable(*part);
      const ColumnNode* key = keyOf(*part);
      return table != nullptr && !table->query && key != nullptr &&
             leadsAnIndex(catalog, table->table, key->column);
    });
  }

  // Every item is the key, or knows the rows of its group through aggregates only.
  bool readItems() {
    for (std::size_t i = 0; i < select_->items.size(); ++i) {
      const auto* column = std::get_if<ColumnNode>(&select_->items[i].node->content);
      if (column != nullptr && column->source == key_.source && column->column == key_.column &&
          keyColumn_.empty()) {
        keyColumn_ = derivedColumn(i);
        continue;
      }
      bool aggregates = true;
      walkNode(*select_->items[i].node, [&](const Node& part) {
        if (const auto* call = std::get_if<CallNode>(&part.content); call != nullptr && call->aggregate)
          return false;
        aggregates = aggregates && !std::holds_alternative<ColumnNode>(part.content) && isSimple(part);
        return aggregates;
      });
      if (!aggregates) return false;
    }
    return !keyColumn_.empty();
  }

  BoundQueryPtr lookUp(NodePtr item, SqlType type, const ColumnNode& key) const {
    const ColumnMap same = [](const ColumnNode& column) { return makeNode(column); };
    BoundSelect one;
    one.items.push_back({.node = std::move(item), .name = {}, .type = type});
    BoundSource rows{.id = rows_->id, .table = rows_->table, .query = nullptr};
    InfixNode conditions{"AND", {}};
    if (rows_->query) {  // the condition goes into every part, where the index is
      rows.query = std::make_unique<BoundQuery>(cloneQuery(*rows_->query, same));
      for (BoundTerm& term : rows.query->terms) {
        auto& part = std::get<BoundSelect>(term.content);
        InfixNode partConditions{"AND", {}};
        partConditions.operands.push_back(infixNode("=", makeNode(*keyOf(part)), makeNode(key)));
        if (part.where) partConditions.operands.push_back(std::move(part.where));
        part.where = makeNode(std::move(partConditions));
      }
    } else {
      conditions.operands.push_back(infixNode("=", makeNode(key_), makeNode(key)));
    }
    if (select_->where) conditions.operands.push_back(copy(*select_->where));
    if (!conditions.operands.empty()) one.where = makeNode(std::move(conditions));
    one.from.push_back(std::make_unique<BoundFrom>(BoundFrom{std::move(rows)}));
    auto query = std::make_unique<BoundQuery>();
    query->terms.push_back({.content = std::move(one)});
    return query;
  }

  int id_;
  const BoundSelect* select_;
  const BoundSource* rows_;
  ColumnNode key_;
  std::string keyColumn_;
};

void forEachCondition(const Node* condition, const std::function<void(const Node&)>& visit) {
  if (condition == nullptr) return;
  const auto* infix = std::get_if<InfixNode>(&condition->content);
  if (infix == nullptr || infix->op != "AND") return visit(*condition);
  for (const NodePtr& operand : infix->operands) forEachCondition(operand.get(), visit);
}

// A select with a derived table in it, while that table is taken out.
class Rewriting {
 public:
  Rewriting(BoundSelect& select, std::vector<BoundOrder>& order) : select_(select), order_(order) {}

  // The first derived table of the inner joins that can be looked up.
  std::optional<Grouped> find(const Catalog& catalog) const {
    std::optional<Grouped> found;
    for (const BoundFromPtr& part : select_.from) findIn(*part, catalog, found);
    return found;
  }

  // The column that the group's key is compared with, if the key is spoken of nowhere else.
  std::optional<ColumnNode> partnerOf(const Grouped& grouped) const {
    int uses = 0;
    bool inQuery = false;
    const NodeVisit count = [&](const Node& node) {
      const auto* column = std::get_if<ColumnNode>(&node.content);
      if (column != nullptr && column->source == grouped.id() && grouped.isKey(column->column)) ++uses;
      return true;
    };
    forEachNode([&](const Node& node) {
      walkNode(node, count);
      walkNode(node, [&](const Node& part) {
        inQuery = inQuery || !isSimple(part);
        return !inQuery;
      });
    });
    std::optional<ColumnNode> partner;
    const auto look = [&](const Node& condition) {
      const auto* infix = std::get_if<InfixNode>(&condition.content);
      if (infix == nullptr || infix->op != "=") return;
      const auto* left = std::get_if<ColumnNode>(&infix->operands[0]->content);
      const auto* right = std::get_if<ColumnNode>(&infix->operands[1]->content);
      if (left == nullptr || right == nullptr || left->source == right->source) return;
      if (left->source == grouped.id() && grouped.isKey(left->column)) partner = *right;
      if (right->source == grouped.id() && grouped.isKey(right->column)) partner = *left;
    };
    forEachCondition(select_.where.get(), look);
    for (const BoundFromPtr& part : select_.from)
      forEachOn(*part, [&](const NodePtr& on) { forEachCondition(on.get(), look); });
    return uses == 1 && !inQuery ? partner : std::nullopt;
  }

  void apply(const Grouped& grouped, const ColumnNode& partner) {
    const ColumnMap map = [&](const ColumnNode& column) {
      if (column.source != grouped.id()) return makeNode(column);
      return grouped.isKey(column.column) ? makeNode(partner) : grouped.value(column.column, partner);
    };
    InfixNode where{"AND", {}};
    where.operands.push_back(grouped.exists(partner));
    if (select_.where) where.operands.push_back(cloneNode(*select_.where, map));
    for (BoundItem& item : select_.items) item.node = cloneNode(*item.node, map);
    for (NodePtr& key : select_.groupBy) key = cloneNode(*key, map);
    if (select_.having) select_.having = cloneNode(*select_.having, map);
    for (BoundOrder& one : order_) one.node = cloneNode(*one.node, map);
    std::vector<BoundFromPtr> kept;
    BoundFromPtr removed;  // what the map copies from stays until the end
    for (BoundFromPtr& part : select_.from)
      if (BoundFromPtr rest = without(std::move(part), grouped.id(), map, where.operands, removed))
        kept.push_back(std::move(rest));
    select_.from = std::move(kept);
    select_.where = makeNode(std::move(where));
  }

 private:
  static void findIn(const BoundFrom& from, const Catalog& catalog, std::optional<Grouped>& found) {
    if (found) return;
    if (const auto* source = std::get_if<BoundSource>(&from.content)) {
      found = Grouped::of(*source, catalog);
      return;
    }
    const auto& join = std::get<BoundJoin>(from.content);
    if (join.kind != "JOIN") return;
    findIn(*join.left, catalog, found);
    findIn(*join.right, catalog, found);
  }

  static void forEachOn(const BoundFrom& from, const std::function<void(const NodePtr&)>& visit) {
    const auto* join = std::get_if<BoundJoin>(&from.content);
    if (join == nullptr) return;
    forEachOn(*join->left, visit);
    forEachOn(*join->right, visit);
    if (join->on) visit(join->on);
  }

  void forEachNode(const std::function<void(const Node&)>& visit) const {
    for (const BoundItem& item : select_.items) visit(*item.node);
    if (select_.where) visit(*select_.where);
    for (const NodePtr& key : select_.groupBy) visit(*key);
    if (select_.having) visit(*select_.having);
    for (const BoundOrder& one : order_) visit(*one.node);
    for (const BoundFromPtr& part : select_.from) forEachOn(*part, [&](const NodePtr& on) { visit(*on); });
  }

  // The rest of a part of FROM; conditions of joins that are joins no more go to `where`.
  static BoundFromPtr without(BoundFromPtr from, int id, const ColumnMap& map, std::vector<NodePtr>& where,
                              BoundFromPtr& removed) {
    if (const auto* source = std::get_if<BoundSource>(&from->content)) {
      if (source->id != id) return from;
      removed = std::move(from);
      return nullptr;
    }
    auto& join = std::get<BoundJoin>(from->content);
    if (join.on) join.on = cloneNode(*join.on, map);
    join.left = without(std::move(join.left), id, map, where, removed);
    join.right = without(std::move(join.right), id, map, where, removed);
    if (join.left && join.right) return from;
    if (join.on) where.push_back(std::move(join.on));
    return std::move(join.left ? join.left : join.right);
  }

  BoundSelect& select_;
  std::vector<BoundOrder>& order_;
};

}  // namespace

void lookUpGroups(BoundSelect& select, std::vector<BoundOrder>& order, const Catalog& catalog) {
  Rewriting rewriting(select, order);
  const auto grouped = rewriting.find(catalog);
  if (!grouped) return;
  if (const auto partner = rewriting.partnerOf(*grouped)) rewriting.apply(*grouped, *partner);
}

}  // namespace goodsbook::engine
