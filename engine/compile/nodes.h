#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/compile/bound.h"

// Making and walking nodes.
namespace goodsbook::engine {

NodePtr wholeNode(std::int64_t number);
NodePtr textNode(std::string_view text);
NodePtr nullNode();

template <typename... Nodes>
std::vector<NodePtr> nodeList(Nodes... nodes) {
  std::vector<NodePtr> list;
  list.reserve(sizeof...(nodes));
  (list.push_back(std::move(nodes)), ...);
  return list;
}

template <typename... Nodes>
NodePtr callNode(std::string_view name, Nodes... arguments) {
  return makeNode(CallNode{.name = std::string(name), .arguments = nodeList(std::move(arguments)...)});
}

template <typename... Nodes>
NodePtr infixNode(std::string_view op, Nodes... operands) {
  return makeNode(InfixNode{op, nodeList(std::move(operands)...)});
}

// Calls `visit` for the node and everything below it, subqueries included; where it returns false, not for
// what is below.
using NodeVisit = std::function<bool(const Node&)>;
void walkNode(const Node& node, const NodeVisit& visit);
void walkQuery(const BoundQuery& query, const NodeVisit& visit);

// Whether a node holds no query, so that it can be evaluated anywhere its columns are known.
bool isSimple(const Node& node);

// Whether a table is read anywhere below the node.
bool readsTable(const Node& node, std::string_view table);
bool hasParameter(const Node& node);

}  // namespace goodsbook::engine
