#pragma once

#include <string>
#include <vector>

#include "engine/compile/bound.h"
#include "engine/compile/plan.h"
#include "engine/compile/scope.h"

namespace goodsbook::engine {

// Equal for expressions that are the same, their constants among it.
std::string groupKey(const Node& node, const Plan& plan);

// In a grouped select every column outside an aggregate belongs to a key of GROUP BY: throws 8120 (8121 for
// HAVING, 8127 for ORDER BY) where one does not.
void checkGrouping(const BoundSelect& select, const std::vector<BoundOrder>& order, const Scope& scope,
                   const std::vector<std::string>& keys, const Plan& plan);

// SQLite sorts a subquery by its own columns only: refuses a key that speaks of a select around it.
void refuseOuterKey(const Node& key, const Scope& scope);

// Refuses an aggregate over columns of a select around this one alone: it would be that one's aggregate.
void refuseOuterAggregate(const Node& argument, const Scope& scope);

}  // namespace goodsbook::engine
