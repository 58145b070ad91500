#pragma once

#include <string>
#include <string_view>

#include "engine/runtime/sql_type.h"
#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// The type that a statement names. A width that is left out is `defaultWidth`: 1 in a table, 30 in CAST and
// CONVERT. Throws 2715 for an unknown name, 40510 for a type that is not kept here, 131 for a width beyond
// the server's.
SqlType typeOf(const DataType& type, int defaultWidth);

// How a column of that type is declared to SQLite, and back.
std::string declaredType(SqlType type);
SqlType typeOfDeclared(std::string_view declared);

}  // namespace goodsbook::engine
