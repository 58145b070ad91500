#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <set>
#include <thread>

#include "host/data/copy/database_copy.h"
#include "host/data/numbering.h"
#include "host/data/server_database.h"
#include "schema/schema.h"
#include "tests/odbc/answers.h"
#include "tests/odbc/raw_connection.h"

using namespace Qt::StringLiterals;

// The way to a T-SQL server from end to end: ODBC manager, driver, and an engine that keeps a server's
// habits.
namespace goodsbook::test {
namespace {

class EngineDriver : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder_.isValid());
    runSql(*connect(u"master"_s), u"create database shop collate Chinese_PRC_CI_AS"_s,
           Database::Permission::Owner);
    database_ = connect(u"shop"_s);
    run(u"create table goods (id int primary key, name nvarchar(20) not null)"_s);
  }
  void TearDown() override { database_.reset(); }

  QString addressText(const QString& database) const {
    return u"Driver=%1;Server=%2;Database=%3"_s.arg(QStringLiteral(GOODSBOOK_ENGINE_DRIVER), folder_.path(),
                                                    database);
  }
  std::unique_ptr<Database> connect(const QString& database, ServerOptions options = {}) const {
    return openServerDatabase(ServerAddress::parse(addressText(database)), {}, std::move(options));
  }
  // The connection as the manager gives it, for what a server answers before the program makes sense of it.
  RawConnection raw() const { return RawConnection(addressText(u"shop"_s)); }

  Database& database() { return *database_; }
  SqlSets run(const QString& batch) { return runSql(*database_, batch, Database::Permission::Owner); }
  Rows rows(const QString& batch) { return texts(run(batch)); }
  QString value(const QString& select) { return rows(select).at(0).at(0); }
  void makeTables() {
    for (const schema::ScriptBatch& batch : schema::batches(schema::script())) {
      run(QString::fromUtf8(batch.text.data(), static_cast<qsizetype>(batch.text.size())));
    }
  }
  EDatabaseError refused(const QString& batch) {
    return failure([&] { run(batch); });
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<Database> database_;
};

// ---- What a server does, seen through the manager

TEST_F(EngineDriver, ARaisedErrorNeitherEndsABatchNorRollsBack) {
  RawConnection server = raw();
  server.run(u"BEGIN TRANSACTION"_s);
  const auto answers = server.run(
      u"insert into goods values (1,N'a') raiserror(N'不行',16,1) "
      "insert into goods values (2,N'b')"_s);
  EXPECT_EQ(answers, (QStringList{u"1 row"_s, u"error 50000"_s, u"1 row"_s}));
  server.run(u"COMMIT TRANSACTION"_s);
  EXPECT_EQ(value(u"select count(*) from goods"_s), u"2"_s);
}

TEST_F(EngineDriver, AnErrorAsTheFirstAnswerHidesWhatRanBehindIt) {
  const auto answers = raw().run(u"raiserror(N'不行',16,1) insert into goods values (2,N'b') select 5"_s);
  EXPECT_EQ(answers, (QStringList{u"error 50000"_s}));
  EXPECT_EQ(value(u"select count(*) from goods"_s), u"1"_s);
}

TEST_F(EngineDriver, AnyOtherErrorRollsBackAndEndsTheBatch) {
  RawConnection server = raw();
  server.run(u"BEGIN TRANSACTION"_s);
  const auto answers = server.run(
      u"insert into goods values (1,N'a') insert into goods values (1,N'b') "
      "insert into goods values (2,N'b')"_s);
  EXPECT_EQ(answers, (QStringList{u"1 row"_s, u"error 2627"_s}));
  EXPECT_EQ(server.run(u"COMMIT TRANSACTION"_s), (QStringList{u"error 3902"_s}));
  EXPECT_EQ(value(u"select count(*) from goods"_s), u"0"_s);
}

TEST_F(EngineDriver, WithoutATransactionEachStatementStandsForItself) {
  raw().run(u"insert into goods values (1,N'a') insert into goods values (1,N'b')"_s);
  EXPECT_EQ(value(u"select count(*) from goods"_s), u"1"_s);
}

TEST_F(EngineDriver, StatementsWithoutRowsAreToldAsNoData) {
  EXPECT_EQ(raw().run(u"delete from goods; select 1"_s), (QStringList{u"no data"_s, u"1 column"_s}));
  EXPECT_EQ(raw().run(u"set nocount off"_s), (QStringList{u"no data"_s}));
}

TEST_F(EngineDriver, MessagesAreAnswersOfTheirOwn) {
  const auto answers = raw().run(u"print N'一' raiserror(N'二',10,1) select 1"_s);
  EXPECT_EQ(answers, (QStringList{u"message"_s, u"message"_s, u"1 column"_s}));
}

TEST_F(EngineDriver, ALiteralWithoutNLosesWhatIsBeyondAscii) {
  raw().run(u"insert into goods values (1,'苹a') insert into goods values (2,N'苹a')"_s);
  EXPECT_EQ(rows(u"select name from goods order by id"_s), (Rows{{u"?a"_s}, {u"苹a"_s}}));
}

