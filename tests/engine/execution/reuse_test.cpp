#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "engine/debug.h"
#include "tests/engine/support/session.h"

// Statements that differ in their values only are bound and prepared once.
namespace goodsbook::engine::test {
namespace {

Outcome runTimes(Session& session, int times, const std::function<std::string(int)>& batch) {
  Outcome outcome;
  for (int i = 0; i < times; ++i) {
    outcome = session.run(batch(i));
    EXPECT_FALSE(outcome.error) << outcome.error->text;
  }
  return outcome;
}

std::string saving(int number) {
  const std::string code = std::to_string(number);
  return "insert into D1801(WL_ID,WL_NAME,DJ,BDATE) values('" + code + "','n" + code + "'," + code +
         ".50,getdate());" + "if exists(select * from D1801 where WL_ID='" + code +
         "') update D1801 set DJ='" + code + "' where WL_ID='" + code + "'";
}

TEST(Reuse, ABatchWithOtherValuesIsNeitherBoundNorPreparedAgain) {
  Session session;
  runTimes(session, 1, saving);
  const Counters before = counters(session.connection());
  runTimes(session, 20, [](int i) { return saving(i + 10); });
  const Counters after = counters(session.connection());
  EXPECT_EQ(after.bound, before.bound);
  EXPECT_EQ(after.prepared, before.prepared);
  EXPECT_EQ(session.rows("select DJ from D1801 where WL_ID='29'"), (Rows{{"29"}}));
}

TEST(Reuse, CursorsReuseWhatTheyPrepared) {
  Session session;
  const auto read = [&](int i) {
    session.connection().query("select dw_id from D1003 where dw_id='" + std::to_string(i) + "'")->next();
  };
  read(1);
  const Counters before = counters(session.connection());
  for (int i = 2; i < 10; ++i) read(i);
  EXPECT_EQ(counters(session.connection()), before);
}

TEST(Reuse, AnotherKindOfLiteralIsAnotherStatement) {
  Session session;
  session.setUp(std::array{std::string_view("insert into D1801DWTM values(7,'007'),(8,'x')")});
  EXPECT_EQ(session.rows("select ADW from D1801DWTM where ADW=7 and TM='007'"), (Rows{{"7"}}));
  EXPECT_EQ(session.rows("select ADW from D1801DWTM where ADW=7 and TM=7"), (Rows{{"7"}}));
  EXPECT_EQ(session.rows("select ADW from D1801DWTM where ADW='7' and TM='007'"), (Rows{{"7"}}));
}

TEST(Reuse, ValuesThatDecideTypesAreLookedAt) {
  Session session;
  EXPECT_EQ(session.rows("select convert(varchar(20),1.5+1) as a"), (Rows{{"2.5"}}));
  EXPECT_EQ(session.rows("select convert(varchar(20),1.25+1) as a"), (Rows{{"2.25"}}));
  EXPECT_EQ(session.rows("select convert(varchar(20),1.5+1) as a"), (Rows{{"2.5"}}));
  EXPECT_EQ(session.rows("select 2000000000+1 as a"), (Rows{{"2000000001"}}));
  EXPECT_EQ(session.rows("select 3000000000+1 as a"), (Rows{{"3000000001"}}));
  EXPECT_EQ(session.rows("select case when 1=1 then 1.5 else 2 end as a"), (Rows{{"1.5"}}));
  EXPECT_EQ(session.rows("select case when 1=1 then 1.25 else 2 end as a"), (Rows{{"1.25"}}));
}

TEST(Reuse, AChangedTableIsNoticed) {
  Session session;
  const auto ask = [&] { return session.run("select * from X where a='1'", Permission::Owner); };
  session.run("create table X(a int)", Permission::Owner);
  session.run("insert into X values(1)");
  EXPECT_EQ(ask().sets.at(0).columns.size(), 1U);
  session.run("alter table X add b int", Permission::Owner);
  EXPECT_EQ(ask().sets.at(0).columns.size(), 2U);
}

TEST(Reuse, ManyShapesPushEachOtherOut) {
  Session session;
  runTimes(session, 600, [](int i) { return "select dw_id as c" + std::to_string(i) + " from D1003"; });
  const Counters before = counters(session.connection());
  runTimes(session, 1, [](int) { return std::string("select dw_id as c599 from D1003"); });
  EXPECT_EQ(counters(session.connection()), before);
  runTimes(session, 1, [](int) { return std::string("select dw_id as c0 from D1003"); });
  EXPECT_GT(counters(session.connection()).bound, before.bound);
}

}  // namespace
}  // namespace goodsbook::engine::test
