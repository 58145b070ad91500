#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <utility>

#include "host/data/errors.h"
#include "host/data/progressive_load.h"
#include "host/data/record_set.h"
#include "tests/odbc/relay.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// A list that the server thinks about for a while, or sends in drops: the window goes on.
namespace goodsbook::test {
namespace {

constexpr qint64 noticeableMs = 300;  // far above what a turn takes

// How long this thread has been ready to run while others had the processors, in milliseconds.
qint64 crowdedOut() {
  QFile statistics(u"/proc/thread-self/schedstat"_s);
  if (!statistics.open(QIODevice::ReadOnly)) return 0;
  constexpr qint64 nanosAMilli = 1'000'000;
  return statistics.readAll().split(' ').value(1).toLongLong() / nanosAMilli;
}

// Measures the longest time in which the event loop did not turn though it could have.
class Gaps : public QObject {
 public:
  Gaps() {
    timer_.setInterval(1);
    connect(&timer_, &QTimer::timeout, this, [this] { look(); });
    timer_.start();
    clock_.start();
  }
  qint64 longest() {
    look();
    return longest_;
  }
  int turns() const { return turns_; }

 private:
  void look() {
    const qint64 before = std::exchange(crowdedOut_, crowdedOut());
    longest_ = std::max(longest_, clock_.restart() - (crowdedOut_ - before));
    ++turns_;
  }

