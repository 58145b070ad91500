#include "engine/compile/grouping.h"

#include <algorithm>

#include "engine/compile/emitter.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

constexpr int inItems = 8120;
constexpr int inHaving = 8121;
constexpr int inOrder = 8127;

std::string_view clauseName(int number) {
  return number == inItems ? "选择列表" : number == inHaving ? "HAVING 子句" : "ORDER BY 子句";
}

struct GroupCheck {
  const Scope& scope;
  const std::vector<std::string>& keys;
  const Plan& plan;

  bool isKey(const Node& node) const {
    return !keys.empty() && std::find(keys.begin(), keys.end(), groupKey(node, plan)) != keys.end();
  }

  void operator()(const Node& node, int number) const {
    walkNode(node, [&](const Node& part) {
      if (isKey(part)) return false;
      if (const auto* call = std::get_if<CallNode>(&part.content)) return !call->aggregate;
      if (const auto* column = std::get_if<ColumnNode>(&part.content)) requireOutside(*column, number);
      return true;
    });
  }

  void requireOutside(const ColumnNode& column, int number) const {
    for (const Source& source : scope.sources) {
      if (source.id != column.source) continue;
      std::string name = column.column;
      for (const SourceColumn& known : source.columns)
        if (known.sql == column.column) name = known.name;
      fail(number, concat(clauseName(number), "中的列 '", source.name, ".", name,
                          "' 无效，因为该列没有包含在聚合函数或 GROUP BY 子句中。"));
    }
  }
};

bool hasSource(const Scope& scope, int id) {
  return std::any_of(scope.sources.begin(), scope.sources.end(),
                     [&](const Source& source) { return source.id == id; });
}

bool hasOuterSource(const Scope& scope, int id) {
  for (const Scope* outer = scope.outer; outer != nullptr; outer = outer->outer)
    if (hasSource(*outer, id)) return true;
  return false;
}

// Calls `visit` with the source of every column below a node.
template <typename Visit>
void forEachColumn(const Node& node, Visit visit) {
  walkNode(node, [&](const Node& part) {
    if (const auto* column = std::get_if<ColumnNode>(&part.content)) visit(column->source);
    return true;
  });
}

}  // namespace

std::string groupKey(const Node& node, const Plan& plan) {
  std::string key = emitNode(node);
  walkNode(node, [&](const Node& part) {
    if (const auto* parameter = std::get_if<ParameterNode>(&part.content)) {
      // Numbered parameters differ where their values are the same: the values decide.
      const std::string number = concat("?", std::to_string(parameter->index + 1));
      const ParameterSource& source = plan.parameters[static_cast<std::size_t>(parameter->index)];
      const std::size_t at = key.find(number);
      if (at != std::string::npos) key.replace(at, number.size(), concat("{", source.written, "}"));
    }
    return true;
  });
  return key;
}

void checkGrouping(const BoundSelect& select, const std::vector<BoundOrder>& order, const Scope& scope,
                   const std::vector<std::string>& keys, const Plan& plan) {
  const GroupCheck check{scope, keys, plan};
  for (const BoundItem& item : select.items) check(*item.node, inItems);
  if (select.having) check(*select.having, inHaving);
  for (const BoundOrder& one : order) check(*one.node, inOrder);
}

void refuseOuterKey(const Node& key, const Scope& scope) {
  forEachColumn(key, [&](int source) {
    if (hasOuterSource(scope, source)) failUnsupported("在子查询的 ORDER BY 中使用外层查询的列");
  });
}

void refuseOuterAggregate(const Node& argument, const Scope& scope) {
  bool own = false;
  bool outer = false;
  forEachColumn(argument, [&](int source) {
    own = own || hasSource(scope, source);
    outer = outer || hasOuterSource(scope, source);
  });
  if (outer && !own) failUnsupported("在子查询中对外层查询的列使用聚合");
}

}  // namespace goodsbook::engine
