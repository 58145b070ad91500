#include <gtest/gtest.h>
#include <sqlite3.h>

#include "engine/debug.h"
#include "tests/engine/support/session.h"

// Tables, indexes and procedures.
namespace goodsbook::engine::test {
namespace {

class DefinitionsTest : public testing::Test {
 protected:
  void define(std::string_view batch) {
    const Outcome outcome = session.run(batch, Permission::Owner);
    ASSERT_FALSE(outcome.error) << outcome.error->number << ": " << outcome.error->text << "\n" << batch;
  }
  int errorOf(std::string_view batch, Permission permission = Permission::Owner) {
    const Outcome outcome = session.run(batch, permission);
    return outcome.error ? outcome.error->number : 0;
  }

  Session session;
};

TEST_F(DefinitionsTest, ColumnsKeepTheirTypesAndWidths) {
  define(
      "create table X(a bit, b tinyint, c smallint, d int, e bigint, f money, g decimal(9,2), h float, i datetime,"
      " j varchar(5), k nvarchar(max), l varbinary(4))");
  const Outcome outcome = session.run("select * from X");
  ASSERT_EQ(outcome.sets.size(), 1U);
  const Type types[] = {Type::Bit,   Type::Integer, Type::Integer,  Type::Integer, Type::Integer, Type::Float,
                        Type::Float, Type::Float,   Type::DateTime, Type::Text,    Type::Text,    Type::Blob};
  for (std::size_t i = 0; i < std::size(types); ++i)
    EXPECT_EQ(outcome.sets[0].columns[i].type, types[i]) << i;
  EXPECT_EQ(outcome.sets[0].columns[9].width, 5);
  EXPECT_EQ(outcome.sets[0].columns[10].width, 0);
  EXPECT_EQ(errorOf("insert into X(b) values(256)"), 8115);
  EXPECT_EQ(errorOf("insert into X(g) values(12345678)"), 8115);
  EXPECT_EQ(errorOf("insert into X(l) values(0x0102030405)"), 2628);
  define("insert into X(f,g,l) values('1.23456',1.005,0x01)");
  EXPECT_EQ(session.rows("select f,g,l from X"), (Rows{{"1.2346", "1.01", "0x01"}}));
}

TEST_F(DefinitionsTest, DefaultsFillWhatIsLeftOut) {
  define(
      "create table X(id int, a varchar(5) default 'n', b float not null default 0, c datetime default getdate(), d bit default '1', e int)");
  define(
      "insert into X(id) values(1);insert into X values(2,default,default,default,default,default);"
      "insert into X(id) select 3;insert into X default values");
  EXPECT_EQ(session.rows("select id,a,b,c,d,e from X order by id"),
            (Rows{{std::nullopt, "n", "0", "2026-11-20 10:11:12", "1", std::nullopt},
                  {"1", "n", "0", "2026-11-20 10:11:12", "1", std::nullopt},
                  {"2", "n", "0", "2026-11-20 10:11:12", "1", std::nullopt},
                  {"3", "n", "0", "2026-11-20 10:11:12", "1", std::nullopt}}));
  define("update X set a=default,e=default where id=1");
  EXPECT_EQ(errorOf("insert into X(b) values(null)"), 515);
}

TEST_F(DefinitionsTest, IdentitiesCanBeGivenByTheOwner) {
  define(
      "create table X(id int identity(1,1) not null primary key, a int);create table Y(id int identity(1,1), b int)");
  EXPECT_EQ(errorOf("insert into X(id,a) values(7,1)"), 544);
  EXPECT_EQ(errorOf("set identity_insert X on", Permission::Screens), 262);
  EXPECT_EQ(errorOf("set identity_insert Z on"), 208);
  define("set identity_insert X on");
  EXPECT_EQ(errorOf("set identity_insert Y on"), 8107);
  define("insert into X(id,a) values(7,1),(5,2)");
  EXPECT_EQ(errorOf("insert into X(a) values(3)"), 545);
  EXPECT_EQ(errorOf("insert into Y(id,b) values(7,1)"), 544);
  define("set identity_insert X off");
  EXPECT_EQ(errorOf("insert into X(id,a) values(9,1)"), 544);
  define("insert into X(a) values(3)");
  EXPECT_EQ(session.rows("select id,a from X order by id"), (Rows{{"5", "2"}, {"7", "1"}, {"8", "3"}}));
}

TEST_F(DefinitionsTest, KeysOfSeveralColumnsHold) {
  define("create table X(a varchar(5), b int, c int, primary key(a,b), unique(c))");
  define("insert into X values('k',1,1),('k',2,2)");
  EXPECT_EQ(errorOf("insert into X values('K ',1,3)"), 2627);
  EXPECT_EQ(errorOf("insert into X values('k',3,2)"), 2627);
  EXPECT_EQ(errorOf("insert into X values(null,3,4)"), 515);
  define("insert into X values('k',3,null)");
  EXPECT_EQ(errorOf("insert into X values('k',4,null)"), 2627);
  define("update X set b=b+1");
  EXPECT_EQ(session.rows("select b from X order by b"), (Rows{{"2"}, {"3"}, {"4"}}));
}

TEST_F(DefinitionsTest, UniqueIndexesAreToldApartFromKeys) {
  define("create table X(a int not null, b varchar(5))");
  define("create unique index IX_b on X(b)");
  define("insert into X values(1,'v')");
  const Outcome outcome = session.run("insert into X values(2,'V')");
  ASSERT_TRUE(outcome.error);
  EXPECT_EQ(outcome.error->number, 2601);
  EXPECT_NE(outcome.error->text.find("IX_b"), std::string::npos) << outcome.error->text;
  EXPECT_NE(outcome.error->text.find("(V)"), std::string::npos) << outcome.error->text;
  define("drop index IX_b on X");
  define("insert into X values(2,'V')");
  EXPECT_EQ(errorOf("create unique index IX_b on X(b)"), 1505);
}

TEST_F(DefinitionsTest, IdentityStartsAtItsSeedAndNeverGivesANumberTwice) {
  define("create table X(n int identity(100,1), a varchar(5))");
  define("insert into X(a) values('a');insert into X values('b')");
  EXPECT_EQ(session.rows("select n,a from X order by n"), (Rows{{"100", "a"}, {"101", "b"}}));
  define("delete from X;insert into X values('c')");
  EXPECT_EQ(session.rows("select n from X"), (Rows{{"102"}}));
  EXPECT_EQ(errorOf("insert into X(n,a) values(5,'d')"), 544);
  EXPECT_EQ(errorOf("create table Y(n int identity(1,2))"), 40510);
}

TEST_F(DefinitionsTest, AddedColumnsAreNullInOldRowsUnlessTheyMustNotBe) {
  define("create table X(a int)");
  define("insert into X values(1)");
  define("alter table X add b varchar(5) default 'n', c int not null default 7");
  define("insert into X(a) values(2)");
  EXPECT_EQ(session.rows("select a,b,c from X order by a"),
            (Rows{{"1", std::nullopt, "7"}, {"2", "n", "7"}}));
  EXPECT_EQ(errorOf("alter table X add d int not null"), 4901);
  EXPECT_EQ(errorOf("alter table X add A int"), 2705);
}

TEST_F(DefinitionsTest, DefaultsCanBeAddedToColumnsThatAreThere) {
  define(
      "create table X(id int not null primary key, a varchar(5), b nvarchar(5) not null, c float, d datetime)");
  define("create index IX_X_a on X(a);insert into X values(1,null,'o',null,null)");
  const auto other = Connection::open(session.folder() / "test.db");
  const auto count = [&other](std::string_view select) {
    const auto cursor = other->query(select);
    return cursor->next() ? cursor->row().integer(0) : -1;
  };
  EXPECT_EQ(count("select count(*) from X"), 1);
  define(
      "alter table X add default 'n' for A, constraint DF_X_b default N'瓶' for b, default -1.5 for c, default getdate() "
      "for d");
  define("insert into X(id) values(2);insert into X(id,a,c) values(3,null,default)");
  EXPECT_EQ(session.rows("select a,b,c,d from X order by id"),
            (Rows{{std::nullopt, "o", std::nullopt, std::nullopt},
                  {"n", "瓶", "-1.5", "2026-11-20 10:11:12"},
                  {std::nullopt, "瓶", "-1.5", "2026-11-20 10:11:12"}}));
  EXPECT_EQ(errorOf("insert into X(id) values(3)"), 2627) << "keys stay";
  EXPECT_EQ(errorOf("drop index IX_X_a on X"), 0) << "and indexes";
  EXPECT_EQ(count("select count(*) from X where b='瓶'"), 2) << "other programs go on";
  EXPECT_EQ(errorOf("alter table X add default 'm' for a"), 1781);
  EXPECT_EQ(errorOf("alter table X add default 1 for nosuch"), 1752);
  EXPECT_EQ(errorOf("alter table X add default 'longer than five' for b", Permission::Screens), 262);
}

TEST_F(DefinitionsTest, AnAddedDefaultIsUndoneWithItsBatch) {
  define("create table X(id int, a varchar(5))");
  EXPECT_EQ(errorOf("alter table X add default 'n' for a insert into X(id) values(1) raiserror('no',16,1)"),
            50000);
  define("insert into X(id) values(2)");
  EXPECT_EQ(session.rows("select id,a from X"), (Rows{{"2", std::nullopt}}));
  EXPECT_EQ(errorOf("create table Y(n int identity(1,1), a int);alter table Y add default 1 for n"), 1754);
  EXPECT_EQ(errorOf("alter table X add default 'n' for a, default 'm' for a"), 1781);
}

TEST_F(DefinitionsTest, WrongDefinitionsAreRefused) {
  EXPECT_EQ(errorOf("create table D1003(a int)"), 2714);
  EXPECT_EQ(errorOf("create table X(a int, A int)"), 2705);
  EXPECT_EQ(errorOf("create table X(a int primary key, b int primary key)"), 8110);
  EXPECT_EQ(errorOf("create table X(a int, primary key(b))"), 1911);
  EXPECT_EQ(errorOf("create table X(a nosuch)"), 2715);
  EXPECT_EQ(errorOf("create table X(a xml)"), 40510);
  EXPECT_EQ(errorOf("create table X(a varchar(9000))"), 131);
  EXPECT_EQ(errorOf("create table goodsbook_x(a int)"), 40510);
  EXPECT_EQ(errorOf("create index I on D1003(nosuch)"), 1911);
  EXPECT_EQ(errorOf("create index I on NOSUCH(a)"), 4902);
  EXPECT_EQ(errorOf("drop table NOSUCH"), 3701);
  EXPECT_EQ(errorOf("drop table if exists NOSUCH"), 0);
  EXPECT_EQ(errorOf("create procedure SYS_DW as select 1 as a"), 2714);
}

TEST_F(DefinitionsTest, AFailingDefinitionLeavesNothing) {
  EXPECT_EQ(errorOf("create table X(a int) insert into X values(1) create table X(a int)"), 2714);
  EXPECT_EQ(errorOf("select * from X"), 208);
}

TEST_F(DefinitionsTest, ProceduresCallProceduresAndKnowTheirParametersOnly) {
  define("create procedure PA @x varchar(10), @n int = 5 as insert into D1801DWTM(ADW,TM) values(@n,@x+'!')");
  define("create procedure PB @x varchar(10) as begin exec PA @x; exec PA @x=@x,@n=6 end");
  define("exec PB 'v'");
  EXPECT_EQ(session.rows("select ADW,TM from D1801DWTM order by ADW"), (Rows{{"5", "v!"}, {"6", "v!"}}));
  define("create procedure PC as exec PC");
  EXPECT_EQ(errorOf("exec PC"), 217);
  define("drop procedure PA");
  EXPECT_EQ(errorOf("exec PB 'v'"), 2812);
}

TEST_F(DefinitionsTest, AProcedureMayDefineAndEvenDropItself) {
  define(
      "create procedure PD @x int as begin create table X(a int) insert into X values(@x) drop procedure PD "
      "insert into X values(@x+1) end");
  define("exec PD 1");
  EXPECT_EQ(session.rows("select a from X order by a"), (Rows{{"1"}, {"2"}}));
  EXPECT_EQ(errorOf("exec PD 1"), 2812);
}

TEST_F(DefinitionsTest, ATableOfAnUndoneBatchIsNotTakenForALaterOne) {
  const auto other = Connection::open(session.folder() / "test.db");
  session.connection().begin();
  define("create table X(a int)");
  session.connection().rollback();
  struct Nothing : ResultSink {
    void beginSet(std::span<const Column>) override {}
    void row(const Row&) override {}
  } nothing;
  other->execute("create table Y(b int)", nothing, Permission::Owner);
  EXPECT_EQ(errorOf("select * from X"), 208);
  EXPECT_EQ(errorOf("select * from Y"), 0);
}

TEST_F(DefinitionsTest, AnotherConnectionSeesThem) {
  const auto other = Connection::open(session.folder() / "test.db");
  define("create table X(a int)");
  define("insert into X values(1)");
  auto cursor = other->query("select a from X");
  ASSERT_TRUE(cursor->next());
  EXPECT_EQ(cursor->row().integer(0), 1);
  cursor.reset();
  define("drop table X");
  define("create table X(a varchar(5))");
  define("insert into X values('v')");
  cursor = other->query("select a from X");
  ASSERT_TRUE(cursor->next());
  EXPECT_EQ(cursor->row().text(0), "v");
  cursor.reset();
  define("create procedure PA as delete from X");
  struct Nothing : ResultSink {
    void beginSet(std::span<const Column>) override {}
    void row(const Row&) override {}
  } nothing;
  other->execute("exec PA", nothing);
  EXPECT_EQ(session.rows("select * from X"), Rows{});
}

std::string planOf(Session& session, const std::string& sql) {
  sqlite3* db = nullptr;
  sqlite3_open((session.folder() / "test.db").c_str(), &db);
  registerEngineFunctions(db);
  sqlite3_stmt* statement = nullptr;
  EXPECT_EQ(sqlite3_prepare_v2(db, ("EXPLAIN QUERY PLAN " + sql).c_str(), -1, &statement, nullptr), SQLITE_OK)
      << sqlite3_errmsg(db);
  std::string plan;
  while (sqlite3_step(statement) == SQLITE_ROW)
    plan += std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3))) + "\n";
  sqlite3_finalize(statement);
  sqlite3_close(db);
  return plan;
}

