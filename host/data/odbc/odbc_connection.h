#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

#include "engine/row.h"
#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/dialect.h"
#include "host/data/odbc/odbc_handle.h"
#include "host/data/server_database.h"

namespace goodsbook {

struct ServerTarget {
  ServerAddress address;
  ServerLogin login;
  ServerOptions options;
};

// One connection to a server, used by one thread at a time but for interrupt().
class OdbcConnection {
 public:
  // Connects; EDatabaseError says why that is not possible.
  explicit OdbcConnection(const ServerTarget& target);
  ~OdbcConnection();
  OdbcConnection(const OdbcConnection&) = delete;
  OdbcConnection& operator=(const OdbcConnection&) = delete;

  const Dialect& dialect() const { return *dialect_; }
  bool isLost() const { return lost_; }
  // How long the statements to come may take; 0: no limit.
  void setLimit(int seconds) { statementSeconds_ = seconds; }

  // Nobody waits any more for the thread that works with it: it counts as lost.
  void giveUp() { lost_ = true; }
  void requireThere() const;  // EConnectionLost
  EConnectionLost silence(std::chrono::seconds waited) const;

  // Sends a batch as it is and hands on all that it answers, to the end. EConnectionLost, or EDatabaseError
  // for the first error of severity 11 or more; what the batch did until then stands, the transaction is the
  // caller's.
  void run(const QString& batch, engine::ResultSink& sink);
  void run(const QString& batch);

  // A statement that was sent; throws as run() does. Until it goes away, interrupt() stops it.
  class Statement {
   public:
    Statement(OdbcConnection& connection, const QString& text);
    explicit Statement(OdbcConnection& connection);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    const OdbcHandle& handle() const { return handle_; }
    // Goes on to the next set of rows; what comes before it is told to `sink`. False at the end.
    bool nextSet(engine::ResultSink& sink);

   private:
    OdbcConnection& connection_;
    OdbcHandle handle_;
    SQLRETURN code_ = SQL_SUCCESS;
    bool atResult_ = false;
  };

  // Throws what a call failed with; SQL_NO_DATA and successes pass.
  void check(SQLRETURN code, const OdbcHandle& handle);
  // Throws the first error among the messages of a call that is told as a success.
  void checkMessages(const OdbcHandle& handle);

  void interrupt();  // from any thread

 private:
  void connect(const ServerTarget& target);
  [[noreturn]] void fail(const OdbcHandle& handle);

  QString name_;
  int statementSeconds_;
  OdbcHandle environment_;
  OdbcHandle connection_;
  std::optional<Dialect> dialect_;
  bool connected_ = false;
  std::atomic<bool> lost_ = false;
  std::mutex mutex_;
  SQLHANDLE running_ = SQL_NULL_HANDLE;
  std::atomic<bool> interrupted_ = false;  // the running statement
  std::chrono::steady_clock::time_point cancelled_ = {};
};

}  // namespace goodsbook
