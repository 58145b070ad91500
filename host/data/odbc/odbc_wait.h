#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <utility>

#include "host/data/odbc/connection_lost.h"
#include "host/data/odbc/loose_work.h"
#include "host/data/odbc/odbc_connection.h"

namespace goodsbook {

// How long to wait for a driver that was told to take `seconds`, 0 for no limit: it may be a little late.
constexpr std::chrono::seconds driversDelay{2};
constexpr std::chrono::seconds limitOf(int seconds) {
  return seconds > 0 ? std::chrono::seconds(seconds) + driversDelay : std::chrono::seconds(0);
}

// One wait for loose work that a driver does.
struct OdbcWait {
  std::function<bool()> goesOn = {};  // called every few milliseconds; false gives the wait up
  std::chrono::seconds limit{0};      // 0: none

  enum class End { Done, GivenUp, Silent };
  template <typename Result>
  End until(const std::future<Result>& work) const {
    constexpr std::chrono::milliseconds betweenPauses{10};
    const auto start = std::chrono::steady_clock::now();
    while (work.wait_for(betweenPauses) != std::future_status::ready) {
      if (goesOn && !goesOn()) return End::GivenUp;
      const bool late = limit.count() > 0 && std::chrono::steady_clock::now() - start > limit;
      if (late) return End::Silent;
    }
    return End::Done;
  }
};

// A new connection, made beside the calling thread. EAbort when it was given up, EDatabaseError where there
// is none in time; a driver that comes back later closes what it has opened.
std::shared_ptr<OdbcConnection> connectLoose(const ServerTarget& target,
                                             const std::function<bool()>& goesOn = {});

// Runs a batch as OdbcConnection::run() does, beside the calling thread, which alone calls the sink. A
// connection that is given up, or is silent for too long, is lost: EAbort, EConnectionLost.
void runLoose(const std::shared_ptr<OdbcConnection>& connection, const QString& batch,
              engine::ResultSink& sink, const OdbcWait& wait);

// The same for one piece of work that owns all it uses.
template <typename Work>
auto doLoose(const std::shared_ptr<OdbcConnection>& connection, Work&& work, const OdbcWait& wait) {
  connection->requireThere();
  auto done = startLoose(std::forward<Work>(work));
  switch (wait.until(done)) {
    case OdbcWait::End::GivenUp:
      connection->giveUp();
      startLoose([connection] { connection->interrupt(); });
      throw EAbort();
    case OdbcWait::End::Silent:
      connection->giveUp();
      throw connection->silence(wait.limit - driversDelay);
    case OdbcWait::End::Done:
      break;
  }
  return done.get();
}

}  // namespace goodsbook