TEST(Plans, TheProductListReadsOneTableAndLooksTheOthersUp) {
  Session session(Tables::Program);
  const std::string sql = emittedSql(
      session.connection(),
      "SELECT d1801.wl_id,d1004.class_name,d1003.dw_name,d1801dw.tm,sys_user.user_name FROM d1801 INNER JOIN d1004 ON "
      "d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id INNER JOIN d1801dw ON "
      "d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id  AND (D1801DW.T = 1)");
  const std::string plan = planOf(session, sql);
  const auto count = [&](std::string_view word) {
    int found = 0;
    for (std::size_t at = plan.find(word); at != std::string::npos; at = plan.find(word, at + 1)) ++found;
    return found;
  };
  EXPECT_EQ(count("SCAN"), 1) << plan;
  EXPECT_EQ(count("SEARCH"), 4) << plan;
  EXPECT_EQ(count("AUTOMATIC"), 0) << plan;
  EXPECT_EQ(count("TEMP B-TREE"), 0) << "the rows' order costs nothing:\n" << plan;
}

TEST(Plans, TheFilterStartsFromTheTablesThatItSearches) {
  Session session(Tables::Program);
  const std::string sql = emittedSql(
      session.connection(),
      "select d1801.wl_id from d1801 inner join d1801dw on d1801.wl_id=d1801dw.wl_id inner join d1004 on "
      "d1801.class_id=d1004.class_id where ((D1801DW.TM LIKE '%k%') or (D1801.WL_ID LIKE '%k%') or (D1801.PYM LIKE '%k%'))");
  const std::string plan = planOf(session, sql);
  EXPECT_NE(plan.find("USING COVERING INDEX D1801DW.IX_D1801DW_TM"), std::string::npos) << plan;
  EXPECT_NE(plan.find("INTEGER PRIMARY KEY (rowid=?)"), std::string::npos) << plan;
}

