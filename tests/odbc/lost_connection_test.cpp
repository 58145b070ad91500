#include <QElapsedTimer>
#include <algorithm>
#include <array>
#include <atomic>
#include <future>
#include <set>
#include <thread>

#include "host/data/errors.h"
#include "host/data/numbering.h"
#include "tests/odbc/relay.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// Connections that go away under the program's hands, saves that are neither lost nor made twice, numbers
// that are drawn once.
namespace goodsbook::test {
namespace {

constexpr int lost = 10054;

class LostConnectionTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    server().psql(
        u"create function getdate() returns timestamp language sql as 'select localtimestamp::timestamp(3)';"
        "create table goods (id int, name varchar(20));"
        "create table SYS_AUDIT (AUDIT_ID serial, AUDIT_TIME timestamp, USER_ID varchar(10), MODULE varchar(10), "
        "KEY_VALUE varchar(100), OPERATION varchar(20), STATEMENT text, TOKEN varchar(36));"
        "create table SYS_NOID (MODULE varchar(10), PREFIX varchar(20), SERIAL_LENGTH int, LAST_NO bigint, "
        "primary key (MODULE,PREFIX,SERIAL_LENGTH))"_s);
    relay_ = std::make_unique<Relay>(server().port());
    database_ = openServerDatabase(server().address(relay_->port()), server().login(), {.connectSeconds = 5});
  }
  void TearDown() override {
    ServerTest::TearDown();
    relay_.reset();
  }

  void save() {
    database().save(u"insert into goods values (1,'苹果')"_s, {u"ADMIN"_s, u"103"_s, u"01"_s, u"Add"_s});
  }
  QString goods() { return server().psql(u"select count(*) from goods"_s); }
  QString lines() { return server().psql(u"select count(*) from SYS_AUDIT"_s); }

  std::unique_ptr<Relay> relay_;
};

TEST_F(LostConnectionTest, ALossIsToldOnceAndTheNextActionConnectsAgain) {
  database().openCursor(u"select 1"_s).reset();  // leaves an idle connection beside the main one
  server().cutConnections();
  const EDatabaseError error = failure([&] { rows(u"select 1"_s); });
  EXPECT_EQ(error.number, lost) << error.what();
  EXPECT_TRUE(error.text.contains(u"连接断开"_s)) << error.what();
  EXPECT_EQ(rows(u"select 2"_s), (Rows{{u"2"_s}}));
  EXPECT_TRUE(database().openCursor(u"select 3"_s)->next());
}

TEST_F(LostConnectionTest, AServerThatIsGoneIsTalkedOfPlainlyUntilItIsBack) {
  relay_->breakAll();
  relay_->refuse(true);
  EXPECT_EQ(failure([&] { rows(u"select 1"_s); }).number, lost);
  EXPECT_FALSE(failure([&] { rows(u"select 1"_s); }).text.isEmpty());
  relay_->refuse(false);
  EXPECT_EQ(rows(u"select 2"_s), (Rows{{u"2"_s}}));
}

TEST_F(LostConnectionTest, ARestartedServerIsFoundAgain) {
  server().kill();
  EXPECT_EQ(failure([&] { rows(u"select 1"_s); }).number, lost);
  server().start();
  EXPECT_EQ(rows(u"select 2"_s), (Rows{{u"2"_s}}));
}

TEST_F(LostConnectionTest, ASaveThatIsCutAtAnyStepLeavesNothing) {
  for (const char* step : {"BEGIN", "insert into goods", "insert into SYS_AUDIT", "COMMIT"}) {
    SCOPED_TRACE(step);
    relay_->breakAt(step, Relay::Moment::BeforeSending);
    const EDatabaseError error = failure([&] { save(); });
    EXPECT_EQ(error.number, lost) << error.what();
    EXPECT_EQ(goods(), u"0"_s);
    EXPECT_EQ(lines(), u"0"_s);
    EXPECT_FALSE(database().inTransaction());
  }
  save();
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(lines(), u"1"_s);
}

TEST_F(LostConnectionTest, AnAnswerThatIsLostAtAnyStepLeavesNothingHalf) {
  for (const char* step : {"BEGIN", "insert into goods", "insert into SYS_AUDIT"}) {
    SCOPED_TRACE(step);
    relay_->breakAt(step, Relay::Moment::BeforeAnswer);
    EXPECT_EQ(failure([&] { save(); }).number, lost);
    EXPECT_EQ(goods(), u"0"_s);
    EXPECT_EQ(lines(), u"0"_s);
  }
}

