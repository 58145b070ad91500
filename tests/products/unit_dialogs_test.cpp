// What hangs on one saved unit: extra barcodes and prices per warehouse; and the change history.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QTest>

#include "host/controls/TDBGridEh.h"
#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class UnitDialogs : public ProductScreen {
 protected:
  void openDialog(const QString& column) {
    product(u"P1"_s, u"可乐"_s);
    openList();
    act(u"Act_Edit"_s);
    press(u"F6"_s);
    reopen(column);
  }
  void reopen(const QString& column) {
    statements();
    cellClick(u"DBGridEh1"_s, 0, column);
  }
  void leave() {
    click(u"btn_Cancel"_s);
    if (frontClass() == u"TF2101_1"_s) click(u"btn_Cancel"_s);
  }
  Lines batches() {
    Lines texts;
    const QJsonArray all = sent(u"ExecSql"_s);
    for (const QJsonValue& one : all) {
      EXPECT_EQ(one["module"_L1].toString() + one["key"_L1].toString() + one["operation"_L1].toString(),
                u"1011Edit"_s);
      texts.push_back(one["sql"_L1].toString());
    }
    return texts;
  }
};

TEST_F(UnitDialogs, ExtraBarcodesAreReplaced) {
  sql(u"insert into D1801DWTM values (1,'a1');insert into D1801DWTM values (1,'a2');insert into D1801DWTM values (2,'other')"_s);
  openDialog(u"多条码"_s);
  EXPECT_EQ(frontClass(), u"TF2101_TM"_s);
  EXPECT_EQ(caption(), u"一品多码设定"_s);
  EXPECT_EQ(text(u"Memo1"_s), u"a1\na2"_s);
  EXPECT_EQ(text(u"Label1"_s), u"系统提示：换行请按 【CTRL+回车】，本模块点击【确定】后即保存。"_s);
  EXPECT_EQ(text(u"bsSkinButton1"_s), u"清空"_s);
  EXPECT_EQ(statements(), Lines{u"select * from D1801DWTM where ADW=1"_s});
  type(u"Memo1"_s, u"  b1  \n\n   \nb2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      batches(),
      Lines{
          u"delete from D1801DWTM where adw=1insert into D1801DWTM values(1,'b1');insert into D1801DWTM values(1,'b2');"_s});
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  EXPECT_EQ(sql(u"select ADW,TM from D1801DWTM order by TM"_s),
            (Table{{u"1"_s, u"b1"_s}, {u"1"_s, u"b2"_s}, {u"2"_s, u"other"_s}}));
  leave();
}

TEST_F(UnitDialogs, ABarcodeHasThirtyCharactersAtMost) {
  openDialog(u"多条码"_s);
  statements();
  const QString longest(30, u'9');
  type(u"Memo1"_s, u"1\n "_s + longest + u"8 "_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"条码长度不可超过30位!"_s});
  EXPECT_EQ(frontClass(), u"TF2101_TM"_s);
  EXPECT_EQ(batches(), Lines());
  type(u"Memo1"_s, u"   "_s + longest + u"   "_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select TM from D1801DWTM"_s), (Table{{longest}}));
  leave();
}

TEST_F(UnitDialogs, ACorrectedBarcodeStaysOnItsOwnLine) {
  openDialog(u"多条码"_s);
  type(u"Memo1"_s, u"AAA\n"_s + QString(31, u'9'));
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"条码长度不可超过30位!"_s});
  for (const QString& key : {u"1"_s, u"2"_s, u"3"_s}) press(key);
  EXPECT_EQ(text(u"Memo1"_s), u"AAA\n123"_s);
  click(u"btn_Cancel"_s);
  leave();
}

TEST_F(UnitDialogs, EscapeAsksBeforeTypedBarcodesAndPricesAreLost) {
  openDialog(u"多条码"_s);
  press(u"B"_s);
  answer({u"n"_s});
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  reopen(u"区域售价"_s);
  statements();
  for (const QString& field : {u"SJ"_s, u"VIPSJ"_s}) cell(u"DBGridEh"_s, 0, field, u"1"_s);
  press(u"Down"_s);  // the first Esc would otherwise take the row back
  answer({u"y"_s});
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
  EXPECT_EQ(sql(u"select CK_ID,SJ from D1801DWSJ"_s), (Table{{u"A"_s, u"1"_s}}));
  reopen(u"区域售价"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s) << "nothing was changed: no question";
  leave();
}

