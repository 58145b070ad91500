#pragma once

#include "engine/catalog/catalog.h"
#include "engine/compile/bound.h"

namespace goodsbook::engine {

// SQLite starts a join from whichever table it finds cheapest, so that the rows of a list would come in
// another order with every filter. A join without ORDER BY comes in the order of its first table's rows, with
// any filter and without; other queries stay as they are.
void keepRowOrder(BoundQuery& query, const Catalog& catalog);

}  // namespace goodsbook::engine
