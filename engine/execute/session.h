#pragma once

#include <sqlite3.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

#include "engine/catalog/catalog.h"
#include "engine/compile/plan.h"
#include "engine/connection.h"
#include "engine/runtime/functions.h"
#include "engine/runtime/value.h"
#include "engine/storage/sqlite_statement.h"

namespace goodsbook::engine {

using PlanPtr = std::shared_ptr<const Plan>;

// How many prepared statements and plans are kept.
inline constexpr std::size_t keptStatements = 256;

// One SQLite connection with the functions of T-SQL and the statements that were prepared on it.
class Session {
 public:
  enum class Open : std::uint8_t { Existing, Create };
  Session(const std::filesystem::path& file, const Options& options, Open open);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // A statement in use: bound, stepped, and given back when the lease ends. It keeps the values it was bound
  // to.
  class Lease {
   public:
    Lease(Session& session, StatementHandle handle, PlanPtr plan, std::vector<Value> values);
    ~Lease();
    Lease(Lease&& other) noexcept = default;
    Lease& operator=(Lease&&) = delete;
    sqlite3_stmt* get() const { return handle_.get(); }
    // SQLITE_ROW, SQLITE_DONE or the extended code of a broken constraint; throws everything else.
    int step();

   private:
    Session* session_;
    StatementHandle handle_;
    PlanPtr plan_;
    std::vector<Value> values_;
  };

  // The engine's own words around every batch. They are prepared once: that costs more than running them.
  enum class Own : std::uint8_t { Begin, BeginToWrite, Commit, Rollback, SchemaVersion, UserVersion };
  // Gives the first value of the first row, 0 where there is none.
  std::int64_t run(Own own);
  CatalogVersion version();

  Lease lease(const PlanPtr& plan, std::vector<Value> values);
  int step(sqlite3_stmt* statement);
  sqlite3* db() const { return db_; }
  std::int64_t preparedStatements() const { return prepared_; }
  // Prepared statements of plans that are no longer valid.
  void forgetStatements();

 private:
  struct Kept {
    PlanPtr plan;
    StatementHandle handle;
  };
  struct CloseConnection {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
  };
  void keep(PlanPtr plan, StatementHandle handle);

  FunctionErrors errors_;
  sqlite3* db_ = nullptr;
  std::int64_t prepared_ = 0;
  std::unique_ptr<sqlite3, CloseConnection> owned_;
  std::array<StatementHandle, 6> own_;
  std::list<Kept> kept_;  // the last used in front; a statement in use is not in here
  std::unordered_map<const Plan*, std::list<Kept>::iterator> byPlan_;
};

}  // namespace goodsbook::engine