TEST_F(EngineDriver, ABatchThatCannotBeReadRunsNotAtAll) {
  EXPECT_EQ(raw().run(u"insert into goods values (1,N'a') selekt"_s).constFirst(), u"error 102"_s);
  EXPECT_EQ(value(u"select count(*) from goods"_s), u"0"_s);
}

// ---- What the program makes of it

TEST_F(EngineDriver, AllAnswersOfABatchComeInOrder) {
  const SqlSets answer =
      run(u"insert into goods values (1,'苹果'),(2,'梨'); select id from goods order by id; "
          "update goods set name='x' where id=9; select name from goods where id=2"_s);
  EXPECT_EQ(answer.counts, (std::vector<qint64>{2, 0}));
  ASSERT_EQ(answer.sets.size(), 2U);
  EXPECT_EQ(answer.sets[0].rows.size(), 2U);
  EXPECT_EQ(texts(answer), (Rows{{u"梨"_s}}));
}

TEST_F(EngineDriver, AFirstStatementThatMeetsNoRowHidesNothing) {
  run(u"insert into goods values (1,'a')"_s);
  const SqlSets answer =
      run(u"update goods set name='x' where id=9; delete from goods where id=1; select 5 as n"_s);
  EXPECT_EQ(answer.counts, (std::vector<qint64>{0, 1}));
  EXPECT_EQ(texts(answer), (Rows{{u"5"_s}}));
}

TEST_F(EngineDriver, NothingStaysOfABatchWithAnErrorWhereverItStands) {
  for (const auto* batch :
       {u"raiserror('先',16,1) insert into goods values (1,'a')",
        u"insert into goods values (1,'a') raiserror('后',16,1)",
        u"insert into goods values (1,'a') raiserror('中',16,1) insert into goods values (2,'b')",
        u"insert into goods values (1,'a') select 1 raiserror('后',16,1)",
        u"insert into goods values (1,'a') select cast(name as int) from goods"}) {
    EXPECT_GE(refused(QString::fromUtf16(batch)).severity, 11);
    EXPECT_EQ(value(u"select count(*) from goods"_s), u"0"_s) << QString::fromUtf16(batch).toStdString();
  }
}

TEST_F(EngineDriver, AnErrorIsToldWithItsWordsNumberSeverityStateAndLine) {
  const EDatabaseError error = refused(u"select 1\nif 1=1\n  raiserror('库存不够',16,7)"_s);
  EXPECT_EQ(error.text, u"库存不够"_s);
  EXPECT_EQ(error.number, 50000);
  EXPECT_EQ(error.severity, 16);
  EXPECT_EQ(error.state, 7);
  EXPECT_EQ(error.line, 3);
}

TEST_F(EngineDriver, AnErrorBehindSomeRowsIsMet) {
  run(u"insert into goods values (1,'1'),(2,'2'),(3,'x')"_s);
  EXPECT_EQ(refused(u"select cast(name as int) from goods order by id"_s).number, 245);
}

TEST_F(EngineDriver, ABatchWithoutStatementsIsNone) {
  EXPECT_TRUE(run(QString()).sets.empty());
  EXPECT_TRUE(run(u"  "_s).sets.empty());
}

