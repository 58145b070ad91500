#pragma once

#include "engine/execute/engine_state.h"

namespace goodsbook::engine {

struct TypedValue {
  Value value{};
  SqlType type{};
};

// The value of an expression that stands alone: a literal, a signed number, NULL, a procedure's parameter.
// Anything else is 40510.
TypedValue constantValue(const Expression& expression, const Frame& frame);

}  // namespace goodsbook::engine
