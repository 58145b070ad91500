#include "engine/execute/session.h"

#include <array>
#include <string_view>

#include "engine/runtime/failure.h"
#include "engine/storage/sqlite_errors.h"

namespace goodsbook::engine {
namespace {

constexpr std::array<std::string_view, 6> ownTexts{
    "BEGIN", "BEGIN IMMEDIATE", "COMMIT", "ROLLBACK", "PRAGMA schema_version", "PRAGMA user_version"};

constexpr int cacheKibibytes = 64 * 1024;

// SQLite takes a file shorter than a page for an empty database, whatever it holds, and would write over it.
// Read through SQLite's own handle: closing another one of the same file gives up this process's locks.
void refuseForeignFile(sqlite3* db) {
  constexpr std::string_view mark("SQLite format 3\0", 16);
  sqlite3_file* file = nullptr;
  sqlite3_file_control(db, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (file == nullptr || file->pMethods == nullptr) return;  // in memory
  sqlite3_int64 size = 0;
  if (file->pMethods->xFileSize(file, &size) != SQLITE_OK || size == 0) return;
  std::array<char, mark.size()> head{};
  const int code = file->pMethods->xRead(file, head.data(), static_cast<int>(head.size()), 0);
  const bool read = code == SQLITE_OK || code == SQLITE_IOERR_SHORT_READ;
  if (read && std::string_view(head.data(), head.size()) != mark) throw sqliteFailure(nullptr, SQLITE_NOTADB);
}

// The definitions themselves are not read: another program's need not be understood.
void refuseOthersTables(sqlite3* db, std::string_view ownTable) {
  SqliteStatement tables(
      db, "SELECT count(*), total(type = 'table' AND name = ?1 COLLATE NOCASE) FROM sqlite_schema");
  const Value name = std::string(ownTable);
  tables.bind(1, name);
  tables.step();
  if (tables.integer(0) > 0 && tables.integer(1) == 0)
    fail(
        5171,
        "该文件是其他程序的数据库，不能在这里打开，也没有改动它。请选择本程序的数据库文件，或换一个文件名新建。");
}

}  // namespace

Session::Session(const std::filesystem::path& file, const Options& options, Open open) {
  const int create = open == Open::Create ? SQLITE_OPEN_CREATE : 0;
  const int code =
      sqlite3_open_v2(file.c_str(), &db_,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE | create, nullptr);
  owned_.reset(db_);
  if (code != SQLITE_OK) throw sqliteFailure(db_, code);
  refuseForeignFile(db_);
  sqlite3_busy_timeout(db_, static_cast<int>(options.busyTimeout.count()));
  sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  registerRuntime(db_, errors_);
  if (!options.ownTable.empty()) refuseOthersTables(db_, options.ownTable);
  runSql(db_, "PRAGMA journal_mode = WAL");
  runSql(db_, "PRAGMA synchronous = FULL");
  runSql(db_, "PRAGMA temp_store = MEMORY");
  runSql(db_, concat("PRAGMA cache_size = -", std::to_string(cacheKibibytes)));
}

Session::~Session() {
  forgetStatements();
}

std::int64_t Session::run(Own own) {
  const auto index = static_cast<std::size_t>(own);
  StatementHandle& handle = own_.at(index);
  if (!handle) handle = prepare(db_, ownTexts.at(index), SQLITE_PREPARE_PERSISTENT);
  const int code = sqlite3_step(handle.get());
  const std::int64_t value = code == SQLITE_ROW ? sqlite3_column_int64(handle.get(), 0) : 0;
  sqlite3_reset(handle.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) throw sqliteFailure(db_, code);
  return value;
}

CatalogVersion Session::version() {
  return {run(Own::SchemaVersion), run(Own::UserVersion)};
}

Session::Lease::Lease(Session& session, StatementHandle handle, PlanPtr plan, std::vector<Value> values)
    : session_(&session), handle_(std::move(handle)), plan_(std::move(plan)), values_(std::move(values)) {
  for (std::size_t i = 0; i < values_.size(); ++i)
    bindValue(handle_.get(), static_cast<int>(i + 1), values_[i]);
}

Session::Lease::~Lease() {
  if (!handle_) return;
  sqlite3_reset(handle_.get());
  sqlite3_clear_bindings(handle_.get());
  session_->keep(std::move(plan_), std::move(handle_));
}

int Session::Lease::step() {
  return session_->step(handle_.get());
}

Session::Lease Session::lease(const PlanPtr& plan, std::vector<Value> values) {
  StatementHandle handle;
  if (const auto found = byPlan_.find(plan.get()); found != byPlan_.end()) {
    handle = std::move(found->second->handle);
    kept_.erase(found->second);
    byPlan_.erase(found);
  } else {
    handle = prepare(db_, plan->sql, SQLITE_PREPARE_PERSISTENT);
    ++prepared_;
  }
  return {*this, std::move(handle), plan, std::move(values)};
}

int Session::step(sqlite3_stmt* statement) {
  errors_.last.reset();
  const int code = sqlite3_step(statement);
  if (code == SQLITE_ROW || code == SQLITE_DONE || (code & 0xff) == SQLITE_CONSTRAINT) return code;
  if (errors_.last) throw SqlError(*errors_.last);
  throw sqliteFailure(db_, code);
}

void Session::keep(PlanPtr plan, StatementHandle handle) {
  if (!plan->reusable || byPlan_.contains(plan.get())) return;
  const Plan* key = plan.get();
  kept_.push_front({std::move(plan), std::move(handle)});
  byPlan_[key] = kept_.begin();
  if (kept_.size() <= keptStatements) return;
  byPlan_.erase(kept_.back().plan.get());
  kept_.pop_back();
}

void Session::forgetStatements() {
  byPlan_.clear();
  kept_.clear();
}

}  // namespace goodsbook::engine
