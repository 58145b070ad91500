#pragma once

#include <string>

#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// The T-SQL of a tree, in one line for each statement of a script. Parsed again it gives the same tree.
std::string print(const Script& script);
std::string print(const Statement& statement);
std::string print(const Query& query);
std::string print(const Expression& expression);

}  // namespace goodsbook::engine
