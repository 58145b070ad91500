#pragma once

#include <functional>

#include "engine/compile/bound.h"

// Copies of bound trees, with other columns in place of those of the original.
namespace goodsbook::engine {

using ColumnMap = std::function<NodePtr(const ColumnNode&)>;

NodePtr cloneNode(const Node& node, const ColumnMap& map);
BoundQuery cloneQuery(const BoundQuery& query, const ColumnMap& map);

}  // namespace goodsbook::engine
