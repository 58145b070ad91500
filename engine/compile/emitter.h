#pragma once

#include <span>
#include <string>

#include "engine/compile/bound.h"

// Bound statements as SQLite's text. Nothing is decided here.
namespace goodsbook::engine {

std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);

// With names for the columns (c1, c2, …) where other parts of a statement speak of them.
std::string emitQuery(const BoundQuery& query, bool nameColumns = false);
std::string emitNode(const Node& node);
// (a, b), (c, d)
std::string emitRows(std::span<const std::vector<NodePtr>> rows);

// What a derived column is called.
std::string derivedColumn(std::size_t index);
std::string sourceName(int id);

}  // namespace goodsbook::engine
