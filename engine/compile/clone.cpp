#include "engine/compile/clone.h"

namespace goodsbook::engine {
namespace {

struct Cloner {
  const ColumnMap& map;

  NodePtr one(const NodePtr& node) const { return node ? std::visit(*this, node->content) : nullptr; }
  std::vector<NodePtr> all(const std::vector<NodePtr>& nodes) const {
    std::vector<NodePtr> copies;
    for (const NodePtr& node : nodes) copies.push_back(one(node));
    return copies;
  }

  NodePtr operator()(const ParameterNode& parameter) const { return makeNode(parameter); }
  NodePtr operator()(const ColumnNode& column) const { return map(column); }
  NodePtr operator()(const ConstantNode& constant) const { return makeNode(constant); }
  NodePtr operator()(const CallNode& call) const {
    return makeNode(CallNode{call.name, all(call.arguments), call.distinct, call.star, call.aggregate});
  }
  NodePtr operator()(const InfixNode& infix) const {
    return makeNode(InfixNode{infix.op, all(infix.operands)});
  }
  NodePtr operator()(const PrefixNode& prefix) const {
    return makeNode(PrefixNode{prefix.op, one(prefix.operand)});
  }
  NodePtr operator()(const NullTestNode& test) const {
    return makeNode(NullTestNode{one(test.operand), test.negated});
  }
  NodePtr operator()(const CollateNode& collate) const { return makeNode(CollateNode{one(collate.operand)}); }
  NodePtr operator()(const StorageCastNode& cast) const {
    return makeNode(StorageCastNode{one(cast.operand), cast.type});
  }
  NodePtr operator()(const CaseNode& content) const {
    CaseNode copy;
    for (const CaseNode::Branch& branch : content.branches)
      copy.branches.push_back({one(branch.when), one(branch.then)});
    copy.otherwise = one(content.otherwise);
    return makeNode(std::move(copy));
  }
  NodePtr operator()(const InListNode& in) const {
    return makeNode(InListNode{one(in.operand), all(in.items), in.negated});
  }
  NodePtr operator()(const InQueryNode& in) const {
    return makeNode(InQueryNode{one(in.operand), pointed(*in.query), in.negated});
  }
  NodePtr operator()(const ExistsNode& exists) const { return makeNode(ExistsNode{pointed(*exists.query)}); }
  NodePtr operator()(const SubqueryNode& subquery) const {
    return makeNode(SubqueryNode{pointed(*subquery.query)});
  }

  BoundQueryPtr pointed(const BoundQuery& content) const {
    return std::make_unique<BoundQuery>(query(content));
  }

  BoundFromPtr from(const BoundFrom& part) const {
    if (const auto* join = std::get_if<BoundJoin>(&part.content))
      return std::make_unique<BoundFrom>(
          BoundFrom{BoundJoin{join->kind, from(*join->left), from(*join->right), one(join->on)}});
    const auto& source = std::get<BoundSource>(part.content);
    return std::make_unique<BoundFrom>(
        BoundFrom{BoundSource{source.id, source.table, source.query ? pointed(*source.query) : nullptr}});
  }

  BoundSelect select(const BoundSelect& content) const {
    BoundSelect copy;
    copy.distinct = content.distinct;
    copy.limit = one(content.limit);
    for (const BoundItem& item : content.items)
      copy.items.push_back({one(item.node), item.name, item.type, item.stored, item.parameter, item.literal});
    for (const BoundFromPtr& part : content.from) copy.from.push_back(from(*part));
    copy.where = one(content.where);
    copy.groupBy = all(content.groupBy);
    copy.having = one(content.having);
    copy.grouped = content.grouped;
    return copy;
  }

  BoundQuery query(const BoundQuery& content) const {
    BoundQuery copy;
    for (const BoundTerm& term : content.terms) {
      if (const auto* nested = std::get_if<BoundQueryPtr>(&term.content))
        copy.terms.push_back({term.all, pointed(**nested)});
      else
        copy.terms.push_back({term.all, select(std::get<BoundSelect>(term.content))});
    }
    for (const BoundOrder& order : content.orderBy)
      copy.orderBy.push_back({one(order.node), order.descending});
    return copy;
  }
};

}  // namespace

NodePtr cloneNode(const Node& node, const ColumnMap& map) {
  return std::visit(Cloner{map}, node.content);
}

BoundQuery cloneQuery(const BoundQuery& query, const ColumnMap& map) {
  return Cloner{map}.query(query);
}

}  // namespace goodsbook::engine