TEST_F(LostConnectionTest, ASaveWhoseAnswerIsLostIsLookedUpAndNotSentAgain) {
  relay_->breakAt("COMMIT", Relay::Moment::BeforeAnswer);
  save();
  EXPECT_EQ(relay_->broken(), 1);
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(relay_->passed("insert into goods"), 2);  // itself, and within its audit line
}

TEST_F(LostConnectionTest, ASaveThatCannotBeLookedUpYetIsLookedUpBeforeItIsSentAgain) {
  relay_->refuseAfterBreak();
  relay_->breakAt("COMMIT", Relay::Moment::BeforeAnswer);
  const EDatabaseError error = failure([&] { save(); });
  EXPECT_TRUE(error.text.contains(u"不会重复保存"_s)) << error.what();
  failure([&] { save(); });  // still nobody there
  relay_->refuse(false);
  save();
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(lines(), u"1"_s);
}

TEST_F(LostConnectionTest, ASaveThatWasNotCommittedIsSentAgain) {
  relay_->refuseAfterBreak();
  relay_->breakAt("COMMIT", Relay::Moment::BeforeSending);
  EXPECT_TRUE(failure([&] { save(); }).text.contains(u"不会重复保存"_s));
  relay_->refuse(false);
  save();
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(lines(), u"1"_s);
}

TEST_F(LostConnectionTest, AnotherSaveAfterADoubtfulOneIsSent) {
  relay_->refuseAfterBreak();
  relay_->breakAt("COMMIT", Relay::Moment::BeforeAnswer);
  failure([&] { save(); });
  relay_->refuse(false);
  database().save(u"insert into goods values (2,'梨')"_s, {u"ADMIN"_s, u"103"_s, u"02"_s, u"Add"_s});
  EXPECT_EQ(goods(), u"2"_s);
}

class FrozenServerTest : public LostConnectionTest {
 protected:
  // Somebody who sits before a window, without one.
  class Patient : public ServerAttendant {
   public:
    bool goesOn() override { return true; }
  };
  void SetUp() override {
    LostConnectionTest::SetUp();
    const AttendantMaker attend = [this](const QString&, bool mayGiveUp) {
      offers_.push_back(mayGiveUp);
      return std::make_unique<Patient>();
    };
    database_ = openServerDatabase(server().address(relay_->port()), server().login(),
                                   {.connectSeconds = 1, .saveSeconds = 1, .attend = attend});
    offers_.clear();
  }
  std::vector<bool> offers_;  // to give the waits up
};