TEST_F(UnitDialogs, APriceInTheLastRowIsAskedAbout) {
  openDialog(u"区域售价"_s);
  const int last = static_cast<int>(rows(u"DBGridEh"_s).size()) - 1;
  statements();
  for (const QString& field : {u"SJ"_s, u"VIPSJ"_s}) cell(u"DBGridEh"_s, last, field, u"8"_s);
  press(u"Ctrl+Tab"_s);
  answer({u"n"_s});
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
  leave();
}

TEST_F(UnitDialogs, BarcodesThatAnotherProgramAddedAreNotOverwrittenUnasked) {
  openDialog(u"多条码"_s);
  type(u"Memo1"_s, u"mine"_s);
  sql(u"insert into D1801DWTM values (1,'theirs')"_s);
  answer({u"n"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【商品单位】打开后已被其他用户修改：条码。\r\n是否仍然保存?"_s});
  EXPECT_EQ(sql(u"select TM from D1801DWTM"_s), (Table{{u"theirs"_s}}));
  sql(u"delete from D1801DW where adw=1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"【商品单位】已被其他用户删除，不能保存!"_s});
  click(u"btn_Cancel"_s);
  leave();
}

TEST_F(UnitDialogs, APriceThatIsNoNumberIsRefusedInItsCell) {
  openDialog(u"区域售价"_s);
  statements();
  for (const QString& field : {u"SJ"_s, u"VIPSJ"_s}) cell(u"DBGridEh"_s, 0, field, u"."_s);
  click(u"btn_ok"_s);
  const Lines told = messages();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_TRUE(told[0].endsWith(u"的价格应输入数字!"_s)) << told[0].toStdString();
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}})["current"_L1].toInt(), 0);
  click(u"btn_Cancel"_s);
  leave();
}

TEST_F(UnitDialogs, AnEmptyBoxDeletesAllExtraBarcodes) {
  sql(u"insert into D1801DWTM values (1,'a1')"_s);
  openDialog(u"多条码"_s);
  statements();
  click(u"bsSkinButton1"_s);
  EXPECT_EQ(text(u"Memo1"_s), QString());
  EXPECT_EQ(batches(), Lines());
  click(u"btn_ok"_s);
  EXPECT_EQ(batches(), Lines{u"delete from D1801DWTM where adw=1"_s});
  EXPECT_EQ(sql(u"select TM from D1801DWTM"_s), Table());
  leave();
}

TEST_F(UnitDialogs, ClearingAnEmptyBoxChangesNothing) {
  openDialog(u"多条码"_s);
  click(u"bsSkinButton1"_s);
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  sql(u"insert into D1801DWTM values (1,'a1')"_s);
  reopen(u"多条码"_s);
  click(u"bsSkinButton1"_s);
  answer({u"n"_s});
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
  leave();
}

TEST_F(UnitDialogs, RegionalPricesOfEveryWarehouse) {
  sql(u"insert into D1801DWSJ values (1,'B',5.5,4.5);insert into D1801DWSJ values (2,'A',1,1);"
      "insert into D1007 (CK_ID,CK_NAME,OID) values ('C','三店','Z');"
      "insert into D1007 (CK_ID,CK_NAME,OID) values ('D','四店','Z')"_s);
  openDialog(u"区域售价"_s);
  EXPECT_EQ(frontClass(), u"TF2101_SJ"_s);
  EXPECT_EQ(caption(), u"区域售价设定"_s);
  EXPECT_EQ(text(u"Label1"_s), u"系统提示：价格为0或空白将不被保存。本模块确定后即保存。"_s);
  EXPECT_EQ(
      statements(),
      Lines{
          u"SELECT D1007.CK_ID, D1007.CK_NAME, D1801DWSJ.SJ, D1801DWSJ.VIPSJ FROM D1007 LEFT OUTER JOIN D1801DWSJ ON D1801DWSJ.CK_ID = D1007.CK_ID AND D1801DWSJ.ADW =1"_s});
  const QJsonObject list = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}});
  QStringList titles;
  const QJsonArray columns = list["columns"_L1].toArray();
  for (const QJsonValue& column : columns) titles << column["title"_L1].toString();
  EXPECT_EQ(titles, (QStringList{u"库号"_s, u"仓库名称"_s, u"零售价"_s, u"会员价"_s}));
  const QJsonArray cells = list["rows"_L1].toArray();
  ASSERT_EQ(cells.size(), 4);
  EXPECT_EQ(cells[0]["SJ"_L1].toString(), QString());
  EXPECT_EQ(cells[1]["SJ"_L1].toString(), u"5.5"_s);
  const auto prices = [this](int row, const QString& retail, const QString& member) {
    cell(u"DBGridEh"_s, row, u"SJ"_s, retail);
    cell(u"DBGridEh"_s, row, u"VIPSJ"_s, member);
  };
  prices(0, u"6"_s, u"0.00"_s);  // not the text "0": kept
  prices(1, u"7"_s, u"0"_s);     // a price of 0: dropped
  prices(2, u"8"_s, QString());  // only one of the two: dropped
  prices(3, u"9"_s, u"8.5"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      batches(),
      Lines{
          u"delete from D1801DWsj where adw=1insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values(1,'A','6','0.00');insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values(1,'D','9','8.5');"_s});
  EXPECT_EQ(sql(u"select ADW,CK_ID,SJ,VIPSJ from D1801DWSJ order by ADW,CK_ID"_s),
            (Table{{u"1"_s, u"A"_s, u"6"_s, u"0"_s},
                   {u"1"_s, u"D"_s, u"9"_s, u"8.5"_s},
                   {u"2"_s, u"A"_s, u"1"_s, u"1"_s}}));
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  leave();
}

