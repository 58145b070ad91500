#include <gtest/gtest.h>

#include "schema/sample/barcode.h"
#include "schema/sample/sample.h"
#include "schema/upgrade.h"
#include "tests/schema/database.h"

namespace goodsbook::sample {
namespace {

using schema::test::Database;
using schema::test::Table;

constexpr int products = 2000;

Tools toolsFor(Database& database) {
  return {.execute = [&database](std::string_view batch) { database.execute(batch); },
          .initials = [](std::string_view name) { return "P" + std::to_string(name.size() / 3); }};
}

// One shop for all tests that only look at it.
class Shop : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    database_ = std::make_unique<Database>();
    schema::prepare(database_->connection());
    const Tools tools = toolsFor(*database_);
    startingSet(tools);
    sampleGoods(tools, {.products = products, .makePicture = [](int index, std::string_view) {
                          return std::string(static_cast<std::size_t>(index) + 100, 'x');
                        }});
  }
  static void TearDownTestSuite() { database_.reset(); }

  static std::int64_t number(std::string_view select) { return database_->number(select); }
  static Table rows(std::string_view select) { return database_->rows(select); }

 private:
  static inline std::unique_ptr<Database> database_;
};

// What the product list shows; inner joins drop a product that lacks a category, a user or a main unit.
constexpr std::string_view listTables =
    " FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = "
    "sys_user.user_id INNER JOIN d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id "
    " AND (D1801DW.T = 1) ";

TEST_F(Shop, TheProductListShowsEveryProduct) {
  EXPECT_EQ(number("select count(*)" + std::string(listTables)), products);
  EXPECT_EQ(number("select count(*) from D1801"), products);
}

TEST_F(Shop, PartnersAccountsAreThoseThatNumberingDrew) {
  for (const auto* partners :
       {"D1102 where KM_IDB like '2131______'", "D1103 where KM_IDB like '1151______'"}) {
    const std::string from = partners;
    const std::string module = from.starts_with("D1102") ? "113" : "114";
    EXPECT_EQ(number("select count(*) from " + from), number("select count(*) from " + from.substr(0, 5)));
    EXPECT_EQ(number("select convert(int,max(right(KM_IDB,6))) from " + from.substr(0, 5)),
              number("select LAST_NO from SYS_NOID where PREFIX='' and SERIAL_LENGTH=0 and MODULE='" +
                     module + "'"));
  }
}

TEST_F(Shop, EveryProductHasOneMainUnitOfRateOne) {
  EXPECT_EQ(rows("select WL_ID from D1801DW where T=1 group by WL_ID having count(*)<>1"), Table{});
  EXPECT_EQ(number("select count(*) from D1801DW where T=1 and ABASE=1"), products);
  EXPECT_EQ(number("select count(*) from D1801DW where T<>1 and ABASE<=1"), 0);
}

TEST_F(Shop, TheUnitCountIsTheNumberOfUnitRows) {
  EXPECT_EQ(
      rows(
          "select p.WL_ID from D1801 p inner join (select WL_ID,count(*) as c from D1801DW group by WL_ID) u on "
          "p.WL_ID=u.WL_ID where p.dwcount<>u.c"),
      Table{});
}

TEST_F(Shop, TheBarcodeCountIsWhatASaveWouldWrite) {
  EXPECT_EQ(
      rows(
          "SELECT D1801.WL_ID FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN (SELECT TM, "
          "COUNT(TM) AS TMC FROM (SELECT TM FROM D1801DW UNION ALL SELECT TM FROM D1801DWTM) TMP GROUP BY TM) TM ON "
          "D1801DW.TM = TM.TM AND D1801DW.T = 1 where D1801.TMC<>TM.TMC"),
      Table{});
  EXPECT_EQ(number("select count(*) from D1801 where TMC=2"), 3);
}

