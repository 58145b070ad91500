#include "host/data/odbc/odbc_wait.h"

#include <variant>
#include <vector>

#include "host/data/odbc/connect_problem.h"
#include "host/data/odbc/odbc_reading.h"

namespace goodsbook {
namespace {

// What comes beside rows, until the thread that waits can tell it.
class HeldAnswers : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
  void notice(const engine::Diagnostic& told) override { held_.emplace_back(told); }
  void affected(std::int64_t rows) override { held_.emplace_back(rows); }

  void tell(engine::ResultSink& sink) {
    for (const auto& answer : std::exchange(held_, {})) {
      if (const auto* notice = std::get_if<engine::Diagnostic>(&answer)) {
        sink.notice(*notice);
      } else {
        sink.affected(std::get<std::int64_t>(answer));
      }
    }
  }

 private:
  std::vector<std::variant<engine::Diagnostic, std::int64_t>> held_;
};

}  // namespace

std::shared_ptr<OdbcConnection> connectLoose(const ServerTarget& target,
                                             const std::function<bool()>& goesOn) {
  // What is beside the driver's own time: asking the network why nobody answers.
  constexpr std::chrono::seconds finding{5};
  auto connecting = startLoose([target] { return std::make_shared<OdbcConnection>(target); });
  const OdbcWait wait{goesOn, std::chrono::seconds(target.options.connectSeconds) + finding};
  switch (wait.until(connecting)) {
    case OdbcWait::End::GivenUp:
      throw EAbort();
    case OdbcWait::End::Silent:
      throw silenceError(target);
    case OdbcWait::End::Done:
      break;
  }
  return connecting.get();
}

void runLoose(const std::shared_ptr<OdbcConnection>& connection, const QString& batch,
              engine::ResultSink& sink, const OdbcWait& wait) {
  const auto reading = std::make_shared<OdbcReading>(connection);
  const auto held = std::make_shared<HeldAnswers>();
  const auto toNextSet = [&] {
    try {
      const bool more = doLoose(
          connection, [reading, held, batch] { return reading->toNextSet(batch, *held); }, wait);
      held->tell(sink);
      return more;
    } catch (...) {
      if (!connection->isLost()) held->tell(sink);  // else another thread may be at it still
      throw;
    }
  };
  while (toNextSet()) {
    RowBlock& rows = *reading->rows;
    sink.beginSet(rows.columns());
    for (;;) {
      if (rows.needsRows())
        doLoose(
            connection, [reading] { reading->rows->fetchAhead(); }, wait);
      if (!rows.next()) break;
      sink.row(rows);
    }
    sink.endSet();
  }
}

}  // namespace goodsbook
