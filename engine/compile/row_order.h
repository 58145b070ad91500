#pragma once

#include "engine/catalog/catalog.h"
#include "engine/compile/bound.h"

namespace goodsbook::engine {

// A filter makes SQLite start a join from whichever table has an index for it, and the rows of a list would
// come in another order with every filter. A join without ORDER BY whose condition can be started from gets
// the order of the rows of its first table; others are read through from their first rows on and stay as they
// are.
void keepRowOrder(BoundQuery& query, const Catalog& catalog);

}  // namespace goodsbook::engine
