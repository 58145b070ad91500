#pragma once

#include "engine/compile/bound.h"
#include "engine/compile/scope.h"

namespace goodsbook::engine {

// A filter box searches columns of several joined tables at once: `a.x LIKE … OR b.y LIKE …`. Evaluated as it
// stands, every row is joined before it can be thrown away. This adds a condition that follows from the
// filter and that SQLite can start from: the row of one table is among those that the filter could let
// through, found by reading each table once by itself. The filter itself stays.
void addCandidateFilters(BoundSelect& select, const Scope& scope, int& nextSource);

}  // namespace goodsbook::engine
