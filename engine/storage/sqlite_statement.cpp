#include "engine/storage/sqlite_statement.h"

#include "engine/storage/sqlite_errors.h"

namespace goodsbook::engine {

StatementHandle prepare(sqlite3* db, std::string_view sql, unsigned flags) {
  sqlite3_stmt* statement = nullptr;
  const int code =
      sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()), flags, &statement, nullptr);
  if (code != SQLITE_OK) throw sqliteFailure(db, code);
  return StatementHandle(statement);
}

void bindValue(sqlite3_stmt* statement, int index, const Value& value) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    sqlite3_bind_int64(statement, index, *whole);
  } else if (const auto* fraction = std::get_if<double>(&value)) {
    sqlite3_bind_double(statement, index, *fraction);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    sqlite3_bind_text64(statement, index, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
  } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
    if (bytes->empty())
      sqlite3_bind_zeroblob(statement, index, 0);
    else
      sqlite3_bind_blob64(statement, index, bytes->data(), bytes->size(), SQLITE_STATIC);
  } else {
    sqlite3_bind_null(statement, index);
  }
}

Value columnValue(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
      return std::int64_t{sqlite3_column_int64(statement, column)};
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement, column);
    case SQLITE_TEXT:
      return std::string(columnText(statement, column));
    case SQLITE_BLOB: {
      const auto* start = static_cast<const std::byte*>(sqlite3_column_blob(statement, column));
      return Bytes(start, start + sqlite3_column_bytes(statement, column));
    }
    default:
      return {};
  }
}

SqliteStatement::SqliteStatement(sqlite3* db, std::string_view sql) : db_(db), handle_(prepare(db, sql)) {}

SqliteStatement& SqliteStatement::bind(int index, const Value& value) {
  bindValue(handle_.get(), index, value);
  return *this;
}

bool SqliteStatement::step() {
  const int code = sqlite3_step(handle_.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) throw sqliteFailure(db_, code);
  return code == SQLITE_ROW;
}

void runSql(sqlite3* db, std::string_view sql) {
  SqliteStatement statement(db, sql);
  while (statement.step()) {
  }
}

}  // namespace goodsbook::engine
