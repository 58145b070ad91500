#pragma once

#include "engine/catalog/catalog.h"
#include "engine/compile/bound.h"

namespace goodsbook::engine {

// `… JOIN (SELECT k, COUNT(*) AS n FROM t GROUP BY k) g ON g.k = x.k` makes SQLite group the whole of t
// before it joins a single row. Where an index leads to a key's rows, the groups that are needed are looked
// up one by one instead: g.n becomes (SELECT COUNT(*) FROM t WHERE k = x.k), and the join EXISTS (SELECT 1
// FROM t WHERE k = x.k).
void lookUpGroups(BoundSelect& select, std::vector<BoundOrder>& order, const Catalog& catalog);

}  // namespace goodsbook::engine
