#include <gtest/gtest.h>

#include "tests/engine/support/session.h"

// What the engine answers beyond the recorded cases, statement by statement.
namespace goodsbook::engine::test {
namespace {

struct Answer {
  const char* name;
  const char* batch;
  const char* rows;  // of the last set: values with '|', rows with '/'; NULL for null
  int error = 0;
  const char* word = "";  // that the error's text names
};

void PrintTo(const Answer& row, std::ostream* out) {
  *out << row.name;
}

std::string written(const Rows& rows) {
  std::string text;
  for (const auto& row : rows) {
    if (!text.empty()) text += "/";
    std::string line;
    for (const Value& value : row) line += (line.empty() ? "" : "|") + value.value_or("NULL");
    text += line;
  }
  return text;
}

class AnswerTest : public testing::TestWithParam<Answer> {
 protected:
  static constexpr std::string_view data[] = {
      "insert into D1003 values('01','瓶','P',''),('02','箱','X','24瓶'),('03','kg','KG',null)",
      "insert into D1801(WL_ID,WL_NAME,CLASS_ID,DJ,KC,T,BDATE,PYM) values('A1','可乐','01',1.5,10,1,'2026-01-05','KL'),"
      "('A2','雪碧','01',2.5,-3,1,'2026-02-01','XB'),('B1','饼干','02',null,0,0,null,'BG')",
      "insert into D1801DW(T,WL_ID,DW_ID,TM,SJ) values(1,'A1','01','690001',3.5),(1,'A2','01','690002',3),(0,'A2','02','690003',70)",
  };
};

TEST_P(AnswerTest, IsAsExpected) {
  const Answer& row = GetParam();
  Session session;
  session.setUp(data);
  const Outcome outcome = session.run(row.batch);
  if (row.error != 0) {
    ASSERT_TRUE(outcome.error) << "no error";
    EXPECT_EQ(outcome.error->number, row.error) << outcome.error->text;
    EXPECT_NE(outcome.error->text.find(row.word), std::string::npos) << outcome.error->text;
    return;
  }
  ASSERT_FALSE(outcome.error) << outcome.error->number << ": " << outcome.error->text;
  ASSERT_FALSE(outcome.sets.empty());
  EXPECT_EQ(written(outcome.sets.back().rows), row.rows);
}

const Answer values[] = {
    {"decimals keep their digits in text",
     "select convert(varchar(20),1.50+2) as a, '='+convert(varchar(9),-0.5) as b", "3.50|=-0.5"},
    {"decimals add up exactly", "select 0.1+0.2 as a, 0.1*3 as b, 1/3.0 as c", "0.3|0.3|0.333333"},
    {"whole numbers beyond int overflow", "select 2147483647+1 as a", "", 8115, "int"},
    {"a literal beyond int is a decimal", "select 3000000000+1 as a", "3000000001"},
    {"the remainder takes the left sign", "select -7%3 as a, 7%-3 as b, 7.5%2 as c", "-1|1|1.5"},
    {"dividing by a zero column fails", "select 1/KC as a from D1801 where WL_ID='B1'", "", 8134},
    {"a text that is no number fails in arithmetic", "select 'x'*2 as a", "", 245, "x"},
    {"bit operators work on whole numbers", "select 6&3 as a, 6|3 as b, ~0 as c", "2|7|-1"},
    {"date-times differ by days",
     "select datediff(day,BDATE,'2026-02-01') as a, BDATE-1 as b from D1801 where WL_ID='A1'",
     "27|2026-01-04 00:00:00"},
    {"parts of a date-time",
     "select year(BDATE) as a, month(BDATE) as b, day(BDATE) as c, datepart(dw,BDATE) as d from D1801 where WL_ID='A1'",
     "2026|1|5|2"},
    {"GETDATE is the clock of the connection", "select getdate() as a", "2026-11-20 10:11:12"},
    {"an unknown date part is named", "select dateadd(fortnight,1,getdate()) as a", "", 155, "fortnight"},
    {"ISNULL cuts to its first argument's width", "select isnull(cast(null as varchar(2)),'abc') as a", "ab"},
    {"NULLIF", "select nullif('a','A ') as a, nullif(1,2) as b", "NULL|1"},
    {"CASE of NULLs only is an error", "select case when 1=1 then null end as a", "", 8133},
    {"CASE compares text with numbers as numbers", "select case '007' when 7 then 'y' else 'n' end as a",
     "y"},
    {"IN compares text with numbers as numbers",
     "select TM from D1801DW where TM in (690002,'690003') order by TM", "690002/690003"},
    {"COALESCE of several types", "select coalesce(null,1,2.5) as a", "1"},
    {"text functions count characters",
     "select left('中文字',2) as a, len('中 ') as b, stuff('abcd',2,2,'x') as c, replicate('ab',3) as d",
     "中文|1|axd|ababab"},
    {"a negative length is an error", "select left('abc',-1) as a", "", 536, "LEFT"},
    {"a function with too few arguments is named", "select left('abc') as a", "", 174, "left"},
    {"an unknown function is named", "select soundex('a') as a", "", 195, "soundex"},
    {"an unknown type is named", "select cast('a' as nonsense) as a", "", 2715, "nonsense"},
    {"a type that is not kept is named", "select cast('a' as char(3)) as a", "", 40510, "char"},
    {"a style that does not exist is refused", "select convert(varchar(30),getdate(),99) as a", "", 281,
     "99"},
    {"a variable outside of a procedure is named", "select @x as a", "", 137, "@x"},
    {"LIKE with an escape character", "select dw_note from D1003 where dw_note like '24!瓶' escape '!'",
     "24瓶"},
    {"BETWEEN takes texts without case",
     "select WL_ID from D1801 where WL_ID between 'a1' and 'a2' order by 1", "A1/A2"},
    {"NOT of an unknown is unknown", "select WL_ID from D1801 where not (DJ>2) order by WL_ID", "A1"},
};

const Answer queries[] = {
    {"a table twice needs an alias", "select 1 as a from D1003,D1003", "", 1013, "D1003"},
    {"ON sees the tables of its join only",
     "select a.dw_id from D1003 a, D1801 b inner join D1801DW c on c.DW_ID=a.dw_id", "", 4104, "a.dw_id"},
    {"ON sees its own tables",
     "select a.dw_id,c.TM from D1003 a, D1801 b inner join D1801DW c on c.WL_ID=b.WL_ID where c.DW_ID=a.dw_id and c.T=0",
     "02|690003"},
    {"LEFT JOIN of a join",
     "select a.WL_ID,c.dw_name from D1801 a left join (D1801DW b inner join D1003 c on b.DW_ID=c.dw_id) on a.WL_ID=b.WL_ID and b.T=1 order by a.WL_ID",
     "A1|瓶/A2|瓶/B1|NULL"},
    {"FULL JOIN behind a comma",
     "select count(*) as n from D1003 x, D1801 a full join D1801DW b on a.WL_ID=b.WL_ID", "12"},
    {"a derived column without a name is an error", "select * from (select count(*) from D1003) t", "", 8155,
     "t"},
    {"a derived column twice is an error", "select * from (select dw_id,dw_id from D1003) t", "", 8156,
     "dw_id"},
    {"a derived table's columns can be named",
     "select t.b from (select dw_id,dw_name from D1003) t(a,b) where t.a='01'", "瓶"},
    {"columns of a grouped select must be grouped", "select WL_ID,count(*) as n from D1801 group by CLASS_ID",
     "", 8120, "WL_ID"},
    {"in HAVING, too", "select CLASS_ID from D1801 group by CLASS_ID having DJ>1", "", 8121, "DJ"},
    {"and in ORDER BY", "select CLASS_ID from D1801 group by CLASS_ID order by DJ", "", 8127, "DJ"},
    {"an expression over a group key is fine",
     "select CLASS_ID+'!' as a,count(*) as n from D1801 group by CLASS_ID order by a", "01!|2/02!|1"},
    {"a group key with a constant",
     "select left(WL_ID,1) as a,count(*) as n from D1801 group by left(WL_ID,1) order by a", "A|2/B|1"},
    {"the same words with another constant",
     "select left(WL_ID,2) as a,count(*) as n from D1801 group by left(WL_ID,1)", "", 8120, "WL_ID"},
    {"an aggregate in WHERE is an error", "select WL_ID from D1801 where count(*)>1", "", 147},
    {"an aggregate in an aggregate is an error", "select sum(count(*)) as a from D1801", "", 130},
    {"a sum of text is an error", "select sum(WL_ID) as a from D1801", "", 8117, "sum"},
    {"a union needs as many columns on both sides", "select 1 as a union select 1,2", "", 205},
    {"a union of text and number is a number", "select '5' as a union all select 1 order by a", "1/5"},
    {"TOP in a part of a union",
     "select top 1 WL_ID from D1801 where T=1 union all select dw_id from D1003 where dw_id='03' order by 1",
     "03/A1"},
    {"ORDER BY in a derived table needs TOP", "select * from (select dw_id from D1003 order by dw_id) t", "",
     1033},
    {"with TOP it is fine", "select * from (select top 2 dw_id from D1003 order by dw_id desc) t", "03/02"},
    {"an ORDER BY position out of the list", "select dw_id from D1003 order by 2", "", 108, "2"},
    {"DISTINCT orders by what it selects", "select distinct CLASS_ID from D1801 order by WL_ID", "", 145},
    {"several rows for a scalar subquery", "select (select dw_id from D1003) as a", "", 512},
    {"a scalar subquery with one row of the outer table",
     "select (select p.WL_ID from D1003 where dw_id='01') as a from D1801 p where T=0", "B1"},
    {"a scalar subquery without rows is NULL", "select (select dw_id from D1003 where dw_id='zz') as a",
     "NULL"},
    {"several columns for IN", "select 1 as a from D1003 where dw_id in (select dw_id,pym from D1003)", "",
     116},
    {"NOT IN with a NULL finds nothing",
     "select dw_id from D1003 where '24瓶' not in (select dw_note from D1003)", ""},
    {"a star of an unknown table", "select x.* from D1003", "", 107, "x"},
    {"another database is refused by name", "select * from other.dbo.D1003", "", 40510, "other"},
    {"the schema dbo is fine", "select count(*) as n from dbo.D1003", "3"},
    {"the engine's own tables are not there", "select * from goodsbook_procedures", "", 208,
     "goodsbook_procedures"},
    {"nor are SQLite's", "select * from sqlite_master", "", 208, "sqlite_master"},
    {"the filter over tables finds by the joined table's column",
     "select a.WL_ID from D1801 a inner join D1801DW b on a.WL_ID=b.WL_ID and b.T=1 where (b.TM like '%0002%') or (a.WL_NAME like '%可%') order by 1",
     "A1/A2"},
    {"a filter over outer joins",
     "select a.WL_ID from D1801 a left join D1801DW b on a.WL_ID=b.WL_ID where (b.TM like '%0003%') or (a.WL_NAME like '%饼%') order by 1",
     "A2/B1"},
};

const Answer changes[] = {
    {"keys can be shifted",
     "update D1003 set dw_id=convert(varchar(2),dw_id+1);select dw_id,dw_name from D1003 order by 1",
     "2|瓶/3|箱/4|kg"},
    {"keys can be swapped",
     "update D1003 set dw_id=case dw_id when '01' then '02' when '02' then '01' else dw_id end;select dw_id,dw_name from D1003 order by 1",
     "01|箱/02|瓶/03|kg"},
    {"keys that end up the same are refused with their value", "update D1003 set dw_id=left(dw_id,1)", "",
     2627, "(0)"},
    {"an inserted key is refused with its value", "insert into D1003(dw_id) values('04'),('02 ')", "", 2627,
     "(02)"},
    {"and so is one among the inserted rows", "insert into D1003(dw_id) select 'X' from D1801", "", 2627,
     "(X)"},
    {"a new value is read from the old rows",
     "update D1801 set KC=(select sum(KC) from D1801);select distinct KC from D1801", "7"},
    {"an update may order itself by another row",
     "update D1801 set NOTE=(select max(WL_ID) from D1801 p where p.CLASS_ID=D1801.CLASS_ID);select NOTE from D1801 order by WL_ID",
     "A2/A2/B1"},
    {"several source rows give any one",
     "update D1801 set NOTE=d.TM from D1801DW d where d.WL_ID=D1801.WL_ID;select count(*) as n from D1801 where NOTE in ('690001','690002','690003')",
     "2"},
    {"an alias of the target",
     "update x set NOTE='n' from D1801 x where x.T=0;select WL_ID from D1801 where NOTE='n'", "B1"},
    {"a table named again under an alias",
     "update D1801 set NOTE='n' from D1801 x where x.T=0;select WL_ID from D1801 where NOTE='n'", "B1"},
    {"two aliases of the target are ambiguous",
     "update D1801 set NOTE='n' from D1801 x, D1801 y where x.WL_ID=y.WL_ID", "", 8154, "D1801"},
    {"a derived table cannot be changed", "update t set dw_id='1' from (select * from D1003) t", "", 4421,
     "t"},
    {"a column set twice", "update D1003 set pym='a',PYM='b'", "", 264, "PYM"},
    {"an identity column cannot be set", "update D1801DW set adw=5", "", 8102, "adw"},
    {"too long a text from a column is refused by name", "update D1003 set dw_name=dw_id+dw_id+dw_id+dw_id",
     "", 2628, "D1003.dw_name"},
    {"a text from a column that is no number", "update D1801 set KC=WL_NAME", "", 8114, "可乐"},
    {"NULL for a key is refused by name", "update D1003 set dw_id=null", "", 515, "dw_id"},
    {"NULL into a key is refused by name", "insert into D1003(dw_name) select 'x'", "", 515, "dw_id"},
    {"rows of different length", "insert into D1003(dw_id,pym) values('a','b'),('c')", "", 10709},
    {"fewer selected columns than named", "insert into D1003(dw_id,pym) select '1'", "", 120},
    {"more selected columns than named", "insert into D1003(dw_id) select '1','2'", "", 121},
    {"a column named twice", "insert into D1003(dw_id,dw_id) values('1','2')", "", 264, "dw_id"},
    {"a distinct select is converted after it is made distinct",
     "insert into D1801DWTM(ADW,TM) select distinct T,CLASS_ID from D1801;select ADW,TM from D1801DWTM order by 1",
     "0|02/1|01"},
    {"an ordered select with TOP",
     "insert into D1801DWTM(ADW,TM) select top 1 T,WL_ID from D1801 order by WL_ID desc;select ADW,TM from D1801DWTM",
     "0|B1"},
    {"a union",
     "insert into D1801DWTM select 1,'a' union all select '2','b';select ADW,TM from D1801DWTM order by 1",
     "1|a/2|b"},
    {"a delete from a join",
     "delete D1801 from D1801 p left join D1801DW d on p.WL_ID=d.WL_ID where d.TM is null;select count(*) as n from D1801",
     "2"},
    {"a quote in a value",
     "update D1003 set dw_note='it''s \"[x]\"' where dw_id='01';select dw_note from D1003 where dw_id='01'",
     "it's \"[x]\""},
    {"an unknown column of an unknown table tells of the table", "update NOSUCH set x=1", "", 208, "NOSUCH"},
    {"screens define nothing", "create table X(a int)", "", 262, "CREATE TABLE"},
    {"nor drop", "drop table D1003", "", 262, "DROP"},
    {"nor index", "create index I on D1003(pym)", "", 262, "CREATE INDEX"},
    {"too many arguments", "exec SYS_DW 1,0,1,'a','b',1,2,3,4,5,6", "", 8144, "SYS_DW"},
    {"an argument twice", "exec SYS_DW @adw=1,@ADW=2", "", 8143, "@ADW"},
    {"an argument of the wrong kind", "exec SYS_DW @adw='x'", "", 245, "x"},
    {"positional arguments and defaults",
     "insert into D1801DW(TM) values('z');exec SYS_DW 0,default,1;select count(*) as n from D1801DW", "3"},
    {"a message above ten stops",
     "insert into D1003(dw_id) values('z');raiserror('%d von %s: %5.1d%%',11,1,7,'x',3)", "", 50000,
     "7 von x:     3%"},
    {"an option that changes meaning is refused by name", "set ansi_nulls off", "", 40510, "ansi_nulls"},
    {"an option that does not matter is taken", "set nocount on select 1 as a", "1"},
};

INSTANTIATE_TEST_SUITE_P(Values, AnswerTest, testing::ValuesIn(values));
INSTANTIATE_TEST_SUITE_P(Queries, AnswerTest, testing::ValuesIn(queries));
INSTANTIATE_TEST_SUITE_P(Changes, AnswerTest, testing::ValuesIn(changes));

TEST(Errors, TellTheLineOfTheirStatement) {
  Session session;
  const Outcome outcome =
      session.run("select 1 as a\n\nselect 2 as b\nif 1=1\nbegin\n  select nosuch from D1003\nend");
  ASSERT_TRUE(outcome.error);
  EXPECT_EQ(outcome.error->number, 207);
  EXPECT_EQ(outcome.error->line, 6);
}

TEST(Errors, ComeAfterTheResultsBeforeThem) {
  Session session;
  const Outcome outcome = session.run("select 1 as a;raiserror('note',10,1);select nosuch from D1003");
  EXPECT_EQ(outcome.sets.size(), 1U);
  ASSERT_EQ(outcome.notices.size(), 1U);
  EXPECT_EQ(outcome.notices.front().text, "note");
  ASSERT_TRUE(outcome.error);
}

}  // namespace
}  // namespace goodsbook::engine::test