TEST_F(EngineDriver, ValuesOfAllTypesArrive) {
  run(u"create table v (b bit, i bigint, f float, d datetime, t nvarchar(50), m nvarchar(max), p varbinary(max))"_s);
  const QString text = QString(5'000, u'长') + u"😀"_s;
  run(u"insert into v values (1,-900719925474099,0.1,'2026-11-20 10:11:12.347',' 末尾 ','%1',0x00FF)"_s.arg(
      text));
  run(u"insert into v values (null,null,null,null,null,null,null)"_s);
  const Rows found = rows(u"select * from v order by i desc"_s);
  EXPECT_EQ(found[0], (std::vector<QString>{u"1"_s, u"-900719925474099"_s, u"0.1"_s,
                                            u"2026-11-20 10:11:12.347"_s, u" 末尾 "_s, text, u"0x00FF"_s}));
  EXPECT_EQ(found[1], std::vector<QString>(7, u"NULL"_s));
}

TEST_F(EngineDriver, ManyRowsComeInBlocks) {
  for (int i = 0; i < 1'200; i += 100) {
    QStringList values;
    for (int n = i; n < i + 100; ++n) values << u"(%1,'名%1')"_s.arg(n);
    run(u"insert into goods values "_s + values.join(u','));
  }
  const Rows found = rows(u"select id, name from goods order by id"_s);
  ASSERT_EQ(found.size(), 1'200U);
  for (int i = 0; i < 1'200; ++i) {
    ASSERT_EQ(found[static_cast<std::size_t>(i)],
              (std::vector<QString>{QString::number(i), u"名%1"_s.arg(i)}));
  }
}

TEST_F(EngineDriver, APictureIsStoredAsAParameter) {
  run(u"create table pictures (id nvarchar(9) primary key, body varbinary(max))"_s);
  run(u"insert into pictures values ('a?''b',null)"_s);
  QByteArray body;
  for (int i = 0; i < 100'000; ++i) body += static_cast<char>(i * 7);
  EXPECT_EQ(database().storeBlob(u"pictures"_s, u"body"_s, u"id"_s, u"a?'b"_s, body), 1);
  EXPECT_EQ(value(u"select body from pictures"_s), u"0x"_s + QString::fromLatin1(body.toHex().toUpper()));
}

TEST_F(EngineDriver, AMissingDatabaseIsTold) {
  const ServerCheck checked = checkServer(ServerAddress::parse(addressText(u"nowhere"_s)), {});
  EXPECT_EQ(checked.problem, ServerProblem::DatabaseMissing) << checked.text.toStdString();
}

TEST_F(EngineDriver, AShopMovesToItAndBack) {
  const auto from = openEmbeddedDatabase(u":memory:"_s);
  runSql(*from, u"insert into D1003 (dw_id,dw_name) values ('01','件')"_s, Database::Permission::Owner);
  makeTables();
  copyDatabase(*from, database());
  EXPECT_EQ(rows(u"select dw_id, dw_name from D1003"_s), (Rows{{u"01"_s, u"件"_s}}));
  const auto back = openEmbeddedDatabase(u":memory:"_s);
  copyDatabase(database(), *back);
  const SqlSets found = runSql(*back, u"select dw_name from D1003"_s, Database::Permission::Owner);
  EXPECT_EQ(texts(found), (Rows{{u"件"_s}}));
}

TEST_F(EngineDriver, AnOpenListStaysAsItWasWhileOthersSave) {
  run(u"insert into goods values (1,'a'),(2,'b')"_s);
  const auto list = database().openCursor(u"select id from goods order by id"_s);
  ASSERT_TRUE(list->next());
  run(u"delete from goods where id=2"_s);
  ASSERT_TRUE(list->next());
  EXPECT_EQ(list->row().integer(0), 2);
  EXPECT_FALSE(list->next());
}

TEST_F(EngineDriver, ALockedRowIsWaitedForAndThenTold) {
  run(u"insert into goods values (1,'a')"_s);
  const auto other = connect(u"shop"_s, {.lockMilliseconds = 50});
  database().begin();
  run(u"update goods set name='b'"_s);
  const EDatabaseError error =
      failure([&] { runSql(*other, u"update goods set name='c'"_s, Database::Permission::Screens); });
  EXPECT_EQ(error.number, 1222);
  database().commit();
  runSql(*other, u"update goods set name='c'"_s, Database::Permission::Screens);
  EXPECT_EQ(value(u"select name from goods"_s), u"c"_s);
}

TEST_F(EngineDriver, TwoProgramsNeverDrawTheSameNumber) {
  makeTables();
  constexpr int each = 40;
  const QDateTime now(QDate(2026, 11, 20), QTime(10, 11));
  std::array<std::vector<QString>, 2> drawn;
  std::array<std::thread, 2> programs;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    programs[i] = std::thread([&, i] {
      const auto own = connect(u"shop"_s);
      for (int n = 0; n < each; ++n) drawn[i].push_back(drawNumber(*own, u"101"_s, u"A"_s, 6, now));
    });
  }
  for (std::thread& program : programs) program.join();
  std::set<QString> numbers(drawn[0].begin(), drawn[0].end());
  numbers.insert(drawn[1].begin(), drawn[1].end());
  EXPECT_EQ(numbers.size(), 2U * each);
  EXPECT_EQ(*numbers.rbegin(), u"A000080"_s);
}

TEST_F(EngineDriver, ASaveAndItsAuditLineAreOne) {
  makeTables();
  const AuditLine line{.user = u"ADMIN"_s, .module = u"103"_s, .key = u"01"_s, .operation = u"Add"_s};
  database().save(u"insert into D1003 (dw_id,dw_name) values ('01','件')"_s, line);
  const EDatabaseError error = failure([&] {
    database().save(u"insert into D1003 (dw_id,dw_name) values ('02','箱') raiserror('不行',16,1)"_s, line);
  });
  EXPECT_EQ(error.text, u"不行"_s);
  EXPECT_EQ(rows(u"select dw_id from D1003"_s), (Rows{{u"01"_s}}));
  EXPECT_EQ(rows(u"select KEY_VALUE, STATEMENT, len(TOKEN) from SYS_AUDIT"_s),
            (Rows{{u"01"_s, u"insert into D1003 (dw_id,dw_name) values ('01','件')"_s, u"36"_s}}));
}

TEST_F(EngineDriver, ALongStatementIsInterrupted) {
  QStringList values;
  for (int i = 0; i < 200; ++i) values << u"(%1,'a')"_s.arg(i);
  run(u"insert into goods values "_s + values.join(u','));
  std::atomic<bool> over = false;
  std::thread interrupter([&] {
    while (!over) {
      database().interrupt();
      std::this_thread::yield();
    }
  });
  const EDatabaseError error = refused(u"select count(*) from goods a, goods b, goods c, goods d, goods e"_s);
  over = true;
  interrupter.join();
  EXPECT_EQ(error.number, 3617);
  EXPECT_EQ(value(u"select count(*) from goods"_s), u"200"_s);
}

}  // namespace
}  // namespace goodsbook::test
