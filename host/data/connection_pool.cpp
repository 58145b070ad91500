#include "host/data/connection_pool.h"

#include <utility>

#include "host/data/engine_errors.h"

namespace goodsbook {
namespace {

// A screen reads a list and perhaps a look-up at a time; what goes beyond is closed again.
constexpr std::size_t mostIdle = 2;

}  // namespace

// A cursor together with the connection that it stands on.
class PooledCursor : public engine::Cursor {
 public:
  PooledCursor(std::shared_ptr<ConnectionPool> pool, std::unique_ptr<engine::Connection> connection,
               std::string_view select)
      : pool_(std::move(pool)), connection_(std::move(connection)) {
    try {
      cursor_ = connection_->query(select);
    } catch (...) {
      pool_->giveBack(std::move(connection_));
      throw;
    }
  }
  ~PooledCursor() override {
    cursor_.reset();
    pool_->giveBack(std::move(connection_));
  }

  std::span<const engine::Column> columns() const override { return cursor_->columns(); }
  bool next() override {
    return asDatabaseErrors([this] { return cursor_->next(); });
  }
  const engine::Row& row() const override { return cursor_->row(); }

 private:
  std::shared_ptr<ConnectionPool> pool_;
  std::unique_ptr<engine::Connection> connection_;
  std::unique_ptr<engine::Cursor> cursor_;
};

std::unique_ptr<engine::Cursor> ConnectionPool::query(std::string_view select) {
  return std::make_unique<PooledCursor>(shared_from_this(), take(), select);
}

std::unique_ptr<engine::Connection> ConnectionPool::take() {
  {
    const std::scoped_lock lock(mutex_);
    if (!idle_.empty()) {
      auto connection = std::move(idle_.back());
      idle_.pop_back();
      busy_.push_back(connection.get());
      return connection;
    }
  }
  auto connection = open_();
  const std::scoped_lock lock(mutex_);
  busy_.push_back(connection.get());
  return connection;
}

void ConnectionPool::giveBack(std::unique_ptr<engine::Connection> connection) {
  const std::scoped_lock lock(mutex_);
  std::erase(busy_, connection.get());
  if (idle_.size() < mostIdle) idle_.push_back(std::move(connection));
}

void ConnectionPool::interrupt() {
  const std::scoped_lock lock(mutex_);
  for (auto* connection : busy_) connection->interrupt();
}

}  // namespace goodsbook
