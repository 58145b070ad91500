#pragma once

#include <cstdint>
#include <string_view>

#include "engine/runtime/sql_type.h"
#include "engine/runtime/value.h"
#include "engine/syntax/ast.h"

namespace goodsbook::engine {

SqlType literalType(LiteralKind kind, std::string_view text);
// Throws 1007 for a number out of any range.
Value literalValue(LiteralKind kind, std::string_view text, bool negated);
std::int64_t literalWhole(const Literal& literal);

}  // namespace goodsbook::engine
