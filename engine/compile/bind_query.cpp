#include <algorithm>

#include "engine/compile/binder.h"
#include "engine/compile/candidate_filter.h"
#include "engine/compile/emitter.h"
#include "engine/compile/grouped_lookup.h"
#include "engine/compile/grouping.h"
#include "engine/compile/literals.h"
#include "engine/compile/nodes.h"
#include "engine/compile/row_order.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

BoundValue valueOf(BoundItem& item) {
  return {.node = std::move(item.node),
          .type = item.type,
          .stored = item.stored,
          .parameter = item.parameter,
          .literal = item.literal};
}

NodePtr positionNode(const BoundItem& item, std::size_t position) {
  NodePtr node = wholeNode(static_cast<std::int64_t>(position + 1));
  if (item.type.kind == Kind::Text && !item.stored) node = makeNode(CollateNode{std::move(node)});
  return node;
}

// The place that an ORDER BY names by number.
std::optional<std::size_t> positionOf(const Expression& expression, std::size_t count) {
  const auto* literal = std::get_if<Literal>(&expression.node);
  if (literal == nullptr || literal->kind != LiteralKind::Integer) return std::nullopt;
  const std::int64_t position = literalWhole(*literal);
  if (position < 1 || position > static_cast<std::int64_t>(count))
    fail(108, concat("ORDER BY 位置号 ", literal->value, " 超出了选择列表中项数的范围。"));
  return static_cast<std::size_t>(position - 1);
}

// The item that a bare name in ORDER BY means.
std::optional<std::size_t> itemNamed(const Expression& expression, const std::vector<BoundItem>& items) {
  const auto* reference = std::get_if<ColumnRef>(&expression.node);
  if (reference == nullptr || !reference->qualifier.empty()) return std::nullopt;
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (!sameName(items[i].name, reference->column.text)) continue;
    if (found && emitNode(*items[*found].node) != emitNode(*items[i].node))
      fail(209, concat("列名 '", reference->column.text, "' 不明确。"));
    if (!found) found = i;
  }
  return found;
}

void collateItem(BoundItem& item) {
  if (item.type.kind == Kind::Text && !item.stored) item.node = makeNode(CollateNode{std::move(item.node)});
}

void collateItems(BoundQuery& query) {
  for (BoundTerm& term : query.terms) {
    if (auto* nested = std::get_if<BoundQueryPtr>(&term.content)) {
      collateItems(**nested);
      continue;
    }
    for (BoundItem& item : std::get<BoundSelect>(term.content).items) collateItem(item);
  }
}

std::string itemName(const SelectItem& item) {
  if (!item.alias.empty()) return std::string(item.alias.text);
  const auto* reference = std::get_if<ColumnRef>(&item.expression->node);
  return reference == nullptr ? std::string() : std::string(reference->column.text);
}

}  // namespace

void Binder::bindSelect(const Query& query) {
  BoundQuery bound = bindQuery(query, nullptr, true);
  keepRowOrder(bound, catalog_);
  plan_.result = Plan::Result::Rows;
  for (const BoundItem& item : itemsOf(bound))
    plan_.columns.push_back({.name = item.name,
                             .type = resultType(item.type),
                             .width = item.type.kind == Kind::Text ? item.type.width : 0});
  plan_.sql = emitQuery(bound);
}

