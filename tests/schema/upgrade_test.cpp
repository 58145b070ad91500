#include "schema/upgrade.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "schema/schema.h"
#include "tests/schema/database.h"

namespace goodsbook::schema {
namespace {

using test::Database;
using test::Table;

constexpr std::string_view tables[] = {
    "D1001",     "D1002",     "D1003",       "D1004",  "D1007",    "D1008",       "D1010",        "D1011",
    "D1012",     "D1101",     "D1102",       "D1103",  "D6801",    "D1801",       "D1801B",       "D1801DW",
    "D1801DWTM", "D1801DWSJ", "D1802",       "D8202",  "D8202A",   "D704A",       "D712A",        "D713A",
    "D8101A",    "D8102A",    "D8103A",      "D8201A", "D8203A",   "D8300A",      "D8301A",       "D8302A",
    "D8303A",    "D8401A",    "D8402A",      "D8403A", "SYS_USER", "SYS_USER_CK", "SYS_PASSWORD", "SYS_RIGHT",
    "SYS_NOID",  "SYS_AUDIT", "SYS_SETTING", "sys_co", "D1800",    "FKW",         "SYS_VERSION"};

std::string versionOneScript() {
  std::ifstream file(GOODSBOOK_SOURCE_DIR "/tests/schema/version_1.sql");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Prepare, AnEmptyDatabaseGetsTheTablesAndTheUserAdminAndNothingElse) {
  Database database;
  prepare(database.connection());
  EXPECT_EQ(database.rows("select USER_ID,USER_NAME,T from SYS_USER"), (Table{{"ADMIN", "系统管理员", "1"}}));
  EXPECT_EQ(database.rows("select VERSION from SYS_VERSION"), (Table{{std::to_string(version())}}));
  for (const std::string_view table : tables) {
    if (table == "SYS_USER" || table == "SYS_VERSION") continue;
    EXPECT_EQ(database.rows("select * from " + std::string(table)), Table{}) << table;
  }
}

TEST(Prepare, ASecondTimeChangesNothing) {
  Database database;
  prepare(database.connection());
  database.execute("insert into D1003 (dw_id,dw_name) values ('01','瓶')");
  prepare(database.connection());
  EXPECT_EQ(database.rows("select dw_id,dw_name from D1003"), (Table{{"01", "瓶"}}));
}

TEST(Prepare, AnOlderDatabaseIsBroughtUpToDateWithItsRows) {
  Database old;
  old.executeScript(versionOneScript());
  old.execute("insert into SYS_RIGHT (USER_ID,MODULE,R_EDIT) values ('A','101',1),('B','101',0)");
  old.execute("insert into SYS_AUDIT (AUDIT_TIME,MODULE,KEY_VALUE) values (getdate(),'101','0001')");
  old.execute("insert into D1102 (KH_GYS_ID) values ('A1')");
  prepare(old.connection());
  EXPECT_EQ(old.rows("select GRADE,ADDR_ID from D1102"), (Table{{"null", "null"}}))
      << "rows stay as they are";
  EXPECT_EQ(old.rows("select VERSION from SYS_VERSION"), (Table{{std::to_string(version())}}));
  EXPECT_EQ(old.rows("select USER_ID,R_COST from SYS_RIGHT order by USER_ID"),
            (Table{{"A", "1"}, {"B", "0"}}));
  EXPECT_EQ(old.number("select count(*) from SYS_AUDIT where MODULE='101' and KEY_VALUE='0001'"), 1);

  Database made;
  prepare(made.connection());
  for (const std::string_view table : tables) EXPECT_EQ(old.columns(table), made.columns(table)) << table;
  for (Database* database : {&old, &made}) {
    for (const std::string partners : {"D1102", "D1103"}) {
      database->execute("insert into " + partners + " (KH_GYS_ID) values ('N1')");
      EXPECT_EQ(database->rows("select GRADE,ADDR_ID from " + partners + " where KH_GYS_ID='N1'"),
                (Table{{"1", "01"}}));
    }
  }
}

TEST(Prepare, ANewerDatabaseIsRefusedAndLeftAlone) {
  Database database;
  prepare(database.connection());
  database.execute("update SYS_VERSION set VERSION = 99");
  try {
    prepare(database.connection());
    FAIL() << "accepted";
  } catch (const engine::SqlError& error) {
    EXPECT_EQ(error.diagnostic().number, 948);
    EXPECT_EQ(error.diagnostic().text, "此数据库由更新版本的程序建立(数据库版本 99，本程序版本 " +
                                           std::to_string(version()) + ")，请先升级程序!");
  }
  EXPECT_EQ(database.number("select VERSION from SYS_VERSION"), 99);
}

TEST(Prepare, AStepThatFailsLeavesTheOldVersion) {
  Database database;
  database.executeScript(versionOneScript());
  database.execute("create index IX_SYS_AUDIT_KEY on SYS_AUDIT (KEY_VALUE)");  // the name that the step wants
  const auto before = database.columns("SYS_RIGHT");
  EXPECT_THROW(prepare(database.connection()), engine::SqlError);
  EXPECT_FALSE(database.connection().inTransaction());
  EXPECT_EQ(database.number("select VERSION from SYS_VERSION"), 1);
  EXPECT_EQ(database.columns("SYS_RIGHT"), before);
}

TEST(Prepare, ProgramsThatStartAtTheSameTimeMakeOneDatabase) {
  const Database database;
  std::vector<std::jthread> programs;
  for (int i = 0; i < 4; ++i)
    programs.emplace_back([&database] {
      const auto connection = database.connect();
      EXPECT_NO_THROW(prepare(*connection));
    });
  programs.clear();
  const auto connection = database.connect();
  const auto cursor = connection->query("select count(*) from SYS_USER");
  ASSERT_TRUE(cursor->next());
  EXPECT_EQ(cursor->row().integer(0), 1);
}

// A server runs what it is sent, batch by batch, also behind an error.
TEST(UpgradeScript, EachStepAndItsMarkAreOneTransactionThatEveryBatchLooksAfter) {
  const std::string script = upgradeScript(1);
  const auto all = batches(script);
  const auto has = [](const ScriptBatch& batch, std::string_view words) {
    return batch.text.find(words) != std::string_view::npos;
  };
  int step = 1;
  bool open = false;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (has(all[i], "set xact_abort on") || has(all[i], "set noexec")) continue;
    if (has(all[i], "commit transaction")) {
      EXPECT_TRUE(open);
      EXPECT_TRUE(has(all[i - 2], "update SYS_VERSION set VERSION = " + std::to_string(++step))) << i;
      open = false;
    } else if (has(all[i], "begin transaction")) {
      EXPECT_FALSE(open);
      EXPECT_TRUE(has(all[i + 1], "where VERSION = " + std::to_string(step))) << i;
      open = true;
    } else {
      EXPECT_TRUE(open) << all[i].text;
      EXPECT_TRUE(has(all[i + 1], "if @@error <> 0 or @@trancount = 0")) << all[i].text;
      EXPECT_TRUE(has(all[i + 1], "set noexec on")) << all[i].text;
    }
  }
  EXPECT_FALSE(open);
  EXPECT_EQ(step, version());
  EXPECT_EQ(upgradeScript(version()), "");
}

TEST(Procedure, WritesOneUnitRowAndRemovesIt) {
  Database database;
  prepare(database.connection());
  database.execute("insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE) values (1,'A','01','690',1)");
  const std::string adw = database.rows("select adw from D1801DW")[0][0];
  database.execute("exec SYS_DW @t='0',@adw='" + adw +
                   "',@tm='691',@dw_id='02',@abase=12,@cgj=1.5,@pfj=2,@vipsj=2.5,@sj=3;");
  EXPECT_EQ(database.rows("select T,WL_ID,DW_ID,TM,ABASE,CGJ,PFJ,VIPSJ,SJ from D1801DW"),
            (Table{{"0", "A", "02", "691", "12", "1.5", "2", "2.5", "3"}}));
  database.execute("exec SYS_DW @status=0,@t=0,@adw='" + adw +
                   "',@tm='691',@dw_id='02',@abase=1,@cgj=1,@vipsj=1,@pfj=1,@sj=1;");
  EXPECT_EQ(database.number("select count(*) from D1801DW"), 0);
}

}  // namespace
}  // namespace goodsbook::schema
