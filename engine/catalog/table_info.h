#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/runtime/sql_type.h"

namespace goodsbook::engine {

struct ColumnInfo {
  std::string name{};
  SqlType type{};
  bool nullable = true;
  bool identity = false;
  std::string defaultSql{};  // a constant as SQLite writes it; empty for none
  bool defaultsToNow = false;
};

enum class UniqueBy : std::uint8_t { PrimaryKey, Constraint, Index };

// What keeps rows apart: a key or a unique index.
struct KeyInfo {
  UniqueBy by = UniqueBy::Constraint;
  std::string name{};
  std::vector<std::size_t> columns{};
};

struct TableInfo {
  std::string name{};
  std::vector<ColumnInfo> columns{};
  std::vector<KeyInfo> keys{};
  std::vector<std::size_t> indexed{};  // columns that are the first of an index
  std::string rowName{};               // SQLite's name of the row number that no column hides

  std::optional<std::size_t> find(std::string_view column) const;
  bool isInKey(std::size_t column) const;
};

}  // namespace goodsbook::engine
