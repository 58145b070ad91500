#include "engine/execute/parameters.h"

#include "engine/compile/literals.h"
#include "engine/runtime/convert.h"

namespace goodsbook::engine {
namespace {

Value convertTo(const ParameterSource& source, Value value, SqlType from) {
  if (source.to.kind == Kind::Null || source.to == from) return value;
  return convertValue(value, from, source.to,
                      {.style = source.style, .cut = source.cut, .target = source.target});
}

Value valueOf(const ParameterSource& source, const ValueSources& sources) {
  const auto index = static_cast<std::size_t>(source.index);
  switch (source.origin) {
    case ParameterSource::Origin::Literal: {
      const LiteralValue& literal = sources.literals[index];
      return convertTo(source, literalValue(literal.kind, literal.value, source.negated),
                       literalType(literal.kind, literal.value));
    }
    case ParameterSource::Origin::Fixed:
      return convertTo(source, literalValue(source.kind, source.written, source.negated),
                       literalType(source.kind, source.written));
    case ParameterSource::Origin::Variable:
      return convertTo(source, sources.variables[index], source.from);
    case ParameterSource::Origin::Now:
      return convertTo(source, sources.now, {Kind::DateTime});
  }
  return {};
}

}  // namespace

std::vector<Value> parameterValues(const Plan& plan, const ValueSources& sources) {
  std::vector<Value> values;
  values.reserve(plan.parameters.size());
  for (const ParameterSource& source : plan.parameters) values.push_back(valueOf(source, sources));
  return values;
}

}  // namespace goodsbook::engine
