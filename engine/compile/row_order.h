#pragma once

#include "engine/catalog/catalog.h"
#include "engine/compile/bound.h"

namespace goodsbook::engine {

// SQLite starts a join from whichever table it finds cheapest, so that the rows of a list would come in
// another order with every filter. A join without ORDER BY comes in the order of its first table's rows, with
// any filter and without. One that asks for the rows of a later table by a key of that table alone, as for
// the lines of a document, keeps their order; so do other queries.
void keepRowOrder(BoundQuery& query, const Catalog& catalog);

}  // namespace goodsbook::engine
