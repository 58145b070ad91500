// A product that another program changes or deletes while its editor is open, and what a question before
// deleting tells.
#include <gtest/gtest.h>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ProductConflict : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    product(u"P1"_s, u"可乐"_s);
    openList();
  }
  QString auditLines() { return sql(u"select count(*) as n from SYS_AUDIT"_s)[0][0]; }
};

TEST_F(ProductConflict, AChangeMeanwhileIsAskedAboutAndNoKeepsIt) {
  act(u"Act_Edit"_s);
  sql(u"update D1801 set WL_NAME='雪碧',CD='广州' where WL_ID='P1'"_s);
  type(u"Edit3"_s, u"2L"_s);
  statements();
  answer({u"n"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【P1 可乐】打开后已被其他用户修改：商品名称、产地。\r\n是否仍然保存?"_s});
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(auditLines(), u"0"_s);
  EXPECT_EQ(sql(u"select WL_NAME,WL_GG from D1801"_s), (Table{{u"雪碧"_s, u"500ml"_s}}));
  EXPECT_EQ(text(u"Edit3"_s), u"2L"_s) << "the input stays";
  answer({u"n"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1) << "asked again at the next try";
  click(u"btn_Cancel"_s);
}

TEST_F(ProductConflict, AListReadLongAgoDoesNotBringOldValuesBack) {
  sql(u"update D1801 set WL_NAME='雪碧',CD='广州' where WL_ID='P1';update D1801DW set SJ=99 where WL_ID='P1' and T=1"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"雪碧"_s);
  EXPECT_EQ(text(u"SJ"_s), u"99.00"_s);
  type(u"Edit3"_s, u"2L"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select WL_NAME,WL_GG,CD from D1801"_s), (Table{{u"雪碧"_s, u"2L"_s, u"广州"_s}}));
  EXPECT_EQ(sql(u"select SJ from D1801DW"_s)[0][0].toDouble(), 99);
}

TEST_F(ProductConflict, LookingAtAndCopyingARowOfAnOldListTakeItAsItIsNow) {
  for (const QString& action : {u"Act_View"_s, u"Act_CopyAdd"_s}) {
    act(u"Act_Refresh"_s);
    const QString price = action == "Act_View"_L1 ? u"98"_s : u"99"_s;
    sql(u"update D1801 set WL_NAME='雪碧%1' where WL_ID='P1';update D1801DW set SJ=%1 where WL_ID='P1' and T=1"_s
            .arg(price));
    act(action);
    EXPECT_EQ(text(u"Edit2"_s), u"雪碧"_s + price) << action.toStdString();
    EXPECT_EQ(text(u"SJ"_s).toDouble(), price.toDouble()) << action.toStdString();
    click(u"btn_Cancel"_s);
    EXPECT_EQ(messages(), Lines());
    EXPECT_EQ(rows(u"DBGridEh"_s)[0]["WL_NAME"_L1].toString(), u"雪碧"_s + price);
  }
}

TEST_F(ProductConflict, NamesOfItsCategoryUnitAndUserAreUpToDateToo) {
  sql(u"update D1801 set CLASS_ID='02' where WL_ID='P1';update D1801DW set DW_ID='02' where WL_ID='P1';"
      "update D1004 set CLASS_NAME='零食' where CLASS_ID='02'"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"CLASS_ID"_s) + text(u"CLASS_NAME"_s), u"02零食"_s);
  EXPECT_EQ(text(u"dw_id"_s) + text(u"DW_NAME"_s), u"02箱"_s);
  EXPECT_EQ(statements().size(), 3U) << "the list's row is read by the host itself";
  click(u"btn_Cancel"_s);
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["CLASS_NAME"_L1].toString() + row["DW_NAME"_L1].toString(), u"零食箱"_s);
}

TEST_F(ProductConflict, ARowThatTheListWouldNotShowAnyMoreHasItsValuesFromTheTables) {
  sql(u"update D1801 set CLASS_ID='99',WL_NAME='雪碧' where WL_ID='P1'"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"CLASS_ID"_s) + text(u"Edit2"_s), u"99雪碧"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductConflict, YesSavesAllTheSame) {
  act(u"Act_Edit"_s);
  sql(u"update D1801 set WL_NAME='雪碧' where WL_ID='P1'"_s);
  type(u"Edit3"_s, u"2L"_s);
  statements();
  answer({u"y"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1);
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 1);
  EXPECT_EQ(sql(u"select WL_NAME,WL_GG from D1801"_s), (Table{{u"可乐"_s, u"2L"_s}}));
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

TEST_F(ProductConflict, ADeletedProductIsNotSaved) {
  act(u"Act_Edit"_s);
  sql(u"delete from D1801 where WL_ID='P1'"_s);
  type(u"Edit3"_s, u"2L"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【P1 可乐】已被其他用户删除，不能保存!"_s});
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), Table());
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductConflict, ItsUnitsAndPricesCount) {
  act(u"Act_Edit"_s);
  sql(u"update D1801DW set SJ=6 where WL_ID='P1'"_s);
  answer({u"n"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【P1 可乐】打开后已被其他用户修改：零售价、商品单位。\r\n是否仍然保存?"_s});
  click(u"btn_Cancel"_s);
  act(u"Act_Edit"_s);
  sql(u"insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ) values (0,'P1','02','70',12,60)"_s);
  answer({u"n"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【P1 可乐】打开后已被其他用户修改：商品单位。\r\n是否仍然保存?"_s});
  click(u"btn_Cancel"_s);
}

TEST_F(ProductConflict, StockAndCostGoOnMoving) {
  act(u"Act_Edit"_s);
  sql(u"update D1801 set KC=KC+5,DJ=2.2,MONEY=11 where WL_ID='P1'"_s);
  type(u"Edit3"_s, u"2L"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select WL_GG from D1801"_s), (Table{{u"2L"_s}}));
}

TEST_F(ProductConflict, OtherProductsAndOtherModesAreNoConflict) {
  product(u"P2"_s, u"面包"_s, u"70"_s);
  act(u"Act_Edit"_s);
  sql(u"update D1801 set WL_NAME='馒头' where WL_ID='P2'"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  act(u"Act_CopyAdd"_s);
  sql(u"update D1801 set WL_NAME='雪碧' where WL_ID='P1'"_s);
  type(u"Edit1"_s, u"P3"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
}

TEST_F(ProductConflict, TheLookUpsAreTheHostsOwn) {
  act(u"Act_Edit"_s);
  const Lines opened = statements();
  EXPECT_EQ(std::count_if(opened.begin(), opened.end(),
                          [](const QString& one) { return one.startsWith(u"select * from"_s); }),
            0);
  click(u"btn_ok"_s);
  EXPECT_EQ(statements().size(), 1);
  EXPECT_EQ(auditLines(), u"1"_s);
}

TEST_F(ProductConflict, DeletingTellsWhatUsesAProduct) {
  const auto ask = [this] {
    answer({u"n"_s});
    act(u"Act_Delete"_s);
    const Lines told = messages();
    return told.empty() ? QString() : told.front();
  };
  EXPECT_EQ(ask(), u"是否删除【P1 可乐】?"_s) << "its own units are no use";
  sql(u"insert into D1802 (WL_ID,CK_ID) values ('P1','A');insert into D1802 (WL_ID,CK_ID) values ('P1','B');"
      u"insert into D8202A (noid,wl_id) values ('1','P1');insert into D704A (WL_ID) values ('P1');"
      u"insert into D8403A (WL_ID) values ('P1');insert into D8403A (WL_ID) values ('P9')"_s);
  statements();
  EXPECT_EQ(ask(), u"是否删除【P1 可乐】?\r\n该资料已被使用：商品库存 2 行、进货单 1 行、其他单据 2 行。"_s);
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"P1"_s}}));
}

TEST_F(ProductConflict, BeyondAThousandRowsAreNotCounted) {
  const auto told = [this] {
    answer({u"n"_s});
    act(u"Act_Delete"_s);
    return messages();
  };
  sql(u"insert into D8103A (WL_ID) values ('P1')"_s);
  for (int doubled = 1; doubled < 512; doubled *= 2)
    sql(u"insert into D8103A (WL_ID) select WL_ID from D8103A"_s);
  sql(u"insert into D704A (WL_ID) select top 488 WL_ID from D8103A"_s);
  EXPECT_EQ(told(), Lines{u"是否删除【P1 可乐】?\r\n该资料已被使用：其他单据 1000 行。"_s});
  sql(u"insert into D704A (WL_ID) values ('P1')"_s);
  EXPECT_EQ(told(), Lines{u"是否删除【P1 可乐】?\r\n该资料已被使用：其他单据 1000 行以上。"_s});
}

}  // namespace
}  // namespace goodsbook
