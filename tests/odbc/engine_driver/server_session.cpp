#include "tests/odbc/engine_driver/server_session.h"

#include <chrono>
#include <utility>

#include "engine/execute/batch_runner.h"
#include "engine/runtime/failure.h"
#include "engine/syntax/parser.h"
#include "tests/odbc/engine_driver/server_words.h"
#include "tests/odbc/engine_driver/wide_text.h"

namespace goodsbook::engine_driver {
namespace {

constexpr int usualLockMilliseconds = 10'000;
constexpr int leastErrorSeverity = 11;

// Takes down what a statement answers; lines are counted from the start of the batch.
class Recorder : public engine::ResultSink {
 public:
  Recorder(std::vector<Result>& results, int firstLine) : results_(results), linesBefore_(firstLine - 1) {}

  void beginSet(std::span<const engine::Column> columns) override {
    results_.push_back({.kind = Result::Kind::Rows, .columns = {columns.begin(), columns.end()}});
    inSet_ = true;
  }
  void row(const engine::Row& row) override {
    Result& result = results_.back();
    for (std::size_t i = 0; i < result.columns.size(); ++i) {
      result.cells.push_back(cell(row, static_cast<int>(i), result.columns[i].type));
    }
  }
  void endSet() override { inSet_ = false; }
  void affected(std::int64_t rows) override {
    results_.push_back({.kind = Result::Kind::Count, .count = rows});
  }
  void notice(const engine::Diagnostic& notice) override {
    const auto kind = notice.severity >= leastErrorSeverity ? Result::Kind::Error : Result::Kind::Message;
    results_.push_back({.kind = kind, .message = placed(notice)});
  }
  // What ends the statement: behind the rows that have come, if any.
  void failed(const engine::Diagnostic& error) {
    if (inSet_ && !results_.back().cells.empty()) {
      results_.back().failure = placed(error);
      return;
    }
    if (inSet_) results_.pop_back();
    results_.push_back({.kind = Result::Kind::Error, .message = placed(error)});
  }

 private:
  engine::Diagnostic placed(engine::Diagnostic diagnostic) const {
    diagnostic.line += linesBefore_;
    return diagnostic;
  }

  static Cell cell(const engine::Row& row, int column, engine::Type type) {
    if (row.isNull(column)) return {};
    switch (type) {
      case engine::Type::Bit:
      case engine::Type::Integer:
      case engine::Type::DateTime:
        return row.integer(column);
      case engine::Type::Float:
        return row.real(column);
      case engine::Type::Text:
        return toUtf16(row.text(column));
      case engine::Type::Blob:
        break;
    }
    const auto bytes = row.blob(column);
    return std::vector<std::byte>(bytes.begin(), bytes.end());
  }

  std::vector<Result>& results_;
  int linesBefore_;
  bool inSet_ = false;
};

}  // namespace

ServerSession::ServerSession(Databases databases, std::string database)
    : databases_(std::move(databases)),
      cable_(databases_.folder()),
      database_(std::move(database)),
      lockMilliseconds_(usualLockMilliseconds) {
  cable_.requireWhole();
  engine_ = databases_.open(database_, std::chrono::milliseconds(lockMilliseconds_));
}

std::vector<Result> ServerSession::run(std::string_view batch) {
  std::vector<Result> results;
  try {
    cable_.requireWhole();
    cable_.carries(batch);
    runWords(asPlainLiteralsArrive(batch), results);
  } catch (const engine::SqlError& error) {
    results.push_back({.kind = Result::Kind::Error, .message = error.diagnostic()});
  }
  return results;
}

void ServerSession::runWords(std::string_view batch, std::vector<Result>& results) {
  switch (transactionWord(batch)) {
    case TransactionWord::Begin:
      return begin();
    case TransactionWord::Commit:
      return commit();
    case TransactionWord::Rollback:
      return rollback();
    case TransactionWord::RollbackIfOpen:
      if (transactions_ > 0) rollback();
      return;
    case TransactionWord::None:
      break;
  }
  if (databaseStatement(batch)) return runDatabaseStatement(batch);
  if (const auto tables = truncatedTables(batch); !tables.empty())
    return databases_.truncate(database_, tables);
  if (const auto query = definitionsQuery(batch)) {
    Recorder recorder(results, 1);
    databases_.definitions(database_)->execute(*query, recorder);
    return;
  }
  const EngineBatch engineBatch = withoutServerWords(batch);
  if (engineBatch.lockMilliseconds) setLockTimeout(*engineBatch.lockMilliseconds);
  runOnEngine(engineBatch.text, results);
}

void ServerSession::runOnEngine(std::string_view text, std::vector<Result>& results) {
  const engine::Script script = engine::parse(text);
  const bool begins = transactions_ > 0 && !engine_->inTransaction() && engine::writes(script.statements);
  for (const engine::Statement& statement : script.statements) {
    Recorder recorder(results, static_cast<int>(statement.position.line));
    try {
      if (begins && !engine_->inTransaction()) engine_->begin();
      engine_->execute(statement.text, recorder, engine::Permission::Owner);
    } catch (const engine::SqlError& error) {
      recorder.failed(error.diagnostic());
      transactions_ = 0;  // the engine has rolled back by itself
      return;
    }
  }
}

void ServerSession::runDatabaseStatement(std::string_view batch) {
  if (transactions_ > 0) engine::fail(226, "在多语句事务内不允许使用 DATABASE 语句。");
  const DatabaseStatement statement = *databaseStatement(batch);
  switch (statement.kind) {
    case DatabaseStatement::Kind::Create:
      return databases_.create(statement.name);
    case DatabaseStatement::Kind::Alter:
      return databases_.requirePresent(statement.name);
    case DatabaseStatement::Kind::Drop:
      return databases_.drop(statement.name);
  }
}

void ServerSession::begin() {
  cable_.beginsTransaction();
  ++transactions_;
}

void ServerSession::commit() {
  if (transactions_ == 0) engine::fail(3902, "COMMIT TRANSACTION 请求没有对应的 BEGIN TRANSACTION。");
  cable_.mayBreakBeforeCommit();
  if (--transactions_ == 0 && engine_->inTransaction()) engine_->commit();
  cable_.mayBreakAfterCommit();
}

void ServerSession::rollback() {
  if (transactions_ == 0) engine::fail(3903, "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。");
  transactions_ = 0;
  if (engine_->inTransaction()) engine_->rollback();
}

void ServerSession::setLockTimeout(int milliseconds) {
  if (milliseconds == lockMilliseconds_ || transactions_ > 0) return;
  lockMilliseconds_ = milliseconds;
  auto other = databases_.open(database_, std::chrono::milliseconds(milliseconds));
  const std::scoped_lock lock(mutex_);
  engine_ = std::move(other);
}

void ServerSession::interrupt() {
  const std::scoped_lock lock(mutex_);
  engine_->interrupt();
}

}  // namespace goodsbook::engine_driver
