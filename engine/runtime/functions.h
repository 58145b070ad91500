#pragma once

#include <optional>

#include "engine/error.h"

struct sqlite3;

// The functions of T-SQL for SQLite. All their names begin with ts_.
namespace goodsbook::engine {

// SQLite carries a text through a failing statement, not a server's number: the function that fails leaves
// its error here.
struct FunctionErrors {
  std::optional<Diagnostic> last;
};

// Makes the collation and all functions known to a connection; `errors` must live as long as the connection.
void registerRuntime(sqlite3* db, FunctionErrors& errors);

}  // namespace goodsbook::engine
