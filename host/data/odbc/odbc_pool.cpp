#include "host/data/odbc/odbc_pool.h"

#include <QCoreApplication>
#include <chrono>
#include <optional>
#include <utility>

#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/row_block.h"

namespace goodsbook {
namespace {

// A screen reads a list and perhaps a look-up at a time; what goes beyond is closed again.
constexpr std::size_t mostIdle = 2;

constexpr std::chrono::milliseconds noTime{0};
constexpr std::chrono::milliseconds betweenPauses{10};

class IgnoredAnswers : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

template <typename Result>
bool isDone(const std::future<Result>& work, std::chrono::milliseconds patience) {
  return work.wait_for(patience) == std::future_status::ready;
}

// False when `pause` has ended the waiting.
template <typename Result>
bool isAwaited(const std::future<Result>& work, const std::function<bool()>& pause) {
  while (!isDone(work, betweenPauses)) {
    if (!pause()) return false;
  }
  return true;
}

}  // namespace

// A select on its way, together with the connection that it stands on. One thread at a time works with it,
// but for stop().
struct OdbcReading {
  explicit OdbcReading(std::unique_ptr<OdbcConnection> its) : connection(std::move(its)) {}

  void open(const QString& select) {
    statement.emplace(*connection, select);
    IgnoredAnswers ignored;
    if (!statement->nextSet(ignored)) {
      throw EDatabaseError(50000, 16, 1, 1, QCoreApplication::translate("OdbcCursor", "语句没有返回行"));
    }
    rows.emplace(*connection, statement->handle());
  }

  // Ends work that goes on in another thread. A driver that is told so before it begins to wait for the
  // server does not hear it.
  void stop(std::future<void>& work) const {
    do {
      connection->interrupt();
    } while (!isDone(work, betweenPauses));
  }

  std::unique_ptr<OdbcConnection> connection;
  std::optional<OdbcConnection::Statement> statement;
  std::optional<RowBlock> rows;
};

// Reads a select at the caller's pace.
class OdbcCursor : public engine::Cursor {
 public:
  OdbcCursor(std::shared_ptr<OdbcPool> pool, std::unique_ptr<OdbcReading> reading)
      : pool_(std::move(pool)), reading_(std::move(reading)) {}
  ~OdbcCursor() override {
    if (coming_.valid() && !isDone(coming_, noTime)) {
      pool_->endLate(std::move(reading_), std::move(coming_));
    } else {
      pool_->end(std::move(reading_));
    }
  }

  std::span<const engine::Column> columns() const override { return reading_->rows->columns(); }

  // Rows of unlimited length come one by one, too many for a thread each.
  bool ready(std::chrono::milliseconds patience) override {
    RowBlock& rows = *reading_->rows;
    if (!coming_.valid()) {
      if (!rows.needsRows() || rows.comesRowByRow()) return true;
      coming_ = std::async(std::launch::async, [&rows] { rows.fetchAhead(); });
    }
    return isDone(coming_, patience);
  }

  bool next() override {
    try {
      if (coming_.valid()) coming_.get();
      return reading_->rows->next();
    } catch (const EConnectionLost&) {
      pool_->forgetIdle();
      throw;
    }
  }
  const engine::Row& row() const override { return *reading_->rows; }

 private:
  std::shared_ptr<OdbcPool> pool_;
  std::unique_ptr<OdbcReading> reading_;
  std::future<void> coming_;  // the next block
};

std::unique_ptr<engine::Cursor> OdbcPool::open(const QString& select) {
  auto reading = std::make_unique<OdbcReading>(take());
  try {
    reading->open(select);
  } catch (...) {
    end(std::move(reading));
    throw;
  }
  return std::make_unique<OdbcCursor>(shared_from_this(), std::move(reading));
}

std::unique_ptr<engine::Cursor> OdbcPool::openBeside(const QString& select,
                                                     const std::function<bool()>& pause) {
  forgetDone();
  auto connecting = std::async(std::launch::async, [this] { return take(); });
  if (!isAwaited(connecting, pause)) {
    // Nothing stops a driver that is connecting.
    late_.push_back(std::async(std::launch::async, [this, connection = std::move(connecting)]() mutable {
      try {
        giveBack(connection.get());
      } catch (const EDatabaseError&) {
        return;  // nobody asks any more why there is none
      }
    }));
    throw EAbort();
  }
  auto reading = std::make_unique<OdbcReading>(connecting.get());
  auto opening = std::async(std::launch::async, [select, &its = *reading] {
    its.open(select);
    its.rows->fetchAhead();
  });
  if (!isAwaited(opening, pause)) {
    endLate(std::move(reading), std::move(opening));
    throw EAbort();
  }
  try {
    opening.get();
  } catch (...) {
    end(std::move(reading));
    throw;
  }
  return std::make_unique<OdbcCursor>(shared_from_this(), std::move(reading));
}

void OdbcPool::end(std::unique_ptr<OdbcReading> reading) {
  reading->rows.reset();
  reading->statement.reset();
  giveBack(std::move(reading->connection));
}

// Telling a server to stop may take as long as reaching it: the window does not wait for that either.
void OdbcPool::endLate(std::unique_ptr<OdbcReading> reading, std::future<void> work) {
  late_.push_back(
      std::async(std::launch::async, [this, its = std::move(reading), working = std::move(work)]() mutable {
        its->stop(working);
        end(std::move(its));
      }));
}

void OdbcPool::forgetDone() {
  std::erase_if(late_, [](const std::future<void>& done) { return isDone(done, noTime); });
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
