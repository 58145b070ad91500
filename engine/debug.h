#pragma once

#include <cstdint>
#include <string>
#include <string_view>

struct sqlite3;

// For measuring and for looking into plans.
namespace goodsbook::engine {

class Connection;

// What SQLite is given for a select, with ?1, ?2 … where its values go.
std::string emittedSql(Connection& connection, std::string_view select);

// How much work a connection could not take over from earlier statements.
struct Counters {
  std::int64_t bound = 0;     // statements bound
  std::int64_t prepared = 0;  // statements given to SQLite to prepare
  bool operator==(const Counters&) const = default;
};
Counters counters(Connection& connection);

// Makes the engine's collation and functions known to a plain SQLite connection, so that it can read the
// engine's files.
void registerEngineFunctions(sqlite3* db);

}  // namespace goodsbook::engine
