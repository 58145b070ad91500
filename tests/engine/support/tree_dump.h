#pragma once

#include <string>

#include "engine/syntax/ast.h"

namespace goodsbook::engine::test {

// A tree as nested lists, without positions: equal for equal trees only.
std::string dump(const Script& script);
std::string dump(const Statement& statement);
std::string dump(const Expression& expression);

}  // namespace goodsbook::engine::test
