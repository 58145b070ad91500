#pragma once

#include <sqlite3.h>

#include "engine/row.h"
#include "engine/storage/sqlite_statement.h"

namespace goodsbook::engine {

// The row on which a statement stands, read in place.
class StatementRow final : public Row {
 public:
  explicit StatementRow(sqlite3_stmt* statement) : statement_(statement) {}

  bool isNull(int column) const override { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
  std::int64_t integer(int column) const override { return sqlite3_column_int64(statement_, column); }
  double real(int column) const override { return sqlite3_column_double(statement_, column); }
  std::string_view text(int column) const override { return columnText(statement_, column); }
  std::span<const std::byte> blob(int column) const override {
    const auto* start = static_cast<const std::byte*>(sqlite3_column_blob(statement_, column));
    return {start, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
  }

 private:
  sqlite3_stmt* statement_;
};

}  // namespace goodsbook::engine
