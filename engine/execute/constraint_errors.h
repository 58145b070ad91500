#pragma once

#include <span>

#include "engine/catalog/table_info.h"
#include "engine/compile/plan.h"
#include "engine/error.h"
#include "engine/execute/session.h"

namespace goodsbook::engine {

// The server's error for what SQLite has just refused in a statement that writes: 515 for a null, 2627 and
// 2601 for a key, with the value that is there twice. `values` are those that the statement was run with.
SqlError constraintError(Session& session, const TableInfo& table, const PlanPtr& plan,
                         std::span<const Value> values, int code);

// The key that SQLite's message speaks of, or null.
const KeyInfo* brokenKey(Session& session, const TableInfo& table);

SqlError duplicateKeyError(const TableInfo& table, const KeyInfo& key, std::span<const Value> value);

}  // namespace goodsbook::engine
