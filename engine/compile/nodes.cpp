#include "engine/compile/nodes.h"

#include "engine/compile/emitter.h"

namespace goodsbook::engine {
namespace {

using SourceVisit = std::function<void(const BoundSource&)>;

// Walks a tree with a visitor for nodes and one for sources.
struct Walker {
  const NodeVisit& visit;
  const SourceVisit& visitSource;

  void all(const std::vector<NodePtr>& nodes) const {
    for (const NodePtr& node : nodes) one(node);
  }
  void one(const NodePtr& node) const {
    if (node && visit(*node)) std::visit([this](const auto& content) { below(content); }, node->content);
  }

  void below(const ParameterNode&) const {}
  void below(const ColumnNode&) const {}
  void below(const ConstantNode&) const {}
  void below(const CallNode& call) const { all(call.arguments); }
  void below(const InfixNode& infix) const { all(infix.operands); }
  void below(const PrefixNode& prefix) const { one(prefix.operand); }
  void below(const NullTestNode& test) const { one(test.operand); }
  void below(const CollateNode& collate) const { one(collate.operand); }
  void below(const StorageCastNode& cast) const { one(cast.operand); }
  void below(const CaseNode& content) const {
    for (const CaseNode::Branch& branch : content.branches) {
      one(branch.when);
      one(branch.then);
    }
    one(content.otherwise);
  }
  void below(const InListNode& in) const {
    one(in.operand);
    all(in.items);
  }
  void below(const InQueryNode& in) const {
    one(in.operand);
    query(*in.query);
  }
  void below(const ExistsNode& exists) const { query(*exists.query); }
  void below(const SubqueryNode& subquery) const { query(*subquery.query); }

  void from(const BoundFrom& part) const {
    if (const auto* join = std::get_if<BoundJoin>(&part.content)) {
      from(*join->left);
      from(*join->right);
      one(join->on);
      return;
    }
    const auto& source = std::get<BoundSource>(part.content);
    if (visitSource) visitSource(source);
    if (source.query) query(*source.query);
  }

  void query(const BoundQuery& content) const {
    for (const BoundTerm& term : content.terms) {
      if (const auto* nested = std::get_if<BoundQueryPtr>(&term.content)) {
        query(**nested);
        continue;
      }
      const auto& select = std::get<BoundSelect>(term.content);
      for (const BoundItem& item : select.items) one(item.node);
      for (const BoundFromPtr& part : select.from) from(*part);
      one(select.where);
      all(select.groupBy);
      one(select.having);
      one(select.limit);
    }
    for (const BoundOrder& order : content.orderBy) one(order.node);
  }
};

const SourceVisit noSources;

}  // namespace

NodePtr wholeNode(std::int64_t number) {
  return makeNode(ConstantNode{std::to_string(number)});
}
NodePtr textNode(std::string_view text) {
  return makeNode(ConstantNode{quotedText(text)});
}
NodePtr nullNode() {
  return makeNode(ConstantNode{"NULL"});
}

void walkNode(const Node& node, const NodeVisit& visit) {
  if (visit(node))
    std::visit([&](const auto& content) { Walker{visit, noSources}.below(content); }, node.content);
}

void walkQuery(const BoundQuery& query, const NodeVisit& visit) {
  Walker{visit, noSources}.query(query);
}

bool readsTable(const Node& node, std::string_view table) {
  bool found = false;
  const SourceVisit visitSource = [&](const BoundSource& source) { found = found || source.table == table; };
  const NodeVisit visit = [](const Node&) { return true; };
  std::visit([&](const auto& content) { Walker{visit, visitSource}.below(content); }, node.content);
  return found;
}

bool isSimple(const Node& node) {
  return !std::holds_alternative<InQueryNode>(node.content) &&
         !std::holds_alternative<ExistsNode>(node.content) &&
         !std::holds_alternative<SubqueryNode>(node.content);
}

bool hasParameter(const Node& node) {
  bool found = false;
  walkNode(node, [&](const Node& part) {
    found = found || std::holds_alternative<ParameterNode>(part.content);
    return !found;
  });
  return found;
}

const std::vector<BoundItem>& itemsOf(const BoundQuery& query) {
  const auto& content = query.terms.front().content;
  if (const auto* nested = std::get_if<BoundQueryPtr>(&content)) return itemsOf(**nested);
  return std::get<BoundSelect>(content).items;
}

}  // namespace goodsbook::engine