TEST_F(Shop, BarcodesAreValid) {
  const Table codes = rows("select TM from D1801DW union all select TM from D1801DWTM");
  EXPECT_GT(codes.size(), 2500U);
  for (const auto& row : codes) {
    if (row[0].size() != 13) continue;
    EXPECT_EQ(ean13CheckDigit(row[0]), row[0].back()) << row[0];
  }
  EXPECT_EQ(number("select count(*) from D1801DW where len(TM)<>13 and TM<>WL_ID"), 0);
}

TEST_F(Shop, StockOfTheWarehousesIsTheStockOfTheProduct) {
  EXPECT_EQ(
      rows(
          "select p.WL_ID from D1801 p inner join (select WL_ID,sum(KC) as s from D1802 group by WL_ID) k on "
          "p.WL_ID=k.WL_ID where abs(p.KC-k.s)>0.001"),
      Table{});
  EXPECT_EQ(number("select count(*) from D1801 where abs(MONEY-KC*DJ)>0.01"), 0);
  EXPECT_EQ(
      number(
          "select count(*) from D1802 k inner join D1801 p on k.WL_ID=p.WL_ID where k.KC<0 and p.CHECK_KC=0"),
      0);
  EXPECT_GT(number("select count(*) from D1802 where KC<0"), 0);
  EXPECT_EQ(number("select count(*) from D1802 k left join D1007 w on k.CK_ID=w.CK_ID where w.CK_ID is null"),
            0);
}

TEST_F(Shop, FurtherBarcodesAndPricesBelongToUnitRows) {
  EXPECT_GT(number("select count(*) from D1801DWTM"), 20);
  EXPECT_GT(number("select count(*) from D1801DWSJ"), 20);
  EXPECT_EQ(number("select count(*) from D1801DWTM x left join D1801DW u on x.ADW=u.adw where u.adw is null"),
            0);
  EXPECT_EQ(number("select count(*) from D1801DWSJ x left join D1801DW u on x.ADW=u.adw where u.adw is null"),
            0);
  EXPECT_EQ(rows("select ADW,CK_ID from D1801DWSJ group by ADW,CK_ID having count(*)>1"), Table{});
}

TEST_F(Shop, TheLastHistoryRowIsTheProductAsItIs) {
  EXPECT_EQ(
      rows(
          "select p.WL_ID from D1801 p inner join D1801B b on p.WL_ID=b.WL_ID inner join (select WL_ID,max(noid) as n "
          "from D1801B group by WL_ID) l on b.noid=l.n where p.EDATE is null or p.EDATE<>b.EDATE or p.NOTE<>b.NOTE or "
          "p.WL_YS<>b.WL_YS or p.USER_ID<>b.USER_ID or p.WL_NAME<>b.WL_NAME"),
      Table{});
  EXPECT_GT(number("select count(*) from D1801B"), 500);
}

TEST_F(Shop, TreesHaveTheirParents) {
  EXPECT_EQ(
      rows(
          "select a.CLASS_ID from D1004 a left join D1004 b on a.OID=b.CLASS_ID where b.CLASS_ID is null and a.OID<>'Z'"),
      Table{});
  EXPECT_EQ(
      rows(
          "select a.CK_ID from D1007 a left join D1007 b on a.OID=b.CK_ID where b.CK_ID is null and a.OID<>'Z'"),
      Table{});
  EXPECT_EQ(
      rows(
          "select a.BM_ID from D1008 a left join D1008 b on a.OID=b.BM_ID where b.BM_ID is null and a.OID<>'Z'"),
      Table{});
  EXPECT_EQ(
      rows(
          "select a.addr_ID from D1002 a left join D1002 b on a.OID=b.addr_ID where b.addr_ID is null and a.OID<>'Z'"),
      Table{});
}