BoundQuery Binder::bindQuery(const Query& query, const Scope* outer, bool orderAllowed) {
  BoundQuery bound;
  const bool single = query.terms.size() == 1;
  for (const QueryTerm& term : query.terms) {
    BoundTerm boundTerm;
    boundTerm.all = term.op == SetOperator::UnionAll;
    if (const auto* nested = std::get_if<QueryPtr>(&term.operand)) {
      boundTerm.content = std::make_unique<BoundQuery>(bindQuery(**nested, outer, false));
    } else {
      const auto& select = std::get<Select>(term.operand);
      if (!query.orderBy.empty() && !orderAllowed && !(single && select.top))
        fail(1033, "除非另外还指定了 TOP，否则 ORDER BY 子句在派生表和子查询中无效。", 15);
      const std::vector<OrderItem> none;
      boundTerm.content = bindSelectCore(select, outer, single ? query.orderBy : none, bound.orderBy);
    }
    bound.terms.push_back(std::move(boundTerm));
  }
  const bool nested = std::holds_alternative<BoundQueryPtr>(bound.terms.front().content);
  if (!single) mergeTerms(bound);
  if (!single || nested)
    for (const OrderItem& item : query.orderBy) bound.orderBy.push_back(bindCompoundOrder(item, bound));
  return bound;
}

BoundSelect Binder::bindSelectCore(const Select& select, const Scope* outer,
                                   const std::vector<OrderItem>& orderBy, std::vector<BoundOrder>& order) {
  const Context saved{clause_, inAggregate_, sawAggregate_};
  inAggregate_ = sawAggregate_ = false;
  Scope scope{.outer = outer};
  BoundSelect bound;
  std::vector<std::string> keys;
  bound.distinct = select.distinct;
  bound.from = bindFrom(select.from, scope);
  clause_ = Clause::Where;
  if (select.where) bound.where = bindCondition(*select.where, scope);
  clause_ = Clause::GroupBy;
  bindGroupBy(select, scope, bound, keys);
  clause_ = Clause::Items;
  bindItems(select, scope, bound);
  clause_ = Clause::Having;
  if (select.having) bound.having = bindCondition(*select.having, scope);
  if (select.distinct)
    for (BoundItem& item : bound.items) collateItem(item);
  clause_ = Clause::OrderBy;
  for (const OrderItem& item : orderBy) order.push_back(bindOrder(item, scope, bound));
  if (select.top) bound.limit = bindTop(*select.top, scope);
  bound.grouped = sawAggregate_ || !select.groupBy.empty() || select.having;
  if (bound.grouped) checkGrouping(bound, order, scope, keys, plan_);
  lookUpGroups(bound, order, catalog_);
  addCandidateFilters(bound, scope, nextSource_);
  clause_ = saved.clause;
  inAggregate_ = saved.inAggregate;
  sawAggregate_ = saved.sawAggregate;
  return bound;
}

void Binder::bindGroupBy(const Select& select, const Scope& scope, BoundSelect& bound,
                         std::vector<std::string>& keys) {
  for (const ExpressionPtr& expression : select.groupBy) {
    if (std::holds_alternative<Literal>(expression->node))
      fail(164, "每个 GROUP BY 表达式都必须至少包含一个不是外部引用的列。", 15);
    BoundValue value = bindValue(*expression, scope);
    if (hasParameter(*value.node)) plan_.reusable = false;  // whether an item is a key depends on its values
    keys.push_back(groupKey(*value.node, plan_));
    bound.groupBy.push_back(collated(std::move(value)));
  }
}

void Binder::bindItems(const Select& select, const Scope& scope, BoundSelect& bound) {
  for (const SelectItem& item : select.items) {
    if (const auto* star = std::get_if<Star>(&item.expression->node)) {
      expandStar(*star, scope, bound);
      continue;
    }
    BoundValue value = bindValue(*item.expression, scope);
    bound.items.push_back({.node = std::move(value.node),
                           .name = itemName(item),
                           .type = value.type,
                           .stored = value.stored,
                           .parameter = value.parameter,
                           .literal = value.literal});
  }
}

void Binder::expandStar(const Star& star, const Scope& scope, BoundSelect& bound) {
  bool known = false;
  for (const Source& source : scope.sources) {
    if (!star.qualifier.empty() && !sameName(source.name, star.qualifier.name.text)) continue;
    known = true;
    for (const SourceColumn& column : source.columns)
      bound.items.push_back({.node = makeNode(ColumnNode{source.id, column.sql}),
                             .name = column.name,
                             .type = column.type,
                             .stored = column.stored});
  }
  if (known) return;
  if (star.qualifier.empty()) fail(263, "必须指定要从中进行选择的表。");
  fail(107, concat("列前缀 '", star.qualifier.name.text, "' 与查询中所用的表名或别名不匹配。"), 15);
}

