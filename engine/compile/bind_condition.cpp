#include "engine/compile/binder.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

std::string_view symbolOf(ComparisonOperator op) {
  switch (op) {
    case ComparisonOperator::Equal:
      return "=";
    case ComparisonOperator::NotEqual:
      return "<>";
    case ComparisonOperator::Less:
      return "<";
    case ComparisonOperator::LessEqual:
      return "<=";
    case ComparisonOperator::Greater:
      return ">";
    case ComparisonOperator::GreaterEqual:
      return ">=";
  }
  return {};
}

NodePtr negatedIf(bool negated, NodePtr node) {
  return negated ? makeNode(PrefixNode{"NOT", std::move(node)}) : std::move(node);
}

}  // namespace

NodePtr Binder::bindCondition(const Expression& expression, const Scope& scope) {
  struct Visitor {
    Binder& binder;
    const Scope& scope;

    NodePtr operator()(const Comparison& comparison) {
      BoundValue left = binder.bindValue(*comparison.left, scope);
      BoundValue right = binder.bindValue(*comparison.right, scope);
      return binder.bindComparison(comparison.op, std::move(left), std::move(right));
    }
    NodePtr operator()(const Logical& logical) {
      InfixNode node{logical.op == LogicalOperator::And ? "AND" : "OR", {}};
      for (const ExpressionPtr& operand : logical.operands)
        node.operands.push_back(binder.bindCondition(*operand, scope));
      return makeNode(std::move(node));
    }
    NodePtr operator()(const Not& content) {
      return makeNode(PrefixNode{"NOT", binder.bindCondition(*content.operand, scope)});
    }
    NodePtr operator()(const Like& like) { return binder.bindLike(like, scope); }
    NodePtr operator()(const InList& in) { return binder.bindInList(in, scope); }
    NodePtr operator()(const InQuery& in) { return binder.bindInQuery(in, scope); }
    NodePtr operator()(const Between& between) { return binder.bindBetween(between, scope); }
    NodePtr operator()(const IsNull& test) {
      return makeNode(NullTestNode{binder.bindValue(*test.operand, scope).node, test.negated});
    }
    NodePtr operator()(const Exists& exists) {
      return makeNode(
          ExistsNode{std::make_unique<BoundQuery>(binder.bindQuery(*exists.query, &scope, false))});
    }
    NodePtr operator()(const Literal&) { return value(); }
    NodePtr operator()(const NullLiteral&) { return value(); }
    NodePtr operator()(const DefaultValue&) { return value(); }
    NodePtr operator()(const ColumnRef&) { return value(); }
    NodePtr operator()(const Star&) { return value(); }
    NodePtr operator()(const Variable&) { return value(); }
    NodePtr operator()(const Unary&) { return value(); }
    NodePtr operator()(const Binary&) { return value(); }
    NodePtr operator()(const Case&) { return value(); }
    NodePtr operator()(const Cast&) { return value(); }
    NodePtr operator()(const Convert&) { return value(); }
    NodePtr operator()(const FunctionCall&) { return value(); }
    NodePtr operator()(const ScalarSubquery&) { return value(); }
    [[noreturn]] NodePtr value() { fail(4145, "在应使用条件的上下文中指定了非布尔类型的表达式。", 15); }
  };
  return std::visit(Visitor{*this, scope}, expression.node);
}

NodePtr Binder::bindComparison(ComparisonOperator op, BoundValue left, BoundValue right) {
  harmonize(left, right);
  if (!right.stored || right.type.kind != Kind::Text) left.node = collated(std::move(left));
  return infixNode(symbolOf(op), std::move(left.node), std::move(right.node));
}

NodePtr Binder::bindLike(const Like& like, const Scope& scope) {
  BoundValue text = toText(bindValue(*like.operand, scope));
  BoundValue pattern = toText(bindValue(*like.pattern, scope));
  NodePtr call = like.escape ? callNode("ts_like", std::move(text.node), std::move(pattern.node),
                                        toText(bindValue(*like.escape, scope)).node)
                             : callNode("ts_like", std::move(text.node), std::move(pattern.node));
  return negatedIf(like.negated, std::move(call));
}

NodePtr Binder::bindInList(const InList& in, const Scope& scope) {
  std::vector<BoundValue> values;
  values.push_back(bindValue(*in.operand, scope));
  for (const ExpressionPtr& item : in.items) values.push_back(bindValue(*item, scope));
  for (std::size_t i = 1; i < values.size(); ++i) harmonize(values[0], values[i]);
  for (std::size_t i = 1; i < values.size(); ++i)
    harmonize(values[0], values[i]);  // to what the last one made of it
  InListNode node{collated(std::move(values[0])), {}, in.negated};
  for (std::size_t i = 1; i < values.size(); ++i) node.items.push_back(std::move(values[i].node));
  return makeNode(std::move(node));
}

NodePtr Binder::bindInQuery(const InQuery& in, const Scope& scope) {
  BoundValue operand = bindValue(*in.operand, scope);
  auto query = std::make_unique<BoundQuery>(bindQuery(*in.query, &scope, false));
  if (itemsOf(*query).size() != 1)
    fail(116, "当没有用 EXISTS 引入子查询时，在选择列表中只能指定一个表达式。");
  BoundValue item{.node = nullNode(), .type = itemsOf(*query).front().type};
  harmonize(operand, item);
  coerceColumn(*query, 0, item.type, Purpose::Implicit);
  return makeNode(InQueryNode{collated(std::move(operand)), std::move(query), in.negated});
}

NodePtr Binder::bindBetween(const Between& between, const Scope& scope) {
  NodePtr low = bindComparison(ComparisonOperator::GreaterEqual, bindValue(*between.operand, scope),
                               bindValue(*between.low, scope));
  NodePtr high = bindComparison(ComparisonOperator::LessEqual, bindValue(*between.operand, scope),
                                bindValue(*between.high, scope));
  return negatedIf(between.negated, infixNode("AND", std::move(low), std::move(high)));
}

}  // namespace goodsbook::engine