TEST(Plans, AFilterKeepsTheOrderOfTheList) {
  Session session(Tables::Program);
  for (const char* row : {"'01','甲'", "'02','乙'"})
    session.run(std::string("insert into D1004(class_id,class_name) values(") + row + ")", Permission::Owner);
  for (const char* row : {"'3','02'", "'1','01'", "'4','02'", "'2','02'"})
    session.run(std::string("insert into D1801(WL_ID,CLASS_ID) values(") + row + ")", Permission::Owner);
  const std::string list = "select WL_ID from D1801 inner join D1004 on D1801.CLASS_ID=D1004.CLASS_ID where ";
  EXPECT_EQ(session.rows(list + "D1801.CLASS_ID='02'"), (Rows{{"3"}, {"4"}, {"2"}}));
  const std::string searched =
      "((D1004.CLASS_NAME LIKE '%甲%') or (D1801.WL_ID LIKE '%2%') or (D1801.WL_ID LIKE '%3%'))";
  EXPECT_EQ(session.rows(list + searched), (Rows{{"3"}, {"1"}, {"2"}}));
  const std::string plan = planOf(session, emittedSql(session.connection(), list + searched));
  EXPECT_EQ(plan.find("TEMP B-TREE FOR ORDER BY"), std::string::npos) << plan;
}