TEST_F(UnitDialogs, BlankPricesDeleteAllRegionalPrices) {
  sql(u"insert into D1801DWSJ values (1,'A',5,4);insert into D1801DWSJ values (1,'B',5,4)"_s);
  openDialog(u"区域售价"_s);
  statements();
  click(u"bsSkinButton1"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[1]["VIPSJ"_L1].toString(), QString());
  click(u"btn_ok"_s);
  EXPECT_EQ(batches(), Lines{u"delete from D1801DWsj where adw=1"_s});
  EXPECT_EQ(sql(u"select CK_ID from D1801DWSJ"_s), Table());
  leave();
}

TEST_F(UnitDialogs, CancelSavesNothing) {
  openDialog(u"多条码"_s);
  statements();
  type(u"Memo1"_s, u"1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(statements(), Lines());
  reopen(u"区域售价"_s);
  statements();
  cell(u"DBGridEh"_s, 0, u"SJ"_s, u"1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(statements(), Lines());
  leave();
}

TEST_F(UnitDialogs, WhoViewsAProductSeesThemAndSavesNothing) {
  sql(u"insert into D1801DWTM values (1,'a1');insert into D1801DWSJ values (1,'B',5.5,4.5)"_s);
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_View"_s);
  press(u"F6"_s);
  const auto nothingToSave = [this] {
    EXPECT_FALSE(get(u"btn_ok"_s)["visible"_L1].toBool());
    EXPECT_FALSE(get(u"bsSkinButton1"_s)["visible"_L1].toBool());
    press(u"F9"_s);
    press(u"Ctrl+Return"_s);
  };
  reopen(u"多条码"_s);
  ASSERT_EQ(frontClass(), u"TF2101_TM"_s);
  EXPECT_EQ(text(u"Memo1"_s), u"a1"_s);
  EXPECT_TRUE(get(u"Memo1"_s)["readonly"_L1].toBool());
  nothingToSave();
  press(u"Esc"_s);
  reopen(u"区域售价"_s);
  ASSERT_EQ(frontClass(), u"TF2101_SJ"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[1]["SJ"_L1].toString(), u"5.5"_s);
  EXPECT_TRUE(get(u"DBGridEh"_s)["readonly"_L1].toBool());
  nothingToSave();
  press(u"Esc"_s);
  EXPECT_EQ(batches(), Lines());
  leave();
}

TEST_F(UnitDialogs, TypingStartsWithThePriceOfTheFirstWarehouse) {
  openDialog(u"区域售价"_s);
  statements();
  for (const QString& key : {u"6"_s, u"Return"_s, u"5"_s, u"Return"_s}) press(key);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      batches(),
      Lines{
          u"delete from D1801DWsj where adw=1insert into  D1801DWSJ (ADW,CK_ID,  SJ, VIPSJ) values(1,'A','6','5');"_s});
  leave();
}

TEST_F(UnitDialogs, TabGoesFromPriceToPriceAndBack) {
  openDialog(u"区域售价"_s);
  for (const QString& key : {u"8"_s, u"Tab"_s, u"7"_s, u"F9"_s}) press(key);
  EXPECT_EQ(sql(u"select CK_ID,SJ,VIPSJ from D1801DWSJ"_s), (Table{{u"A"_s, u"8"_s, u"7"_s}}));
  reopen(u"区域售价"_s);
  for (const QString& key : {u"1"_s, u"Tab"_s, u"2"_s, u"Shift+Backtab"_s, u"3"_s, u"F9"_s}) press(key);
  EXPECT_EQ(sql(u"select CK_ID,SJ,VIPSJ from D1801DWSJ"_s), (Table{{u"A"_s, u"3"_s, u"2"_s}}));
  leave();
}

TEST_F(UnitDialogs, TabGoesOnInTheNextRowsPrices) {
  openDialog(u"区域售价"_s);
  for (const QString& key : {u"1"_s, u"Tab"_s, u"2"_s, u"Tab"_s, u"3"_s, u"Tab"_s, u"4"_s, u"F9"_s})
    press(key);
  EXPECT_EQ(sql(u"select CK_ID,SJ,VIPSJ from D1801DWSJ order by CK_ID"_s),
            (Table{{u"A"_s, u"1"_s, u"2"_s}, {u"B"_s, u"3"_s, u"4"_s}}));
  reopen(u"区域售价"_s);
  for (const QString& key : {u"8"_s, u"Ctrl+T"_s}) press(key);
  EXPECT_TRUE(get(u"DBGridEh"_s)["focused"_L1].toBool());
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 2);
  leave();
}

