#include "engine/execute/constants.h"

#include "engine/compile/literals.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

TypedValue variableValue(const Variable& variable, const Frame& frame) {
  if (frame.procedure != nullptr) {
    const auto& parameters = frame.procedure->parameters;
    for (std::size_t i = 0; i < parameters.size(); ++i)
      if (sameName(parameters[i].name, variable.name.text)) return {frame.variables[i], parameters[i].type};
  }
  fail(137, concat("必须声明标量变量 \"", variable.name.text, "\"。"), 15);
}

}  // namespace

TypedValue constantValue(const Expression& expression, const Frame& frame) {
  if (const auto* literal = std::get_if<Literal>(&expression.node))
    return {literalValue(literal->kind, literal->value, false), literalType(literal->kind, literal->value)};
  if (std::holds_alternative<NullLiteral>(expression.node)) return {};
  if (const auto* variable = std::get_if<Variable>(&expression.node)) return variableValue(*variable, frame);
  if (const auto* unary = std::get_if<Unary>(&expression.node)) {
    const auto* number = std::get_if<Literal>(&unary->operand->node);
    if (number != nullptr && unary->op != UnaryOperator::BitNot)
      return {literalValue(number->kind, number->value, unary->op == UnaryOperator::Minus),
              literalType(number->kind, number->value)};
  }
  failUnsupported("此处的表达式（只能是常量或参数）");
}

}  // namespace goodsbook::engine
