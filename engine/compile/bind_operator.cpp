#include <algorithm>

#include "engine/compile/binder.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/date_time.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

constexpr int mostDigits = 38;
constexpr int leastDivisionScale = 6;

std::string_view symbolOf(BinaryOperator op) {
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

bool isBitOperator(BinaryOperator op) {
  return op == BinaryOperator::BitAnd || op == BinaryOperator::BitOr || op == BinaryOperator::BitXor;
}

[[noreturn]] void failOperands(BinaryOperator op, SqlType left, SqlType right) {
  fail(402, concat("数据类型 ", typeName(left), " 和 ", typeName(right), " 在运算符 ", symbolOf(op),
                   " 中不兼容。"));
}

// Digits in front of and behind the point of a number that takes part in decimal arithmetic.
SqlType asDecimal(SqlType type) {
  switch (type.kind) {
    case Kind::Decimal:
      return {Kind::Decimal, type.width == 0 ? mostDigits : type.width, type.scale};
    case Kind::Money:
      return {Kind::Decimal, 19, 4};
    case Kind::BigInt:
      return {Kind::Decimal, 19, 0};
    case Kind::Int:
      return {Kind::Decimal, 10, 0};
    default:
      return {Kind::Decimal, 5, 0};
  }
}

SqlType decimalResult(BinaryOperator op, SqlType a, SqlType b) {
  int scale = std::max(a.scale, b.scale);
  int digits = std::max(a.width - a.scale, b.width - b.scale) + scale + 1;
  if (op == BinaryOperator::Multiply) {
    scale = a.scale + b.scale;
    digits = a.width + b.width + 1;
  } else if (op == BinaryOperator::Divide) {
    scale = std::max(leastDivisionScale, a.scale + b.width + 1);
    digits = a.width - a.scale + b.scale + scale;
  }
  if (digits > mostDigits) {
    scale = std::max(std::min(scale, mostDigits - (digits - scale)), std::min(scale, leastDivisionScale));
    digits = mostDigits;
  }
  return {Kind::Decimal, digits, scale};
}

NodePtr numberNode(BinaryOperator op, bool whole, NodePtr left, NodePtr right) {
  if (op == BinaryOperator::Divide)
    return callNode(whole ? "ts_idiv" : "ts_div", std::move(left), std::move(right));
  if (op == BinaryOperator::Modulo)
    return callNode(whole ? "ts_imod" : "ts_mod", std::move(left), std::move(right));
  return infixNode(symbolOf(op), std::move(left), std::move(right));
}

}  // namespace

BoundValue Binder::bindUnary(const Unary& unary, const Scope& scope) {
  BoundValue operand = bindValue(*unary.operand, scope);
  if (unary.op == UnaryOperator::Plus) return operand;
  if (operand.type.kind == Kind::Text || operand.type.kind == Kind::DateTime ||
      operand.type.kind == Kind::Binary)
    fail(8117, concat("操作数数据类型 ", typeName(operand.type), " 对于负号运算符无效。"));
  if (unary.op == UnaryOperator::BitNot) {
    if (!isWhole(operand.type.kind)) fail(8117, "操作数数据类型对于运算符 ~ 无效。");
    const bool bit = operand.type.kind == Kind::Bit;
    BoundValue result{.node = nullptr, .type = operand.type};
    result.node = bit ? infixNode("-", wholeNode(1), std::move(operand.node))
                      : makeNode(PrefixNode{"~", std::move(operand.node)});
    return result;
  }
  if (operand.literal != nullptr) {  // the sign belongs to the number
    ParameterSource& source = plan_.parameters[static_cast<std::size_t>(operand.parameter)];
    source.negated = !source.negated;
    return operand;
  }
  BoundValue result{.node = nullptr,
                    .type = operand.type.kind == Kind::Null ? SqlType{Kind::Int} : operand.type};
  result.node = makeNode(PrefixNode{"-", std::move(operand.node)});
  return result;
}

