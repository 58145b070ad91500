#include "engine/compile/candidate_filter.h"

#include <algorithm>
#include <map>
#include <optional>

#include "engine/compile/clone.h"
#include "engine/compile/nodes.h"

namespace goodsbook::engine {
namespace {

struct Equality {  // of two columns, by which tables are joined
  ColumnNode left;
  ColumnNode right;
};

struct Tables {
  std::map<int, std::string> names;  // of base tables by source
  std::vector<Equality> equalities;
  bool inner = true;
};

void collectEqualities(const Node& condition, std::vector<Equality>& equalities) {
  const auto* infix = std::get_if<InfixNode>(&condition.content);
  if (infix == nullptr) return;
  if (infix->op == "AND") {
    for (const NodePtr& operand : infix->operands) collectEqualities(*operand, equalities);
  } else if (infix->op == "=") {
    const auto* left = std::get_if<ColumnNode>(&infix->operands[0]->content);
    const auto* right = std::get_if<ColumnNode>(&infix->operands[1]->content);
    if (left != nullptr && right != nullptr && left->source != right->source)
      equalities.push_back({*left, *right});
  }
}

void collectTables(const BoundFrom& from, Tables& tables) {
  if (const auto* source = std::get_if<BoundSource>(&from.content)) {
    if (!source->query) tables.names[source->id] = source->table;
    return;
  }
  const auto& join = std::get<BoundJoin>(from.content);
  tables.inner = tables.inner && join.kind == "JOIN";
  collectTables(*join.left, tables);
  collectTables(*join.right, tables);
  if (join.on) collectEqualities(*join.on, tables.equalities);
}

// The only table that a condition speaks of, if it is one that can be evaluated by itself.
std::optional<int> onlySource(const Node& condition, const Tables& tables) {
  std::optional<int> source;
  bool alone = true;
  walkNode(condition, [&](const Node& part) {
    if (const auto* column = std::get_if<ColumnNode>(&part.content)) {
      alone =
          alone && tables.names.contains(column->source) && source.value_or(column->source) == column->source;
      source = column->source;
    }
    alone = alone && isSimple(part);
    return alone;
  });
  return alone ? source : std::nullopt;
}

using BySource = std::map<int, std::vector<const Node*>>;

// The alternatives of a filter by the table that they speak of; false where one speaks of none or several.
bool collectAlternatives(const Node& condition, const Tables& tables, BySource& alternatives) {
  const auto* infix = std::get_if<InfixNode>(&condition.content);
  if (infix != nullptr && infix->op == "OR")
    return std::all_of(infix->operands.begin(), infix->operands.end(), [&](const NodePtr& operand) {
      return collectAlternatives(*operand, tables, alternatives);
    });
  const auto source = onlySource(condition, tables);
  if (source) alternatives[*source].push_back(&condition);
  return source.has_value();
}

bool searchesText(const BySource& alternatives) {
  return std::any_of(alternatives.begin(), alternatives.end(), [](const auto& one) {
    return std::any_of(one.second.begin(), one.second.end(), [](const Node* node) {
      const auto* call = std::get_if<CallNode>(&node->content);
      return call != nullptr && call->name == "ts_like";
    });
  });
}

// The columns by which a table is joined to the anchor, the anchor's first.
std::optional<Equality> joinOf(int anchor, int other, const Tables& tables) {
  for (const Equality& equality : tables.equalities) {
    if (equality.left.source == anchor && equality.right.source == other) return equality;
    if (equality.right.source == anchor && equality.left.source == other)
      return Equality{equality.right, equality.left};
  }
  return std::nullopt;
}

// The table from which all others of the filter are one join away; the one with most alternatives.
std::optional<int> findAnchor(const BySource& alternatives, const Tables& tables) {
  std::optional<int> best;
  for (const auto& [anchor, conditions] : alternatives) {
    const bool reachesAll =
        std::all_of(alternatives.begin(), alternatives.end(), [&, from = anchor](const auto& other) {
          return other.first == from || joinOf(from, other.first, tables);
        });
    if (reachesAll && (!best || conditions.size() > alternatives.at(*best).size())) best = anchor;
  }
  return best;
}

class CandidateQuery {
 public:
  CandidateQuery(const Tables& tables, const Scope& scope, int anchor, int& nextSource)
      : tables_(tables), anchor_(anchor), nextSource_(nextSource) {
    for (const Source& source : scope.sources)
      if (source.table != nullptr) rowNames_[source.id] = source.table->rowName;
  }

