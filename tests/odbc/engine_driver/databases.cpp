#include "tests/odbc/engine_driver/databases.h"

#include <sqlite3.h>

#include <array>
#include <string_view>

#include "engine/catalog/catalog.h"
#include "engine/debug.h"
#include "engine/runtime/failure.h"
#include "engine/storage/sqlite_statement.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine_driver {
namespace {

constexpr std::array<std::string_view, 3> fileEndings = {".db", ".db-wal", ".db-shm"};

class NoSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

// A file of the engine, past the engine.
class PlainConnection {
 public:
  explicit PlainConnection(const std::filesystem::path& file) {
    constexpr int waitMilliseconds = 10'000;
    const int code = sqlite3_open_v2(file.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr);
    owned_.reset(db_);
    if (code != SQLITE_OK) engine::fail(945, "打不开数据库文件");
    sqlite3_busy_timeout(db_, waitMilliseconds);
    engine::registerEngineFunctions(db_);
  }
  sqlite3* get() const { return db_; }

 private:
  struct Close {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
  };
  sqlite3* db_ = nullptr;
  std::unique_ptr<sqlite3, Close> owned_;
};

std::string literalOf(std::string_view text) {
  std::string result = "N'";
  for (const char c : text) result.append(c == '\'' ? 2 : 1, c);
  return result + "'";
}

std::vector<std::string> namesOf(sqlite3* db, std::string_view select) {
  std::vector<std::string> names;
  engine::SqliteStatement found(db, select);
  while (found.step()) {
    const std::string name(found.text(0));
    if (!name.starts_with("sqlite_") && !name.starts_with(engine::reservedPrefix)) names.push_back(name);
  }
  return names;
}

}  // namespace

Databases::Databases(const std::string& server)
    : folder_(server.find('/') == std::string::npos ? std::filesystem::temp_directory_path() / server
                                                    : std::filesystem::path(server)) {
  std::error_code failed;
  std::filesystem::create_directories(folder_, failed);
  if (failed) engine::fail(17, "服务器的文件夹不能建立：" + failed.message(), 20);
}

bool Databases::isMaster(const std::string& name) {
  return name.empty() || engine::sameName(name, "master");
}

std::filesystem::path Databases::file(const std::string& name) const {
  return folder_ / (name + std::string(fileEndings[0]));
}

void Databases::requirePresent(const std::string& name) const {
  std::error_code ignored;
  if (name.find('/') != std::string::npos || !std::filesystem::exists(file(name), ignored)) {
    engine::fail(4060, "无法打开登录所请求的数据库 \"" + name + "\"。登录失败。", 11);
  }
}

std::unique_ptr<engine::Connection> Databases::open(const std::string& name,
                                                    std::chrono::milliseconds lockTimeout) const {
  engine::Options options{.busyTimeout = lockTimeout, .create = true, .raisedErrorsGoOn = true};
  if (isMaster(name)) return engine::Connection::open(":memory:", std::move(options));
  requirePresent(name);
  return engine::Connection::open(file(name), std::move(options));
}

void Databases::create(const std::string& name) const {
  if (isMaster(name) || name.find('/') != std::string::npos || std::filesystem::exists(file(name))) {
    engine::fail(1801, "数据库 '" + name + "' 已存在。请选择其他数据库名称。");
  }
  engine::Connection::open(file(name), {.create = true});
}

void Databases::drop(const std::string& name) const {
  requirePresent(name);
  std::error_code ignored;
  for (const std::string_view ending : fileEndings) {
    std::filesystem::remove(folder_ / (name + std::string(ending)), ignored);
  }
  std::filesystem::remove(folder_, ignored);
}

void Databases::truncate(const std::string& name, const std::vector<std::string>& tables) const {
  const PlainConnection connection(file(name));
  engine::runSql(connection.get(), "BEGIN IMMEDIATE");
  engine::SqliteStatement numbers(connection.get(),
                                  "SELECT 1 FROM sqlite_schema WHERE name = 'sqlite_sequence'");
  const bool numbered = numbers.step();
  for (const std::string& table : tables) {
    const engine::Value value = table;
    engine::runSql(connection.get(), "DELETE FROM \"" + table + "\"");
    if (!numbered) continue;
    engine::SqliteStatement restart(connection.get(),
                                    "DELETE FROM sqlite_sequence WHERE name = ?1 COLLATE NOCASE");
    restart.bind(1, value).step();
  }
  engine::runSql(connection.get(), "COMMIT");
}

std::unique_ptr<engine::Connection> Databases::definitions(const std::string& name) const {
  auto definitions = engine::Connection::open(":memory:", {.create = true});
  std::string batch;
  for (const std::string table : {"objects", "tables"}) {
    batch += "create table " + table + " (name nvarchar(128), type nvarchar(2), is_ms_shipped bit) ";
  }
  // The engine always compares so, and its readers never wait.
  batch +=
      "create table databases (database_id int, name nvarchar(128), collation_name nvarchar(128), "
      "is_read_committed_snapshot_on bit) insert into databases values (1, " +
      literalOf(name) + ", 'Chinese_PRC_CI_AS', 1) ";
  if (!isMaster(name)) {
    const PlainConnection connection(file(name));
    for (const std::string& table :
         namesOf(connection.get(), "SELECT name FROM sqlite_schema WHERE type = 'table'")) {
      for (const std::string view : {"objects", "tables"}) {
        batch += "insert into " + view + " values (" + literalOf(table) + ", 'U ', 0) ";
      }
    }
    engine::SqliteStatement any(connection.get(),
                                "SELECT 1 FROM sqlite_schema WHERE name = 'goodsbook_procedures'");
    if (any.step()) {
      for (const std::string& procedure :
           namesOf(connection.get(), "SELECT name FROM goodsbook_procedures")) {
        batch += "insert into objects values (" + literalOf(procedure) + ", 'P ', 0) ";
      }
    }
  }
  NoSink sink;
  definitions->execute(batch, sink, engine::Permission::Owner);
  return definitions;
}

}  // namespace goodsbook::engine_driver
