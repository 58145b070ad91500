#include <atomic>
#include <thread>

#include "host/data/errors.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// What batches answer, and what stays of them.
namespace goodsbook::test {
namespace {

class BatchesTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    run(u"create table goods (id int primary key, name varchar(20) not null)"_s);
  }
};

TEST_F(BatchesTest, AllResultsOfABatchCome) {
  const SqlSets answer =
      run(u"insert into goods values (1,'苹果'),(2,'梨'); select id from goods order by id; "
          "update goods set name='x' where id=9; select name from goods where id=2"_s);
  EXPECT_EQ(answer.counts, (std::vector<qint64>{2, 0}));
  ASSERT_EQ(answer.sets.size(), 2U);
  EXPECT_EQ(answer.sets[0].rows.size(), 2U);
  EXPECT_EQ(answer.sets[1].rows.front().front().value_or(QString()), u"梨"_s);
}

TEST_F(BatchesTest, AFirstStatementThatMeetsNoRowHidesNothing) {
  run(u"insert into goods values (1,'a')"_s);
  const SqlSets answer =
      run(u"update goods set name='x' where id=9; delete from goods where id=1; select 5 as n"_s);
  EXPECT_EQ(answer.counts, (std::vector<qint64>{0, 1}));
  EXPECT_EQ(texts(answer), (Rows{{u"5"_s}}));
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, NothingStaysOfABatchThatFailsAtTheEnd) {
  const EDatabaseError error =
      refused(u"insert into goods values (1,'a'); insert into goods values (1,'b')"_s);
  EXPECT_EQ(error.number, 2627);
  EXPECT_GE(error.severity, 11);
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, NothingStaysOfABatchThatFailsInItsFirstStatement) {
  EXPECT_EQ(refused(u"insert into nowhere values (1); insert into goods values (1,'a')"_s).number, 208);
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, AnErrorBehindASetIsMet) {
  EXPECT_EQ(refused(u"insert into goods values (1,'a'); select * from goods; select 1/0"_s).number, 8134);
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, ErrorsHaveTheNumbersOfTSql) {
  EXPECT_EQ(refused(u"select nothing from goods"_s).number, 207);
  EXPECT_EQ(refused(u"selekt 1"_s).number, 102);
  EXPECT_EQ(refused(u"insert into goods values (1,null)"_s).number, 515);
  EXPECT_EQ(refused(u"insert into goods values (1,repeat('x',21))"_s).number, 2628);
}

TEST_F(BatchesTest, NoticesAreNoErrors) {
  const SqlSets answer = run(
      u"insert into goods values (1,'a'); do $$begin raise notice '请注意'; end$$; insert into goods values (2,'b')"_s);
  ASSERT_EQ(answer.notices.size(), 1U);
  EXPECT_TRUE(answer.notices.front().contains(u"请注意"_s)) << answer.notices.front().toStdString();
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"2"_s}}));
}

TEST_F(BatchesTest, ASaveThatTakesLongLeavesTheWindowAlive) {
  run(u"create table SYS_AUDIT (AUDIT_TIME timestamp, USER_ID varchar(10), MODULE varchar(10), "
      "KEY_VALUE varchar(100), OPERATION varchar(20), STATEMENT text, TOKEN varchar(40)); "
      "create function getdate() returns timestamp language sql as 'select localtimestamp'; "
      "insert into goods values (1,'a')"_s);
  const auto other = open();
  other->begin();
  runSql(*other, u"update goods set name='b'"_s, Database::Permission::Owner);
  int pauses = 0;
  database().saveBeside(u"delete from goods"_s, {u"ADMIN"_s, u"101"_s, {}, u"Add"_s}, [&] {
    if (++pauses == 3) other->rollback();
  });
  EXPECT_GE(pauses, 3);
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
  EXPECT_EQ(rows(u"select STATEMENT from SYS_AUDIT"_s), (Rows{{u"delete from goods"_s}}));
  EXPECT_EQ(failure([&] {
              database().saveBeside(u"delete from nowhere"_s, {u"ADMIN"_s, u"101"_s, {}, u"Add"_s}, [] {});
            }).number,
            208);
}

TEST_F(BatchesTest, ATransactionHoldsSeveralBatches) {
  {
    Transaction transaction(database());
    run(u"insert into goods values (1,'a')"_s);
    run(u"insert into goods values (2,'b')"_s);
  }
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
  Transaction transaction(database());
  run(u"insert into goods values (1,'a')"_s);
  transaction.commit();
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"1"_s}}));
}

TEST_F(BatchesTest, AnErrorEndsTheTransaction) {
  database().begin();
  run(u"insert into goods values (1,'a')"_s);
  refused(u"insert into goods values (1,'a')"_s);
  EXPECT_FALSE(database().inTransaction());
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, ScreensMakeNoTables) {
  const EDatabaseError error =
      failure([&] { runSql(database(), u"select 1; drop table goods"_s, Database::Permission::Screens); });
  EXPECT_EQ(error.number, 262);
  EXPECT_EQ(rows(u"select count(*) from goods"_s), (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, ACursorReadsBesideBatches) {
  run(u"insert into goods select i,'n'||i from generate_series(1,3000) i"_s);
  const auto cursor = database().openCursor(u"select id from goods order by id"_s);
  ASSERT_TRUE(cursor->next());
  run(u"delete from goods"_s);
  int count = 1;
  while (cursor->next()) {
    ++count;
    ASSERT_EQ(cursor->row().integer(0), count);
  }
  EXPECT_EQ(count, 3000);
}

TEST_F(BatchesTest, ACursorThatCannotBeOpenedSaysWhy) {
  EXPECT_EQ(failure([&] { database().openCursor(u"select * from nowhere"_s); }).number, 208);
  EXPECT_EQ(rows(u"select 1"_s), (Rows{{u"1"_s}}));
}

TEST_F(BatchesTest, AWaitForALockEnds) {
  const auto other = open();
  const auto waiting = open({.lockMilliseconds = 200});
  run(u"insert into goods values (1,'a')"_s);
  Transaction transaction(*other);
  runSql(*other, u"update goods set name='b'"_s, Database::Permission::Screens);
  EXPECT_EQ(failure([&] {
              runSql(*waiting, u"update goods set name='c'"_s, Database::Permission::Screens);
            }).number,
            1222);
}

TEST_F(BatchesTest, ABatchThatTakesTooLongIsStopped) {
  const auto hasty = open({.statementSeconds = 1});
  const EDatabaseError error = failure([&] {
    runSql(*hasty, u"insert into goods values (1,'a'); select pg_sleep(30)"_s, Database::Permission::Screens);
  });
  EXPECT_TRUE(error.number == -2 || error.number == 3617) << error.number << error.what();
  EXPECT_EQ(texts(runSql(*hasty, u"select count(*) from goods"_s, Database::Permission::Screens)),
            (Rows{{u"0"_s}}));
}

TEST_F(BatchesTest, ARunningBatchCanBeInterrupted) {
  std::atomic<bool> done = false;
  std::thread breaker([&] {
    // Until it is met running, again and again.
    while (!done) {
      database().interrupt();
      std::this_thread::yield();
    }
  });
  const EDatabaseError error = failure([&] { run(u"select pg_sleep(30)"_s); });
  done = true;
  breaker.join();
  EXPECT_EQ(error.number, 3617) << error.what();
}

}  // namespace
}  // namespace goodsbook::test
