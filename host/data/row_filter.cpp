#include "host/data/row_filter.h"

#include <compare>

#include "host/data/filter_parser.h"
#include "host/data/text_fold.h"

namespace goodsbook {
namespace {

using Order = FilterNode::Order;

double numberOf(const FilterOperand& operand, const Cell& cell) {
  if (operand.field < 0) return operand.number;
  return operand.type == FieldType::Float ? cell.real : static_cast<double>(cell.integer);
}

bool holds(Order order, std::partial_ordering is) {
  switch (order) {
    case Order::Equal:
      return std::is_eq(is);
    case Order::Unequal:
      return std::is_neq(is);
    case Order::Less:
      return std::is_lt(is);
    case Order::Greater:
      return std::is_gt(is);
    case Order::LessOrEqual:
      return std::is_lteq(is);
    case Order::GreaterOrEqual:
      return std::is_gteq(is);
  }
  return false;
}

bool compares(const FilterNode& node, const RowTable& table, RowRef row) {
  const Cell a = node.a.field < 0 ? Cell{} : table.cell(row, node.a.field);
  const Cell b = node.b.field < 0 ? Cell{} : table.cell(row, node.b.field);
  if ((node.a.field >= 0 && a.null) || (node.b.field >= 0 && b.null)) return false;
  if (node.a.type == FieldType::Text) {
    const std::string_view left = node.a.field < 0 ? std::string_view(node.a.text) : a.bytes;
    const std::string_view right = node.b.field < 0 ? std::string_view(node.b.text) : b.bytes;
    return holds(node.order, compareFolded(left, right) <=> 0);
  }
  if (node.a.type == FieldType::DateTime) {
    return holds(node.order, (node.a.field < 0 ? node.a.moment : a.integer) <=>
                                 (node.b.field < 0 ? node.b.moment : b.integer));
  }
  return holds(node.order, numberOf(node.a, a) <=> numberOf(node.b, b));
}

bool evaluate(const FilterNode& node, const RowTable& table, RowRef row) {
  switch (node.kind) {
    case FilterNode::Kind::And:
      return evaluate(*node.left, table, row) && evaluate(*node.right, table, row);
    case FilterNode::Kind::Or:
      return evaluate(*node.left, table, row) || evaluate(*node.right, table, row);
    case FilterNode::Kind::Not:
      return !evaluate(*node.left, table, row);
    case FilterNode::Kind::Compare:
      return compares(node, table, row);
    case FilterNode::Kind::IsNull:
      return table.isNull(row, node.a.field);
    case FilterNode::Kind::Like: {
      const Cell cell = table.cell(row, node.a.field);
      return !cell.null && likeFolded(cell.bytes, node.b.text);
    }
  }
  return false;
}

}  // namespace

std::optional<RowFilter> RowFilter::parse(const QString& text, const std::vector<Field>& fields) {
  std::shared_ptr<const FilterNode> root = FilterParser(text, fields).parse();
  if (!root) return std::nullopt;
  return RowFilter(std::move(root));
}

bool RowFilter::accepts(const RowTable& table, RowRef row) const {
  return evaluate(*root_, table, row);
}

}  // namespace goodsbook
