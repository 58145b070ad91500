#include <gtest/gtest.h>

#include "tests/engine/screens/shop.h"

// The other batches about products: extra barcodes, prices of warehouses, import, deleting, merging.
namespace goodsbook::engine::test {
namespace {

class ProductToolsTest : public testing::TestWithParam<StatementRow> {};

TEST_P(ProductToolsTest, LeavesTheRows) {
  expectAnswer(GetParam());
}

const std::string number = "{{select adw from D1801DW where TM='690002'}}";

const StatementRow details[] = {
    {"extra barcodes, without a mark between the first two statements",
     "delete from D1801DWTM where adw=" + number + "insert into D1801DWTM values(" + number +
         ",'111');insert into D1801DWTM values(" + number + ",'222');",
     "select TM from D1801DWTM where ADW=" + number + " order by TM",
     {"111", "222"}},
    {"no extra barcodes any more",
     "delete from D1801DWTM where adw=" + number,
     "select TM from D1801DWTM",
     {}},
    {"an extra barcode that is too long",
     "delete from D1801DWTM where adw=" + number + "insert into D1801DWTM values(" + number +
         ",'1234567890123456789012345678901');",
     "select TM from D1801DWTM",
     {"690004"},
     2628},
    {"prices of warehouses",
     "delete from D1801DWsj where adw=" + number + "insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values(" +
         number + ",'01','5.5','5');insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values(" + number +
         ",'02','0.00','6');",
     "select CK_ID,SJ,VIPSJ from D1801DWSJ where ADW=" + number + " order by CK_ID",
     {"01|5.5|5", "02|0|6"}},
    {"a price of a warehouse that is none",
     "delete from D1801DWsj where adw=" + number + "insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values(" +
         number + ",'01','x','5');",
     "select count(*) from D1801DWSJ",
     {"2"},
     8114},
};

const std::string imported =
    "insert into D1801 (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, DJ,MONEY,KC,USER_ID,BDATE, T, "
    "NOTE,cd,PYM,DW_ZH,DW_J_NAME)  ValueS('00001','进口商品','500g',1,1,'01',0,0,0,'ADMIN',GETDATE(),1,'','','JKSP','1','');"
    "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'00001','01','6901',1,12.5,11,12.5,0);"
    "INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 '00001',1,ck_id from d1007;";

const StatementRow imports[] = {
    {"an imported row",
     imported,
     "select D1801.WL_ID,WL_NAME,WL_YS,D1801.CHECK_KC,DW_ZH,DW_J_NAME,TM,SJ,PFJ,VIPSJ,CGJ,CK_ID from D1801 inner join D1801DW "
     "on D1801.WL_ID=D1801DW.WL_ID inner join D1802 on D1801.WL_ID=D1802.WL_ID where D1801.WL_ID='00001'",
     {"00001|进口商品|1|1|1||6901|12.5|12.5|11|0|01"}},
    {"emptying before an import",
     "delete from d1801dw;delete from d1801;",
     "select (select count(*) from D1801),(select count(*) from D1801DW)",
     {"0|0"}},
    {"an imported row with an empty price",
     "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'00001','01','6901',1,,11,,0);",
     "select count(*) from D1801DW",
     {"5"},
     102},
    {"an imported row with a price in words",
     "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'00001','01','6901',1,贵,11,贵,0);",
     "select count(*) from D1801DW",
     {"5"},
     207},
    {"a product is deleted by its quoted code",
     "delete from D1801 Where WL_ID='a004'",
     "select WL_ID from D1801 order by WL_ID",
     {"A001", "A002", "A003"}},
};

std::string merge() {
  std::string batch =
      "INSERT INTO D1802 (WL_ID, CK_ID, KC, DJ, CK_KW, CK_ACCL, BDATE, BEGIN_SL, BEGIN_MONEY, CHECK_KC) SELECT "
      "'A001',B.*,0,0,NULL,0,GETDATE(),0,0,(SELECT CHECK_KC FROM D1801 WHERE WL_ID='A001') FROM (SELECT A.CK_ID FROM (";
  const char* documents[] = {"D712A",  "D713A",  "D704A",  "D8401A", "D8402A", "D8403A", "D8300A",
                             "D8301A", "D8302A", "D8303A", "D8102A", "D8103A", "D8202A", "D8203A"};
  for (const char* table : documents) {
    if (table != documents[0]) batch += " UNION ALL ";
    batch += std::string("SELECT CK_ID,WL_ID FROM ") + table;
  }
  batch +=
      " ) A WHERE A.WL_ID='A002' GROUP BY A.CK_ID) B LEFT JOIN (SELECT CK_ID FROM D1802 WHERE WL_ID='A001') C ON "
      "B.CK_ID=C.CK_ID WHERE C.CK_ID IS NULL; "
      "update d8301a set sl=a.sl,money=a.money,kc=a.kc,sl1=a.sl1,sl2=a.sl2,sl3=a.sl3 from (SELECT  I.NOID, I.CK_ID, "
      "SUM(I.SL) AS sl, SUM(I.MONEY) AS money, SUM(I.KC) AS kc, SUM(I.SL1) AS sl1, SUM(I.SL2) AS sl2, SUM(I.SL3) AS sl3 "
      "FROM D8301A I INNER JOIN (SELECT NOID FROM D8301A WHERE (WL_ID='A001') OR (WL_ID='A002') GROUP BY NOID HAVING "
      "COUNT(*)>1) B ON I.NOID=B.NOID WHERE (WL_ID='A001') OR (WL_ID='A002') GROUP BY I.NOID, I.CK_ID) a where "
      "d8301a.noid=a.noid and (WL_ID='A001');"
      "delete from d8301a from (SELECT NOID FROM D8301A WHERE (WL_ID='A001') OR (WL_ID='A002') GROUP BY NOID HAVING "
      "COUNT(*)>1) B where d8301a.noid=b.noid and (WL_ID='A002');";
  for (const char* table : {"D712A", "D713A", "D704A", "d8401A", "d8402A", "d8403A", "d8300A", "d8301A",
                            "d8302A", "d8303A", "d8101A", "d8102A", "d8103A", "d8201A", "d8202A", "d8203A"}) {
    batch += std::string("update  ") + table +
             " set wl_id='A001',adw={{select adw from D1801dw where wl_id='A001'}} where wl_id='A002';";
  }
  return batch + "delete from d1801 where wl_id='A002';";
}

// Documents with both products, with one of them, and with others.
const std::string documents =
    "insert into D8301A values('D1','A001','01',1,1,10,100,1,2,3),('D1','A002','01',2,2,20,200,4,5,6),"
    "('D2','A002','03',2,7,70,700,7,8,9),('D3','A003','01',4,5,50,500,0,0,0);"
    "insert into D712A values('A002','03',2),('A003','04',4);insert into D8101A values('A002','05',2);";

const StatementRow merges[] = {
    {"merging: stock rows where the other product occurs and this one has none",
     documents + merge(),
     "select CK_ID,KC,DJ,CK_KW,CK_ACCL,BDATE,BEGIN_SL,BEGIN_MONEY,CHECK_KC from D1802 where WL_ID='A001' order by CK_ID",
     {"01|100|1.5|NULL|NULL|NULL|NULL|NULL|0", "02|0|0|NULL|0|2026-11-20 10:11:12|0|0|0",
      "03|0|0|NULL|0|2026-11-20 10:11:12|0|0|0"}},
    {"merging: lines of one document are added up",
     documents + merge(),
     "select NOID,WL_ID,CK_ID,SL,MONEY,KC,SL1,SL2,SL3 from D8301A order by NOID",
     {"D1|A001|01|3|30|300|5|7|9", "D2|A001|03|7|70|700|7|8|9", "D3|A003|01|5|50|500|0|0|0"}},
    {"merging: other documents name the product that is kept, with its unit",
     documents + merge(),
     "select WL_ID,CK_ID,case when adw=(select adw from D1801DW where WL_ID='A001') then 1 else 0 end from D712A union all "
     "select WL_ID,CK_ID,case when adw=(select adw from D1801DW where WL_ID='A001') then 1 else 0 end from D8101A order by 2",
     {"A001|03|1", "A003|04|0", "A001|05|1"}},
    {"merging: purchase receipts too",
     documents + merge(),
     "select noid,wl_id from D8202A order by noid",
     {"26110001|A001", "26110002|A001"}},
    {"merging: the other product is gone",
     documents + merge(),
     "select WL_ID from D1801 order by WL_ID",
     {"A001", "A003", "A004"}},
};

INSTANTIATE_TEST_SUITE_P(Details, ProductToolsTest, testing::ValuesIn(details));
INSTANTIATE_TEST_SUITE_P(Imports, ProductToolsTest, testing::ValuesIn(imports));
INSTANTIATE_TEST_SUITE_P(Merges, ProductToolsTest, testing::ValuesIn(merges));

}  // namespace
}  // namespace goodsbook::engine::test
