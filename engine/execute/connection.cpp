#include "engine/connection.h"

#include <sqlite3.h>

#include <mutex>
#include <vector>

#include "engine/debug.h"
#include "engine/execute/batch_runner.h"
#include "engine/execute/file_operations.h"
#include "engine/execute/statement_row.h"
#include "engine/runtime/failure.h"
#include "engine/storage/sqlite_errors.h"
#include "engine/syntax/parser.h"

namespace goodsbook::engine {
namespace {

constexpr int stoppedByUser = 3617;
constexpr int pagesBeforeCheckpoint = 1000;  // SQLite's own measure

class EmbeddedConnection;

class SelectCursor final : public Cursor {
 public:
  SelectCursor(EmbeddedConnection& connection, Session& session, bool pooled, ReadyStatement ready);
  ~SelectCursor() override;
  std::span<const Column> columns() const override { return plan_->columns; }
  bool next() override { return lease_->step() == SQLITE_ROW; }
  const Row& row() const override { return row_; }

 private:
  EmbeddedConnection& connection_;
  Session& session_;
  bool pooled_;
  PlanPtr plan_;
  std::optional<Session::Lease> lease_;
  StatementRow row_;
};

class EmbeddedConnection final : public Connection {
 public:
  EmbeddedConnection(std::filesystem::path file, Options options)
      : file_(std::move(file)), options_(std::move(options)), state_(options_) {
    main_ = addSession(options_.create ? Session::Open::Create : Session::Open::Existing);
    state_.refresh(*main_);
  }

  void execute(std::string_view batch, ResultSink& sink, Permission permission) override {
    try {
      run(parse(batch), sink, permission);
    } catch (...) {
      undo();
      throw;
    }
  }

  void query(std::string_view select, ResultSink& sink) override {
    const bool own = !inTransaction();
    try {
      const Script script = parse(select);
      requireSelect(script);
      run(script, sink, Permission::Screens);
    } catch (...) {
      if (own) undo();
      throw;
    }
  }

  std::unique_ptr<Cursor> query(std::string_view select) override {
    const Script script = parse(select);
    const Frame frame = selectFrame(script);
    if (inTransaction()) {
      return std::make_unique<SelectCursor>(*this, *main_, false,
                                            state_.ready(frame, script.statements.front()));
    }
    // A reader of its own: what it sees stays as it is while batches write.
    Session& reader = takeReader();
    try {
      reader.run(Session::Own::Begin);
      state_.refresh(reader);
      return std::make_unique<SelectCursor>(*this, reader, true,
                                            state_.ready(frame, script.statements.front()));
    } catch (...) {
      giveBack(reader);
      throw;
    }
  }

  void begin() override {
    if (inTransaction()) fail(3902, "事务已经开始。");
    try {
      start(Session::Own::BeginToWrite);
    } catch (...) {
      undo();
      throw;
    }
  }
  void commit() override {
    if (!inTransaction()) fail(3902, "COMMIT TRANSACTION 请求没有对应的 BEGIN TRANSACTION。");
    try {
      main_->run(Session::Own::Commit);
    } catch (...) {
      undo();
      throw;
    }
  }
  void rollback() override {
    if (!inTransaction()) fail(3903, "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。");
    undo();
  }
  bool inTransaction() const override { return sqlite3_get_autocommit(main_->db()) == 0; }

  void setRelaxed(bool relaxed) override {
    runSql(main_->db(), relaxed ? "PRAGMA synchronous = NORMAL" : "PRAGMA synchronous = FULL");
    logPages_ = 0;
    if (relaxed)
      sqlite3_wal_hook(main_->db(), &EmbeddedConnection::committed, this);
    else
      sqlite3_wal_autocheckpoint(main_->db(), pagesBeforeCheckpoint);
  }
  int logPages() const override { return logPages_; }
  bool settle() override { return settleLog(*main_); }

  void interrupt() override {
    const std::lock_guard lock(sessionsMutex_);
    for (const auto& session : sessions_) sqlite3_interrupt(session->db());
  }

  void backup(const std::filesystem::path& target) override { copyDatabase(main_->db(), target); }
  void checkIntegrity() override { requireIntact(main_->db()); }

