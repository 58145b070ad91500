#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/syntax/ast.h"

// Statements that differ only in their values have one shape, so that they can share what was prepared for
// one of them.
namespace goodsbook::engine {

struct LiteralValue {
  LiteralKind kind = LiteralKind::Text;
  std::string_view value;  // as in Literal
};

struct Shape {
  // The words of the statement, one blank between them, names folded to upper case, and for each replaceable
  // literal a mark that tells its kind. Literals that belong to the shape stand as written.
  std::string text;
  // The replaceable literals in their order. Literal::ordinal - firstOrdinal is the place in this list.
  std::vector<LiteralValue> values;
  int firstOrdinal = 0;
};

// The shape of one statement of a parsed batch. Takes a Shape to reuse its memory.
void shapeOf(const Script& script, const Statement& statement, Shape& shape);

}  // namespace goodsbook::engine
