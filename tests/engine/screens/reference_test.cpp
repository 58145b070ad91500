#include <gtest/gtest.h>

#include "tests/engine/screens/shop.h"

// The statements of the reference tables: flat tables, trees, warehouses with rights, staff, partners,
// accounts.
namespace goodsbook::engine::test {
namespace {

class ReferenceTest : public testing::TestWithParam<StatementRow> {};

TEST_P(ReferenceTest, LeavesTheRows) {
  expectAnswer(GetParam());
}

const StatementRow flatTables[] = {
    {"units: list", "", "select * From D1003", {"01|瓶|P|", "02|箱|X|24瓶", "03|kg|KG|NULL"}},
    {"units: code check", "", "select * from d1003 where dw_id='01'", {"01|瓶|P|"}},
    {"units: add",
     "insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('KG','公斤','GJ','')",
     "select * from d1003 where dw_id='kg'",
     {"KG|公斤|GJ|"}},
    {"units: change",
     "update D1003 set dw_name='千克',PYM='QK',dw_note='1000g' where dw_id='03'",
     "select * from d1003 where dw_id='03'",
     {"03|千克|QK|1000g"}},
    {"units: delete",
     "delete from D1003 Where dw_id='01'",
     "select * From D1003",
     {"02|箱|X|24瓶", "03|kg|KG|NULL"}},
    {"units: a code that is taken",
     "insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('01','x','X','')",
     "select * from d1003 where dw_id='01'",
     {"01|瓶|P|"},
     2627},
    {"delivery: list", "", "select * From d1011", {"1|自提|ZT"}},
    {"delivery: code check", "", "select send_id from D1011 where send_id='1'", {"1"}},
    {"delivery: add",
     "insert into D1011 (send_id,send_name,PYM)ValueS('2','送货','SH')",
     "select * From d1011",
     {"1|自提|ZT", "2|送货|SH"}},
    {"delivery: change",
     "update D1011 set send_name='送货',PYM='SH' where send_id='1'",
     "select * From d1011",
     {"1|送货|SH"}},
    {"delivery: delete", "delete from d1011 Where send_id='1'", "select * From d1011", {}},
    {"payment: list", "", "SELECT * FROM D1012 ", {"1|月结|YJ"}},
    {"payment: code check", "", "select ff_id from D1012 where ff_id='9'", {}},
    {"payment: add",
     "insert into D1012 (FF_id,pym,FF_name)ValueS('2','XJ','现结')",
     "SELECT * FROM D1012 ",
     {"1|月结|YJ", "2|现结|XJ"}},
    {"payment: change",
     "update D1012 set ff_name='季结',PYM='JJ' where ff_id='1'",
     "SELECT * FROM D1012 ",
     {"1|季结|JJ"}},
    {"payment: delete", "delete from D1012 Where FF_id='1'", "SELECT * FROM D1012 ", {}},
    {"currencies: list", "", "select * From D1001", {"1|人民币|RMB||1|1", "2|美元|MY||0|7.123456"}},
    {"currencies: code check", "", "select hb_id from D1001 where hb_id='2'", {"2"}},
    {"currencies: add",
     "insert into D1001 (hb_id,hb_name,pym,hb_note,hb_bw,hb_hl)ValueS('3','欧元','OY','',0,7.8)",
     "select * From D1001 where hb_id='3'",
     {"3|欧元|OY||0|7.8"}},
    {"currencies: change, the code too",
     "update D1001 set hb_id='3',PYM='M',hb_name='美金',hb_note='x',hb_bw=0,hb_hl=7.2 where hb_id='2'",
     "select * From D1001",
     {"1|人民币|RMB||1|1", "3|美金|M|x|0|7.2"}},
    {"currencies: a rate that was left empty",
     "update D1001 set hb_id='3',PYM='M',hb_name='美金',hb_note='x',hb_bw=0,hb_hl= where hb_id='2'",
     "select hb_id From D1001",
     {"1", "2"},
     156},
    {"currencies: delete", "delete from D1001 Where hb_id='2'", "select hb_id From D1001", {"1"}},
};

const StatementRow trees[] = {
    {"categories: list with counts",
     "",
     "SELECT D1004.CLASS_ID, D1004.CLASS_NAME + ' (' + CONVERT(varchar(10),COUNT(D1801.WL_ID)) + ')' AS CLASS_NAME, "
     "D1004.OID FROM D1004 LEFT OUTER JOIN D1801 ON D1004.CLASS_ID = D1801.CLASS_ID GROUP BY D1004.CLASS_ID, "
     "D1004.CLASS_NAME, D1004.OID ORDER BY D1004.OID, D1004.CLASS_ID",
     {"0101|碳酸 (1)|01", "01|饮料 (1)|Z", "02|食品 (1)|Z"}},
    {"categories: code check", "", "select * from D1004 where CLASS_id='01'", {"01|饮料||Z|YL"}},
    {"categories: open",
     "",
     "SELECT CLASS_ID, CLASS_NAME, CLASS_NOTE, OID FROM D1004 WHERE (CLASS_id ='0101')",
     {"0101|碳酸||01"}},
    {"categories: add",
     "insert into D1004 ValueS('03','日用','注','Z','RY')",
     "select * from D1004 where CLASS_id='03'",
     {"03|日用|注|Z|RY"}},
    {"categories: change",
     "UPDATE D1004 SET  class_NAME = '酒水',PYM='JS', class_NOTE = 'n' where class_id='01'",
     "select * from D1004 where CLASS_id='01'",
     {"01|酒水|n|Z|JS"}},
    {"categories: delete", "delete from d1004 Where class_id='0101'", "select count(*) from D1004", {"2"}},
    {"departments: list",
     "",
     "SELECT BM_ID, BM_NAME, BM_ZG, BM_NOTE, OID FROM D1008 ORDER BY OID,BM_ID ",
     {"B1|采购部|王五||Z"}},
    {"departments: code check", "", "select * from d1008 where bm_id='b1'", {"B1|采购部|CGB|王五||Z"}},
    {"departments: open",
     "",
     "SELECT BM_ID, BM_NAME, BM_ZG, BM_NOTE, OID FROM D1008 WHERE (BM_id ='B1')",
     {"B1|采购部|王五||Z"}},
    {"departments: add",
     "insert into D1008 (bm_id,bm_name,pym,bm_zg,bm_note,oid) ValueS('B2','一组','YZ','','','B1')",
     "select * from d1008 where bm_id='B2'",
     {"B2|一组|YZ|||B1"}},
    {"departments: change",
     "update d1008 set bm_name='采购',pym='CG',bm_zg='李四',bm_note='n' where BM_id='B1'",
     "select * from d1008 where bm_id='B1'",
     {"B1|采购|CG|李四|n|Z"}},
    {"departments: delete", "delete from d1008 Where BM_id='B1'", "select count(*) from D1008", {"0"}},
    {"regions: list", "", "SELECT  * from  D1002 ORDER BY  OID,ADDR_ID ", {"01|华北|张三|010|||Z"}},
    {"regions: code check", "", "select * from d1002 where addr_id='02'", {}},
    {"regions: open", "", "SELECT * FROM D1002 WHERE (D1002.addr_id ='01')", {"01|华北|张三|010|||Z"}},
    {"regions: add",
     "insert into D1002 (addr_ID, addr_NAME, addr_GL, addr_TEL, addr_ADDR, "
     "addr_NOTE,OID)ValueS('0101','北京','','','','','01')",
     "select * from d1002 where addr_id='0101'",
     {"0101|北京|||||01"}},
    {"regions: change",
     "update D1002 set addr_NAME='北方',addr_GL='',addr_TEL='',addr_ADDR='x',addr_NOTE='y' where addr_id='01'",
     "select * from d1002 where addr_id='01'",
     {"01|北方|||x|y|Z"}},
    {"regions: delete", "delete from d1002 Where ADDR_id='01'", "select count(*) from D1002", {"0"}},
};

const std::string rights =
    "SELECT LEFT(U.USER_ID,2) AS G,U.USER_ID, U.USER_NAME, case WHEN(K.W >= 0) then convert(bit,1)  ELSE convert(bit,0) end "
    "as R,case WHEN K.W = 1 then convert(bit,1)  ELSE convert(bit,0) end as W FROM SYS_USER U LEFT OUTER JOIN SYS_USER_CK K "
    "on K.USER_ID = U.USER_ID and K.CK_ID = '05' WHERE (U.T = 1)";

const StatementRow warehouses[] = {
    {"warehouses: list with counts",
     "",
     "SELECT D1007.CK_ID, D1007.CK_NAME + ' (' + CONVERT(varchar(10),COUNT(D1802.WL_ID)) + ')' AS CK_NAME, D1007.OID FROM "
     "D1007 LEFT OUTER JOIN D1802 ON D1007.CK_ID = D1802.CK_ID GROUP BY D1007.CK_ID, D1007.CK_NAME, D1007.OID ORDER BY "
     "D1007.OID, D1007.CK_ID ",
     {"02|分仓 (0)|01", "01|总仓 (2)|Z"}},
    {"warehouses: code check", "", "select * from d1007 where ck_id='01'", {"01|总仓|ZC|||||Z"}},
    {"warehouses: open", "", "SELECT D1007.* FROM D1007  WHERE (D1007.ck_id ='02')", {"02|分仓|FC|||||01"}},
    {"warehouses: add, with a quote and with rights behind it",
     "insert into D1007 ( CK_ID, CK_NAME,PYM, CK_GL, CK_TEL, CK_ADDR, CK_NOTE,OID) "
     "ValueS('05','西仓','XC','','','','it''s','Z')delete from SYS_USER_CK where ck_id='05';insert into SYS_USER_CK "
     "values('ADMIN','05',1);insert into SYS_USER_CK values('U1','05',0);",
     "select CK_NAME,CK_NOTE,(select count(*) from SYS_USER_CK where CK_ID='05') from D1007 where CK_ID='05'",
     {"西仓|it's|2"}},
    {"warehouses: rights of the users who may log in",
     "insert into SYS_USER_CK values('U1','05',0);insert into SYS_USER_CK values('U2','05',1);",
     rights,
     {"AD|ADMIN|系统管理员|0|0", "U1|U1|张三|1|0"}},
    {"warehouses: change, with the rights behind it",
     "update d1007 set CK_NAME='总仓2',pym='ZC',CK_GL='',CK_TEL='1',CK_ADDR='a',CK_NOTE='' where ck_id='01'delete from "
     "SYS_USER_CK where ck_id='01';insert into SYS_USER_CK values('U1','01',1);",
     "select D1007.CK_ID,CK_NAME,CK_TEL,W from D1007 inner join SYS_USER_CK on D1007.CK_ID=SYS_USER_CK.CK_ID",
     {"01|总仓2|1|1"}},
    {"warehouses: delete", "delete from d1007 Where ck_id='02'", "select CK_ID from D1007", {"01"}},
};

INSTANTIATE_TEST_SUITE_P(FlatTables, ReferenceTest, testing::ValuesIn(flatTables));
INSTANTIATE_TEST_SUITE_P(Trees, ReferenceTest, testing::ValuesIn(trees));
INSTANTIATE_TEST_SUITE_P(Warehouses, ReferenceTest, testing::ValuesIn(warehouses));

}  // namespace
}  // namespace goodsbook::engine::test