  void giveBack(Session& reader) noexcept {
    endTransaction(reader);
    idleReaders_.push_back(&reader);
  }

  std::string translate(std::string_view select) {
    const Script script = parse(select);
    state_.refresh(*main_);
    return state_.ready(selectFrame(script), script.statements.front()).plan->sql;
  }

  Counters counted() {
    Counters result{.bound = state_.boundStatements()};
    for (const auto& session : sessions_) result.prepared += session->preparedStatements();
    return result;
  }

 private:
  void run(const Script& script, ResultSink& sink, Permission permission) {
    const bool own = !inTransaction();
    if (own) start(writes(script.statements) ? Session::Own::BeginToWrite : Session::Own::Begin);
    BatchRunner(state_, *main_, sink, permission).run(script);
    if (own) main_->run(Session::Own::Commit);
  }

  // In place of SQLite's own hook, which would copy the log into the file within the commit.
  static int committed(void* self, sqlite3*, const char*, int pages) {
    static_cast<EmbeddedConnection*>(self)->logPages_ = pages;
    return SQLITE_OK;
  }

  static void requireSelect(const Script& script) {
    if (script.statements.size() != 1 ||
        !std::holds_alternative<SelectStatement>(script.statements.front().node))
      failUnsupported("查询中除一条 SELECT 以外的语句");
  }

  static Frame selectFrame(const Script& script) {
    requireSelect(script);
    Frame frame;
    frame.script = &script;
    return frame;
  }

  Session* addSession(Session::Open open) {
    auto session = std::make_unique<Session>(file_, options_, open);
    const std::lock_guard lock(sessionsMutex_);
    sessions_.push_back(std::move(session));
    return sessions_.back().get();
  }

  Session& takeReader() {
    if (idleReaders_.empty()) return *addSession(Session::Open::Existing);
    Session* reader = idleReaders_.back();
    idleReaders_.pop_back();
    return *reader;
  }

  // The definitions stay as they are found here until the transaction ends or changes them itself.
  void start(Session::Own begin) {
    main_->run(begin);
    state_.refresh(*main_);
  }

  // What was to stop the statement may strike the rollback too. After any other failure SQLite has ended the
  // transaction by itself.
  static void endTransaction(Session& session) noexcept {
    bool stopped = true;
    while (stopped && sqlite3_get_autocommit(session.db()) == 0) {
      try {
        session.run(Session::Own::Rollback);
      } catch (const SqlError& error) {
        stopped = error.diagnostic().number == stoppedByUser;
      }
    }
  }

  void undo() noexcept {
    if (inTransaction()) endTransaction(*main_);
    state_.forgetUndone(*main_);
  }

  std::filesystem::path file_;
  Options options_;
  EngineState state_;
  std::mutex sessionsMutex_;
  std::vector<std::unique_ptr<Session>> sessions_;
  Session* main_ = nullptr;
  int logPages_ = 0;
  std::vector<Session*> idleReaders_;
};

SelectCursor::SelectCursor(EmbeddedConnection& connection, Session& session, bool pooled,
                           ReadyStatement ready)
    : connection_(connection),
      session_(session),
      pooled_(pooled),
      plan_(ready.plan),
      lease_(session.lease(ready.plan, std::move(ready.values))),
      row_(lease_->get()) {}

SelectCursor::~SelectCursor() {
  lease_.reset();
  if (pooled_) connection_.giveBack(session_);
}

}  // namespace

std::unique_ptr<Connection> Connection::open(const std::filesystem::path& file, Options options) {
  std::error_code ignored;
  if (!options.create && !std::filesystem::exists(file, ignored))
    fail(4060, concat("无法打开数据库文件“", file.string(), "”：文件不存在。"), 11);
  return std::make_unique<EmbeddedConnection>(file, std::move(options));
}

std::string emittedSql(Connection& connection, std::string_view select) {
  return dynamic_cast<EmbeddedConnection&>(connection).translate(select);
}

Counters counters(Connection& connection) {
  return dynamic_cast<EmbeddedConnection&>(connection).counted();
}

void registerEngineFunctions(sqlite3* db) {
  static FunctionErrors errors;
  registerRuntime(db, errors);
}

}  // namespace goodsbook::engine