  // anchor.row IN (SELECT row FROM anchor WHERE … UNION ALL SELECT row FROM other CROSS JOIN anchor ON …
  // WHERE …)
  NodePtr build(const BySource& alternatives) {
    auto query = std::make_unique<BoundQuery>();
    for (const auto& [source, conditions] : alternatives)
      query->terms.push_back({.all = true, .content = arm(source, conditions)});
    return makeNode(
        InQueryNode{makeNode(ColumnNode{anchor_, rowNames_.at(anchor_)}), std::move(query), false});
  }

 private:
  BoundSelect arm(int source, const std::vector<const Node*>& conditions) {
    const int anchor = nextSource_++;
    BoundSelect select;
    select.items.push_back(
        {.node = makeNode(ColumnNode{anchor, rowNames_.at(anchor_)}), .type = {Kind::BigInt}});
    BoundFromPtr from = table(anchor, anchor_);
    int searched = anchor;
    if (source != anchor_) {
      // The table is read twice, so that the search itself needs no more of it than an index may hold.
      searched = nextSource_++;
      const int matched = nextSource_++;
      const Equality join = *joinOf(anchor_, source, tables_);
      from = joined(joined(table(searched, source), table(matched, source), {searched, rowNames_.at(source)},
                           {matched, rowNames_.at(source)}),
                    std::move(from), {matched, join.right.column}, {anchor, join.left.column});
    }
    select.from.push_back(std::move(from));
    select.where = anyOf(conditions, searched);
    return select;
  }

  BoundFromPtr table(int id, int source) const {
    return std::make_unique<BoundFrom>(
        BoundFrom{BoundSource{.id = id, .table = tables_.names.at(source), .query = nullptr}});
  }

  // CROSS JOIN makes SQLite read the tables in this order.
  static BoundFromPtr joined(BoundFromPtr left, BoundFromPtr right, const ColumnNode& a,
                             const ColumnNode& b) {
    NodePtr on = infixNode("=", makeNode(b), makeNode(a));
    return std::make_unique<BoundFrom>(
        BoundFrom{BoundJoin{"CROSS JOIN", std::move(left), std::move(right), std::move(on)}});
  }

  // One call for all texts of a row is cheaper than one each.
  static NodePtr anyOf(const std::vector<const Node*>& conditions, int source) {
    const bool allLike = std::all_of(conditions.begin(), conditions.end(), [](const Node* node) {
      const auto* call = std::get_if<CallNode>(&node->content);
      return call != nullptr && call->name == "ts_like" && call->arguments.size() == 2 &&
             std::holds_alternative<ParameterNode>(call->arguments[1]->content);
    });
    CallNode any{.name = "ts_like_any", .arguments = {}};
    InfixNode chain{"OR", {}};
    for (const Node* condition : conditions) {
      NodePtr copy = cloneNode(*condition, [&](const ColumnNode& column) {
        return makeNode(ColumnNode{source, column.column});
      });
      if (!allLike) {
        chain.operands.push_back(std::move(copy));
        continue;
      }
      for (NodePtr& argument : std::get<CallNode>(copy->content).arguments)
        any.arguments.push_back(std::move(argument));
    }
    return allLike ? makeNode(std::move(any)) : makeNode(std::move(chain));
  }

  const Tables& tables_;
  int anchor_;
  int& nextSource_;
  std::map<int, std::string> rowNames_;
};

}  // namespace

void addCandidateFilters(BoundSelect& select, const Scope& scope, int& nextSource) {
  if (!select.where || scope.sources.size() < 2) return;
  Tables tables;
  for (const BoundFromPtr& part : select.from) collectTables(*part, tables);
  if (!tables.inner) return;
  collectEqualities(*select.where, tables.equalities);
  std::vector<const Node*> conjuncts;
  const auto* whole = std::get_if<InfixNode>(&select.where->content);
  if (whole != nullptr && whole->op == "AND")
    for (const NodePtr& operand : whole->operands) conjuncts.push_back(operand.get());
  else
    conjuncts.push_back(select.where.get());
  std::vector<NodePtr> added;
  for (const Node* conjunct : conjuncts) {
    BySource alternatives;
    if (!collectAlternatives(*conjunct, tables, alternatives) || alternatives.size() < 2) continue;
    const auto anchor = findAnchor(alternatives, tables);
    if (!searchesText(alternatives) || !anchor) continue;
    added.push_back(CandidateQuery(tables, scope, *anchor, nextSource).build(alternatives));
  }
  if (added.empty()) return;
  added.push_back(std::move(select.where));
  select.where = makeNode(InfixNode{"AND", std::move(added)});
}

}  // namespace goodsbook::engine
