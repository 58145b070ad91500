#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <vector>

namespace goodsbook::benchmarks {

// The floor: the SQLite C interface with nothing around it but the collation that the file's indexes need.
// Failures end the program: a floor that fails measures nothing.
class PlainSqlite {
 public:
  explicit PlainSqlite(const std::string& file);
  ~PlainSqlite();
  PlainSqlite(const PlainSqlite&) = delete;
  PlainSqlite& operator=(const PlainSqlite&) = delete;

  sqlite3_stmt* prepare(const std::string& sql);  // finalized with this object
  void run(const char* sql);

  // Steps to the end and reads every column of every row; gives the number of rows.
  std::int64_t readAll(sqlite3_stmt* statement);
  // Binds texts, runs to the end and resets.
  void runPrepared(sqlite3_stmt* statement, const std::vector<std::string>& values);

 private:
  void check(int code) const;

  sqlite3* db_ = nullptr;
  std::vector<sqlite3_stmt*> statements_;
  std::uint64_t sink_ = 0;  // what was read goes somewhere
};

}  // namespace goodsbook::benchmarks
