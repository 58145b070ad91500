#include "host/data/odbc/odbc_pool.h"

#include <QCoreApplication>
#include <optional>
#include <utility>

#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/row_block.h"

namespace goodsbook {
namespace {

// A screen reads a list and perhaps a look-up at a time; what goes beyond is closed again.
constexpr std::size_t mostIdle = 2;

class IgnoredAnswers : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

}  // namespace

// A select that is read at the caller's pace, together with the connection that it stands on.
class OdbcCursor : public engine::Cursor {
 public:
  OdbcCursor(std::shared_ptr<OdbcPool> pool, const QString& select)
      : pool_(std::move(pool)), connection_(pool_->take()) {
    try {
      statement_.emplace(*connection_, select);
      IgnoredAnswers ignored;
      if (!statement_->nextSet(ignored)) {
        throw EDatabaseError(50000, 16, 1, 1, QCoreApplication::translate("OdbcCursor", "语句没有返回行"));
      }
      rows_.emplace(*connection_, statement_->handle());
    } catch (...) {
      close();
      throw;
    }
  }
  ~OdbcCursor() override { close(); }

  std::span<const engine::Column> columns() const override { return rows_->columns(); }
  bool next() override {
    try {
      return rows_->next();
    } catch (const EConnectionLost&) {
      pool_->forgetIdle();
      throw;
    }
  }
  const engine::Row& row() const override { return *rows_; }

 private:
  void close() {
    rows_.reset();
    statement_.reset();
    pool_->giveBack(std::move(connection_));
  }

  std::shared_ptr<OdbcPool> pool_;
  std::unique_ptr<OdbcConnection> connection_;
  std::optional<OdbcConnection::Statement> statement_;
  std::optional<RowBlock> rows_;
};

std::unique_ptr<engine::Cursor> OdbcPool::open(const QString& select) {
  return std::make_unique<OdbcCursor>(shared_from_this(), select);
}

std::unique_ptr<OdbcConnection> OdbcPool::take() {
  {
    const std::scoped_lock lock(mutex_);
    if (!idle_.empty()) {
      auto connection = std::move(idle_.back());
      idle_.pop_back();
      busy_.push_back(connection.get());
      return connection;
    }
  }
  auto connection = std::make_unique<OdbcConnection>(target_);
  const std::scoped_lock lock(mutex_);
  busy_.push_back(connection.get());
  return connection;
}

void OdbcPool::giveBack(std::unique_ptr<OdbcConnection> connection) {
  const bool usable = !connection->isLost();
  {
    const std::scoped_lock lock(mutex_);
    std::erase(busy_, connection.get());
    if (usable && idle_.size() < mostIdle) idle_.push_back(std::move(connection));
  }
  if (usable) return;
  lossSeen_ = true;
  forgetIdle();
}

void OdbcPool::forgetIdle() {
  const std::scoped_lock lock(mutex_);
  idle_.clear();
}

void OdbcPool::interrupt() {
  const std::scoped_lock lock(mutex_);
  for (auto* connection : busy_) connection->interrupt();
}

}  // namespace goodsbook