TEST_F(Shop, ListsOfPartnersAndStaffLoseNobody) {
  EXPECT_EQ(
      number(
          "SELECT count(*) FROM d1102 INNER JOIN d1011 ON d1102.send_id = d1011.send_id INNER JOIN d1002 ON "
          "d1102.addr_id = d1002.addr_id INNER JOIN D1101 ON D1102.KM_IDA = D1101.YW_ID"),
      number("select count(*) from D1102"));
  EXPECT_EQ(
      number(
          "SELECT count(*) FROM d1103 INNER JOIN d1011 ON d1103.send_id = d1011.send_id INNER JOIN d1002 ON "
          "d1103.addr_id = d1002.addr_id"),
      number("select count(*) from D1103"));
  EXPECT_EQ(number("SELECT count(*) FROM D1101 INNER JOIN  D1008 ON D1101.BM_ID = D1008.BM_ID"),
            number("select count(*) from D1101"));
  EXPECT_EQ(number("select count(*) from D1010 where CLASSID=0 and not exists (select 1 from D6801 where "
                   "D6801.km_id=D1010.KM_ID and km_id like '1001%')"),
            0);
  EXPECT_EQ(number("select count(*) from D1010 where CLASSID=1 and not exists (select 1 from D6801 where "
                   "D6801.km_id=D1010.KM_ID and km_id like '1002%')"),
            0);
}

TEST_F(Shop, PurchaseReceiptsAreListedWithTheirLines) {
  const Table heads = rows(
      "SELECT TOP 5 d8202.noid FROM d8202 INNER JOIN d1103 ON d8202.kh_gys_id = d1103.kh_gys_id INNER JOIN sys_user ON "
      "d8202.user_id = sys_user.user_id INNER JOIN d1007 ON d8202.ck_id = d1007.ck_id INNER JOIN d1011 ON d8202.send_id = "
      "d1011.send_id INNER JOIN   D1101 ON D8202.YW_ID = D1101.YW_ID INNER JOIN   D1010 ON D8202.JY_ID = D1010.JY_ID order by "
      "d8202.noid desc ");
  ASSERT_EQ(heads.size(), 5U);
  EXPECT_EQ(heads[0][0], "JH2610310040");
  EXPECT_EQ(
      number(
          "SELECT count(*) FROM d1801dw INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id INNER JOIN d1801 INNER JOIN "
          "d8202a ON d1801.wl_id = d8202a.wl_id ON d1801dw.adw = d8202a.adw "),
      number("select count(*) from D8202A"));
  EXPECT_EQ(number("select count(*) from D8202A where abs(money-sl*dj)>0.001"), 0);
}

TEST_F(Shop, PicturesAreStored) {
  EXPECT_EQ(number("select count(*) from D1801 where pict is not null"), 36);
  EXPECT_EQ(rows("select co,mod_pict from sys_co"), (Table{{"样例商店", "100 bytes"}}));
  EXPECT_EQ(rows("select pict from D1801 where WL_ID='000002'"), (Table{{"102 bytes"}}));
}

TEST(NewShop, HasWhatTheFirstProductNeeds) {
  Database database;
  schema::prepare(database.connection());
  startingSet(toolsFor(database));
  EXPECT_EQ(database.rows("select hb_name,hb_bw,hb_hl from D1001"), (Table{{"人民币", "1", "1"}}));
  EXPECT_EQ(database.rows("select addr_ID,OID from D1002"), (Table{{"01", "Z"}}));
  EXPECT_GE(database.number("select count(*) from D1003"), 10);
  EXPECT_EQ(database.rows("select km_id from D6801 where len(km_id)=4 order by km_id"),
            (Table{{"1001"}, {"1002"}}));
  EXPECT_EQ(database.number("select count(*) from D1801"), 0);
}

TEST(NewShop, OfAHandfulOfProductsIsWhole) {
  Database database;
  schema::prepare(database.connection());
  startingSet(toolsFor(database));
  sampleGoods(toolsFor(database), {.products = 3});
  EXPECT_EQ(database.number("select count(*)" + std::string(listTables)), 3);
  EXPECT_GT(database.number("select count(*) from D8202A"), 0);
}

}  // namespace
}  // namespace goodsbook::sample
