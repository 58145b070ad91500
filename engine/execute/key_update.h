#pragma once

#include <cstdint>
#include <span>

#include "engine/catalog/table_info.h"
#include "engine/execute/session.h"

namespace goodsbook::engine {

// Keys must be unique at the end of a statement, but SQLite looks after every row: an UPDATE that moves keys
// onto each other fails there though it is right. This runs one again in two steps, all its rows put aside
// first. Gives the number of rows; throws 2627 or 2601 with the value where keys are the same in the end,
// too, and 515.
std::int64_t updateKeys(Session& session, const TableInfo& table, const Plan& plan,
                        std::span<const Value> values);

}  // namespace goodsbook::engine
