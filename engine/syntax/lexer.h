#pragma once

#include <string_view>

#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// Cuts a batch into words, without blanks and comments; fills tokens and unescaped of the script. Where the
// batch cannot be read (an open quote, 105; an open comment, 113; a mark that T-SQL does not know, 102) the
// words end with an Invalid one, so that an error that stands before it is the one that is told.
void tokenize(std::string_view batch, Script& script);

}  // namespace goodsbook::engine
