#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "engine/runtime/sql_type.h"

// Statements as SQLite will run them: all names are resolved, all conversions are in place, collations are
// decided. What is left to the emitter is the spelling.
namespace goodsbook::engine {

struct Literal;
struct Node;
struct BoundQuery;
using NodePtr = std::unique_ptr<Node>;
using BoundQueryPtr = std::unique_ptr<BoundQuery>;

struct ParameterNode {
  int index;  // in Plan::parameters
};
struct ColumnNode {  // t<source>.<column>
  int source;
  std::string column{};
};
struct ConstantNode {  // a number or text that the binder made up, as SQLite writes it
  std::string sql{};
};
struct CallNode {
  std::string name{};
  std::vector<NodePtr> arguments{};
  bool distinct = false;
  bool star = false;
  bool aggregate = false;
};
struct InfixNode {  // also AND and OR chains
  std::string_view op{};
  std::vector<NodePtr> operands{};
};
struct PrefixNode {
  std::string_view op{};
  NodePtr operand{};
};
struct NullTestNode {
  NodePtr operand{};
  bool negated;
};
struct CollateNode {
  NodePtr operand{};
};
struct StorageCastNode {  // CAST(x AS REAL), of storage only
  NodePtr operand{};
  std::string_view type{};
};
struct CaseNode {
  struct Branch {
    NodePtr when;
    NodePtr then;
  };
  std::vector<Branch> branches{};
  NodePtr otherwise{};  // may be null
};
struct InListNode {
  NodePtr operand{};
  std::vector<NodePtr> items{};
  bool negated;
};
struct InQueryNode {
  NodePtr operand{};
  BoundQueryPtr query{};
  bool negated;
};
struct ExistsNode {
  BoundQueryPtr query{};
};
struct SubqueryNode {
  BoundQueryPtr query{};
};

struct Node {
  std::variant<ParameterNode, ColumnNode, ConstantNode, CallNode, InfixNode, PrefixNode, NullTestNode,
               CollateNode, StorageCastNode, CaseNode, InListNode, InQueryNode, ExistsNode, SubqueryNode>
      content;
};

template <typename Content>
NodePtr makeNode(Content content) {
  return std::make_unique<Node>(Node{std::move(content)});
}

struct BoundSource {
  int id = 0;
  std::string table{};    // SQLite's name, or
  BoundQueryPtr query{};  // a derived table
};
struct BoundFrom;
using BoundFromPtr = std::unique_ptr<BoundFrom>;
struct BoundJoin {
  std::string_view kind{};  // JOIN, LEFT JOIN, RIGHT JOIN, FULL JOIN, CROSS JOIN
  BoundFromPtr left{};
  BoundFromPtr right{};
  NodePtr on{};  // may be null
};
struct BoundFrom {
  std::variant<BoundSource, BoundJoin> content{};
};

struct BoundItem {
  NodePtr node{};
  std::string name{};  // empty for an expression without one
  SqlType type{};
  bool stored = false;  // a table's column, which carries its collation
  int parameter = -1;   // of a constant, as in BoundValue
  const Literal* literal = nullptr;
};
struct BoundSelect {
  bool distinct = false;
  NodePtr limit{};
  std::vector<BoundItem> items{};
  std::vector<BoundFromPtr> from{};
  NodePtr where{};
  std::vector<NodePtr> groupBy{};
  NodePtr having{};
  bool grouped = false;
};
struct BoundTerm {
  bool all = false;  // UNION ALL
  std::variant<BoundSelect, BoundQueryPtr> content{};
};
struct BoundOrder {
  NodePtr node{};
  bool descending = false;
};
struct BoundQuery {
  std::vector<BoundTerm> terms{};
  std::vector<BoundOrder> orderBy{};
};

// The columns that a query gives.
const std::vector<BoundItem>& itemsOf(const BoundQuery& query);

}  // namespace goodsbook::engine
