#include <algorithm>

#include "engine/compile/binder.h"
#include "engine/compile/nodes.h"
#include "engine/runtime/convert.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

constexpr SqlType looseDecimal{Kind::Decimal, 0, 15};
constexpr int longestWhole = 20;  // characters of any whole number

std::string targetName(const TableInfo& table, std::size_t column) {
  return concat(table.name, ".", table.columns[column].name);
}

// Conversions that SQLite does by itself without a check.
NodePtr storageCast(BoundValue& value, SqlType to) {
  if (!isWhole(value.type.kind)) return nullptr;
  if (to.kind == Kind::Float || to.kind == Kind::Money)
    return makeNode(StorageCastNode{std::move(value.node), "REAL"});
  if (to.kind == Kind::Text && (to.width == 0 || to.width >= longestWhole))
    return makeNode(StorageCastNode{std::move(value.node), "TEXT"});
  return nullptr;
}

}  // namespace

BoundValue Binder::addParameter(ParameterSource source, SqlType type) {
  const int index = static_cast<int>(plan_.parameters.size());
  plan_.parameters.push_back(std::move(source));
  BoundValue value;
  value.node = makeNode(ParameterNode{index});
  value.type = type;
  value.parameter = index;
  return value;
}

void Binder::pin(const BoundValue& value) {
  if (value.literal == nullptr || value.literal->ordinal == Literal::structural) return;
  plan_.pins.push_back({value.literal->ordinal - firstOrdinal_, std::string(value.literal->value)});
}

void Binder::coerceParameter(BoundValue& value, SqlType to, Purpose purpose, const Target* target,
                             int style) {
  ParameterSource& source = plan_.parameters[static_cast<std::size_t>(value.parameter)];
  source.to = to;
  source.cut = purpose == Purpose::Cut;
  source.style = style;
  if (target != nullptr) source.target = targetName(*target->table, target->column);
  value.parameter = -1;  // converted once; a second conversion is a function's work
  value.literal = nullptr;
}

BoundValue Binder::coerce(BoundValue value, SqlType to, Purpose purpose, const Target* target, int style) {
  requireConvertible(value.type, to, purpose == Purpose::Cut);
  if (value.type.kind == Kind::Null || to.kind == Kind::Null) {
    value.type = to;
    return value;
  }
  if (value.parameter >= 0) {
    coerceParameter(value, to, purpose, target, style);
  } else if (!isSameStorage(value.type, to)) {
    if (NodePtr cast = storageCast(value, to)) {
      value.node = std::move(cast);
    } else {
      std::vector<NodePtr> arguments =
          nodeList(std::move(value.node), wholeNode(packType(value.type)), wholeNode(packType(to)));
      std::string_view function = "ts_implicit";
      if (purpose == Purpose::Cut) {
        function = "ts_convert";
        arguments.push_back(wholeNode(style));
      } else if (target != nullptr) {
        function = "ts_assign";
        arguments.push_back(textNode(targetName(*target->table, target->column)));
      }
      value.node = makeNode(CallNode{.name = std::string(function), .arguments = std::move(arguments)});
    }
    value.stored = false;
  }
  value.type = to;
  return value;
}

BoundValue Binder::toText(BoundValue value) {
  if (value.type.kind == Kind::Text) return value;
  return coerce(std::move(value), {Kind::Text}, Purpose::Implicit);
}

BoundValue Binder::toWhole(BoundValue value) {
  if (isWhole(value.type.kind)) return value;
  return coerce(std::move(value), {Kind::Int}, Purpose::Implicit);
}

BoundValue Binder::toNumber(BoundValue value) {
  if (isNumber(value.type.kind)) return value;
  return coerce(std::move(value), {value.type.kind == Kind::Null ? Kind::Int : Kind::Float},
                Purpose::Implicit);
}

BoundValue Binder::toDateTime(BoundValue value) {
  if (value.type.kind == Kind::DateTime) return value;
  return coerce(std::move(value), {Kind::DateTime}, Purpose::Implicit);
}

// Brings two operands that are compared to one type; numbers compare as they are.
void Binder::harmonize(BoundValue& left, BoundValue& right) {
  const SqlType leftType = left.type;
  const SqlType rightType = right.type;
  if (leftType.kind == Kind::Null || rightType.kind == Kind::Null || leftType.kind == rightType.kind) return;
  if (isNumber(leftType.kind) && isNumber(rightType.kind)) return;
  const auto raise = [this](BoundValue& value, SqlType to) {
    if (to.kind == Kind::Decimal) to = looseDecimal;
    value = coerce(std::move(value), to, Purpose::Implicit);
  };
  if (leftType.kind < rightType.kind)
    raise(left, rightType);
  else
    raise(right, leftType);
}

// The type of a value that is one or the other: of CASE, COALESCE, UNION.
SqlType Binder::mergedType(const BoundValue& left, const BoundValue& right) {
  const SqlType a = left.type;
  const SqlType b = right.type;
  if (std::max(a.kind, b.kind) == Kind::Decimal) {  // its scale is that of the digits as written
    pin(left);
    pin(right);
  }
  if (a.kind == Kind::Null) return b;
  if (b.kind == Kind::Null) return a;
  const Kind kind = std::max(a.kind, b.kind);
  if (kind == Kind::Text || kind == Kind::Binary) {
    if (a.kind != b.kind) return {kind};
    return {kind, a.width == 0 || b.width == 0 ? 0 : std::max(a.width, b.width)};
  }
  if (kind != Kind::Decimal) return {kind};
  return {kind, 0, std::max(a.kind == kind ? a.scale : 0, b.kind == kind ? b.scale : 0)};
}

NodePtr Binder::collated(BoundValue value) const {
  if (value.type.kind != Kind::Text || value.stored) return std::move(value.node);
  return makeNode(CollateNode{std::move(value.node)});
}

}  // namespace goodsbook::engine
