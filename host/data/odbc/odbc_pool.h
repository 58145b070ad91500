#pragma once

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "engine/row.h"
#include "host/data/odbc/odbc_connection.h"

namespace goodsbook {

struct OdbcReading;

// The connections to one server beside the main one: each open cursor has its own, so that batches run beside
// it. Used by one thread but for interrupt(). Cursors keep the pool alive.
class OdbcPool : public std::enable_shared_from_this<OdbcPool> {
 public:
  explicit OdbcPool(ServerTarget target) : target_(std::move(target)) {}

  const ServerTarget& target() const { return target_; }
  std::unique_ptr<engine::Cursor> open(const QString& select);  // EDatabaseError
  // The same in another thread, until the first rows are there; see Database::openCursorBeside().
  std::unique_ptr<engine::Cursor> openBeside(const QString& select, const std::function<bool()>& pause);
  void forgetIdle();  // what stood beside a connection that got lost is hardly better
  // Whether a cursor's connection got lost since the last call.
  bool takeLoss() { return lossSeen_.exchange(false); }
  void interrupt();

 private:
  friend class OdbcCursor;

  std::unique_ptr<OdbcConnection> take();
  void giveBack(std::unique_ptr<OdbcConnection> connection);
  void end(std::unique_ptr<OdbcReading> reading);
  void endLate(std::unique_ptr<OdbcReading> reading, std::future<void> work);
  void forgetDone();

  ServerTarget target_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<OdbcConnection>> idle_;
  std::vector<OdbcConnection*> busy_;
  std::atomic<bool> lossSeen_ = false;
  std::vector<std::future<void>> late_;  // what nobody waits for any more; goes first
};

}  // namespace goodsbook