  QTimer timer_;
  QElapsedTimer clock_;
  qint64 longest_ = 0;
  qint64 crowdedOut_ = crowdedOut();
  int turns_ = 0;
};

class OpeningTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    load_.setIdleHook([this] {
      ++idle_;
      QApplication::processEvents();
      return goesOn_;
    });
  }
  // Rows as the server makes them, not all of them first.
  std::unique_ptr<Database> streamed(int port = 0) const {
    return openServerDatabase(
        ServerAddress::parse(server().address(port).text() + u";UseDeclareFetch=1;Fetch=100"_s),
        server().login());
  }
  static void untilDone(const ProgressiveLoad& load) {
    while (load.isRunning()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }

  RecordSet rows_;
  ProgressiveLoad load_{rows_};
  bool goesOn_ = true;
  int idle_ = 0;
};

TEST_F(OpeningTest, TheWindowGoesOnWhileTheServerThinks) {
  Gaps gaps;
  load_.start(database(), u"select 7 as n from pg_sleep(0.8)"_s);
  EXPECT_EQ(rows_.rowCount(), 1);
  EXPECT_LT(gaps.longest(), noticeableMs);
  EXPECT_GT(gaps.turns(), 20);
  RecordProperty("longest_gap_ms", static_cast<int>(gaps.longest()));
}

TEST_F(OpeningTest, TheWindowGoesOnWhileRowsComeInDrops) {
  const auto slow = streamed();
  Gaps gaps;
  load_.start(
      *slow,
      u"select i, case when i%100=50 then pg_sleep(0.5) end::text::varchar(9) as s from generate_series(1,350) i"_s);
  untilDone(load_);
  EXPECT_EQ(rows_.rowCount(), 350);
  EXPECT_LT(gaps.longest(), noticeableMs);
  RecordProperty("longest_gap_ms", static_cast<int>(gaps.longest()));
}

TEST_F(OpeningTest, WhoeverNeedsAllRowsWaitsWithTheWindowAlive) {
  const auto slow = streamed();
  load_.start(
      *slow,
      u"select i, case when i%100=50 then pg_sleep(0.5) end::text::varchar(9) as s from generate_series(1,350) i"_s);
  Gaps gaps;
  rows_.waitForAll();
  EXPECT_EQ(rows_.rowCount(), 350);
  EXPECT_LT(gaps.longest(), noticeableMs);
}

TEST_F(OpeningTest, ALongListHasNoGaps) {
  server().psql(
      u"create table list as select i as id, ('商品'||i)::varchar(80) as name, i/7.0::float as price "
      "from generate_series(1,100000) i"_s);
  Gaps gaps;
  load_.start(database(), u"select * from list"_s);
  untilDone(load_);
  EXPECT_EQ(rows_.rowCount(), 100'000);
  EXPECT_LT(gaps.longest(), noticeableMs);
  RecordProperty("longest_gap_ms", static_cast<int>(gaps.longest()));
}

TEST_F(OpeningTest, ACancelledOpeningStopsTheServerAndLeavesTheRows) {
  load_.start(database(), u"select 7 as n"_s);
  QElapsedTimer clock;
  clock.start();
  QTimer::singleShot(100, &load_, [this] { goesOn_ = false; });
  // A time of its own: another test's sleep is no business of this one.
  EXPECT_THROW(load_.start(database(), u"select 8 as n from pg_sleep(31)"_s), EAbort);
  EXPECT_LT(clock.elapsed(), 5'000);
  EXPECT_EQ(rows_.textAt(0, 0), u"7"_s);
  const QString atWork =
      u"select count(*) from pg_stat_activity where state='active' and query like '%pg_sleep(31)%' "
      "and pid<>pg_backend_pid()"_s;
  while (server().psql(atWork) != "0"_L1 && clock.elapsed() < 10'000) continue;
  EXPECT_EQ(server().psql(atWork), u"0"_s);
  goesOn_ = true;
  load_.start(database(), u"select 9 as n"_s);
  EXPECT_EQ(rows_.textAt(0, 0), u"9"_s);
}

TEST_F(OpeningTest, AListThatIsDroppedWhileRowsAreAwaitedDoesNotKeepTheWindow) {
  QElapsedTimer clock;
  clock.start();
  auto slow = streamed();
  // The first block comes at once, the second one takes its time.
  load_.start(
      *slow,
      u"select i, case when i=750 then pg_sleep(8) end::text::varchar(9) as s from generate_series(1,800) i"_s);
  while (rows_.rowCount() < 500 && clock.elapsed() < 5'000) QApplication::processEvents();
  Gaps gaps;
  for (int i = 0; i < 20; ++i) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  ASSERT_TRUE(load_.isRunning());
  load_.cancel();
  EXPECT_LT(gaps.longest(), noticeableMs);
  load_.start(*slow, u"select 9 as n"_s);
  EXPECT_EQ(rows_.textAt(0, 0), u"9"_s);
  untilDone(load_);
  slow.reset();
  EXPECT_LT(clock.elapsed(), 6'000);
}

TEST_F(OpeningTest, ADatabaseIsLeftWhileItsServerIsFrozen) {
  Relay relay(server().port());
  auto shop = openServerDatabase(server().address(relay.port()), server().login());
  relay.freeze(true);
  QTimer::singleShot(100, &load_, [this] { goesOn_ = false; });
  EXPECT_THROW(load_.start(*shop, u"select 8 as n"_s), EAbort);
  QElapsedTimer clock;
  clock.start();
  shop.reset();
  EXPECT_LT(clock.elapsed(), 1'000);
}

TEST_F(OpeningTest, AStatementThatFailsSaysSoAndLeavesTheRows) {
  load_.start(database(), u"select 7 as n"_s);
  EXPECT_EQ(failure([&] { load_.start(database(), u"select * from nowhere"_s); }).number, 208);
  EXPECT_EQ(rows_.textAt(0, 0), u"7"_s);
}

TEST_F(OpeningTest, ALossIsToldOnceAndTheNextOpeningConnectsAgain) {
  Relay relay(server().port());
  const auto shop =
      openServerDatabase(server().address(relay.port()), server().login(), {.connectSeconds = 5});
  load_.start(*shop, u"select 7 as n"_s);
  untilDone(load_);  // leaves an idle connection beside the main one
  relay.breakAll();
  const EDatabaseError error = failure([&] { load_.start(*shop, u"select 8 as n"_s); });
  EXPECT_EQ(error.number, 10054) << error.what();
  EXPECT_EQ(rows_.textAt(0, 0), u"7"_s);
  load_.start(*shop, u"select 9 as n"_s);
  EXPECT_EQ(rows_.textAt(0, 0), u"9"_s);
  EXPECT_EQ(texts(runSql(*shop, u"select 1"_s, Database::Permission::Screens)), (Rows{{u"1"_s}}));
}

TEST_F(OpeningTest, BatchesAndOtherListsRunBesideAnOpening) {
  RecordSet others;
  ProgressiveLoad other(others);
  QTimer::singleShot(50, &other, [&] {
    run(u"select 1"_s);
    other.start(database(), u"select 2 as n"_s);
  });
  load_.start(database(), u"select 1 as n from pg_sleep(0.3)"_s);
  EXPECT_EQ(rows_.textAt(0, 0), u"1"_s);
  EXPECT_EQ(others.textAt(0, 0), u"2"_s);
}

TEST_F(OpeningTest, ANewerOpeningOfTheSameListTakesThePlaceOfTheOlder) {
  QTimer::singleShot(50, &load_, [&] { load_.start(database(), u"select 2 as n"_s); });
  EXPECT_THROW(load_.start(database(), u"select 1 as n from pg_sleep(30)"_s), EAbort);
  EXPECT_EQ(rows_.textAt(0, 0), u"2"_s);
}

TEST_F(OpeningTest, AListThatGoesAwayMeanwhileEndsItsOpening) {
  auto going = std::make_unique<ProgressiveLoad>(rows_);
  going->setIdleHook([] {
    QApplication::processEvents();
    return true;
  });
  QTimer::singleShot(50, qApp, [&] { going.reset(); });
  EXPECT_THROW(going->start(database(), u"select 1 as n from pg_sleep(30)"_s), EAbort);
  EXPECT_FALSE(rows_.isOpen());
}

}  // namespace
}  // namespace goodsbook::test
