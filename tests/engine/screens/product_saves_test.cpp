#include <gtest/gtest.h>

#include "tests/engine/screens/shop.h"

// The batches that save a product: both editors, in every mode.
namespace goodsbook::engine::test {
namespace {

class ProductSavesTest : public testing::TestWithParam<StatementRow> {};

TEST_P(ProductSavesTest, LeavesTheRows) {
  expectAnswer(GetParam());
}

std::string guard(const std::string& code) {
  return "if EXISTS( select c from ( SELECT COUNT(*) AS c FROM D1801DW WHERE (T = 1) AND (WL_ID = '" + code +
         "')GROUP BY T) t where c>1) RAISERROR ('当您把一个已引用的主单位替换时会出现此错误!请把主单位还原回更改前的值', 16, "
         "1,NULL ,NULL ); ";
}

std::string barcodeCount(const std::string& code) {
  return "UPDATE D1801 SET TMC=T.TMC FROM D1801,(SELECT D1801.WL_ID, TM.TMC FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID "
         "= D1801DW.WL_ID INNER JOIN (SELECT TM, COUNT(TM) AS TMC FROM (SELECT TM  FROM D1801DW UNION ALL SELECT TM  FROM "
         "D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM = TM.TM AND D1801DW.T = 1 ) T WHERE D1801.WL_ID=T.WL_ID and "
         "D1801.WL_ID='" +
         code + "';";
}

std::string history(const std::string& code) {
  return "insert into d1801b (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, BDATE,EDATE, T, "
         "NOTE,CD) select WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, getdate(),EDATE, T, "
         "NOTE,CD from d1801 where wl_id='" +
         code + "';";
}

std::string stock(const std::string& code, const std::string& flag) {
  return "INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 '" + code + "'," + flag +
         ",ck_id from d1007;";
}

const std::string header =
    "insert into D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,T,NOTE,cd,dwcount,PYM) "
    "ValueS('N001','新商品','1kg','1','0','01',0,0,0,'ADMIN',GETDATE(),1,'备注','广州','1','XSP');";
const std::string unit =
    "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,cgj) values (1,'N001','01','690002',1,9.9,9,6.5);";
const std::string edited =
    "UPDATE D1801 set WL_NAME='雪碧2',WL_GG='500ml',WL_YS='0',CHECK_KC='1',CLASS_ID='02',NOTE='改',cd='北京',USER_ID='U1',"
    "dwcount='2',pym='XB2',EDATE=GETDATE() where WL_ID='A002';";
const std::string headerOf =
    "select WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,EDATE,T,NOTE,cd,"
    "dwcount,PYM,TMC from D1801 where WL_ID=";
const std::string unitsOf =
    "select T,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ from D1801DW where WL_ID='A002' order by T desc,TM";
const std::string number = "{{select adw from D1801DW where TM='690003'}}";

const StatementRow fullEditor[] = {
    {"a new product: header",
     header + unit + guard("N001") + stock("N001", "0") + barcodeCount("N001"),
     headerOf + "'N001'",
     {"N001|新商品|1kg|1|0|01|0|0|0|ADMIN|2026-11-20 10:11:12|NULL|1|备注|广州|1|XSP|2"}},
    {"a new product: unit without a wholesale price",
     header + unit + guard("N001") + barcodeCount("N001"),
     "select T,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ from D1801DW where WL_ID='N001'",
     {"1|01|690002|1|9.9|9|NULL|6.5"}},
    {"a new product: one stock row, in the first warehouse",
     header + unit + guard("N001") + stock("N001", "0") + barcodeCount("N001"),
     "select WL_ID,CHECK_KC,CK_ID,KC from D1802 where WL_ID='N001'",
     {"N001|0|01|NULL"}},
    {"a new product without a price is refused whole",
     header +
         "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,cgj) values (1,'N001','01','690002',1,,9,6.5);",
     "select WL_ID from D1801 where WL_ID='N001'",
     {},
     102},
    {"a code that is taken is refused whole",
     "delete from D1003;insert into D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,T,NOTE,cd,"
     "dwcount,PYM) ValueS('a001','x','','1','0','01',0,0,0,'ADMIN',GETDATE(),1,'','','1','X');",
     "select count(*) from D1003",
     {"3"},
     2627},
    {"a name with a quote breaks the statement and saves nothing",
     "delete from D1003;UPDATE D1801 set WL_NAME='O'Neil',WL_GG='' where WL_ID='A002';",
     "select count(*) from D1003",
     {"3"},
     102},
    {"a name that is too long is refused",
     "UPDATE D1801 set WL_GG='12345678901234567890123456789012345678901' where WL_ID='A002';",
     "select WL_GG from D1801 where WL_ID='A002'",
     {"330ml"},
     2628},
    {"an edit: header",
     edited + history("A002") + guard("A002") + barcodeCount("A002"),
     headerOf + "'A002'",
     {"A002|雪碧2|500ml|0|1|02|1.4|-14|-10|U1|2026-02-10 00:00:00|2026-11-20 10:11:12|1|改|北京|2|XB2|1"}},
    {"an edit: the history holds the values after it",
     edited + history("A002"),
     "select WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, BDATE,EDATE, T, NOTE,CD from d1801b",
     {"A002|雪碧2|500ml|0|1|02|-10|1.4|-14|U1|2026-11-20 10:11:12|2026-11-20 10:11:12|1|改|北京"}},
    {"an edit of the only unit",
     edited + history("A002") +
         "update d1801dw set dw_id='03',tm='690009',sj='3.6',PFJ='3.1',VIPSJ='3.3',cgj='2.05' where t=1 and wl_id='A002';" +
         guard("A002") + "update d1802 set CHECK_KC=0 where wl_id='A002';" + barcodeCount("A002"),
     unitsOf,
     {"1|03|690009|1|3.6|3.3|3.1|2.05", "0|02|690003|24|80|75|70|45.6"}},
    {"an edit: the stock rows take the flag",
     edited + history("A002") + guard("A002") + "update d1802 set CHECK_KC=0 where wl_id='A002';" +
         barcodeCount("A002"),
     "select CK_ID,KC,CHECK_KC from D1802 where WL_ID='A002'",
     {"01|-10|0"}},
    {"an empty price is a zero",
     "update d1801dw set sj='' where t=1 and wl_id='A002';",
     "select SJ from D1801DW where t=1 and wl_id='A002'",
     {"0"}},
    {"a price that is none is refused",
     "update d1801dw set sj='3,5' where t=1 and wl_id='A002';",
     "select SJ from D1801DW where t=1 and wl_id='A002'",
     {"3.4"},
     8114},
};

const StatementRow units[] = {
    {"a unit is changed",
     edited + "exec SYS_DW @t='0',@adw='" + number +
         "',@tm='690009',@dw_id='02',@abase=12,@cgj=22.8,@pfj=36,@vipsj=38.5,@sj=40;" + guard("A002") +
         barcodeCount("A002"),
     unitsOf,
     {"1|01|690002|1|3.4|3.1|2.9|1.9", "0|02|690009|12|40|38.5|36|22.8"}},
    {"a unit is added",
     edited +
         "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,PFJ,cgj) values (0,'A002','03','690005',6,20,19,18,11);" +
         guard("A002") + barcodeCount("A002"),
     unitsOf,
     {"1|01|690002|1|3.4|3.1|2.9|1.9", "0|02|690003|24|80|75|70|45.6", "0|03|690005|6|20|19|18|11"}},
    {"a unit is deleted",
     edited + "exec SYS_DW @status=0,@t=0,@adw='" + number +
         "',@tm='690003',@dw_id='02',@abase=1,@cgj=1,@vipsj=1,@pfj=1,@sj=1;" + guard("A002") +
         barcodeCount("A002"),
     unitsOf,
     {"1|01|690002|1|3.4|3.1|2.9|1.9"}},
    {"main and second unit change places",
     "exec SYS_DW @t='0',@adw='{{select adw from D1801DW where TM='690002'}}',@tm='690002',@dw_id='01',@abase=1,@cgj=2,@pfj="
     "3,@vipsj=3.2,@sj=3.6;exec SYS_DW @t='1',@adw='" +
         number + "',@tm='690003',@dw_id='02',@abase=1,@cgj=4,@pfj=5,@vipsj=6,@sj=7;" + guard("A002") +
         barcodeCount("A002"),
     unitsOf,
     {"1|02|690003|1|7|6|5|4", "0|01|690002|1|3.6|3.2|3|2"}},
    {"two main units are refused, and nothing stays",
     edited + "exec SYS_DW @t='1',@adw='" + number +
         "',@tm='690003',@dw_id='02',@abase=1,@cgj=4,@pfj=5,@vipsj=6,@sj=7;" + guard("A002") +
         barcodeCount("A002"),
     "select D1801DW.T,WL_NAME from D1801DW inner join D1801 on D1801.WL_ID=D1801DW.WL_ID where TM='690003'",
     {"0|雪碧"},
     50000},
    {"the count of a barcode takes in extra barcodes",
     "insert into D1801DWTM values(99,'690002');" + barcodeCount("A002"),
     "select WL_ID,TMC from D1801 order by WL_ID",
     {"A001|2", "A002|2", "A003|1", "A004|2"}},
};

const std::string quickHeader =
    "insert into D1801 (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, DJ,MONEY,KC,  USER_ID, BDATE, T, "
    "NOTE,cd,PYM,DW_ZH,DW_J_NAME)  "
    "ValueS('Q001','快录','','1','1','01',0,0,0,'U1',GETDATE(),1,'','','KL','12','箱');";
const std::string quickEdited =
    "UPDATE D1801 set WL_NAME='可乐',WL_GG='500ml',WL_YS='1',CHECK_KC='0',CLASS_ID='01',NOTE='',cd='广州',DW_ZH='12',"
    "DW_J_NAME='箱',USER_ID='U1',pym='KL',EDATE=GETDATE() where WL_ID='A001';";
const std::string pricesOf = "select DW_ID,TM,SJ,VIPSJ,PFJ,PFJ1,PFJ2,PFJ3,PFJ4,CGJ from D1801DW where WL_ID=";

const StatementRow quickEditors[] = {
    {"the quick editor adds",
     quickHeader +
         "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'Q001','01','T-1',1,5.5,5,4.5,3);" +
         stock("Q001", "1"),
     "select WL_NAME,DW_ZH,DW_J_NAME,BDATE,EDATE,TMC from D1801 where WL_ID='Q001'",
     {"快录|12|箱|2026-11-20 10:11:12|NULL|NULL"}},
    {"the quick editor adds its unit",
     quickHeader +
         "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'Q001','01','T-1',1,5.5,5,4.5,3);",
     pricesOf + "'Q001'",
     {"01|T-1|5.5|5|4.5|NULL|NULL|NULL|NULL|3"}},
    {"the quick editor with reference prices adds its unit",
     quickHeader + "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,pfj1,pfj2,pfj3,pfj4,cgj) values "
                   "(1,'Q001','01','T-1',1,5.5,5,4.5,4.1,4.2,4.3,4.4,3);",
     pricesOf + "'Q001'",
     {"01|T-1|5.5|5|4.5|4.1|4.2|4.3|4.4|3"}},
    {"the quick editor edits",
     quickEdited + history("A001") +
         "update d1801dw set dw_id='03',tm='690009',pfj='3.1',sj='3.6',vipsj='3.3',cgj='2.05' where t=1 and wl_id='A001';" +
         "update d1802 set CHECK_KC=0 where wl_id='A001';",
     pricesOf + "'A001'",
     {"03|690009|3.6|3.3|3.1|0|0|0|0|2.05"}},
    {"the quick editor with reference prices edits",
     quickEdited + history("A001") +
         "update d1801dw set dw_id='03',tm='690009',pfj='3.1',pfj1='1',pfj2='2',pfj3='3',pfj4='4',sj='3.6',vipsj='3.3',cgj='2."
         "05' where t=1 and wl_id='A001';" +
         "update d1802 set CHECK_KC=0 where wl_id='A001';",
     pricesOf + "'A001'",
     {"03|690009|3.6|3.3|3.1|1|2|3|4|2.05"}},
    {"the quick editor leaves history",
     quickEdited + history("A001"),
     "select WL_NAME,BDATE from d1801b",
     {"可乐|2026-11-20 10:11:12"}},
};

INSTANTIATE_TEST_SUITE_P(FullEditor, ProductSavesTest, testing::ValuesIn(fullEditor));
INSTANTIATE_TEST_SUITE_P(Units, ProductSavesTest, testing::ValuesIn(units));
INSTANTIATE_TEST_SUITE_P(QuickEditors, ProductSavesTest, testing::ValuesIn(quickEditors));

}  // namespace
}  // namespace goodsbook::engine::test