NodePtr Binder::bindTop(const Expression& top, const Scope& scope) {
  const Scope outside{.outer = scope.outer};
  BoundValue count = bindValue(top, outside);
  if (!isWhole(count.type.kind)) fail(1060, "为 TOP 子句提供的行数必须是整数。", 15);
  return std::move(count.node);
}

BoundOrder Binder::bindOrder(const OrderItem& item, const Scope& scope, BoundSelect& bound) {
  auto position = positionOf(*item.expression, bound.items.size());
  if (!position) position = itemNamed(*item.expression, bound.items);
  if (position) {
    refuseOuterKey(*bound.items[*position].node, scope);
    return {positionNode(bound.items[*position], *position), item.descending};
  }
  BoundValue value = bindValue(*item.expression, scope);
  refuseOuterKey(*value.node, scope);
  if (bound.distinct) {
    const std::string text = emitNode(*value.node);
    for (std::size_t i = 0; i < bound.items.size(); ++i)
      if (emitNode(*bound.items[i].node) == text) return {positionNode(bound.items[i], i), item.descending};
    fail(145, "如果指定了 SELECT DISTINCT，那么 ORDER BY 子句中的项就必须出现在选择列表中。", 15);
  }
  return {collated(std::move(value)), item.descending};
}

BoundOrder Binder::bindCompoundOrder(const OrderItem& item, const BoundQuery& bound) {
  const std::vector<BoundItem>& items = itemsOf(bound);
  auto position = positionOf(*item.expression, items.size());
  if (!position) position = itemNamed(*item.expression, items);
  if (!position)
    fail(104, "如果语句中包含 UNION 运算符，那么 ORDER BY 子句中的项就必须出现在选择列表中。", 15);
  return {positionNode(items[*position], *position), item.descending};
}

// Gives the columns of all terms one type and one collation.
void Binder::mergeTerms(BoundQuery& bound) {
  std::vector<SqlType> types;
  bool removesDuplicates = false;
  for (std::size_t t = 0; t < bound.terms.size(); ++t) {
    const auto& content = bound.terms[t].content;
    const auto* nested = std::get_if<BoundQueryPtr>(&content);
    const std::vector<BoundItem>& items = nested ? itemsOf(**nested) : std::get<BoundSelect>(content).items;
    if (t > 0) removesDuplicates = removesDuplicates || !bound.terms[t].all;
    if (t == 0) types.resize(items.size());
    if (items.size() != types.size())
      fail(205, "使用 UNION 运算符合并的所有查询必须在其目标列表中有相同数目的表达式。");
    for (std::size_t i = 0; i < items.size(); ++i) {
      BoundValue before;
      before.type = types[i];
      BoundValue here;
      here.type = items[i].type;
      here.literal = items[i].literal;
      types[i] = mergedType(before, here);
    }
  }
  for (std::size_t i = 0; i < types.size(); ++i) coerceColumn(bound, i, types[i], Purpose::Implicit);
  if (removesDuplicates) collateItems(bound);
}

void Binder::coerceColumn(BoundQuery& query, std::size_t column, SqlType to, Purpose purpose,
                          const Target* target) {
  for (BoundTerm& term : query.terms) {
    if (auto* nested = std::get_if<BoundQueryPtr>(&term.content)) {
      coerceColumn(**nested, column, to, purpose, target);
      continue;
    }
    BoundItem& item = std::get<BoundSelect>(term.content).items[column];
    BoundValue value = coerce(valueOf(item), to, purpose, target);
    item.node = std::move(value.node);
    item.type = value.type;
    item.stored = value.stored;
    item.parameter = value.parameter;
    item.literal = value.literal;
  }
}

}  // namespace goodsbook::engine