BoundValue Binder::bindBinary(const Binary& binary, const Scope& scope) {
  BoundValue left = bindValue(*binary.left, scope);
  BoundValue right = bindValue(*binary.right, scope);
  const Kind a = left.type.kind;
  const Kind b = right.type.kind;
  const auto textOrNull = [](Kind kind) { return kind == Kind::Text || kind == Kind::Null; };
  if (binary.op == BinaryOperator::Add && textOrNull(a) && textOrNull(b) && a != b) {
    left.type = right.type = {Kind::Text};
  }
  if (binary.op == BinaryOperator::Add && left.type.kind == Kind::Text && right.type.kind == Kind::Text) {
    const int width = left.type.width == 0 || right.type.width == 0 ? 0 : left.type.width + right.type.width;
    BoundValue joined{.node = infixNode("||", std::move(left.node), std::move(right.node)),
                      .type = {Kind::Text, width}};
    return joined;
  }
  if (a == Kind::DateTime || b == Kind::DateTime)
    return bindDateArithmetic(binary.op, std::move(left), std::move(right));
  if (a == Kind::Binary || b == Kind::Binary) failOperands(binary.op, left.type, right.type);
  return bindNumbers(binary.op, std::move(left), std::move(right));
}

BoundValue Binder::bindDateArithmetic(BinaryOperator op, BoundValue left, BoundValue right) {
  if (op != BinaryOperator::Add && op != BinaryOperator::Subtract) failOperands(op, left.type, right.type);
  left = toDateTime(std::move(left));
  right = toDateTime(std::move(right));
  NodePtr count = std::move(right.node);
  if (op == BinaryOperator::Subtract) count = makeNode(PrefixNode{"-", std::move(count)});
  BoundValue result;
  result.type = {Kind::DateTime};
  result.node = callNode("ts_dateadd", wholeNode(static_cast<int>(DatePart::Millisecond)), std::move(count),
                         std::move(left.node));
  return result;
}

BoundValue Binder::bindNumbers(BinaryOperator op, BoundValue left, BoundValue right) {
  const auto raise = [this](BoundValue& value, const BoundValue& other) {
    if (isNumber(value.type.kind)) return;
    SqlType to = isNumber(other.type.kind) ? other.type : SqlType{Kind::Int};
    if (to.kind == Kind::Decimal) to = {Kind::Decimal, 0, other.type.scale};
    value = coerce(std::move(value), to, Purpose::Implicit);
  };
  if (left.type.kind == Kind::Text && right.type.kind == Kind::Text) failOperands(op, left.type, right.type);
  raise(left, right);
  raise(right, left);
  const Kind kind = std::max(left.type.kind, right.type.kind);
  const bool whole = isWhole(kind);
  if (isBitOperator(op) && !whole) failOperands(op, left.type, right.type);
  if (op == BinaryOperator::BitXor) failUnsupported("^");
  if (!isBitOperator(op) && kind == Kind::Bit)
    fail(402, concat("数据类型 bit 和 bit 在运算符 ", symbolOf(op), " 中不兼容。"));
  BoundValue result;
  result.type = {kind};
  if (kind == Kind::Decimal || kind == Kind::Money) {
    pin(left);
    pin(right);
    result.type = kind == Kind::Money ? SqlType{Kind::Money}
                                      : decimalResult(op, asDecimal(left.type), asDecimal(right.type));
  }
  NodePtr number = numberNode(op, whole, std::move(left.node), std::move(right.node));
  const bool checked = whole && !isBitOperator(op) && op != BinaryOperator::Modulo;
  if (checked) number = callNode("ts_range", std::move(number), wholeNode(packType(result.type)));
  if (kind == Kind::Decimal || kind == Kind::Money)
    number = callNode("ts_round", std::move(number),
                      wholeNode(kind == Kind::Money ? moneyScale : result.type.scale), wholeNode(0));
  result.node = std::move(number);
  return result;
}

}  // namespace goodsbook::engine
