#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

#include "engine/connection.h"

namespace goodsbook {

// Connections for cursors: each has one of its own while it is open, so that batches and other cursors run
// beside it. Used by one thread but for interrupt(). Cursors keep the pool alive.
class ConnectionPool : public std::enable_shared_from_this<ConnectionPool> {
 public:
  explicit ConnectionPool(std::function<std::unique_ptr<engine::Connection>()> open)
      : open_(std::move(open)) {}

  std::unique_ptr<engine::Cursor> query(std::string_view select);  // SqlError
  void interrupt();

 private:
  friend class PooledCursor;

  std::unique_ptr<engine::Connection> take();
  void giveBack(std::unique_ptr<engine::Connection> connection);

  std::function<std::unique_ptr<engine::Connection>()> open_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<engine::Connection>> idle_;
  std::vector<engine::Connection*> busy_;
};

}  // namespace goodsbook