TEST_F(UnitDialogs, AClickOnATitleLosesNoPriceThatIsBeingTyped) {
  openDialog(u"区域售价"_s);
  press(u"8"_s);
  onGui([] {
    auto* list = QApplication::activeModalWidget()->findChild<TDBGridEh*>(u"DBGridEh"_s);
    const QHeaderView* header = list->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(5, header->height() / 2));
  });
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["SJ"_L1].toString(), u"8"_s);
  click(u"btn_Cancel"_s);
  leave();
}

TEST_F(UnitDialogs, AnErrorOfTheDatabaseLeavesTheInput) {
  sql(u"insert into D1801DWTM values (1,'a1')"_s);
  openDialog(u"多条码"_s);
  type(u"Memo1"_s, u"b'1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2101_TM"_s);
  EXPECT_EQ(text(u"Memo1"_s), u"b'1"_s);
  EXPECT_EQ(sql(u"select TM from D1801DWTM"_s), (Table{{u"a1"_s}}));
  leave();
}

TEST_F(UnitDialogs, TheHistoryOfAnUneditedProductIsEmpty) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  statements();
  click(u"BTN_CHANGE"_s);
  EXPECT_EQ(frontClass(), u"TF2101_2"_s);
  EXPECT_EQ(caption(), u"商品资料更改记录"_s);
  EXPECT_EQ(statements(), Lines{u"select * from d1801b where wl_id='P1'"_s});
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 0);
  press(u"Esc"_s);
  leave();
}

TEST_F(UnitDialogs, TheHistoryShowsEverySavedVersion) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  for (const QString& name : {u"甲"_s, u"乙"_s}) {
    act(u"Act_Edit"_s);
    type(u"Edit2"_s, name);
    click(u"btn_ok"_s);
  }
  act(u"Act_Edit"_s);
  press(u"F11"_s);
  const QJsonObject list = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}});
  QStringList titles;
  const QJsonArray columns = list["columns"_L1].toArray();
  for (const QJsonValue& column : columns) {
    if (column["visible"_L1].toBool())
      titles << column["field"_L1].toString() + u' ' + column["title"_L1].toString();
  }
  EXPECT_EQ(titles.join(u'|').toStdString(),
            "BDATE 更改日期|WL_ID 商品编号|WL_NAME 商品名称|WL_GG 规格|CLASS_ID 类型代号|WL_YS 有效|EDATE "
            "修改日期|USER_ID 登录用户代号|CD 产地|NOTE 备注");
  const QJsonArray versions = list["rows"_L1].toArray();
  ASSERT_EQ(versions.size(), 2);
  EXPECT_EQ(versions[0]["WL_NAME"_L1].toString() + versions[1]["WL_NAME"_L1].toString(), u"甲乙"_s);
  EXPECT_TRUE(versions[0]["BDATE"_L1].toString().startsWith(u"2026-11-20 10:11"_s));
  press(u"Esc"_s);
  leave();
}

}  // namespace
}  // namespace goodsbook
