#include "engine/syntax/parser.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/error.h"
#include "engine/syntax/printer.h"
#include "tests/engine/support/cases.h"
#include "tests/engine/support/tree_dump.h"

namespace goodsbook::engine {
namespace {

struct ParserRow {
  const char* name;
  const char* batch;
  const char* tree;
};

void PrintTo(const ParserRow& row, std::ostream* out) {
  *out << row.name;
}

class ParserTest : public testing::TestWithParam<ParserRow> {};

TEST_P(ParserTest, BuildsTheTree) {
  EXPECT_EQ(test::dump(parse(GetParam().batch)), std::string(GetParam().tree) + "\n");
}

const ParserRow selects[] = {
    {"a select without FROM", "select 1", "(select int<1>)"},
    {"aliases of every form", "select a x, b as y, z=c, d 'w', e as [v u]",
     "(select (as <a> <x>) (as <b> <y>) (as <c> <z>) (as <d> <w>) (as <e> <v u>))"},
    {"TOP with and without parentheses", "select top 5 a from t union select top (6) b from t",
     "(query (select (top int<5>) <a> (from (table <t>))) union (select (top int<6>) <b> (from (table <t>))))"},
    {"stars", "select *, t.*, dbo.t.*, 0 as z from t",
     "(select * <t>.* <dbo>.<t>.* (as int<0> <z>) (from (table <t>)))"},
    {"names with qualifiers", "select a.b, dbo.a.b, m.dbo.a.b, m..a.b from m..a",
     "(select <a>.<b> <dbo>.<a>.<b> <m>.<dbo>.<a>.<b> <m>..<a>.<b> (from (table <m>..<a>)))"},
    {"everything around a group",
     "select distinct a, count(*) n from t where b=1 group by a having count(*)>1 order by 2 desc, a",
     "(query (select distinct <a> (as (call <count> (args *)) <n>) (from (table <t>)) (where (= <b> int<1>)) "
     "(group <a>) (having (> (call <count> (args *)) int<1>))) (desc int<2>) (asc <a>))"},
    {"unions read from left to right", "select 1 union all select 2 union select 3",
     "(query (select int<1>) union-all (select int<2>) union (select int<3>))"},
    {"comma joins and aliases", "select 1 from a x, b as y, (select 2) z, (select 3 as c) as w(d)",
     "(select int<1> (from (table <a> <x>) (table <b> <y>) (derived (select int<2>) <z>) "
     "(derived (select (as int<3> <c>)) <w> (columns <d>))))"},
    {"joins from left to right",
     "select 1 from a inner join b on a.x=b.x left outer join c on c.y=a.y cross join d",
     "(select int<1> (from (cross (left (inner (table <a>) (table <b>) (= <a>.<x> <b>.<x>)) (table <c>) "
     "(= <c>.<y> <a>.<y>)) (table <d>))))"},
    {"joins whose ON comes later",
     "select 1 from a inner join b inner join c on b.x=c.x on a.y=b.y join d on 1=1",
     "(select int<1> (from (inner (inner (table <a>) (inner (table <b>) (table <c>) (= <b>.<x> <c>.<x>)) "
     "(= <a>.<y> <b>.<y>)) (table <d>) (= int<1> int<1>))))"},
    {"joins in parentheses", "select 1 from a right join (b full join c on 1=2) on 3=4",
     "(select int<1> (from (right (table <a>) (full (table <b>) (table <c>) (= int<1> int<2>)) (= int<3> int<4>))))"},
    {"a derived table inside parentheses of a join", "select 1 from ((select 2 as a) t join u on 1=1)",
     "(select int<1> (from (inner (derived (select (as int<2> <a>)) <t>) (table <u>) (= int<1> int<1>))))"},
    {"a derived table in doubled parentheses", "select 1 from ((select 2 as a)) t",
     "(select int<1> (from (derived (select (as int<2> <a>)) <t>)))"},
};

const ParserRow expressions[] = {
    {"products before sums", "select 1+2*3-4", "(select (- (+ int<1> (* int<2> int<3>)) int<4>))"},
    {"bits rank with sums", "select 1|2+3&~4", "(select (& (+ (| int<1> int<2>) int<3>) (~ int<4>)))"},
    {"a sign takes the product behind it", "select 100/-100*10",
     "(select (/ int<100> (- (* int<100> int<10>))))"},
    {"AND before OR, NOT before both", "select 1 where not a=1 or b=2 and c=3",
     "(select int<1> (where (or (not (= <a> int<1>)) (and (= <b> int<2>) (= <c> int<3>)))))"},
    {"a chain of AND is one node", "select 1 where a=1 and b=2 and c=3",
     "(select int<1> (where (and (= <a> int<1>) (= <b> int<2>) (= <c> int<3>))))"},
    {"all comparisons", "select 1 where a<>1 and a!=1 and a<1 and a<=1 and a>1 and a>=1 and a!<1 and a!>1",
     "(select int<1> (where (and (<> <a> int<1>) (<> <a> int<1>) (< <a> int<1>) (<= <a> int<1>) (> <a> int<1>) "
     "(>= <a> int<1>) (>= <a> int<1>) (<= <a> int<1>))))"},
    {"LIKE with and without ESCAPE", "select 1 where a like 'x%' and b not like 'y!%' escape '!'",
     "(select int<1> (where (and (like <a> text<x%>) (not-like <b> text<y!%> (escape text<!>)))))"},
    {"IN with a list and a query", "select 1 where a in (1,'b',null) and c not in (select d from t)",
     "(select int<1> (where (and (in <a> (items int<1> text<b> null)) (not-in <c> (select <d> (from (table <t>)))))))"},
    {"IN with a subquery as an item", "select 1 where a in ((select 1),2)",
     "(select int<1> (where (in <a> (items (scalar (select int<1>)) int<2>))))"},
    {"BETWEEN takes its AND", "select 1 where a between 1 and 2 and b not between 3 and 4",
     "(select int<1> (where (and (between <a> int<1> int<2>) (not-between <b> int<3> int<4>))))"},
    {"IS NULL", "select 1 where a is null or a+1 is not null",
     "(select int<1> (where (or (is-null <a>) (not-is-null (+ <a> int<1>)))))"},
    {"EXISTS", "select 1 where exists(select * from t) and not exists (select 1)",
     "(select int<1> (where (and (exists (select * (from (table <t>)))) (not (exists (select int<1>))))))"},
    {"both forms of CASE",
     "select case a when 1 then 'x' when 2 then 'y' end, case WHEN(a>=0)then 1 else 0 end",
     "(select (case <a> (when int<1> text<x>) (when int<2> text<y>)) "
     "(case (when (>= <a> int<0>) int<1>) (else int<0>)))"},
    {"CAST and CONVERT",
     "select cast(a as nvarchar(max)), convert(varchar(10),b,120), convert(decimal(9,2),c)",
     "(select (cast <a> (type <nvarchar> -2 -1)) (convert (type <varchar> 10 -1) <b> (style int<120>)) "
     "(convert (type <decimal> 9 2) <c>))"},
    {"functions", "select getdate(), left(a,2), count(distinct b), dateadd(day,1,c), current_timestamp",
     "(select (call <getdate>) (call <left> (args <a> int<2>)) (call <count> distinct (args <b>)) "
     "(call <dateadd> (args <day> int<1> <c>)) (call <GETDATE>))"},
    {"scalar subqueries", "select (select max(a) from t), 1+(select 2)",
     "(select (scalar (select (call <max> (args <a>)) (from (table <t>)))) (+ int<1> (scalar (select int<2>))))"},
    {"columns named like words of the grammar", "select max, cast, output, t.try from t",
     "(select <max> <cast> <output> <t>.<try> (from (table <t>)))"},
};

const ParserRow changes[] = {
    {"INSERT by position", "insert into t values(1,'a');", "(insert <t> (values (row int<1> text<a>)))"},
    {"INSERT of several rows without INTO", "insert t(a,b) values(1,default),(2,null)",
     "(insert <t> (columns <a> <b>) (values (row int<1> default) (row int<2> null)))"},
    {"INSERT of a query", "insert into t (a) select top 1 'x' from u",
     "(insert <t> (columns <a>) (select (top int<1>) text<x> (from (table <u>))))"},
    {"INSERT of a query in parentheses", "insert into t (select 1)", "(insert <t> (select int<1>))"},
    {"INSERT of defaults", "insert t default values", "(insert <t> default-values)"},
    {"UPDATE with FROM", "UPDATE D set D.a=T.a, b=default FROM D,(select 1 as a) T WHERE D.k=T.a",
     "(update <D> (set <D>.<a> <T>.<a>) (set <b> default) (from (table <D>) (derived (select (as int<1> <a>)) <T>)) "
     "(where (= <D>.<k> <T>.<a>)))"},
    {"UPDATE with compound assignment", "update t set a+=2", "(update <t> (set <a> (+ <a> int<2>)))"},
    {"DELETE of every form",
     "delete t where a=1 delete from t delete from t from u where t.a=u.a delete x from t x",
     "(delete <t> (where (= <a> int<1>)))\n(delete <t>)\n(delete <t> (from (table <u>)) (where (= <t>.<a> <u>.<a>)))\n"
     "(delete <x> (from (table <t> <x>)))"},
};

const ParserRow statements[] = {
    {"statements need nothing between them",
     "delete from t where a=5insert into t values(5)select 1 select 2;;",
     "(delete <t> (where (= <a> int<5>)))\n(insert <t> (values (row int<5>)))\n(select int<1>)\n(select int<2>)"},
    {"IF with ELSE on either side of a semicolon", "if exists(select 1) delete t; else delete u",
     "(if (exists (select int<1>)) (delete <t>) (else (delete <u>)))"},
    {"ELSE belongs to the nearest IF", "if 1=1 if 2=2 delete a else delete b",
     "(if (= int<1> int<1>) (if (= int<2> int<2>) (delete <a>) (else (delete <b>))))"},
    {"BEGIN and END", "if not exists(select 1) begin delete a;delete b end print 'x'",
     "(if (not (exists (select int<1>))) (block (delete <a>) (delete <b>)))\n(print text<x>)"},
    {"RAISERROR with arguments", "RAISERROR ('a %s', 16, -1, NULL, 7)",
     "(raiserror text<a %s> int<16> (- int<1>) (args null int<7>))"},
    {"EXEC with names, positions, signs and words",
     "exec dbo.p @a='x',@b=-1.5;execute p 1, word, [w 2], null, default",
     "(exec <dbo>.<p> @a:text<x> @b:(- decimal<1.5>))\n(exec <p> :int<1> :text<word> :text<w 2> :null :default)"},
    {"EXEC without arguments before another statement", "exec p select 1", "(exec <p>)\n(select int<1>)"},
    {"SET of options", "set nocount on set XACT_ABORT off", "(set <nocount> on)\n(set <XACT_ABORT> off)"},
};

const ParserRow definitions[] = {
    {"CREATE TABLE with attributes",
     "create table dbo.t (a int identity(1,1) not null primary key, b varchar(20) constraint d default ('x') null, c "
     "varbinary(max), e decimal(9,2) default -1 not null unique, f int identity)",
     "(create-table <dbo>.<t> (column <a> (type <int> -1 -1) not-null identity:1:1 primary) (column <b> (type <varchar> "
     "20 -1) null (default text<x>) (named <d>)) (column <c> (type <varbinary> -2 -1)) (column <e> (type <decimal> 9 2) "
     "not-null (default (- int<1>)) unique) (column <f> (type <int> -1 -1) identity:1:1))"},
    {"CREATE TABLE with constraints",
     "create table t (a int constraint k unique, b int, constraint p primary key clustered (a, b desc), unique (b))",
     "(create-table <t> (column <a> (type <int> -1 -1) unique (key <k>)) (column <b> (type <int> -1 -1)) "
     "(key <p> primary (columns <a> <b>desc)) (key unique (columns <b>)))"},
    {"CREATE INDEX", "create unique nonclustered index i on t (a desc, b asc)",
     "(create-index unique <i> <t> (columns <a>desc <b>))"},
    {"CREATE PROCEDURE",
     "create proc p @a int, @b varchar(30) = null, @c float = -1 as if @a=1 delete t else begin "
     "update t set b=@b end delete u",
     "(create-procedure <p> (@a (type <int> -1 -1)) (@b (type <varchar> 30 -1) null) (@c (type <float> -1 -1) (- "
     "int<1>)) (body (if (= @a int<1>) (delete <t>) (else (block (update <t> (set <b> @b))))) (delete <u>)))"},
    {"ALTER TABLE", "alter table t add a int null, constraint u unique (a)",
     "(alter-table <t> (column <a> (type <int> -1 -1) null) (key <u> unique (columns <a>)))"},
    {"ALTER TABLE with defaults", "alter table t add default -1 for a, constraint d default N'x' for b",
     "(alter-table <t> (default <a> (- int<1>)) (default <d> <b> ntext<x>))"},
    {"DROP", "drop table a, b drop table if exists c drop index i on t, t.j drop proc p",
     "(drop-table <a> <b>)\n(drop-table if-exists <c>)\n(drop-index <i>@<t> <j>@<t>)\n(drop-procedure <p>)"},
};

INSTANTIATE_TEST_SUITE_P(Selects, ParserTest, testing::ValuesIn(selects));
INSTANTIATE_TEST_SUITE_P(Expressions, ParserTest, testing::ValuesIn(expressions));
INSTANTIATE_TEST_SUITE_P(Changes, ParserTest, testing::ValuesIn(changes));
INSTANTIATE_TEST_SUITE_P(Statements, ParserTest, testing::ValuesIn(statements));
INSTANTIATE_TEST_SUITE_P(Definitions, ParserTest, testing::ValuesIn(definitions));

TEST(ParserPlaceTest, StatementsKnowTheirText) {
  const std::string batch = " delete from t where a=5insert into t values(5) ;\r\n if 1=1 select 2;";
  const Script script = parse(batch);
  ASSERT_EQ(script.statements.size(), 3U);
  EXPECT_EQ(script.statements[0].text, "delete from t where a=5");
  EXPECT_EQ(script.statements[1].text, "insert into t values(5)");
  EXPECT_EQ(script.statements[2].text, "if 1=1 select 2");
  EXPECT_EQ(script.statements[2].position.line, 2U);
  EXPECT_EQ(std::get<If>(script.statements[2].node).then->text, "select 2");
}

TEST(ParserPlaceTest, AMovedScriptStaysWhole) {
  Script first = parse("select 'it''s' as [a]]b]");
  const Script second = std::move(first);
  EXPECT_EQ(print(second), "SELECT 'it''s' AS [a]]b];");
}

TEST(ParserCasesTest, EveryRecordedBatchParsesOrGivesItsError) {
  EXPECT_EQ(test::recordedCases().size(), 251U);
  for (const test::Case& recorded : test::recordedCases()) {
    try {
      parse(test::withoutQueries(recorded.batch));
      EXPECT_FALSE(recorded.name.starts_with("syntax:")) << recorded.name;
    } catch (const SqlError& error) {
      ASSERT_TRUE(recorded.error.has_value()) << recorded.name << ": " << error.what();
      EXPECT_EQ(error.diagnostic().number, recorded.error->documented.value_or(0)) << recorded.name;
      EXPECT_EQ(error.diagnostic().severity, 15) << recorded.name;
    }
  }
}

}  // namespace
}  // namespace goodsbook::engine
