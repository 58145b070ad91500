#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string_view>

#include "engine/runtime/value.h"

namespace goodsbook::engine {

struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// Prepares, or throws what sqliteFailure() makes of the error.
StatementHandle prepare(sqlite3* db, std::string_view sql, unsigned flags = 0);

// A value of a statement, in place: texts and bytes are not copied, so `value` must outlive the run.
void bindValue(sqlite3_stmt* statement, int index, const Value& value);
Value columnValue(sqlite3_stmt* statement, int column);
inline std::string_view columnText(sqlite3_stmt* statement, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
  return text == nullptr
             ? std::string_view()
             : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
}

// A statement of the engine's own, run once.
class SqliteStatement {
 public:
  SqliteStatement(sqlite3* db, std::string_view sql);
  SqliteStatement& bind(int index, const Value& value);
  bool step();  // false at the end
  std::int64_t integer(int column) const { return sqlite3_column_int64(handle_.get(), column); }
  std::string_view text(int column) const { return columnText(handle_.get(), column); }
  sqlite3_stmt* get() const { return handle_.get(); }

 private:
  sqlite3* db_;
  StatementHandle handle_;
};

void runSql(sqlite3* db, std::string_view sql);

}  // namespace goodsbook::engine
