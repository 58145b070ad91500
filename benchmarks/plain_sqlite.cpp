#include "benchmarks/plain_sqlite.h"

#include <cstdio>
#include <cstdlib>

#include "engine/debug.h"

namespace goodsbook::benchmarks {

PlainSqlite::PlainSqlite(const std::string& file) {
  check(sqlite3_open(file.c_str(), &db_));
  sqlite3_busy_timeout(db_, 10'000);
  engine::registerEngineFunctions(db_);
  run("PRAGMA case_sensitive_like = 0");  // LIKE is SQLite's own again
  run("PRAGMA journal_mode = WAL");
  run("PRAGMA synchronous = FULL");
}

PlainSqlite::~PlainSqlite() {
  for (sqlite3_stmt* statement : statements_) sqlite3_finalize(statement);
  sqlite3_close(db_);
}

void PlainSqlite::check(int code) const {
  if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
  std::fprintf(stderr, "floor: %s\n", sqlite3_errmsg(db_));
  std::exit(1);
}

sqlite3_stmt* PlainSqlite::prepare(const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  check(sqlite3_prepare_v2(db_, sql.c_str(), static_cast<int>(sql.size()), &statement, nullptr));
  statements_.push_back(statement);
  return statement;
}

void PlainSqlite::run(const char* sql) {
  check(sqlite3_exec(db_, sql, nullptr, nullptr, nullptr));
}

std::int64_t PlainSqlite::readAll(sqlite3_stmt* statement) {
  std::int64_t rows = 0;
  const int columns = sqlite3_column_count(statement);
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    ++rows;
    for (int column = 0; column < columns; ++column) {
      switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
          sink_ += static_cast<std::uint64_t>(sqlite3_column_int64(statement, column));
          break;
        case SQLITE_FLOAT:
          sink_ += sqlite3_column_double(statement, column) > 0 ? 1 : 0;
          break;
        case SQLITE_TEXT:
          sink_ += sqlite3_column_text(statement, column)[0];
          sink_ += static_cast<std::uint64_t>(sqlite3_column_bytes(statement, column));
          break;
        default:
          break;
      }
    }
  }
  check(code);
  sqlite3_reset(statement);
  return rows;
}

void PlainSqlite::runPrepared(sqlite3_stmt* statement, const std::vector<std::string>& values) {
  int place = 0;
  for (const std::string& value : values) {
    sqlite3_bind_text(statement, ++place, value.c_str(), static_cast<int>(value.size()), SQLITE_STATIC);
  }
  readAll(statement);
}

}  // namespace goodsbook::benchmarks
