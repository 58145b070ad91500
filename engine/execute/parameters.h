#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "engine/compile/plan.h"
#include "engine/runtime/value.h"
#include "engine/syntax/shape.h"

namespace goodsbook::engine {

// What the values of a statement's parameters are taken from.
struct ValueSources {
  std::span<const LiteralValue> literals{};
  std::span<const Value> variables{};
  std::int64_t now = 0;
};

// The values of a plan's parameters, converted to what the statement needs; throws what the conversions do.
std::vector<Value> parameterValues(const Plan& plan, const ValueSources& sources);

}  // namespace goodsbook::engine