TEST_F(FrozenServerTest, ASaveGivesUpAfterAWhileAndIsSavedOnceLater) {
  for (const char* step : {"BEGIN", "insert into goods", "insert into SYS_AUDIT"}) {
    SCOPED_TRACE(step);
    relay_->freezeAt(step);
    QElapsedTimer clock;
    clock.start();
    const EDatabaseError error = failure([&] { save(); });
    EXPECT_EQ(error.number, lost) << error.what();
    EXPECT_TRUE(error.text.contains(u"秒内没有回答"_s)) << error.what();
    EXPECT_LT(clock.elapsed(), 6'000);
    EXPECT_FALSE(database().inTransaction());
    relay_->freeze(false);
  }
  EXPECT_EQ(std::count(offers_.begin(), offers_.end(), true), 2);  // to connect again
  save();
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(lines(), u"1"_s);
}

TEST_F(FrozenServerTest, TheStepsOfASaveAreOneWait) {
  save();
  EXPECT_EQ(offers_, std::vector<bool>{false});
  save();
  EXPECT_EQ(offers_, (std::vector<bool>{false, false}));
}

TEST_F(FrozenServerTest, ASaveThatFreezesInItsCommitIsLookedUpAndNoWaitOfItIsGivenUp) {
  relay_->freezeAt("COMMIT");
  const EDatabaseError error = failure([&] { save(); });
  EXPECT_TRUE(error.text.contains(u"不会重复保存"_s)) << error.what();
  EXPECT_EQ(std::count(offers_.begin(), offers_.end(), true), 0);
  relay_->freeze(false);
  save();
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(lines(), u"1"_s);
}

TEST_F(FrozenServerTest, WhatEventsBeginInTheMiddleOfASaveReadsBesideItAndDoesNotWrite) {
  class Busy : public ServerAttendant {
   public:
    explicit Busy(std::function<bool()> work) : work_(std::move(work)) {}
    bool goesOn() override {
      auto work = std::exchange(work_, {});
      if (work && !work()) work_ = std::move(work);  // too early: BEGIN is still under way
      return true;
    }

   private:
    std::function<bool()> work_;
  };
  struct Integers : engine::ResultSink {
    void beginSet(std::span<const engine::Column>) override {}
    void row(const engine::Row& row) override { values.push_back(row.integer(0)); }
    std::vector<std::int64_t> values;
  };
  int waits = 0;
  const auto meanwhile = [&] {
    if (!database().inTransaction()) return false;
    ++waits;
    Integers read;
    database().query(u"select 7"_s, read);
    EXPECT_EQ(read.values, std::vector<std::int64_t>{7});
    EXPECT_TRUE(database().openCursor(u"select 8"_s)->next());
    EXPECT_TRUE(failure([&] { run(u"insert into goods values (9,'x')"_s); }).text.contains(u"没有做完"_s));
    EXPECT_TRUE(failure([&] { save(); }).text.contains(u"没有做完"_s));
    return true;
  };
  database_ =
      openServerDatabase(server().address(), server().login(),
                         {.attend = [&](const QString&, bool) { return std::make_unique<Busy>(meanwhile); }});
  database().save(u"insert into goods values (1,'a'); select pg_sleep(0.2)"_s,
                  {u"ADMIN"_s, u"103"_s, u"01"_s, u"Add"_s});
  EXPECT_GT(waits, 0);
  EXPECT_EQ(goods(), u"1"_s);
}

TEST_F(LostConnectionTest, AListThatBreaksOffSaysSo) {
  run(u"insert into goods select i,'n' from generate_series(1,200000) i"_s);
  const auto streamed = openServerDatabase(
      ServerAddress::parse(server().address(relay_->port()).text() + u";UseDeclareFetch=1;Fetch=1000"_s),
      server().login());
  const auto cursor = streamed->openCursor(u"select id from goods order by id"_s);
  ASSERT_TRUE(cursor->next());
  relay_->breakAll();
  const EDatabaseError error = failure([&] {
    while (cursor->next()) continue;
  });
  EXPECT_EQ(error.number, lost) << error.what();
}

TEST_F(LostConnectionTest, ALossThatAListHasToldIsNotToldAgainByASave) {
  database().openCursor(u"select 1"_s).reset();
  server().cutConnections();
  EXPECT_EQ(failure([&] { database().openCursor(u"select 1"_s); }).number, lost);
  EXPECT_NO_THROW(save());
  EXPECT_EQ(goods(), u"1"_s);
}

TEST_F(LostConnectionTest, WhetherASaveWasMadeIsToldAsSoonAsTheServerIsBack) {
  for (const auto moment : {Relay::Moment::BeforeAnswer, Relay::Moment::BeforeSending}) {
    relay_->refuseAfterBreak();
    relay_->breakAt("COMMIT", moment);
    QString name;
    try {
      save();
    } catch (const ESaveUnknown& unknown) {
      name = unknown.save;
    }
    EXPECT_FALSE(name.isEmpty());
    EXPECT_TRUE(failure([&] { database().wasSaved(name); }).text.contains(u"还不知道"_s));
    relay_->refuse(false);
    EXPECT_EQ(database().wasSaved(name), moment == Relay::Moment::BeforeAnswer);
  }
}

TEST_F(LostConnectionTest, ALookUpBeginsNoTransaction) {
  const int begun = relay_->passed("BEGIN");
  EXPECT_EQ(readSql(database(), u"select 1"_s).rows.size(), 1U);
  EXPECT_EQ(relay_->passed("BEGIN"), begun);
}

TEST_F(LostConnectionTest, ACommitOutsideOfASaveIsNotCalledOne) {
  relay_->breakAt("COMMIT", Relay::Moment::BeforeAnswer);
  const EDatabaseError error = failure([&] { run(u"insert into goods values (1,'苹果')"_s); });
  EXPECT_TRUE(error.text.contains(u"不知道这一步是否已经完成"_s)) << error.what();
}

TEST_F(LostConnectionTest, ACommitThatIsStoppedIsLookedUp) {
  // A trigger that fires with the commit keeps it waiting.
  server().psql(
      u"create function dawdle() returns trigger language plpgsql as 'begin perform pg_sleep(30); return null; end';"
      "create constraint trigger dawdling after insert on goods deferrable initially deferred "
      "for each row execute function dawdle()"_s);
  std::atomic<bool> done = false;
  std::thread breaker([&] {
    const QString committing =
        u"select count(*) from pg_stat_activity where state='active' and query like 'COMMIT%'"_s;
    while (!done && server().psql(committing) != "1"_L1) std::this_thread::yield();
    database().interrupt();
  });
  const EDatabaseError error = failure([&] { save(); });
  done = true;
  breaker.join();
  EXPECT_TRUE(error.text.contains(u"没有保存"_s)) << error.what();
  EXPECT_FALSE(database().inTransaction());
  EXPECT_EQ(goods(), u"0"_s);
  EXPECT_EQ(lines(), u"0"_s);
}

TEST_F(LostConnectionTest, ATransactionThatHasEndedIsNotCommitted) {
  database().begin();
  failure([&] { run(u"select 1/0"_s); });
  EXPECT_EQ(failure([&] { database().commit(); }).number, 3902);
}

TEST_F(LostConnectionTest, ASaveInsideAnOpenTransactionIsRefusedAndEndsNothing) {
  database().begin();
  run(u"insert into goods values (7,'a')"_s);
  const EDatabaseError error = failure([&] { save(); });
  EXPECT_TRUE(error.text.contains(u"事务"_s)) << error.what();
  EXPECT_TRUE(failure([&] { database().begin(); }).text.contains(u"事务"_s));
  EXPECT_TRUE(database().inTransaction());
  database().commit();
  EXPECT_EQ(goods(), u"1"_s);
  EXPECT_EQ(lines(), u"0"_s);
}

TEST_F(LostConnectionTest, DeadlockVictimsAreTriedAgain) {
  run(u"insert into goods values (1,'a'),(2,'b')"_s);
  const auto other = openServerDatabase(server().address(relay_->port()), server().login());
  constexpr int rounds = 4;
  const int begun = relay_->passed("BEGIN");
  const auto work = [](Database& shop, const QString& first, const QString& second) {
    for (int i = 0; i < rounds; ++i) {
      shop.save(
          u"update goods set name='x' where id=%1; select pg_sleep(0.02); update goods set name='y' where id=%2"_s
              .arg(first, second),
          {u"ADMIN"_s, u"101"_s, first, u"Edit"_s});
    }
  };
  auto beside = std::async(std::launch::async, [&] { work(*other, u"2"_s, u"1"_s); });
  EXPECT_NO_THROW(work(database(), u"1"_s, u"2"_s));
  EXPECT_NO_THROW(beside.get());
  EXPECT_EQ(lines(), QString::number(2 * rounds));
  EXPECT_GT(relay_->passed("BEGIN") - begun, 2 * rounds) << "no dead-lock came about";
}

TEST_F(LostConnectionTest, PicturesThatAreDeadlockVictimsAreStoredAgain) {
  // Each picture locks its own row and then, by the trigger, that of the other one.
  server().psql(
      u"create table d1801 (wl_id varchar(20) primary key, pict bytea, n int default 0);"
      "insert into d1801 values ('7',null),('8',null);"
      "create function other() returns trigger language plpgsql as "
      "'begin perform pg_sleep(0.02); update d1801 set n=n+1 where wl_id<>new.wl_id; return null; end';"
      "create trigger others after update of pict on d1801 for each row execute function other()"_s);
  const auto beside = open();
  constexpr int rounds = 4;
  const auto work = [](Database& shop, const QString& key) {
    for (int i = 0; i < rounds; ++i) shop.storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, key, "bytes");
  };
  auto other = std::async(std::launch::async, [&] { work(*beside, u"8"_s); });
  EXPECT_NO_THROW(work(database(), u"7"_s));
  EXPECT_NO_THROW(other.get());
  EXPECT_EQ(server().psql(u"select sum(n) from d1801"_s), QString::number(2 * rounds));
  EXPECT_NE(server().psql(u"select deadlocks from pg_stat_database where datname=current_database()"_s),
            u"0"_s);
}

TEST_F(LostConnectionTest, NumbersAreNeverDrawnTwice) {
  constexpr int draws = 60;
  const QDateTime now(QDate(2026, 11, 20), QTime(10, 0));
  std::array<std::set<QString>, 3> drawn;
  std::vector<std::thread> programs;
  for (auto& numbers : drawn) {
    programs.emplace_back([&] {
      const auto shop = open();
      for (int i = 0; i < draws; ++i) numbers.insert(drawNumber(*shop, u"113"_s, u"K"_s, 0, now));
    });
  }
  for (auto& program : programs) program.join();
  std::set<QString> all;
  for (const auto& numbers : drawn) all.insert(numbers.begin(), numbers.end());
  EXPECT_EQ(all.size(), drawn.size() * draws);
  EXPECT_EQ(*all.begin(), u"K2611000001"_s);
}

}  // namespace
}  // namespace goodsbook::test
