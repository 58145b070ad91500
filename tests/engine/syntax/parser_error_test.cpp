#include <gtest/gtest.h>

#include <string>

#include "engine/error.h"
#include "engine/syntax/parser.h"

namespace goodsbook::engine {
namespace {

struct ErrorRow {
  const char* name;
  const char* batch;
  int number;
  const char* text;
};

void PrintTo(const ErrorRow& row, std::ostream* out) {
  *out << row.name;
}

class ParserErrorTest : public testing::TestWithParam<ErrorRow> {};

TEST_P(ParserErrorTest, TellsNumberAndWord) {
  try {
    parse(GetParam().batch);
    FAIL() << "it was read";
  } catch (const SqlError& error) {
    EXPECT_EQ(error.diagnostic().number, GetParam().number);
    EXPECT_EQ(error.diagnostic().severity, 15);
    EXPECT_EQ(error.diagnostic().text, GetParam().text);
  }
}

const ErrorRow syntax[] = {
    {"a missing parenthesis", "select (1+2 as v", 156, "关键字 'as' 附近有语法错误。"},
    {"an open text", "select 'abc", 105, "字符串 'abc' 后的引号不完整。"},
    {"an open comment", "select 1 /* a", 113, "缺少注释结束标记 '*/'。"},
    {"an empty name", "select []", 1038, "不能使用空的名称 [] 或 \"\"。"},
    {"an empty alias", "select 1 as ''", 1038, "列的别名不能为空。"},
    {"a mark that T-SQL does not know", "select ?", 102, "'?' 附近有语法错误。"},
    {"an error before an open text is told first", "update t set a='a'b' where c='1", 102,
     "'b' 附近有语法错误。"},
    {"a missing value at the end", "insert into t values('1',)", 102, "')' 附近有语法错误。"},
    {"a missing value between commas", "insert into t values(1,,2)", 102, "',' 附近有语法错误。"},
    {"a batch that ends too early tells its last word", "delete from t where", 102,
     "'where' 附近有语法错误。"},
    {"an open parenthesis at the end", "insert into t values('1'", 102, "''1'' 附近有语法错误。"},
    {"a select without a list", "select from t", 156, "关键字 'from' 附近有语法错误。"},
    {"a word that begins no statement", "selec 1", 102, "'selec' 附近有语法错误。"},
    {"a reserved word as a name", "select 1 from order", 156, "关键字 'order' 附近有语法错误。"},
    {"a derived table without a name", "select * from (select 1 as a)", 102, "')' 附近有语法错误。"},
    {"a comparison where a value is needed", "select (a=1) from t", 102, "'=' 附近有语法错误。"},
    {"a comparison of a comparison", "select 1 where a=b=c", 102, "'=' 附近有语法错误。"},
    {"a value where a condition is needed", "select 1 where a", 4145, "'a' 附近需要条件，给出的却是一个值。"},
    {"a value beside AND", "select 1 where a=1 and 2 or b=3", 4145, "'or' 附近需要条件，给出的却是一个值。"},
    {"NOT of a value", "select 1 where not a", 4145, "'a' 附近需要条件，给出的却是一个值。"},
    {"a join without ON", "select 1 from a join b where 1=1", 156, "关键字 'where' 附近有语法错误。"},
    {"a CASE without WHEN", "select case a end", 156, "关键字 'end' 附近有语法错误。"},
    {"an IN without parentheses", "select 1 where a in 1", 102, "'1' 附近有语法错误。"},
    {"NOT before nothing that it can deny", "select 1 where a not 1", 102, "'1' 附近有语法错误。"},
    {"an UPDATE without SET", "update t a=1", 102, "'a' 附近有语法错误。"},
    {"an empty block", "begin end", 156, "关键字 'end' 附近有语法错误。"},
    {"a block without END", "begin select 1", 102, "'1' 附近有语法错误。"},
    {"an END without a block", "select 1 end", 156, "关键字 'end' 附近有语法错误。"},
    {"an ELSE without IF", "select 1 else select 2", 156, "关键字 'else' 附近有语法错误。"},
    {"an IF without a statement", "if 1=1;", 102, "';' 附近有语法错误。"},
    {"a RAISERROR without a state", "raiserror('a',16)", 102, "')' 附近有语法错误。"},
    {"an argument that is an expression", "exec p 1+2", 102, "'+' 附近有语法错误。"},
    {"a table without columns", "create table t ()", 102, "')' 附近有语法错误。"},
    {"an index of no table", "drop index i", 102, "'i' 附近有语法错误。"},
    {"a procedure behind another statement", "select 1 create procedure p as select 2", 111,
     "'CREATE PROCEDURE' 必须是批处理中的第一条语句。"},
    {"a procedure without a body", "create procedure p as", 102, "'as' 附近有语法错误。"},
    {"a long word is cut between two characters", "delete t 一二三四五六七八九十一二三四五六七八九十甲", 102,
     "'一二三四五六七八九十一二三四五六七八九十…' 附近有语法错误。"},
};

const ErrorRow refused[] = {
    {"variables", "declare @a int", 40510, "不支持 declare。"},
    {"loops", "while 1=1 select 1", 40510, "不支持 while。"},
    {"merging", "merge t using u on 1=1", 40510, "不支持 merge。"},
    {"emptying", "truncate table t", 40510, "不支持 truncate。"},
    {"common table expressions", "with a as (select 1) select * from a", 40510, "不支持 with。"},
    {"transactions", "begin tran", 40510, "不支持 BEGIN tran。"},
    {"committing", "commit", 40510, "不支持 commit。"},
    {"rolling back", "rollback", 40510, "不支持 rollback。"},
    {"catching", "begin try select 1 end try", 40510, "不支持 BEGIN try。"},
    {"throwing", "throw 50000,'a',1", 40510, "不支持 throw。"},
    {"a GO inside a batch", "go", 40510, "不支持 go。"},
    {"other databases", "use master", 40510, "不支持 use。"},
    {"returning", "return 1", 40510, "不支持 return。"},
    {"windows", "select row_number() over (order by a) from t", 40510, "不支持 OVER。"},
    {"applying", "select 1 from a cross apply b", 40510, "不支持 cross APPLY。"},
    {"applying outwards", "select 1 from a outer apply b", 40510, "不支持 outer APPLY。"},
    {"pivots", "select 1 from a pivot (max(b) for c in (d)) e", 40510, "不支持 PIVOT。"},
    {"hints", "select 1 from a with (nolock)", 40510, "不支持 WITH (…)。"},
    {"hints of the old form", "select 1 from a (nolock)", 40510, "不支持 a(…)。"},
    {"functions that are tables", "select 1 from f(1)", 40510, "不支持 f(…)。"},
    {"functions of the owner's", "select dbo.f(1)", 40510, "不支持 dbo。"},
    {"variables of the server", "select @@rowcount", 40510, "不支持 @@rowcount。"},
    {"assigning in a select", "select @a = 1", 40510, "不支持 SELECT @a =。"},
    {"assigning", "set @a = 1", 40510, "不支持 SET @a。"},
    {"settings that are no switches", "set rowcount 5", 40510, "不支持 SET rowcount。"},
    {"a select into a new table", "select 1 as a into t", 40510, "不支持 SELECT INTO。"},
    {"differences", "select 1 except select 2", 40510, "不支持 EXCEPT。"},
    {"intersections", "select 1 intersect select 2", 40510, "不支持 INTERSECT。"},
    {"pages", "select a from t order by a offset 5 rows", 40510, "不支持 OFFSET。"},
    {"XML", "select a from t for xml auto", 40510, "不支持 FOR。"},
    {"shares of the rows", "select top 5 percent a from t", 40510, "不支持 TOP … PERCENT。"},
    {"ties", "select top 5 with ties a from t", 40510, "不支持 TOP … WITH TIES。"},
    {"quantified comparisons", "select 1 where a > all (select 1)", 40510, "不支持 all。"},
    {"roll-ups", "select a from t group by a with rollup", 40510, "不支持 GROUP BY … WITH。"},
    {"TOP of an update", "update top (1) t set a=1", 40510, "不支持 UPDATE TOP。"},
    {"OUTPUT of an insert", "insert into t output inserted.a values(1)", 40510, "不支持 OUTPUT。"},
    {"OUTPUT of a delete", "delete from t output deleted.a", 40510, "不支持 OUTPUT。"},
    {"inserting what a procedure gives", "insert into t exec p", 40510, "不支持 INSERT … EXEC。"},
    {"statements in texts", "exec('select 1')", 40510, "不支持 EXEC (…)。"},
    {"what a procedure returns", "exec @r = p", 40510, "不支持 EXEC @r。"},
    {"arguments that come back", "exec p @a output", 40510, "不支持 OUTPUT。"},
    {"views", "create view v as select 1", 40510, "不支持 CREATE view。"},
    {"triggers", "drop trigger a", 40510, "不支持 DROP trigger。"},
    {"checks", "create table t (a int check (a>1))", 40510, "不支持 CHECK。"},
    {"foreign keys", "create table t (a int references u)", 40510, "不支持 REFERENCES。"},
    {"computed columns", "create table t (a as 1)", 40510, "不支持 AS。"},
    {"dropping columns", "alter table t drop column a", 40510, "不支持 ALTER TABLE … drop。"},
    {"defaults behind the columns of a new table", "create table t (a int, constraint d default 1 for a)",
     40510, "不支持 DEFAULT … FOR。"},
    {"filtered indexes", "create index i on t (a) where a>1", 40510, "不支持 CREATE INDEX … WHERE。"},
    {"conversions that may fail", "select try_cast('a' as int)", 40510, "不支持 try_cast。"},
};

INSTANTIATE_TEST_SUITE_P(Syntax, ParserErrorTest, testing::ValuesIn(syntax));
INSTANTIATE_TEST_SUITE_P(Refused, ParserErrorTest, testing::ValuesIn(refused));

TEST(ParserErrorPlaceTest, TellsTheLine) {
  try {
    parse("select 1\r\n\r\nselect from t");
    FAIL();
  } catch (const SqlError& error) {
    EXPECT_EQ(error.diagnostic().line, 3);
  }
}

std::string repeated(const std::string& text, int times) {
  std::string result;
  result.reserve(text.size() * static_cast<std::size_t>(times));
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

struct NestedRow {
  const char* name;
  std::string batch;
};

void PrintTo(const NestedRow& row, std::ostream* out) {
  *out << row.name;
}

class NestingTest : public testing::TestWithParam<NestedRow> {};

TEST_P(NestingTest, TooDeepIsAnError) {
  try {
    parse(GetParam().batch);
    FAIL() << "it was read";
  } catch (const SqlError& error) {
    EXPECT_EQ(error.diagnostic().number, 191) << error.what();
  }
}

constexpr int veryMany = 100'000;
constexpr int many = 20'000;
const NestedRow nested[] = {
    {"parentheses around a value", "select " + repeated("(", veryMany) + "1" + repeated(")", veryMany)},
    {"parentheses around a condition",
     "select 1 where " + repeated("(", veryMany) + "1=1" + repeated(")", veryMany)},
    {"NOT of NOT", "select 1 where " + repeated("not ", many) + "1=1"},
    {"minus of minus", "select " + repeated("- ", many) + "1"},
    {"a long sum", "select 1" + repeated("+1", many)},
    {"functions of functions", "select " + repeated("abs(", many) + "1" + repeated(")", many)},
    {"CASE in CASE", "select " + repeated("case when 1=1 then ", many) + "1" + repeated(" end", many)},
    {"subqueries in subqueries", repeated("select (", many) + "1" + repeated(")", many)},
    {"derived tables in derived tables",
     "select 1 from " + repeated("(select 1 as a from ", many) + "t" + repeated(") t", many)},
    {"parentheses around a table", "select 1 from " + repeated("(", many) + "t" + repeated(")", many)},
    {"a long chain of joins", "select 1 from t" + repeated(" join t on 1=1", many)},
    {"joins that wait for their ON", "select 1 from t" + repeated(" join t", many)},
    {"parentheses around a query", repeated("(", many) + "select 1" + repeated(")", many)},
    {"IF in IF", repeated("if 1=1 ", many) + "select 1"},
    {"blocks in blocks", repeated("begin ", many) + "select 1" + repeated(" end", many)},
    {"IF in ELSE", repeated("if 1=1 select 1 else ", many) + "select 1"},
};

INSTANTIATE_TEST_SUITE_P(Hostile, NestingTest, testing::ValuesIn(nested));

TEST(NestingLimitTest, LongListsAreNoNesting) {
  EXPECT_NO_THROW(parse("select 1 where a in (1" + repeated(",1", many) + ")"));
  EXPECT_NO_THROW(parse("select 1 where a=1" + repeated(" or a=1", many)));
  EXPECT_NO_THROW(parse("select 1" + repeated(" union all select 1", many)));
  EXPECT_NO_THROW(parse(repeated("select 1;", many)));
  EXPECT_NO_THROW(parse("select " + repeated("(", 150) + "1" + repeated(")", 150)));
}

}  // namespace
}  // namespace goodsbook::engine
