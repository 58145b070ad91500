#include <algorithm>

#include "engine/compile/binder.h"
#include "engine/compile/grouping.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr int leastAverageScale = 6;

NodePtr aggregateNode(std::string_view name, NodePtr argument, bool distinct) {
  return makeNode(CallNode{.name = std::string(name),
                           .arguments = nodeList(std::move(argument)),
                           .distinct = distinct,
                           .aggregate = true});
}

}  // namespace

BoundValue Binder::bindAggregate(const FunctionCall& call, const Scope& scope) {
  if (inAggregate_) fail(130, "不能对包含聚合或子查询的表达式执行聚合函数。");
  if (clause_ == Clause::Where || clause_ == Clause::On)
    fail(147, "聚合不应出现在 WHERE 子句中，除非该聚合位于 HAVING 子句或选择列表所包含的子查询中。", 15);
  if (clause_ == Clause::GroupBy) fail(144, "不能在用于 GROUP BY 子句分组列表的表达式中使用聚合。", 15);
  if (clause_ == Clause::Assignment) fail(157, "聚合不应出现在 UPDATE 语句的集列表中。", 15);
  if (call.arguments.size() != 1) fail(174, concat(call.name.text, " 函数要求有 1 个参数。"), 15);
  sawAggregate_ = true;
  const auto is = [&](std::string_view name) { return sameName(call.name.text, name); };
  const bool counts = is("count") || is("count_big");
  const SqlType countType{is("count_big") ? Kind::BigInt : Kind::Int};
  if (std::holds_alternative<Star>(call.arguments[0]->node)) {
    if (!counts) fail(102, "'*' 附近有语法错误。", 15);
    return {.node = makeNode(CallNode{.name = "count", .arguments = {}, .star = true, .aggregate = true}),
            .type = countType};
  }
  const auto argument = [&] {
    inAggregate_ = true;
    BoundValue value = bindValue(*call.arguments[0], scope);
    inAggregate_ = false;
    return value;
  };
  BoundValue value = argument();
  refuseOuterAggregate(*value.node, scope);
  SqlType type = value.type;
  if (counts)
    return {.node = aggregateNode("count", collated(std::move(value)), call.distinct), .type = countType};
  const bool ordered = is("min") || is("max");
  if (type.kind == Kind::Bit || (!ordered && !isNumber(type.kind)))
    fail(8117, concat("操作数数据类型 ", typeName(type), " 对于 ", call.name.text, " 运算符无效。"));
  if (ordered)
    return {.node = aggregateNode(is("min") ? "min" : "max", collated(std::move(value)), false),
            .type = type};
  pin(value);
  if (isWhole(type.kind)) {
    type = {type.kind == Kind::BigInt ? Kind::BigInt : Kind::Int};
    NodePtr sum = aggregateNode("sum", std::move(value.node), call.distinct);
    // The average of whole numbers is whole: SQLite's own would not be.
    if (is("avg"))
      sum = infixNode("/", std::move(sum), aggregateNode("count", argument().node, call.distinct));
    return {.node = callNode("ts_range", std::move(sum), wholeNode(packType(type))), .type = type};
  }
  NodePtr node = aggregateNode(is("avg") ? "avg" : "sum", std::move(value.node), call.distinct);
  if (type.kind != Kind::Float) {
    if (type.kind == Kind::Decimal)
      type = {Kind::Decimal, 0, is("avg") ? std::max(type.scale, leastAverageScale) : type.scale};
    node = callNode("ts_round", std::move(node),
                    wholeNode(type.kind == Kind::Money ? moneyScale : type.scale), wholeNode(0));
  }
  return {.node = std::move(node), .type = type};
}

}  // namespace goodsbook::engine
