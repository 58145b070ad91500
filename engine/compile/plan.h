#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/catalog/table_info.h"
#include "engine/row.h"
#include "engine/runtime/sql_type.h"
#include "engine/syntax/ast.h"

namespace goodsbook::engine {

// Where the value of one SQLite parameter comes from at each run, and what it is converted to on the way.
// Converting here, once, is why no row of a statement pays for a literal.
struct ParameterSource {
  enum class Origin : std::uint8_t { Literal, Variable, Now, Fixed };
  Origin origin = Origin::Literal;
  int index = 0;  // of the replaceable literal in its statement, or of the procedure's parameter
  LiteralKind kind = LiteralKind::Text;
  std::string written{};  // the literal itself; Fixed ones belong to the statement's shape and keep it
  bool negated = false;   // a number with a minus in front
  SqlType from{};         // of a variable
  SqlType to{};           // Kind::Null: as it is
  bool cut = false;
  int style = -1;
  std::string target{};  // 'table.column' of an assignment
};

// A literal on whose very value the translation depends, the scale of a decimal for example.
struct Pin {
  int literal = 0;
  std::string value{};
};

// One statement as it is given to SQLite, and how its values get there.
struct Plan {
  enum class Result : std::uint8_t { Rows, Count, Condition };
  Result result = Result::Rows;
  std::string sql{};
  std::vector<ParameterSource> parameters{};
  std::vector<Column> columns{};  // of Rows
  std::vector<Pin> pins{};
  bool reusable = true;

  // Of a statement that writes: what a broken key is explained with, and how an UPDATE that moves keys is run
  // in two steps. `sourceSql` gives the written rows: first the row's number for an UPDATE, then the values
  // of `written`.
  enum class Write : std::uint8_t { None, Insert, Update, Delete };
  Write write = Write::None;
  std::string table{};
  std::vector<std::size_t> written{};
  std::string sourceSql{};
};

}  // namespace goodsbook::engine
