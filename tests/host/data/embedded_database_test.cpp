#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <thread>

#include "host/data/database.h"
#include "host/data/errors.h"
#include "host/data/progressive_load.h"
#include "host/data/record_set.h"
#include "tests/host/data/sample_rows.h"
#include "tests/host/data/test_session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::TestSession;

TEST(EmbeddedDatabase, ANewFileHasTheTablesAndTheUserAdmin) {
  TestSession shop;
  EXPECT_TRUE(QFile::exists(shop.file()));
  EXPECT_EQ(shop.ask(u"select USER_ID,USER_NAME,T from SYS_USER"_s), u"ADMIN,系统管理员,1"_s);
  EXPECT_EQ(shop.database().displayName(), u"shop.db"_s);
}

TEST(EmbeddedDatabase, WithoutCreateAMissingFileIsAnError) {
  const QTemporaryDir folder;
  try {
    openEmbeddedDatabase(folder.filePath(u"none.db"_s), {.create = false, .busyTimeoutMs = 100, .clock = {}});
    ADD_FAILURE() << "was opened";
  } catch (const EDatabaseError& error) {
    EXPECT_EQ(error.number, 4060);
  }
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(EmbeddedDatabase, MemoryIsAPrivateFileThatGoesWithTheObject) {
  const auto files = [] { return QDir(QDir::tempPath()).entryList({u"host_test-*"_s}, QDir::Dirs); };
  const QStringList before = files();
  {
    const auto one = openEmbeddedDatabase(u":memory:"_s);
    const auto other = openEmbeddedDatabase(u":memory:"_s);
    runSql(*one, u"insert into D1003(dw_id,dw_name) values('KG','公斤')"_s, Database::Permission::Screens);
    EXPECT_EQ(runSql(*other, u"select * from D1003"_s, Database::Permission::Screens).sets[0].rows.size(),
              0U);
    const auto cursor = one->openCursor(u"select dw_id from D1003"_s);
    ASSERT_TRUE(cursor->next());
    EXPECT_EQ(cursor->row().text(0), "KG");
    EXPECT_NE(files(), before);
  }
  EXPECT_EQ(files(), before);
}

TEST(EmbeddedDatabase, GetdateIsTheClockThatWasGiven) {
  TestSession shop;
  EXPECT_EQ(shop.ask(u"select getdate()"_s), u"2026-11-20 10:11:12"_s);
}

TEST(EmbeddedDatabase, FailuresCarryNumberTextAndLine) {
  TestSession shop;
  try {
    shop.run(u"select 1\nselect * from nowhere"_s);
    ADD_FAILURE() << "was run";
  } catch (const EDatabaseError& error) {
    EXPECT_EQ(error.number, 208);
    EXPECT_EQ(error.line, 2);
    EXPECT_TRUE(error.text.contains(u"nowhere"_s));
    EXPECT_EQ(QString::fromUtf8(error.what()), error.text);
  }
  RecordSet rows;
  ProgressiveLoad load(rows);
  EXPECT_THROW(load.start(shop.database(), u"select nothing from D1003"_s), EDatabaseError);
}

TEST(EmbeddedDatabase, ScreensCannotTouchTables) {
  TestSession shop;
  EXPECT_THROW(shop.run(u"drop table D1003"_s), EDatabaseError);
  EXPECT_EQ(shop.ask(u"select count(*) from D1003"_s), u"0"_s);
}

TEST(EmbeddedDatabase, ATransactionHoldsSeveralBatches) {
  TestSession shop;
  {
    Transaction transaction(shop.database());
    shop.run(u"insert into D1003(dw_id) values('A')"_s);
    EXPECT_EQ(shop.ask(u"select count(*) from D1003"_s), u"1"_s);
  }
  EXPECT_EQ(shop.ask(u"select count(*) from D1003"_s), u"0"_s);
  {
    Transaction transaction(shop.database());
    shop.run(u"insert into D1003(dw_id) values('A')"_s);
    transaction.commit();
  }
  EXPECT_EQ(shop.ask(u"select count(*) from D1003"_s), u"1"_s);
}

TEST(EmbeddedDatabase, CursorsStandBesideBatches) {
  TestSession shop;
  shop.run(u"insert into D1003(dw_id) values('A'),('B')"_s);
  const auto first = shop.database().openCursor(u"select dw_id from D1003 order by dw_id"_s);
  const auto second = shop.database().openCursor(u"select dw_id from D1003 order by dw_id desc"_s);
  ASSERT_TRUE(first->next());
  shop.run(u"delete from D1003"_s);
  ASSERT_TRUE(second->next());
  ASSERT_TRUE(first->next());
  EXPECT_EQ(first->row().text(0), "B");
  EXPECT_FALSE(first->next());
}

TEST(EmbeddedDatabase, BytesGoIntoOneCell) {
  TestSession shop;
  shop.run(u"insert into D1801(WL_ID,CLASS_ID,WL_NAME) values('甲''1','','')"_s);
  const QByteArray picture("\x00\xFF'\x1A picture", 12);
  EXPECT_EQ(shop.database().storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, u"甲'1"_s, picture), 1);
  EXPECT_EQ(shop.ask(u"select pict from d1801"_s), u"0x"_s + QString::fromLatin1(picture.toHex().toUpper()));
  EXPECT_EQ(shop.database().storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, u"none"_s, picture), 0);
  EXPECT_EQ(shop.database().storeBlob(u"D1801"_s, u"pict"_s, u"WL_ID"_s, u"甲'1"_s, {}), 1);
  EXPECT_EQ(shop.ask(u"select pict from d1801"_s), u"-"_s);
}

