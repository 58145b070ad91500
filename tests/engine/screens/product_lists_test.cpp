#include <gtest/gtest.h>

#include "tests/engine/screens/shop.h"

// What the screens of products ask for: the list with its filters, pictures, history, prices, receipts,
// labels.
namespace goodsbook::engine::test {
namespace {

class ProductListsTest : public testing::TestWithParam<StatementRow> {};

TEST_P(ProductListsTest, GivesTheRows) {
  expectAnswer(GetParam());
}

const std::string listHead =
    " SELECT d1801.wl_id,d1801.wl_name,d1801.wl_gg,d1004.class_id, d1004.class_name,D1801.dwcount,d1003.dw_id,d1003.dw_name,"
    "d1801.cd, d1801.wl_ys,d1801.CHECK_KC,";
const std::string listTail =
    "d1801dw.sj,d1801dw.vipsj,d1801dw.pfj,d1801dw.pfj1,d1801dw.pfj2,d1801dw.pfj3,d1801dw.pfj4,d1801dw.tm,d1801.pym, "
    "sys_user.user_id,sys_user.user_name,d1801.bdate,d1801.edate,d1801.note,d1801.dw_zh,d1801.DW_J_NAME,d1801.TMC FROM "
    "d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id "
    "INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id  AND (D1801DW.T "
    "= 1)  ";
const std::string list = listHead + "d1801.dj,d1801dw.cgj," + listTail;
const std::string pictures =
    " SELECT d1801.wl_id,d1801.wl_name,D1801.PICT FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN "
    "sys_user ON d1801.user_id = sys_user.user_id INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON "
    "d1801dw.dw_id = d1003.dw_id INNER JOIN (select TM,COUNT(TM) AS TMC FROM (SELECT TM from d1801dw union all SELECT TM "
    "from D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM=TM.TM AND (D1801DW.T = 1)  ";
const std::string cola =
    "A001|可口可乐|330ml|01|饮料|1|01|瓶|上海|1|0|1.5|2|3.5|3.2|3|0|0|0|0|690001|KKKL|ADMIN|系统管理员|2026-01-05 "
    "08:30:00|NULL||1||2";
const std::string sprite =
    "A002|雪碧|330ml|0101|碳酸|2|01|瓶|上海|1|1|1.4|1.9|3.4|3.1|2.9|0|0|0|0|690002|XB|U1|张三|2026-02-10 "
    "00:00:00|2026-03-01 12:00:00|热销|24|箱|1";
const std::string biscuit =
    "A003|饼干|NULL|02|食品|1|03|kg|NULL|0|0|3.25|8|12.8|12|11|0|0|0|0|690004|BG|ADMIN|系统管理员|2026-02-28 "
    "23:59:59|2026-02-28 00:00:00|NULL|1|NULL|1";
const std::string byCode = " order by d1801.wl_id";

std::string filtered(const std::string& condition) {
  return list + " where " + condition + byCode;
}

const StatementRow lists[] = {
    {"the list leaves out what has no category", "", list + byCode, {cola, sprite, biscuit}},
    {"the list without cost prices has a zero",
     "",
     listHead + "0.0 as dj,d1801dw.cgj," + listTail + " where d1801.wl_id='A001'",
     {"A001|可口可乐|330ml|01|饮料|1|01|瓶|上海|1|0|0|2|3.5|3.2|3|0|0|0|0|690001|KKKL|ADMIN|系统管理员|2026-01-05 "
      "08:30:00|NULL||1||2"}},
    {"a text is looked for in four columns",
     "",
     filtered(
         " ((D1801DW.TM LIKE '%0002%') or (D1801.WL_ID LIKE '%0002%') or (D1801.WL_name LIKE '%0002%') or "
         "(D1801.PYM LIKE '%0002%'))"),
     {sprite}},
    {"a text is found in any case",
     "",
     filtered(
         " ((D1801DW.TM LIKE '%kk%') or (D1801.WL_ID LIKE '%kk%') or (D1801.WL_name LIKE '%kk%') or (D1801.PYM LIKE "
         "'%kk%'))"),
     {cola}},
    {"a text is equal to one of four columns",
     "",
     filtered(" ((D1801DW.TM='xb') or (D1801.WL_ID='xb') or (D1801.WL_name='xb') or (D1801.PYM='xb'))"),
     {sprite}},
    {"a specification, a category and a flag",
     "",
     filtered("(D1801.WL_GG LIKE '%330%') and (D1801.CLASS_ID = '0101') and (D1801.WL_YS = '1')"),
     {sprite}},
    {"only what is not valid", "", filtered("D1801.WL_YS = '0'"), {biscuit}},
    {"made or changed on a day",
     "",
     filtered(
         "  ((d1801.bdate>='2026-02-28') AND (d1801.bdate<'2026-03-01')) or  ((d1801.edate>='2026-03-01') AND "
         "(d1801.edate<'2026-03-02')) "),
     {sprite, biscuit}},
    {"the whole filter, wrapped",
     "",
     list + " where (" +
         "  ((d1801.bdate>='2026-02-28') AND (d1801.bdate<'2026-03-01')) or  ((d1801.edate>='2026-03-01') " +
         "AND (d1801.edate<'2026-03-02')) ) and (D1801.WL_YS = '1')",
     {sprite}},
};

const StatementRow pictureRows[] = {
    {"the picture browser gives a row for each main unit",
     "",
     pictures + "order by d1801.wl_id",
     {"A001|可口可乐|NULL", "A002|雪碧|NULL", "A003|饼干|NULL"}},
    {"the picture browser with a filter",
     "update D1801 set pict=0x01FF where WL_ID='A002'",
     pictures +
         " Where  ((D1801DW.TM LIKE '%A002%') or (D1801.WL_ID LIKE '%A002%') or (D1801.WL_name LIKE '%A002%') or "
         "(D1801.PYM LIKE '%A002%'))",
     {"A002|雪碧|0x01FF"}},
    {"the picture of a product", "", "select WL_ID,pict from D1801 where wl_id='A001'", {"A001|NULL"}},
    {"the company's picture",
     "insert into sys_co values('1','样例商店',0xFFD8)",
     "select id as pict_id,co as pict_name, mod_pict as pict from sys_co",
     {"1|样例商店|0xFFD8"}},
    {"a product without history", "", "select * from d1801b where wl_id='A001'", {}},
};

const StatementRow lookups[] = {
    {"a code that is taken", "", "select wl_id from D1801 where wl_id='a001 '", {"A001"}},
    {"a code that is free", "", "select wl_id from D1801 where wl_id='A009'", {}},
    {"the number of a unit row",
     "",
     "select adw from D1801dw where wl_id='A003'",
     {"{{select adw from D1801DW where WL_ID='A003'}}"}},
    {"the units of a product, main unit first",
     "",
     "select *,0 AS ADDFLAG from D1801dw where wl_id='A002' order by T DESC,dw_id",
     {"1|A002|01|690002|1|3.4|3.1|2.9|0|0|0|0|1.9|{{select adw from D1801DW where TM='690002'}}|NULL|NULL|0",
      "0|A002|02|690003|24|80|75|70|1|2|3|4|45.6|{{select adw from D1801DW where TM='690003'}}|NULL|NULL|0"}},
    {"the units", "", "select dw_id,dw_name from D1003", {"01|瓶", "02|箱", "03|kg"}},
    {"a product with negative stock", "", "select wl_id from D1802 where wl_id='A002' and kc<0", {"A002"}},
    {"a product without negative stock", "", "select wl_id from D1802 where wl_id='A001' and kc<0", {}},
    {"the last purchase price",
     "",
     "SELECT TOP 1 D8202A.DJ FROM D8202A INNER JOIN D8202 ON D8202A.NOID = D8202.NOID WHERE D8202A.WL_ID = 'A002' ORDER "
     "BY D8202.BDATE DESC",
     {"1.8"}},
    {"a product that was never bought",
     "",
     "SELECT TOP 1 D8202A.DJ FROM D8202A INNER JOIN D8202 ON D8202A.NOID = D8202.NOID WHERE D8202A.WL_ID = 'A001' ORDER "
     "BY D8202.BDATE DESC",
     {}},
    {"a barcode that products have",
     "",
     "SELECT '本地库' as C,D1801DW.TM, D1801.WL_NAME, D1801.WL_GG, D1003.DW_NAME, D1801.CD,D1801DW.SJ, D1801DW.CGJ, "
     "D1801.BDATE, D1801.EDATE, D1801.WL_ID FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN D1003 "
     "ON D1801DW.DW_ID = D1003.DW_ID where D1801DW.tm='690001' order by D1801.WL_ID",
     {"本地库|690001|可口可乐|330ml|瓶|上海|3.5|2|2026-01-05 08:30:00|NULL|A001",
      "本地库|690001|无类商品|x|瓶||1|1|2026-03-15 00:00:00|NULL|A004"}},
    {"a barcode of the sheet that exists", "", "SELECT TM FROM D1801DW WHERE TM='690003'", {"690003"}},
    {"the extra barcodes of a unit",
     "",
     "select TM from D1801DWTM where ADW={{select adw from D1801DW where TM='690002'}}",
     {"690004"}},
    {"the prices of the warehouses, blank where there is none",
     "",
     "SELECT D1007.CK_ID, D1007.CK_NAME, D1801DWSJ.SJ, D1801DWSJ.VIPSJ FROM D1007 LEFT OUTER JOIN D1801DWSJ ON "
     "D1801DWSJ.CK_ID = D1007.CK_ID AND D1801DWSJ.ADW ={{select adw from D1801DW where WL_ID='A001'}}",
     {"01|总仓|3.3|3", "02|分仓|NULL|NULL"}},
};

const std::string receipts =
    " SELECT TOP 5 d8202.noid,d1103.kh_gys_id,d1103.kg_name,d1007.ck_id, d1007.ck_name,d8202.bdate,d8202.edate,"
    "d1011.send_id, d1011.send_name, sys_user.user_id,sys_user.user_name, D1101.YW_ID, D1101.YW_NAME, D1010.JY_ID, "
    "D1010.JY_NAME,d8202.note,d8202.t,sk,sdate FROM d8202 INNER JOIN d1103 ON d8202.kh_gys_id = d1103.kh_gys_id INNER "
    "JOIN sys_user ON d8202.user_id = sys_user.user_id INNER JOIN d1007 ON d8202.ck_id = d1007.ck_id INNER JOIN d1011 ON "
    "d8202.send_id = d1011.send_id INNER JOIN   D1101 ON D8202.YW_ID = D1101.YW_ID INNER JOIN   D1010 ON D8202.JY_ID = "
    "D1010.JY_ID";
const std::string newest =
    "26110002|S001|供应商|02|分仓|2026-11-02 00:00:00|NULL|1|自提|U1|张三|Y1|赵六|01|现金|急|0|5.5|2026-11-03 00:00:00";
const std::string tagHead =
    "SELECT D1801.WL_ID, D1801.WL_NAME, D1801.WL_GG, D1004.CLASS_ID, D1004.CLASS_NAME, D1801.DWCOUNT, D1003.DW_ID, "
    "D1003.DW_NAME, D1801.CD, D1801.WL_YS, D1801.CHECK_KC, D1801.DJ, D1801DW.SJ, D1801DW.VIPSJ, D1801DW.PFJ, D1801DW.PFJ1, "
    "D1801DW.PFJ2, D1801DW.PFJ3, D1801DW.PFJ4, D1801DW.CGJ, D1801DW.TM, D1801.PYM, SYS_USER.USER_ID, SYS_USER.USER_NAME, "
    "D1801.BDATE, D1801.EDATE, D1801.NOTE, D1801.DW_ZH, D1801.DW_J_NAME, D1801.TMC FROM D1801 INNER JOIN D1004 ON "
    "D1801.CLASS_ID = D1004.CLASS_ID INNER JOIN SYS_USER ON D1801.USER_ID = SYS_USER.USER_ID INNER JOIN D1801DW ON "
    "D1801.WL_ID = D1801DW.WL_ID INNER JOIN D1003 ON D1801DW.DW_ID = D1003.DW_ID AND D1801DW.T = 1 WHERE ";
const std::string spriteTag =
    "A002|雪碧|330ml|0101|碳酸|2|01|瓶|上海|1|1|1.4|3.4|3.1|2.9|0|0|0|0|1.9|690002|XB|U1|张三|2026-02-10 "
    "00:00:00|2026-03-01 12:00:00|热销|24|箱|1";

const StatementRow labels[] = {
    {"the newest receipts first",
     "",
     receipts + " order by d8202.noid desc ",
     {newest,
      "26110001|S001|供应商|01|总仓|2026-11-01 00:00:00|NULL|1|自提|ADMIN|系统管理员|Y1|赵六|01|现金||1|0|NULL"}},
    {"one receipt", "", receipts + " where d8202.noid='26110002' order by d8202.noid desc ", {newest}},
    {"the lines of a receipt, through a join whose ON comes later",
     "",
     " SELECT d8202a.noid,d8202a.id,d1801.wl_id,d1801.wl_name,d1801.wl_gg, d1003.dw_name,d8202a.sl,3 as "
     "tmsl,d8202a.dj,d8202a.money,D8202A.sl_return, D8202A.DW_J, D8202A.DW_L,D8202A.DW_ZH, D1801.CD,  D1801DW.SJ, "
     "D1801DW.VIPSJ, d8202a.note,d1003.dw_id, d8202a.d8201aid,d8202a.adw,D1801DW.TM,d8202a.jdate FROM d1801dw INNER JOIN "
     "d1003 ON d1801dw.dw_id = d1003.dw_id INNER JOIN d1801 INNER JOIN d8202a ON d1801.wl_id = d8202a.wl_id ON "
     "d1801dw.adw = d8202a.adw  WHERE (d8202a.NOID  = '26110002')",
     {"26110002|1|A002|雪碧|330ml|瓶|5|3|1.8|9|0|0|5|1|上海|3.4|3.1|n|01|0|{{select adw from D1801DW where TM='690002'}}|690002|NULL"}},
    {"a product by its barcode",
     "",
     tagHead + "(D1801DW.TM='690002') OR (D1801.WL_ID='690002')",
     {spriteTag}},
    {"a product by its code", "", tagHead + "(D1801DW.TM='a002') OR (D1801.WL_ID='a002')", {spriteTag}},
    {"no product by a barcode of its second unit",
     "",
     tagHead + "(D1801DW.TM='690003') OR (D1801.WL_ID='690003')",
     {}},
    {"the layout of the labels",
     "insert into D1800 values('K1','可乐','瓶','P',3);insert into FKW values(1,2,'K1',4.5);",
     "SELECT FKW.COL_ID, FKW.M_INDEX, D1800.K_ID, D1800.WL_NAME, D1800.DW_NAME,  D1800.PP, D1800.PFJ, FKW.M FROM FKW INNER "
     "JOIN D1800 ON FKW.K_ID = D1800.K_ID ",
     {"1|2|K1|可乐|瓶|P|3|4.5"}},
};

INSTANTIATE_TEST_SUITE_P(Lists, ProductListsTest, testing::ValuesIn(lists));
INSTANTIATE_TEST_SUITE_P(Pictures, ProductListsTest, testing::ValuesIn(pictureRows));
INSTANTIATE_TEST_SUITE_P(Lookups, ProductListsTest, testing::ValuesIn(lookups));
INSTANTIATE_TEST_SUITE_P(Labels, ProductListsTest, testing::ValuesIn(labels));

}  // namespace
}  // namespace goodsbook::engine::test
