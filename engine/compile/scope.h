#pragma once

#include <string>
#include <vector>

#include "engine/catalog/table_info.h"
#include "engine/runtime/sql_type.h"
#include "engine/syntax/ast.h"

namespace goodsbook::engine {

struct SourceColumn {
  std::string name{};
  SqlType type{};
  std::string sql{};  // its name in SQLite
  bool stored = false;
};

// A table of a FROM under the name by which columns can speak of it.
struct Source {
  int id = 0;
  std::string name{};
  const TableInfo* table = nullptr;  // null for a derived table
  bool aliased = false;
  std::vector<SourceColumn> columns{};
};

// The sources of one select; names that it does not know are looked up in the selects around it.
struct Scope {
  std::vector<Source> sources{};
  std::size_t firstVisible = 0;  // while an ON is bound, only the tables of its join can be named
  const Scope* outer = nullptr;
};

struct FoundColumn {
  const Source* source;
  const SourceColumn* column;
  bool outer;  // of a select around this one
};

// Throws 207 for an unknown column, 209 for one that several tables have, 4104 for an unknown table in front
// of it.
FoundColumn findColumn(const Scope& scope, const ColumnRef& reference);

// `a.b` as it stands in messages.
std::string writtenName(const ObjectName& qualifier, std::string_view last);

// The name of a table or procedure; refuses other schemas than dbo and other databases by 40510.
std::string_view plainName(const ObjectName& name);

}  // namespace goodsbook::engine