TEST(EmbeddedDatabase, ALongRunOfRelaxedCommitsKeepsItsLogWithinBounds) {
  TestSession shop;
  shop.run(u"insert into d1801(wl_id,wl_name) values('1','x')"_s);
  const auto logSize = [&] { return QFileInfo(shop.file() + u"-wal"_s).size(); };
  constexpr qint64 megabyte = 1024 * 1024;
  int pauses = 0;
  const auto pause = [&] { ++pauses; };
  RelaxedCommits relaxed(shop.database());
  for (int i = 0; i < 20; ++i) {
    shop.database().storeBlob(u"d1801"_s, u"pict"_s, u"wl_id"_s, u"1"_s,
                              QByteArray(4 * megabyte, static_cast<char>('a' + i)));
    relaxed.keepUp(pause);
  }
  EXPECT_GT(logSize(), 40 * megabyte) << "too little was written to show anything";
  EXPECT_LT(logSize(), 76 * megabyte);
  EXPECT_GT(pauses, 0);
  const int before = pauses;
  relaxed.keepUp(pause);
  EXPECT_EQ(pauses, before) << "nothing was committed since";
  relaxed.finish(pause);
  EXPECT_EQ(openEmbeddedDatabase(shop.file(), {.create = false})->displayName(), u"shop.db"_s);
  EXPECT_EQ(shop.ask(u"select count(*) from d1801 where pict is not null"_s), u"1"_s);
}

TEST(EmbeddedDatabase, ListsLoadInSlices) {
  TestSession shop;
  QString batch;
  for (int i = 0; i < 1000; ++i) batch += u"insert into SYS_SETTING(NAME,VALUE) values('n%1','v');"_s.arg(i);
  shop.run(batch);
  RecordSet rows;
  ProgressiveLoad load(rows);
  load.start(shop.database(), u"select NAME from SYS_SETTING where VALUE='v' order by NAME"_s);
  EXPECT_EQ(rows.rowCount(), 200);
  shop.run(u"delete from SYS_SETTING"_s);
  rows.waitForAll();
  EXPECT_EQ(rows.rowCount(), 1000);
  EXPECT_EQ(rows.text(u"name"_s), u"n0"_s);
}

TEST(EmbeddedDatabase, ARunningStatementCanBeStopped) {
  TestSession shop;
  QString batch;
  for (int i = 0; i < 300; ++i) batch += u"insert into SYS_SETTING(NAME) values('n%1');"_s.arg(i);
  shop.run(batch);
  std::atomic<bool> done = false;
  std::thread stopper([&] {
    while (!done) {
      shop.database().interrupt();
      std::this_thread::yield();
    }
  });
  try {
    shop.run(
        u"select count(*) from SYS_SETTING a, SYS_SETTING b, SYS_SETTING c, SYS_SETTING d where a.NAME<>d.NAME"_s);
    ADD_FAILURE() << "was not stopped";
  } catch (const EDatabaseError& error) {
    EXPECT_EQ(error.number, 3617);
  }
  done = true;
  stopper.join();
  EXPECT_EQ(shop.ask(u"select 1"_s), u"1"_s);
}

}  // namespace
}  // namespace goodsbook
