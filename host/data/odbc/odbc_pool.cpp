#include "host/data/odbc/odbc_pool.h"

#include <chrono>

#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/odbc_reading.h"
#include "host/data/odbc/odbc_wait.h"

namespace goodsbook {
namespace {

// A screen reads a list and perhaps a look-up at a time; what goes beyond is closed again.
constexpr std::size_t mostIdle = 2;

constexpr std::chrono::milliseconds noTime{0};

bool isDone(const std::future<void>& work, std::chrono::milliseconds patience) {
  return work.wait_for(patience) == std::future_status::ready;
}

}  // namespace

// Reads a select at the caller's pace.
class OdbcCursor : public engine::Cursor {
 public:
  OdbcCursor(std::shared_ptr<OdbcPool> pool, std::shared_ptr<OdbcReading> reading)
      : pool_(std::move(pool)), reading_(std::move(reading)) {}
  ~OdbcCursor() override {
    if (coming_.valid() && !isDone(coming_, noTime)) {
      pool_->endLate(std::move(reading_), std::move(coming_));
    } else {
      pool_->end(reading_);
    }
  }

  std::span<const engine::Column> columns() const override { return reading_->rows->columns(); }

  // Rows of unlimited length come one by one, too many for a thread each.
  bool ready(std::chrono::milliseconds patience) override {
    const RowBlock& rows = *reading_->rows;
    if (!coming_.valid()) {
      if (!rows.needsRows() || rows.comesRowByRow()) return true;
      coming_ = startLoose([reading = reading_] { reading->rows->fetchAhead(); });
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
  std::shared_ptr<OdbcReading> reading_;
  std::future<void> coming_;  // the next block
};

std::unique_ptr<engine::Cursor> OdbcPool::open(const QString& select, const std::function<bool()>& goesOn) {
  Connection connection = takeIdle();
  if (!connection) connection = connect(goesOn);
  auto reading = std::make_shared<OdbcReading>(std::move(connection));
  auto opening = startLoose([select, reading] { reading->open(select); });
  const OdbcWait wait{goesOn, limitOf(target_.options.statementSeconds)};
  const OdbcWait::End how = wait.until(opening);
  if (how == OdbcWait::End::Silent) {
    const EConnectionLost silence = reading->connection->silence(wait.limit - driversDelay);
    reading->connection->giveUp();
    lossSeen_ = true;
    endLate(std::move(reading), std::move(opening));
    throw silence;
  }
  if (how == OdbcWait::End::GivenUp) {
    endLate(std::move(reading), std::move(opening));
    throw EAbort();
  }
  try {
    opening.get();
  } catch (...) {
    end(reading);
    throw;
  }
  return std::make_unique<OdbcCursor>(shared_from_this(), std::move(reading));
}

void OdbcPool::end(const std::shared_ptr<OdbcReading>& reading) {
  reading->close();
  giveBack(std::move(reading->connection));
}

// Telling a server to stop may take as long as reaching it: nobody waits for that either.
void OdbcPool::endLate(std::shared_ptr<OdbcReading> reading, std::future<void> work) {
  startLoose([pool = weak_from_this(), its = std::move(reading), working = std::move(work)] {
    its->stop(working);
    if (const auto home = pool.lock()) home->end(its);
  });
}

OdbcPool::Connection OdbcPool::takeIdle() {
  const std::scoped_lock lock(mutex_);
  if (idle_.empty()) return nullptr;
  const Connection connection = std::move(idle_.back());
  idle_.pop_back();
  busy_.push_back(connection);
  return connection;
}

OdbcPool::Connection OdbcPool::connect(const std::function<bool()>& goesOn) {
  Connection connection = connectLoose(target_, goesOn);
  const std::scoped_lock lock(mutex_);
  busy_.push_back(connection);
  return connection;
}

void OdbcPool::giveBack(Connection connection) {
  const bool usable = !connection->isLost();
  {
    const std::scoped_lock lock(mutex_);
    std::erase_if(busy_, [&](const auto& busy) { return busy.expired() || busy.lock() == connection; });
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
  for (const auto& busy : busy_) {
    if (const Connection connection = busy.lock()) connection->interrupt();
  }
}

}  // namespace goodsbook
