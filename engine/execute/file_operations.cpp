#include "engine/execute/file_operations.h"

#include <sqlite3.h>

#include <memory>
#include <string>

#include "engine/execute/session.h"
#include "engine/runtime/failure.h"
#include "engine/runtime/functions.h"
#include "engine/storage/sqlite_errors.h"
#include "engine/storage/sqlite_statement.h"

namespace goodsbook::engine {
namespace {

struct CloseDatabase {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};

void copyPages(sqlite3* source, const std::filesystem::path& target) {
  sqlite3* opened = nullptr;
  const int openCode =
      sqlite3_open_v2(target.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  const std::unique_ptr<sqlite3, CloseDatabase> copy(opened);
  if (openCode != SQLITE_OK) fail(3201, concat("无法打开备份文件“", target.string(), "”。"));
  FunctionErrors errors;
  registerRuntime(copy.get(), errors);
  sqlite3_backup* backup = sqlite3_backup_init(copy.get(), "main", source, "main");
  if (backup == nullptr) throw sqliteFailure(copy.get(), sqlite3_errcode(copy.get()));
  sqlite3_backup_step(backup, -1);
  const int code = sqlite3_backup_finish(backup);
  if (code != SQLITE_OK) throw sqliteFailure(copy.get(), code);
  runSql(copy.get(), "PRAGMA journal_mode = DELETE");  // one file, without a log beside it
  requireIntact(copy.get());
}

// What was committed is on the disk when this returns.
void flushLog(sqlite3* db) {
  sqlite3_file* log = nullptr;
  const int code = sqlite3_file_control(db, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
  if (code != SQLITE_OK) throw sqliteFailure(db, code);
  if (log == nullptr || log->pMethods == nullptr) return;  // nothing was written yet
  if (log->pMethods->xSync(log, SQLITE_SYNC_NORMAL) != SQLITE_OK) throw sqliteFailure(db, SQLITE_IOERR_FSYNC);
}

// The first commit into an empty log waits for the disk, relaxed or not: a log whose head is older than its
// pages would be taken for the one before. That commit is made here, and changes nothing. False when somebody
// else writes, who then makes it.
bool beginLog(Session& session) {
  const int code = sqlite3_exec(session.db(), "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
  if ((code & 0xff) == SQLITE_BUSY) return false;
  if (code != SQLITE_OK) throw sqliteFailure(session.db(), code);
  try {
    runSql(session.db(),
           concat("PRAGMA user_version = ", std::to_string(session.run(Session::Own::UserVersion))));
    session.run(Session::Own::Commit);
  } catch (...) {
    sqlite3_exec(session.db(), "ROLLBACK", nullptr, nullptr, nullptr);
    throw;
  }
  return true;
}

}  // namespace

void copyDatabase(sqlite3* source, const std::filesystem::path& target) {
  if (std::filesystem::exists(target)) fail(3201, concat("备份文件“", target.string(), "”已存在。"));
  std::filesystem::path part = target;
  part += ".part";
  std::error_code ignored;
  std::filesystem::remove(part, ignored);
  try {
    copyPages(source, part);
    std::filesystem::rename(part, target);
  } catch (const std::filesystem::filesystem_error& error) {
    fail(3201, concat("无法写入备份文件“", target.string(), "”: ", error.code().message()));
  } catch (...) {
    std::filesystem::remove(part, ignored);
    throw;
  }
}

bool settleLog(Session& session) {
  flushLog(session.db());
  int pages = 0, copied = 0;
  const int code =
      sqlite3_wal_checkpoint_v2(session.db(), "main", SQLITE_CHECKPOINT_RESTART, &pages, &copied);
  if ((code & 0xff) == SQLITE_BUSY) return false;
  if (code != SQLITE_OK) throw sqliteFailure(session.db(), code);
  return beginLog(session);
}

void requireIntact(sqlite3* db) {
  constexpr int mostFaults = 5;
  std::string faults;
  SqliteStatement check(db, concat("PRAGMA integrity_check(", std::to_string(mostFaults), ")"));
  while (check.step())
    if (check.text(0) != "ok") faults += concat(faults.empty() ? "" : "; ", check.text(0));
  if (!faults.empty()) fail(5172, concat("数据库文件已损坏: ", faults, "。请用最近的备份恢复。"), 21);
}

}  // namespace goodsbook::engine
