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
// it. Used by one thread but for interrupt(). Cursors keep the pool alive; what nobody waits for any more
// does not.
class OdbcPool : public std::enable_shared_from_this<OdbcPool> {
 public:
  explicit OdbcPool(ServerTarget target) : target_(std::move(target)) {}

  const ServerTarget& target() const { return target_; }
  // Sends a select in another thread and waits until the first rows are there; see
  // Database::openCursorBeside(). EAbort when it was given up, EDatabaseError.
  std::unique_ptr<engine::Cursor> open(const QString& select, const std::function<bool()>& goesOn = {});
  void forgetIdle();  // what stood beside a connection that got lost is hardly better
  // Whether a cursor's connection got lost since the last call.
  bool takeLoss() { return lossSeen_.exchange(false); }
  void interrupt();

 private:
  friend class OdbcCursor;
  using Connection = std::shared_ptr<OdbcConnection>;

  Connection takeIdle();
  Connection connect(const std::function<bool()>& goesOn);
  void giveBack(Connection connection);
  void end(const std::shared_ptr<OdbcReading>& reading);
  void endLate(std::shared_ptr<OdbcReading> reading, std::future<void> work);

  ServerTarget target_;
  std::mutex mutex_;
  std::vector<Connection> idle_;
  std::vector<std::weak_ptr<OdbcConnection>> busy_;
  std::atomic<bool> lossSeen_ = false;
};

}  // namespace goodsbook
