#pragma once

#include <string_view>

#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// How deep queries, parentheses, blocks and chains of operators may be nested; error 191 beyond it.
inline constexpr int maximumHeight = 200;

// T-SQL that exists and that this engine does not do (DECLARE, WHILE, MERGE, transactions …) is refused with
// this number and a text that names the word.
inline constexpr int notSupportedError = 40510;

// Reads a whole batch; the batch must outlive the script. Throws SqlError of severity 15 with the line
// concerned:
//   102, 156 syntax (156 names a keyword), 105 an open quote, 113 an open comment, 191 nested too deeply,
//   4145 a value where a condition is needed, 1054/1002 and their like for wrong numbers, 40510 not
//   supported.
// The text of a batch that was refused has no effect, so nothing of it may have been run.
Script parse(std::string_view batch);

}  // namespace goodsbook::engine
