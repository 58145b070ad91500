#include <gtest/gtest.h>

#include <array>

#include "tests/engine/support/session.h"

// Every error tells the number of a server, and names what it is about.
namespace goodsbook::engine::test {
namespace {

struct ErrorRow {
  const char* name;
  const char* batch;
  int number;
  std::vector<std::string> words;  // each must be in the text
};

void PrintTo(const ErrorRow& row, std::ostream* out) {
  *out << row.name;
}

class ErrorsTest : public testing::TestWithParam<ErrorRow> {
 protected:
  static void SetUpTestSuite() {
    session_ = std::make_unique<Session>();
    session_->setUp(
        std::array<std::string_view, 2>{"insert into D1003 values('01','瓶','P',''),('02','箱','X','')",
                                        "insert into D1801(WL_ID,DJ) values('A001',1)"});
  }
  static void TearDownTestSuite() { session_.reset(); }

  static inline std::unique_ptr<Session> session_;
};

TEST_P(ErrorsTest, TellsNumberAndNamesAndLeavesNothing) {
  const Outcome outcome = session_->run("delete from D1801;" + std::string(GetParam().batch));
  ASSERT_TRUE(outcome.error.has_value());
  EXPECT_EQ(outcome.error->number, GetParam().number) << outcome.error->text;
  EXPECT_GE(outcome.error->severity, 11);
  for (const std::string& word : GetParam().words) {
    EXPECT_NE(outcome.error->text.find(word), std::string::npos)
        << word << " is not in " << outcome.error->text;
  }
  EXPECT_EQ(session_->rows("select count(*) from D1801"), (Rows{{"1"}}));
}

const ErrorRow names[] = {
    {"an unknown table", "select * from NOSUCH", 208, {"NOSUCH"}},
    {"an unknown table of an insert", "insert into NOSUCH values(1)", 208, {"NOSUCH"}},
    {"an unknown table of an update", "update NOSUCH set a=1", 208, {"NOSUCH"}},
    {"a table of the store itself", "select * from sqlite_master", 208, {"sqlite_master"}},
    {"an unknown column", "select nosuch from D1003", 207, {"nosuch"}},
    {"a column that only the store knows", "select rowid from D1003", 207, {"rowid"}},
    {"an unknown column of an insert", "insert into D1003(dw_id,nosuch) values('1','2')", 207, {"nosuch"}},
    {"an unknown column of an update", "update D1003 set nosuch=1", 207, {"nosuch"}},
    {"an unknown column of an order", "select dw_id from D1003 order by nosuch", 207, {"nosuch"}},
    {"an unknown prefix", "select z.dw_id from D1003 d", 4104, {"z.dw_id"}},
    {"a prefix that an alias has replaced", "select D1003.dw_id from D1003 d", 4104, {"D1003.dw_id"}},
    {"a column of two tables", "select dw_id from D1003 a, D1003 b", 209, {"dw_id"}},
    {"a name twice in FROM", "select 1 from D1003 a, D1001 a", 1013, {"a"}},
    {"another database", "select * from other.dbo.D1003", 40510, {"other"}},
    {"an unknown function", "select nosuch(1)", 195, {"nosuch"}},
    {"a function with too few values", "select left('a')", 174, {"left"}},
    {"an unknown type", "select cast('a' as nosuch)", 2715, {"nosuch"}},
    {"an unknown part of a date", "select dateadd(nosuch,1,getdate())", 155, {"nosuch"}},
    {"an unknown procedure", "exec NO_SUCH 1", 2812, {"NO_SUCH"}},
    {"a column of a derived table without a name", "select * from (select 1) t", 8155, {"t"}},
    {"a column of a derived table twice", "select * from (select 1 as a,2 as a) t", 8156, {"a", "t"}},
    {"a column twice in an insert", "insert into D1003(dw_id,dw_id) values('1','2')", 264, {"dw_id"}},
    {"a column twice in an update", "update D1003 set pym='a',pym='b'", 264, {"pym"}},
};

const ErrorRow shapes[] = {
    {"fewer values than columns", "insert into D1003(dw_id,dw_name) values('1')", 109, {}},
    {"more values than columns", "insert into D1003(dw_id) values('1','2')", 110, {}},
    {"too few values by position", "insert into D1801DWTM values(1)", 213, {}},
    {"rows of different lengths", "insert into D1003(dw_id,dw_name) values('1','2'),('3')", 10709, {}},
    {"a union of different widths", "select 1 union select 1,2", 205, {}},
    {"two columns of a scalar subquery", "select (select 1,2)", 116, {}},
    {"two rows of a scalar subquery", "select (select dw_id from D1003)", 512, {}},
    {"a column that is not grouped by", "select dw_id,count(*) from D1003", 8120, {"dw_id"}},
    {"an aggregate in a condition", "select dw_id from D1003 where max(dw_id)='1'", 147, {}},
    {"an aggregate of an aggregate", "select max(count(*)) from D1003", 130, {}},
    {"an aggregate of the select around",
     "select dw_id from D1003 where dw_id=(select max(dw_id))",
     40510,
     {}},
    {"an order by the select around",
     "select dw_id from D1003 where dw_id=(select top 1 TM from D1801DWTM order by dw_id)",
     40510,
     {"ORDER BY"}},
    {"a sum of texts", "select sum(dw_id) from D1003", 8117, {"sum"}},
    {"an identity by hand", "insert into D1801DW(adw) values(1)", 544, {"D1801DW", "adw"}},
    {"an identity changed", "update D1801DW set adw=1", 8102, {"adw"}},
};

const ErrorRow values[] = {
    {"a text that is no int", "select cast('1a' as int)", 245, {"1a", "int"}},
    {"a text that is no float names its column",
     "insert into D1801(WL_ID,DJ) values('x','abc')",
     8114,
     {"abc", "DJ"}},
    {"a text that is no date", "select * from D1801 where BDATE>='abc'", 241, {"abc"}},
    {"a day that does not exist", "insert into D1801(WL_ID,BDATE) values('x','2026-02-30')", 242, {}},
    {"a text that is too long names table and column",
     "insert into D1003(dw_id,dw_name) values('123','x')",
     2628,
     {"D1003", "dw_id", "12"}},
    {"a null where none may be names table and column",
     "insert into D1003(dw_name) values('x')",
     515,
     {"D1003", "dw_id"}},
    {"a null by an update", "update D1003 set dw_id=null", 515, {"D1003", "dw_id"}},
    {"a key twice names table and value", "insert into D1003(dw_id) values('01')", 2627, {"D1003", "01"}},
    {"a key twice by an update", "update D1003 set dw_id='01'", 2627, {"D1003", "01"}},
    {"a division by zero", "select 1/0", 8134, {}},
    {"a sum beyond int", "select 2147483647+1", 8115, {"int"}},
    {"a number beyond all numbers", "select 1e400", 1007, {"1e400"}},
    {"an argument that is left out", "exec SYS_DW @t=1", 201, {"SYS_DW", "@adw"}},
    {"an argument that is not known", "exec SYS_DW @adw=1,@nosuch=2", 8145, {"SYS_DW", "@nosuch"}},
    {"an argument twice", "exec SYS_DW @adw=1,@ADW=2", 8143, {"@ADW"}},
    {"too many arguments", "exec SYS_DW 1,2,3,4,5,6,7,8,9,10,11", 8144, {"SYS_DW"}},
    {"an argument that is none", "exec SYS_DW @adw='x'", 245, {"x"}},
    {"bytes where a severity is needed", "raiserror('x',0x10,1)", 40510, {"varbinary"}},
    {"an argument of bytes", "exec SYS_DW @adw=0x01", 40510, {"varbinary"}},
    {"an error that is raised", "raiserror('错误 %s 行 %d',16,1,'A''1',7)", 50000, {"错误 A'1 行 7"}},
};

INSTANTIATE_TEST_SUITE_P(Names, ErrorsTest, testing::ValuesIn(names));
INSTANTIATE_TEST_SUITE_P(Shapes, ErrorsTest, testing::ValuesIn(shapes));
INSTANTIATE_TEST_SUITE_P(Values, ErrorsTest, testing::ValuesIn(values));

TEST(ErrorPlaceTest, TellsTheLineOfTheStatement) {
  Session session;
  EXPECT_EQ(session.run("select 1\nselect 2\n\nselect * from\nNOSUCH").error.value().line, 4);
  EXPECT_EQ(session.run("select 1;\r\nupdate D1003\r\nset dw_name=from").error.value().line, 3);
  EXPECT_EQ(session.run("begin\n  select 1\n  select 1/0\nend").error.value().line, 3);
}

TEST(ErrorPlaceTest, SeveritiesHaveBounds) {
  Session session;
  EXPECT_EQ(session.run("raiserror('x',99,1)").error.value().severity, 25);
  EXPECT_EQ(session.run("raiserror('x',-1,1)").notices.at(0).severity, 0);
}

TEST(ErrorPlaceTest, NoticesEndNothing) {
  Session session;
  const Outcome outcome = session.run("raiserror('a %d',10,1,5) print 'b' select 1");
  EXPECT_FALSE(outcome.error.has_value());
  ASSERT_EQ(outcome.notices.size(), 2U);
  EXPECT_EQ(outcome.notices[0].text, "a 5");
  EXPECT_EQ(outcome.notices[1].text, "b");
  EXPECT_EQ(outcome.sets.size(), 1U);
}

struct RefusedRow {
  const char* name;
  const char* batch;
};

void PrintTo(const RefusedRow& row, std::ostream* out) {
  *out << row.name;
}

class RightsTest : public testing::TestWithParam<RefusedRow> {};

TEST_P(RightsTest, ScreensDefineNothing) {
  Session session;
  EXPECT_EQ(session.run(GetParam().batch, Permission::Screens).error.value().number, 262);
  EXPECT_EQ(session.rows("select count(*) from D1003"), (Rows{{"0"}}));
}

const RefusedRow definitions[] = {
    {"a new table", "create table t (a int)"},
    {"a table that goes", "drop table D1003"},
    {"a table that goes behind a text", "update D1003 set dw_name='x';drop table D1003--'"},
    {"a new column", "alter table D1003 add x int"},
    {"a new index", "create index i on D1003 (pym)"},
    {"an index that goes", "drop index i on D1003"},
    {"a new procedure", "create procedure p as delete D1003"},
    {"a procedure that goes", "drop procedure SYS_DW"},
    {"a definition inside a condition", "if 1=1 begin drop table D1003 end"},
};

INSTANTIATE_TEST_SUITE_P(Definitions, RightsTest, testing::ValuesIn(definitions));

}  // namespace
}  // namespace goodsbook::engine::test
