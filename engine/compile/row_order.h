#pragma once

#include "engine/catalog/catalog.h"
#include "engine/compile/bound.h"

namespace goodsbook::engine {

// A filter makes SQLite start a join from whichever table has an index for it, and the rows of a list would
// come in another order with every filter. A join without ORDER BY that is filtered by an index of its first
// table comes in the order of that table's rows; other queries stay as they are.
void keepRowOrder(BoundQuery& query, const Catalog& catalog);

}  // namespace goodsbook::engine
