#include "engine/syntax/printer_impl.h"

namespace goodsbook::engine {
namespace {

std::string_view signOf(UnaryOperator op) {
  switch (op) {
    case UnaryOperator::Plus:
      return "+";
    case UnaryOperator::Minus:
      return "-";
    case UnaryOperator::BitNot:
      return "~";
  }
  return {};
}

std::string_view signOf(BinaryOperator op) {
  switch (op) {
    case BinaryOperator::Add:
      return "+";
    case BinaryOperator::Subtract:
      return "-";
    case BinaryOperator::Multiply:
      return "*";
    case BinaryOperator::Divide:
      return "/";
    case BinaryOperator::Modulo:
      return "%";
    case BinaryOperator::BitAnd:
      return "&";
    case BinaryOperator::BitOr:
      return "|";
    case BinaryOperator::BitXor:
      return "^";
  }
  return {};
}

std::string_view signOf(ComparisonOperator op) {
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

bool isMultiplicative(BinaryOperator op) {
  return op == BinaryOperator::Multiply || op == BinaryOperator::Divide || op == BinaryOperator::Modulo;
}

}  // namespace

Printer::Tightness Printer::tightnessOf(const Expression& expression) {
  if (const auto* logical = std::get_if<Logical>(&expression.node)) {
    return logical->op == LogicalOperator::Or ? Tightness::Or : Tightness::And;
  }
  if (std::holds_alternative<Not>(expression.node)) return Tightness::Not;
  if (std::holds_alternative<Exists>(expression.node)) return Tightness::Primary;
  if (isCondition(expression)) return Tightness::Comparison;
  if (const auto* binary = std::get_if<Binary>(&expression.node)) {
    return isMultiplicative(binary->op) ? Tightness::Multiplicative : Tightness::Additive;
  }
  if (const auto* unary = std::get_if<Unary>(&expression.node)) {
    return unary->op == UnaryOperator::BitNot ? Tightness::Prefix : Tightness::Additive;
  }
  return Tightness::Primary;
}

void Printer::print(const Expression& expression, Tightness weakest) {
  const bool parenthesised = tightnessOf(expression) < weakest;
  if (parenthesised) writer_.open();
  std::visit(*this, expression.node);
  if (parenthesised) writer_.close();
}

void Printer::printList(const std::vector<ExpressionPtr>& values) {
  Commas commas(writer_);
  for (const ExpressionPtr& value : values) {
    commas.next();
    printValue(*value);
  }
}

void Printer::operator()(const Literal& node) {
  switch (node.kind) {
    case LiteralKind::Text:
      writer_.text(node.value);
      break;
    case LiteralKind::NationalText:
      writer_.nationalText(node.value);
      break;
    case LiteralKind::Binary:
      writer_.word("0x" + std::string(node.value));
      break;
    case LiteralKind::Integer:
    case LiteralKind::Decimal:
    case LiteralKind::Float:
      writer_.word(node.value);
      break;
  }
}

void Printer::operator()(const NullLiteral&) {
  writer_.word("NULL");
}

void Printer::operator()(const DefaultValue&) {
  writer_.word("DEFAULT");
}

void Printer::operator()(const ColumnRef& node) {
  if (!node.qualifier.empty()) {
    writer_.object(node.qualifier);
    writer_.dot();
  }
  writer_.name(node.column.text);
}

void Printer::operator()(const Star& node) {
  if (!node.qualifier.empty()) {
    writer_.object(node.qualifier);
    writer_.dot();
  }
  writer_.word("*");
}

void Printer::operator()(const Variable& node) {
  writer_.word(node.name.text);
}

void Printer::operator()(const Unary& node) {
  writer_.word(signOf(node.op));
  print(*node.operand, node.op == UnaryOperator::BitNot ? Tightness::Prefix : Tightness::Multiplicative);
}

void Printer::operator()(const Binary& node) {
  const bool tight = isMultiplicative(node.op);
  print(*node.left, tight ? Tightness::Multiplicative : Tightness::Additive);
  writer_.word(signOf(node.op));
  print(*node.right, tight ? Tightness::Prefix : Tightness::Multiplicative);
}

void Printer::operator()(const Case& node) {
  writer_.word("CASE");
  if (node.operand) printValue(*node.operand);
  for (const CaseBranch& branch : node.branches) {
    writer_.word("WHEN");
    print(*branch.when, node.operand ? Tightness::Additive : Tightness::Or);
    writer_.word("THEN");
    printValue(*branch.then);
  }
  if (node.otherwise) {
    writer_.word("ELSE");
    printValue(*node.otherwise);
  }
  writer_.word("END");
}

void Printer::printType(const DataType& type) {
  writer_.name(type.name.text);
  if (type.width == DataType::notGiven) return;
  writer_.open();
  writer_.word(type.width == DataType::maximum ? "max" : std::to_string(type.width));
  if (type.scale != DataType::notGiven) {
    writer_.comma();
    writer_.word(std::to_string(type.scale));
  }
  writer_.close();
}

void Printer::operator()(const Cast& node) {
  writer_.word("CAST");
  writer_.open();
  printValue(*node.operand);
  writer_.word("AS");
  printType(node.type);
  writer_.close();
}

void Printer::operator()(const Convert& node) {
  writer_.word("CONVERT");
  writer_.open();
  printType(node.type);
  writer_.comma();
  printValue(*node.operand);
  if (node.style) {
    writer_.comma();
    printValue(*node.style);
  }
  writer_.close();
}

void Printer::operator()(const FunctionCall& node) {
  writer_.call(node.name.text);
  writer_.open();
  if (node.distinct) writer_.word("DISTINCT");
  printList(node.arguments);
  writer_.close();
}

void Printer::operator()(const ScalarSubquery& node) {
  writer_.open();
  print(*node.query);
  writer_.close();
}

void Printer::operator()(const Comparison& node) {
  printValue(*node.left);
  writer_.word(signOf(node.op));
  printValue(*node.right);
}

void Printer::operator()(const Logical& node) {
  const bool isOr = node.op == LogicalOperator::Or;
  bool first = true;
  for (const ExpressionPtr& operand : node.operands) {
    if (!first) writer_.word(isOr ? "OR" : "AND");
    first = false;
    print(*operand, isOr ? Tightness::And : Tightness::Not);
  }
}

void Printer::operator()(const Not& node) {
  writer_.word("NOT");
  print(*node.operand, Tightness::Not);
}

void Printer::operator()(const Like& node) {
  printValue(*node.operand);
  writer_.word(node.negated ? "NOT LIKE" : "LIKE");
  printValue(*node.pattern);
  if (node.escape) {
    writer_.word("ESCAPE");
    printValue(*node.escape);
  }
}

void Printer::operator()(const InList& node) {
  printValue(*node.operand);
  writer_.word(node.negated ? "NOT IN" : "IN");
  writer_.open();
  printList(node.items);
  writer_.close();
}

void Printer::operator()(const InQuery& node) {
  printValue(*node.operand);
  writer_.word(node.negated ? "NOT IN" : "IN");
  writer_.open();
  print(*node.query);
  writer_.close();
}

void Printer::operator()(const Between& node) {
  printValue(*node.operand);
  writer_.word(node.negated ? "NOT BETWEEN" : "BETWEEN");
  printValue(*node.low);
  writer_.word("AND");
  printValue(*node.high);
}

void Printer::operator()(const IsNull& node) {
  printValue(*node.operand);
  writer_.word(node.negated ? "IS NOT NULL" : "IS NULL");
}

void Printer::operator()(const Exists& node) {
  writer_.word("EXISTS");
  writer_.open();
  print(*node.query);
  writer_.close();
}

}  // namespace goodsbook::engine
