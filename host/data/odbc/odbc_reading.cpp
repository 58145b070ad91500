#include "host/data/odbc/odbc_reading.h"

#include <QCoreApplication>
#include <algorithm>
#include <chrono>

namespace goodsbook {
namespace {

class IgnoredAnswers : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

}  // namespace

void OdbcReading::open(const QString& select) {
  IgnoredAnswers ignored;
  if (!toNextSet(select, ignored)) {
    throw EDatabaseError(50000, 16, 1, 1, QCoreApplication::translate("OdbcCursor", "语句没有返回行"));
  }
}

bool OdbcReading::toNextSet(const QString& batch, engine::ResultSink& besideRows) {
  rows.reset();
  if (!statement) statement.emplace(*connection, batch);
  if (!statement->nextSet(besideRows)) return false;
  rows.emplace(*connection, statement->handle());
  rows->fetchAhead();
  return true;
}

void OdbcReading::close() {
  rows.reset();
  statement.reset();
}

void OdbcReading::stop(const std::future<void>& work) const {
  constexpr std::chrono::milliseconds longestPause{1'000};
  std::chrono::milliseconds pause{10};
  do {
    connection->interrupt();
    pause = std::min(2 * pause, longestPause);
  } while (work.wait_for(pause) != std::future_status::ready);
}

}  // namespace goodsbook