TEST(Plans, EveryFilterKeepsTheOrderOfTheProductsWhicheverTableItSearches) {
  Session session(Tables::Program);
  const auto owner = [&](const std::string& batch) { session.run(batch, Permission::Owner); };
  owner("insert into D1003(dw_id,dw_name) values('1','瓶')");
  owner("insert into SYS_USER(USER_ID,USER_NAME) values('A','甲')");
  for (const char* row : {"'01','甲'", "'02','乙'"})
    owner(std::string("insert into D1004(class_id,class_name) values(") + row + ")");
  for (const char* row : {"'3','02'", "'1','01'", "'4','02'", "'2','02'"})
    owner(std::string("insert into D1801(WL_ID,CLASS_ID,USER_ID,WL_YS,WL_GG) values(") + row +
          ",'A',1,'500ml')");
  for (const char* product : {"4", "2", "1", "3"})  // as after main units have been replaced
    owner(std::string("insert into D1801DW(T,WL_ID,DW_ID,TM) values(1,'") + product + "','1','69')");
  const std::string list =
      "select d1801.wl_id from d1801 inner join d1004 on d1801.class_id=d1004.class_id inner join sys_user on "
      "d1801.user_id=sys_user.user_id inner join d1801dw on d1801.wl_id=d1801dw.wl_id inner join d1003 on "
      "d1801dw.dw_id=d1003.dw_id and (D1801DW.T=1)";
  const Rows all{{"3"}, {"1"}, {"4"}, {"2"}};
  for (const char* filter :
       {"", " where D1801.WL_YS='1'", " where D1801.WL_GG LIKE '%m%'", " where D1003.DW_NAME LIKE '%瓶%'",
        " where ((D1801DW.TM LIKE '%6%') or (D1801.WL_ID LIKE '%6%'))",
        " where ((D1801DW.TM='69') or (D1801.WL_ID='69'))",
        " where D1801.WL_ID in (select WL_ID from D1801DW)"})
    EXPECT_EQ(session.rows(list + filter), all) << filter;
  EXPECT_EQ(session.rows(list + " where D1801.CLASS_ID='02'"), (Rows{{"3"}, {"4"}, {"2"}}));
  EXPECT_EQ(session.rows(list + " where D1801DW.TM='69'"), (Rows{{"4"}, {"2"}, {"1"}, {"3"}}))
      << "the rows of a later table, asked for by its key";
  for (const char* filter : {"", " where D1801.WL_YS='1'"}) {
    const std::string plan = planOf(session, emittedSql(session.connection(), list + filter));
    EXPECT_EQ(plan.find("TEMP B-TREE"), std::string::npos) << "a large list is not sorted:\n" << plan;
    EXPECT_EQ(plan.find("AUTOMATIC"), std::string::npos) << plan;
  }
}

}  // namespace
}  // namespace goodsbook::engine::test
