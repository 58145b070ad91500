#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <future>
#include <thread>

#include "tests/engine/support/session.h"

// Batches as transactions, several connections on one file, damaged and missing files.
namespace goodsbook::engine::test {
namespace {

struct Nothing : ResultSink {
  void beginSet(std::span<const Column>) override {}
  void row(const Row&) override {}
};

int errorOf(const std::function<void()>& action) {
  try {
    action();
    return 0;
  } catch (const SqlError& error) {
    EXPECT_FALSE(error.diagnostic().text.empty());
    return error.diagnostic().number;
  }
}

std::string firstText(Connection& on, std::string_view select) {
  const auto cursor = on.query(select);
  return cursor->next() ? std::string(cursor->row().text(0)) : "nothing";
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class TransactionsTest : public testing::Test {
 protected:
  std::unique_ptr<Connection> another(std::chrono::milliseconds timeout = std::chrono::milliseconds(50)) {
    Options options;
    options.busyTimeout = timeout;
    return Connection::open(file(), options);
  }
  std::filesystem::path file() const { return session.folder() / "test.db"; }
  void run(Connection& on, std::string_view batch) { on.execute(batch, nothing); }

  Session session;
  Connection& connection = session.connection();
  Nothing nothing;
};

TEST_F(TransactionsTest, RelaxedCommitsLeaveTheLogToWhoSettlesIt) {
  const auto fileSize = [&] { return std::filesystem::file_size(file()); };
  another()->settle();
  const auto before = fileSize();
  connection.setRelaxed(true);
  constexpr int morePagesThanSqliteWaitsFor = 1200;
  for (int i = 0; connection.logPages() < morePagesThanSqliteWaitsFor; ++i)
    run(connection, "insert into D1801(WL_ID,WL_NAME) values('" + std::to_string(i) + "','x')");
  EXPECT_EQ(fileSize(), before) << "a commit copied the log into the file";
  EXPECT_TRUE(another()->settle());
  EXPECT_GT(fileSize(), before);
  run(connection, "insert into D1801(WL_ID) values('last')");
  EXPECT_LT(connection.logPages(), 20) << "the log was not begun anew";
  connection.setRelaxed(false);
  EXPECT_EQ(firstText(*another(), "select WL_ID from D1801 where WL_ID='last'"), "last");
}

TEST_F(TransactionsTest, SettlingDoesNotWaitForReaders) {
  run(connection, "insert into D1003(dw_id) values('1')");
  {
    const auto reader = connection.query("select dw_id from D1003");
    ASSERT_TRUE(reader->next());
    run(connection, "insert into D1003(dw_id) values('2')");
    EXPECT_FALSE(another()->settle());
  }
  EXPECT_TRUE(another()->settle());
  EXPECT_EQ(session.rows("select dw_id from D1003 order by 1"), (Rows{{"1"}, {"2"}}));
}

TEST_F(TransactionsTest, ASelectToItsEndLeavesTheTransactionAsItIs) {
  connection.begin();
  run(connection, "insert into D1003(dw_id) values('1')");
  connection.query("select dw_id from D1003", nothing);
  EXPECT_TRUE(connection.inTransaction());
  EXPECT_EQ(errorOf([&] { connection.query("select nosuch from D1003", nothing); }), 207);
  EXPECT_TRUE(connection.inTransaction());
  connection.commit();
  connection.query("select dw_id from D1003", nothing);
  EXPECT_EQ(errorOf([&] { connection.query("delete from D1003", nothing); }), 40510);
  EXPECT_FALSE(connection.inTransaction());
  EXPECT_EQ(session.rows("select dw_id from D1003"), (Rows{{"1"}}));
}

TEST_F(TransactionsTest, AnErrorUndoesTheWholeBatch) {
  EXPECT_EQ(errorOf([&] {
              run(connection, "insert into D1003(dw_id) values('1');insert into D1003(dw_id) values('1')");
            }),
            2627);
  EXPECT_EQ(session.rows("select dw_id from D1003"), Rows{});
  EXPECT_FALSE(connection.inTransaction());
}

TEST_F(TransactionsTest, AnErrorEndsTheOpenTransaction) {
  for (const char* wrong : {"raiserror('no',16,1)", "select nosuch from D1003", "this is no statement",
                            "insert into D1003(dw_id) values(null)"}) {
    connection.begin();
    run(connection, "insert into D1003(dw_id) values('1')");
    EXPECT_TRUE(connection.inTransaction());
    EXPECT_NE(errorOf([&] { run(connection, wrong); }), 0) << wrong;
    EXPECT_FALSE(connection.inTransaction()) << wrong;
    EXPECT_EQ(session.rows("select dw_id from D1003"), Rows{}) << wrong;
  }
}

TEST_F(TransactionsTest, SeveralBatchesAreKeptOrUndoneTogether) {
  connection.begin();
  run(connection, "insert into D1003(dw_id) values('1')");
  run(connection, "insert into D1003(dw_id) values('2')");
  EXPECT_EQ(session.rows("select dw_id from D1003 order by 1"), (Rows{{"1"}, {"2"}}));
  connection.rollback();
  EXPECT_EQ(session.rows("select dw_id from D1003"), Rows{});
  connection.begin();
  run(connection, "insert into D1003(dw_id) values('1')");
  connection.commit();
  EXPECT_EQ(firstText(*another(), "select dw_id from D1003"), "1");
  EXPECT_EQ(errorOf([&] { connection.commit(); }), 3902);
  EXPECT_EQ(errorOf([&] { connection.rollback(); }), 3903);
}

TEST_F(TransactionsTest, WhatASinkThrowsUndoesTheBatch) {
  struct Refusing : Nothing {
    void row(const Row&) override { throw std::runtime_error("enough"); }
  } refusing;
  EXPECT_THROW(connection.execute("insert into D1003(dw_id) values('1');select * from D1003", refusing),
               std::runtime_error);
  EXPECT_EQ(session.rows("select dw_id from D1003"), Rows{});
}

TEST_F(TransactionsTest, AWriterWaitsAndThenSaysWhy) {
  const auto other = another();
  connection.begin();
  EXPECT_EQ(errorOf([&] { run(*other, "insert into D1003(dw_id) values('2')"); }), 1222);
  EXPECT_EQ(errorOf([&] { other->begin(); }), 1222);
  EXPECT_FALSE(other->inTransaction());
  connection.commit();
  run(*other, "insert into D1003(dw_id) values('2')");
  EXPECT_EQ(session.rows("select dw_id from D1003"), (Rows{{"2"}}));
}

TEST_F(TransactionsTest, AWriterGetsItsTurnWhenTheOtherIsDone) {
  connection.begin();
  run(connection, "insert into D1003(dw_id) values('1')");
  auto waiting = std::async(std::launch::async, [&] {
    run(*another(std::chrono::seconds(20)), "insert into D1003(dw_id) values('2')");
  });
  connection.commit();
  waiting.get();
  EXPECT_EQ(session.rows("select dw_id from D1003 order by 1"), (Rows{{"1"}, {"2"}}));
}

TEST_F(TransactionsTest, ReadersNeverWaitAndSeeWhatIsCommitted) {
  run(connection, "insert into D1003(dw_id) values('1')");
  const auto other = another(std::chrono::milliseconds(0));
  connection.begin();
  run(connection, "update D1003 set dw_id='2'");
  EXPECT_EQ(firstText(*other, "select dw_id from D1003"), "1");
  run(*other, "select * from D1003 if exists(select * from D1003) raiserror('seen',10,1)");
  connection.commit();
  EXPECT_EQ(firstText(*other, "select dw_id from D1003"), "2");
}

TEST_F(TransactionsTest, ACursorSeesTheDatabaseAsItWas) {
  run(connection, "insert into D1003(dw_id) values('1'),('2')");
  const auto cursor = connection.query("select dw_id from D1003 order by dw_id");
  run(connection, "delete from D1003;insert into D1003(dw_id) values('3')");
  run(*another(), "insert into D1003(dw_id) values('4')");
  ASSERT_TRUE(cursor->next());
  EXPECT_EQ(cursor->row().text(0), "1");
  ASSERT_TRUE(cursor->next());
  EXPECT_EQ(cursor->row().text(0), "2");
  EXPECT_FALSE(cursor->next());
  const auto second = connection.query("select count(*) as n from D1003");
  ASSERT_TRUE(second->next());
  EXPECT_EQ(second->row().integer(0), 2);
}

TEST_F(TransactionsTest, ACursorInATransactionSeesItsChanges) {
  connection.begin();
  run(connection, "insert into D1003(dw_id) values('1')");
  EXPECT_EQ(firstText(connection, "select dw_id from D1003"), "1");
  connection.rollback();
  EXPECT_EQ(firstText(connection, "select dw_id from D1003"), "nothing");
}

TEST_F(TransactionsTest, ACursorTakesOneSelectOnly) {
  EXPECT_EQ(errorOf([&] { connection.query("delete from D1003"); }), 40510);
  EXPECT_EQ(errorOf([&] { connection.query("select 1 as a select 2 as b"); }), 40510);
  EXPECT_EQ(errorOf([&] { connection.query("select nosuch from D1003"); }), 207);
}

TEST_F(TransactionsTest, ARunningStatementCanBeStopped) {
  std::string values = "insert into D1801DWTM(ADW,TM) values(1,'a')";
  for (int i = 0; i < 400; ++i) values += ",(1,'a')";
  run(connection, values);
  std::promise<void> running;
  struct Starting : Nothing {
    explicit Starting(std::promise<void>& p) : promise(p) {}
    void beginSet(std::span<const Column>) override { promise.set_value(); }
    std::promise<void>& promise;
  } starting(running);
  std::atomic<bool> over = false;
  std::thread stopper([&] {
    running.get_future().wait();
    while (!over) connection.interrupt();
  });
  EXPECT_EQ(errorOf([&] {
              connection.execute("select count(*) as n from D1801DWTM a,D1801DWTM b,D1801DWTM c,D1801DWTM d",
                                 starting);
            }),
            3617);
  over = true;
  stopper.join();
  EXPECT_EQ(session.rows("select count(*) as n from D1801DWTM"), (Rows{{"401"}}));
}

TEST_F(TransactionsTest, ABackupIsACompleteDatabase) {
  run(connection, "insert into D1003(dw_id) values('1')");
  const auto target = session.folder() / "copy.db";
  connection.backup(target);
  EXPECT_EQ(firstText(*Connection::open(target), "select dw_id from D1003"), "1");
  EXPECT_EQ(errorOf([&] { connection.backup(target); }), 3201);
  EXPECT_EQ(errorOf([&] { connection.backup(session.folder() / "no" / "folder.db"); }), 3201);
  EXPECT_FALSE(std::filesystem::exists(session.folder() / "copy.db.part"));
}

TEST_F(TransactionsTest, AMissingFileIsNotMade) {
  const auto missing = session.folder() / "missing.db";
  EXPECT_EQ(errorOf([&] { Connection::open(missing); }), 4060);
  EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(TransactionsTest, AnotherFileIsNoDatabase) {
  const auto other = session.folder() / "text.db";
  std::ofstream(other) << std::string(5000, 'x');
  EXPECT_EQ(errorOf([&] { Connection::open(other); }), 5171);
  const auto note = session.folder() / "note.txt";
  std::ofstream(note) << "milk";
  EXPECT_EQ(errorOf([&] { Connection::open(note); }), 5171);
  EXPECT_EQ(std::filesystem::file_size(note), 4U);
}

TEST_F(TransactionsTest, AnotherProgramsDatabaseIsLeftAsItIs) {
  int number = 0;
  for (const char* definition : {"create table customers(id int, name varchar(20))",
                                 "create table items(a, b real)", "create view v as select 1 as one"}) {
    const auto file = session.folder() / ("other" + std::to_string(++number) + ".db");
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, definition, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    const std::string before = contentOf(file);
    EXPECT_EQ(errorOf([&] { Connection::open(file, {.ownTable = "SYS_VERSION"}); }), 5171) << definition;
    EXPECT_EQ(contentOf(file), before) << definition;
    EXPECT_FALSE(std::filesystem::exists(file.string() + "-wal"));
  }
  const auto empty = session.folder() / "empty.db";
  const std::ofstream made(empty);
  EXPECT_NO_THROW(Connection::open(empty, {.ownTable = "SYS_VERSION"}));
}

TEST_F(TransactionsTest, DamageIsFoundAndToldOf) {
  for (int i = 0; i < 300; ++i)
    run(connection,
        "insert into D1801DWTM(ADW,TM) select " + std::to_string(i) + ",'" + std::string(30, 'x') + "'");
  connection.checkIntegrity();
  const auto copy = session.folder() / "copy.db";
  connection.backup(copy);
  const auto size = std::filesystem::file_size(copy);
  {
    std::fstream file(copy, std::ios::in | std::ios::out | std::ios::binary);
    for (std::uintmax_t page = 8192; page + 4096 <= size; page += 4096) {
      file.seekp(static_cast<std::streamoff>(page + 100));
      file << std::string(2000, '\x7f');
    }
  }
  EXPECT_EQ(errorOf([&] {
              const auto damaged = Connection::open(copy);
              damaged->checkIntegrity();
            }),
            5172);
}

TEST_F(TransactionsTest, AReadOnlyFileSaysSo) {
  const auto copy = session.folder() / "copy.db";
  connection.backup(copy);
  { Connection::open(copy); }
  std::filesystem::permissions(copy, std::filesystem::perms::owner_read);
  const int error = errorOf([&] {
    const auto readOnly = Connection::open(copy);
    run(*readOnly, "insert into D1003(dw_id) values('1')");
  });
  // Whoever may do everything may write, too.
  EXPECT_TRUE(error == 3906 || error == 4060 || (error == 0 && geteuid() == 0)) << error;
}

}  // namespace
}  // namespace goodsbook::engine::test
