#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "tests/odbc/engine_driver/cable.h"
#include "tests/odbc/engine_driver/databases.h"
#include "tests/odbc/engine_driver/result.h"

namespace goodsbook::engine_driver {

// What a server keeps for a connection. It answers a batch as one does, with XACT_ABORT ON: statement after
// statement; RAISERROR goes on, any other error rolls the transaction back and ends the batch.
class ServerSession {
 public:
  ServerSession(Databases databases, std::string database);

  std::vector<Result> run(std::string_view batch);  // raises nothing but std::bad_alloc
  void interrupt();                                 // from any thread

 private:
  void runWords(std::string_view batch, std::vector<Result>& results);
  void runOnEngine(std::string_view text, std::vector<Result>& results);
  void runDatabaseStatement(std::string_view batch);
  void begin();
  void commit();
  void rollback();
  void setLockTimeout(int milliseconds);

  Databases databases_;
  Cable cable_;
  std::string database_;
  int lockMilliseconds_;
  std::mutex mutex_;  // of the pointer, for interrupt()
  std::unique_ptr<engine::Connection> engine_;
  // The engine begins with the first batch that writes: BEGIN TRANSACTION locks nothing on a server.
  int transactions_ = 0;
};

}  // namespace goodsbook::engine_driver
