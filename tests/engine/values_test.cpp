#include <gtest/gtest.h>

#include "tests/engine/support/statement_row.h"

// How values are kept, converted and compared.
namespace goodsbook::engine::test {
namespace {

class ValuesTest : public testing::TestWithParam<StatementRow> {};

TEST_P(ValuesTest, GivesTheRows) {
  Session session;
  expectAnswer(session, GetParam());
}

const std::string numbers = "insert into D1801DWTM values(1,'1'),(2,'007'),(3,'300');";

const StatementRow assignments[] = {
    {"texts become floats",
     "insert into D1801(WL_ID,DJ) values('1','+007.50'),('2',' 3.5 '),('3','-1e2'),('4',''),('5','  ')",
     "select DJ from D1801 order by WL_ID",
     {"7.5", "3.5", "-100", "0", "0"}},
    {"a text with a thousands mark is no float",
     "insert into D1801(WL_ID,DJ) values('1','1,234.5')",
     "select count(*) from D1801",
     {"0"},
     8114},
    {"a text beyond all floats is none",
     "insert into D1801(WL_ID,DJ) values('1','1e400')",
     "select count(*) from D1801",
     {"0"},
     8114},
    {"a text nearer to nothing than all floats is 0",
     "insert into D1801(WL_ID,DJ) values('1','1e-400')",
     "select DJ from D1801",
     {"0"}},
    {"a fraction in a text is no int",
     "insert into D1801(WL_ID,dwcount) values('1','1.0')",
     "select count(*) from D1801",
     {"0"},
     245},
    {"a number is cut to an int",
     "insert into D1801(WL_ID,dwcount,TMC) values('1',2.9,-2.9)",
     "select dwcount,TMC from D1801",
     {"2|-2"}},
    {"a number beyond an int is refused",
     "insert into D1801(WL_ID,dwcount) values('1',3000000000)",
     "select count(*) from D1801",
     {"0"},
     8115},
    {"flags take every number and two words",
     "insert into D1801(WL_ID,WL_YS,CHECK_KC) values('1','TRUE','false'),('2',-5,0),('3','1',''),('4',0.5,null)",
     "select WL_YS,CHECK_KC from D1801 order by WL_ID",
     {"1|0", "1|0", "1|0", "1|NULL"}},
    {"flags take no other word",
     "insert into D1801(WL_ID,WL_YS) values('1','yes')",
     "select count(*) from D1801",
     {"0"},
     245},
    {"dates of several forms",
     "insert into D1801(WL_ID,BDATE) "
     "values('1','2026-11-20'),('2','2026-11-20 10:11:12 '),('3','2026/1/2'),('4','20261120'),('5','')",
     "select BDATE from D1801 order by WL_ID",
     {"2026-11-20 00:00:00", "2026-11-20 10:11:12", "2026-01-02 00:00:00", "2026-11-20 00:00:00",
      "1900-01-01 00:00:00"}},
    {"dates are kept to three hundredths of a second",
     "insert into D1801(WL_ID,BDATE,EDATE) values('1','2026-01-01 10:00:00.345','2026-01-01 23:59:59.999')",
     "select BDATE,EDATE from D1801",
     {"2026-01-01 10:00:00.347|2026-01-02 00:00:00"}},
    {"a date before 1753 is refused",
     "insert into D1801(WL_ID,BDATE) values('1','1752-12-31')",
     "select count(*) from D1801",
     {"0"},
     242},
    {"blanks beyond a width are cut",
     "insert into D1003(dw_id,dw_name) values('12    ','abcdef      ')",
     "select dw_id,dw_name from D1003",
     {"12|abcdef"}},
    {"widths count characters",
     "insert into D1003(dw_id,dw_name) values('中文','一二三四五六')",
     "select dw_id,dw_name,len(dw_name) from D1003",
     {"中文|一二三四五六|6"}},
    {"one character too many",
     "insert into D1003(dw_id,dw_name) values('1','一二三四五六七')",
     "select count(*) from D1003",
     {"0"},
     2628},
    {"hostile texts are kept as they are",
     "insert into D1004(CLASS_ID,CLASS_NAME) values('1','''; drop table D1003; --'),('2','100%_[a]'),('3','a\rb')",
     "select CLASS_NAME from D1004 order by CLASS_ID",
     {"'; drop table D1003; --", "100%_[a]", "a\rb"}},
};

const StatementRow comparisons[] = {
    {"letters of either case and width are the same, with trailing blanks, not with accents",
     "",
     "select case when 'a'='A' then 1 else 0 end,case when 'Ａ'='a' then 1 else 0 end,case when 'a '='a' then 1 else 0 "
     "end,case when ' a'='a' then 1 else 0 end,case when 'e'='é' then 1 else 0 end",
     {"1|1|1|0|0"}},
    {"two keys that differ in blanks are one",
     "insert into D1003(dw_id) values(''),('  ')",
     "select count(*) from D1003",
     {"0"},
     2627},
    {"two keys that differ in width are one",
     "insert into D1003(dw_id) values('A'),('ａ')",
     "select count(*) from D1003",
     {"0"},
     2627},
    {"a key changes its case",
     "insert into D1003(dw_id) values('ab');update D1003 set dw_id='AB' where dw_id='ab'",
     "select dw_id from D1003",
     {"AB"}},
    {"keys are shifted by one statement",
     "insert into D1003(dw_id) values('1'),('2'),('3');update D1003 set dw_id=dw_id+1",
     "select dw_id from D1003 order by 1",
     {"2", "3", "4"}},
    {"a number beside a text compares as a number", numbers, "select ADW from D1801DWTM where TM=7", {"2"}},
    {"a number beside a text that is none",
     numbers + "insert into D1801DWTM values(4,'x')",
     "select count(*) from D1801DWTM where TM='300' or ADW='2'",
     {"2"}},
    {"like ignores case, and a bracket that is open matches nothing",
     "insert into D1801DWTM values(1,'aBc'),(2,'[x')",
     "select ADW from D1801DWTM where TM like '%b%' or TM like '%[%'",
     {"1"}},
    {"distinct, group by, union and in ignore case and trailing blanks",
     "insert into D1801DWTM values(1,'a'),(2,'A '),(3,'b')",
     "select (select count(distinct TM) from D1801DWTM),(select count(*) from (select TM from D1801DWTM group by TM) "
     "t),(select count(*) from (select TM from D1801DWTM union select 'B') t),(select count(*) from D1801DWTM where TM in "
     "('A','B  '))",
     {"2|2|2|3"}},
    {"nothing is equal to null",
     "insert into D1801DWTM values(1,null),(null,'a')",
     "select (select count(*) from D1801DWTM where TM=null),(select count(*) from D1801DWTM where ADW<>1),(select count(*) "
     "from D1801DWTM where TM is null)",
     {"0|0|1"}},
    {"nulls stand first",
     "insert into D1801DWTM values(2,'b'),(null,'n'),(1,'a')",
     "select TM from D1801DWTM order by ADW",
     {"n", "a", "b"}},
    {"only two of the values of a list are there",
     numbers,
     "select ADW from D1801DWTM where ADW in ('1',3,null)",
     {"1", "3"}},
};

const StatementRow sums[] = {
    {"whole numbers stay whole", "", "select 5/2,-7/2,-7%3,7%-3,5|2,5&4,~5", {"2|-3|-1|1|7|4|-6"}},
    {"a sign takes the whole product behind it", "", "select 100/-100*10,-2*3,2*-3", {"0|-6|-6"}},
    {"decimals divide", "", "select 5/2.0,1.5+2,1.25*2,7.5%2", {"2.5|3.5|2.5|1.5"}},
    {"halves are rounded away from zero",
     "",
     "select round(2.5,0),round(-2.5,0),round(1.005,2),round(1250,-2)",
     {"3|-3|1.01|1300"}},
    {"texts and numbers", "", "select '1'+2,'1'+'2','a'+N'b',1+'2'", {"3|12|ab|3"}},
    {"a case of a text and a number is a number", "", "select case when 1=1 then '5' else 1 end+1", {"6"}},
    {"a float as a text is its shortest",
     "",
     "select convert(varchar(20),cast(3.5 as float)),convert(varchar(20),cast(1 as float)/3)",
     {"3.5|0.3333333333333333"}},
    {"a decimal as a text keeps its digits",
     "",
     "select convert(varchar(10),1.50),convert(varchar(10),2.5)",
     {"1.50|2.5"}},
    {"averages of whole numbers are cut",
     numbers,
     "select avg(ADW),sum(ADW),min(TM),max(TM),count(*) from D1801DWTM",
     {"2|6|007|300|3"}},
    {"sums of nothing", "", "select sum(ADW),count(*),max(TM) from D1801DWTM", {"NULL|0|NULL"}},
    {"dates",
     "",
     "select dateadd(month,1,'2026-01-31'),datediff(day,'2026-01-01','2026-03-01'),year(getdate()),convert(varchar(19),getdate("
     "),120)",
     {"2026-02-28 00:00:00|59|2026|2026-11-20 10:11:12"}},
    {"a day is added to a date",
     "",
     "select cast('2026-12-31 12:00' as datetime)+1",
     {"2027-01-01 12:00:00"}},
    {"functions of texts count characters",
     "",
     "select len('中文 '),left('中文字',2),right('中文字',1),substring('中文字',2,1),charindex('文','中文'),upper('ab'),replace("
     "'AbA','a','x')",
     {"2|中文|字|文|2|AB|xbx"}},
    {"characters beyond the first plane count as one", "", "select '😀',left('😀a',2)", {"😀|😀a"}},
};

INSTANTIATE_TEST_SUITE_P(Assignments, ValuesTest, testing::ValuesIn(assignments));
INSTANTIATE_TEST_SUITE_P(Comparisons, ValuesTest, testing::ValuesIn(comparisons));
INSTANTIATE_TEST_SUITE_P(Sums, ValuesTest, testing::ValuesIn(sums));

}  // namespace
}  // namespace goodsbook::engine::test
