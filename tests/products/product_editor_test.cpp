// The full product editor: the header, the single unit, numbering, and what a save sends.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QSettings>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

QString guard(const QString& code) {
  return u"if EXISTS( select c from ( SELECT COUNT(*) AS c FROM D1801DW WHERE (T = 1) AND (WL_ID = '%1')GROUP BY T) t where c>1) RAISERROR ('当您把一个已引用的主单位替换时会出现此错误!请把主单位还原回更改前的值', 16, 1,NULL ,NULL ); "_s
      .arg(code);
}
QString barcodeCount(const QString& code) {
  return u"UPDATE D1801 SET TMC=T.TMC FROM D1801,(SELECT D1801.WL_ID, TM.TMC FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN (SELECT TM, COUNT(TM) AS TMC FROM (SELECT TM  FROM D1801DW UNION ALL SELECT TM  FROM D1801DWTM) TMP GROUP BY TM) TM ON D1801DW.TM = TM.TM AND D1801DW.T = 1 ) T WHERE D1801.WL_ID=T.WL_ID and D1801.WL_ID='%1';"_s
      .arg(code);
}

class ProductEditor : public ProductScreen {
 protected:
  void fill(const QString& code) {
    if (!code.isEmpty()) type(u"Edit1"_s, code);
    type(u"Edit2"_s, u"可乐"_s);
    type(u"Edit3"_s, u"500ml"_s);
    type(u"CLASS_ID"_s, u"01"_s);
    type(u"CD"_s, u"上海"_s);
    type(u"NOTE"_s, u"注"_s);
    type(u"dw_id"_s, u"01"_s);
    type(u"TM"_s, u"690"_s);
    type(u"SJ"_s, u"5"_s);
    type(u"VIPSJ"_s, u"4.5"_s);
    type(u"pfj"_s, u"3"_s);
    type(u"CGJ"_s, u"2"_s);
  }
  QString batch() {
    const QJsonArray all = sent(u"ExecSql"_s);
    return all.isEmpty() ? QString() : all.last()["sql"_L1].toString();
  }
};

TEST_F(ProductEditor, LabelsAndLimits) {
  openList();
  act(u"Act_Add"_s);
  EXPECT_EQ(caption(), u"商品基本资料"_s);
  const std::vector<std::tuple<QString, QString, int>> fields{
      {u"Edit1"_s, u"商品编号"_s, 20},   {u"Edit2"_s, u"商品名称"_s, 80}, {u"Edit3"_s, u"规    格"_s, 40},
      {u"CLASS_ID"_s, u"商品分类"_s, 4}, {u"CD"_s, u"产    地"_s, 50},    {u"NOTE"_s, u"备    注"_s, 100},
      {u"dw_id"_s, u"单    位"_s, 2},    {u"TM"_s, u"条    码"_s, 30}};
  for (const auto& [name, label, limit] : fields) {
    EXPECT_EQ(get(name)["title"_L1].toString(), label);
    EXPECT_EQ(get(name)["maxlength"_L1].toInt(), limit) << name.toStdString();
  }
  for (const auto& [name, label] : {std::pair{u"SJ"_s, u"零 售 价"_s},
                                    {u"VIPSJ"_s, u"会 员 价"_s},
                                    {u"pfj"_s, u"批 发 价"_s},
                                    {u"CGJ"_s, u"采 购 价"_s},
                                    {u"DJ"_s, u"加 权 价"_s},
                                    {u"user_name"_s, u"登录用户:"_s},
                                    {u"BDATE"_s, u"登录时间:"_s},
                                    {u"EDATE"_s, u"最后更改:"_s}}) {
    EXPECT_EQ(get(name)["title"_L1].toString(), label);
  }
  EXPECT_EQ(text(u"Label20"_s), u"【一种单位/多种单位】 输入方式切换请按(F6)"_s);
  EXPECT_EQ(type(u"Edit1"_s, u"ab1"_s), u"AB1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, AddStartsEmpty) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Add"_s);
  for (const QString& name :
       {u"Edit1"_s, u"Edit2"_s, u"Edit3"_s, u"CLASS_ID"_s, u"CD"_s, u"NOTE"_s, u"EDATE"_s, u"dw_id"_s})
    EXPECT_EQ(text(name), QString()) << name.toStdString();
  for (const QString& name : {u"TM"_s, u"SJ"_s, u"VIPSJ"_s, u"pfj"_s, u"CGJ"_s, u"DJ"_s})
    EXPECT_EQ(text(name), u"0"_s) << name.toStdString();
  EXPECT_EQ(text(u"user_name"_s), u"系统管理员"_s);
  EXPECT_EQ(text(u"BDATE"_s), u"2026-11-20 10:11:12 "_s);
  EXPECT_FALSE(get(u"BTN_CHANGE"_s)["visible"_L1].toBool());
  press(u"F11"_s);
  EXPECT_EQ(messages(), Lines{u"【增加】的状态下无更改记录,您应该在【修改/查看】状态下浏览更改记录!"_s});
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, AddSendsOneBatch) {
  openList();
  act(u"Act_Add"_s);
  fill(u"p1"_s);
  check(u"YS"_s, true);
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  const QJsonArray all = sent(u"ExecSql"_s);
  ASSERT_EQ(all.size(), 1);
  EXPECT_EQ(all[0]["module"_L1].toString() + all[0]["key"_L1].toString() + all[0]["operation"_L1].toString(),
            u"101P1Add"_s);
  EXPECT_EQ(
      all[0]["sql"_L1].toString().toStdString(),
      (u"insert into D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,MONEY,KC,USER_ID,BDATE,T,NOTE,cd,dwcount,PYM) ValueS('P1','可乐','500ml','1','0','01',0,0,0,'ADMIN',GETDATE(),1,'注','上海','1','KL');"
       "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,cgj) values (1,'P1','01','690',1,5,4.5,2);"_s +
       guard(u"P1"_s) + barcodeCount(u"P1"_s))
          .toStdString());
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["WL_ID"_L1].toString(), u"P1"_s);
  EXPECT_EQ(row["CLASS_NAME"_L1].toString(), u"饮料"_s);
  EXPECT_EQ(row["DW_NAME"_L1].toString(), u"瓶"_s);
  EXPECT_EQ(row["TM"_L1].toString(), u"690"_s);
  EXPECT_EQ(row["USER_NAME"_L1].toString(), u"系统管理员"_s);
  EXPECT_EQ(sql(u"select PFJ,TMC from D1801DW inner join D1801 on D1801.WL_ID=D1801DW.WL_ID"_s),
            (Table{{u"NULL"_s, u"1"_s}}));
}

TEST_F(ProductEditor, ANewProductGetsStockInTheFirstWarehouseWhenTheShopWantsIt) {
  set(u"G_CKCOUNT_C"_s, u"1"_s);
  openList();
  act(u"Act_Add"_s);
  fill(u"P1"_s);
  check(u"check_kc"_s, true);
  click(u"btn_ok"_s);
  EXPECT_TRUE(batch().contains(
      guard(u"P1"_s) +
      u"INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 'P1',1,ck_id from d1007;UPDATE D1801 SET TMC"_s));
  EXPECT_EQ(sql(u"select WL_ID,CK_ID,CHECK_KC from D1802"_s), (Table{{u"P1"_s, u"A"_s, u"1"_s}}));
}

TEST_F(ProductEditor, EditUpdatesAndKeepsTheHistory) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"insert into D1802 (WL_ID,CK_ID,KC,CHECK_KC) values ('P1','A',0,1)"_s);
  openList();
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"BDATE"_s) + text(u"EDATE"_s), u"2026-11-01"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  EXPECT_TRUE(get(u"BTN_CHANGE"_s)["visible"_L1].toBool());
  EXPECT_EQ(text(u"BTN_CHANGE"_s), u"更改记录(F11)"_s);
  EXPECT_EQ(statements().back(), u"select WL_ID,pict from D1801 where wl_id='P1'"_s);
  type(u"Edit2"_s, u"雪碧"_s);
  check(u"check_kc"_s, false);
  type(u"SJ"_s, u"6"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  const QJsonArray all = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(all.size(), 2);
  EXPECT_EQ(all[0]["sql"_L1].toString(), u"select wl_id from D1802 where wl_id='P1' and kc<0"_s);
  EXPECT_EQ(
      all[1]["sql"_L1].toString().toStdString(),
      (u"UPDATE D1801 set WL_NAME='雪碧',WL_GG='500ml',WL_YS='1',CHECK_KC='0',CLASS_ID='01',NOTE='注',cd='上海',USER_ID='ADMIN',dwcount='1',pym='XB',EDATE=GETDATE() where WL_ID='P1';"
       "insert into d1801b (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, BDATE,EDATE, T, NOTE,CD) select WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, getdate(),EDATE, T, NOTE,CD from d1801 where wl_id='P1';"
       "update d1801dw set dw_id='01',tm='69',sj='6',PFJ='3.00',VIPSJ='4.00',cgj='2.50' where t=1 and wl_id='P1';"_s +
       guard(u"P1"_s) + u"update d1802 set CHECK_KC=0 where wl_id='P1';"_s + barcodeCount(u"P1"_s))
          .toStdString());
  EXPECT_EQ(sql(u"select WL_NAME,DJ,CONVERT(varchar(10),BDATE,120) from D1801B"_s),
            (Table{{u"雪碧"_s, u"2"_s, u"2026-11-20"_s}}));
  EXPECT_EQ(sql(u"select CHECK_KC from D1802"_s), (Table{{u"0"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["SJ"_L1].toString().toDouble(), 6);
}

TEST_F(ProductEditor, CopyAddTakesAllButCodeAndCost) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(text(u"Edit1"_s), QString());
  EXPECT_EQ(text(u"DJ"_s), u"0"_s);
  EXPECT_EQ(text(u"Edit2"_s) + text(u"Edit3"_s) + text(u"CLASS_ID"_s) + text(u"CD"_s) + text(u"NOTE"_s),
            u"可乐500ml01上海注"_s);
  EXPECT_EQ(text(u"TM"_s) + text(u"dw_id"_s), u"6901"_s);
  EXPECT_EQ(text(u"SJ"_s).toDouble(), 5);
  EXPECT_FALSE(get(u"BTN_CHANGE"_s)["visible"_L1].toBool());
  type(u"Edit1"_s, u"P2"_s);
  click(u"btn_ok"_s);
  const QJsonArray all = sent(u"ExecSql"_s);
  ASSERT_EQ(all.size(), 1);
  EXPECT_EQ(all[0]["operation"_L1].toString(), u"CopyAdd"_s);
  EXPECT_EQ(sql(u"select TMC from D1801 where WL_ID='P2'"_s), (Table{{u"2"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 2);
}

TEST_F(ProductEditor, ACodeThatIsThereIsRefusedOnLeavingIt) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Add"_s);
  statements();
  type(u"Edit1"_s, u"p1"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{u"商品编号已登记!"_s});
  EXPECT_EQ(statements(), Lines{u"select wl_id from D1801 where wl_id='P1'"_s});
  click(u"btn_Cancel"_s);
  EXPECT_EQ(messages(), Lines());
}

TEST_F(ProductEditor, NegativeStockKeepsItsPermission) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"insert into D1802 (WL_ID,CK_ID,KC) values ('P1','A',3);insert into D1802 (WL_ID,CK_ID,KC) values ('P1','B',-1)"_s);
  openList();
  act(u"Act_Edit"_s);
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"该商品有负库存,不能取消该商品的负库存状态!"_s});
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, TheRuleOnNegativeStockIsNotForNewProducts) {
  sql(u"insert into D1802 (WL_ID,CK_ID,KC) values ('P1','A',-3)"_s);
  openList();
  act(u"Act_Add"_s);
  fill(u"P1"_s);
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 1);
}

TEST_F(ProductEditor, ASaveThatTheDatabaseRefusesKeepsTheInput) {
  openList();
  act(u"Act_Add"_s);
  fill(u"P1"_s);
  type(u"Edit2"_s, u"O'x"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"O'x"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 0);
  EXPECT_EQ(sql(u"select WL_ID from D1801DW"_s), Table());
}

TEST_F(ProductEditor, AnEditThatTheDatabaseRefusesIsToldOnceAndKeepsTheRow) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  type(u"NOTE"_s, u"5' 长"_s);
  type(u"SJ"_s, u"6"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  EXPECT_EQ(text(u"NOTE"_s) + text(u"SJ"_s), u"5' 长6"_s);
  EXPECT_EQ(sql(u"select NOTE,SJ from D1801 inner join D1801DW on D1801.WL_ID=D1801DW.WL_ID"_s),
            (Table{{u"注"_s, u"5"_s}}));
  type(u"NOTE"_s, u"五尺长"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["NOTE"_L1].toString(), u"五尺长"_s);
}

TEST_F(ProductEditor, TheSavedProductCanBeFoundAndDatedInTheList) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Add"_s);
  fill(u"P2"_s);
  click(u"btn_ok"_s);
  const QJsonObject added = rows(u"DBGridEh"_s)[1].toObject();
  EXPECT_EQ(added["PYM"_L1].toString() + added["BDATE"_L1].toString(), u"KL2026-11-20 10:11"_s);
  EXPECT_EQ(added["EDATE"_L1].toString(), QString());
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"P2"_s) << "the new row is the current one";
  EXPECT_EQ(text(u"BDATE"_s), u"2026-11-20"_s);
  type(u"Edit2"_s, u"雪碧"_s);
  click(u"btn_ok"_s);
  const QJsonObject changed = rows(u"DBGridEh"_s)[1].toObject();
  EXPECT_EQ(changed["PYM"_L1].toString() + changed["EDATE"_L1].toString(), u"XB2026-11-20 10:11"_s);
}

TEST_F(ProductEditor, LeavingTheLockedCodeChecksNothing) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  statements();
  click(u"Edit1"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit2"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(statements(), Lines());
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, AutomaticNumbersAreDrawnAtTheSave) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM2"_s, u"4"_s);
  openList();
  act(u"Act_Add"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
  fill({});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"0001"_s}}));
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, ARefusedSaveUsesUpNoNumber) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM2"_s, u"4"_s);
  openList();
  act(u"Act_Add"_s);
  press(u"F6"_s);
  type(u"Edit2"_s, u"可乐"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"请在表格最少输入一种单位,且至少要标志一个主单位!"_s});
  press(u"F6"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"商品分类不能为空!"_s});
  EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
  EXPECT_EQ(sent(u"GetNOID"_s).size(), 0);
  fill({});
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"0001"_s}}));
}

TEST_F(ProductEditor, TheCodeOfADeletedProductWhoseUnitsAreStillThereIsRefused) {
  product(u"000007"_s, u"雪碧"_s);
  openList();
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  messages();
  const QString refused = u"编号【000007】属于已删除的商品，其单位资料仍在，请换一个编号!"_s;
  for (const QString& editor : {u"1"_s, u"0"_s, u"2"_s}) {
    set(u"GPARAM23"_s, editor);
    openList();
    act(u"Act_Add"_s);
    type(u"Edit1"_s, u"000007"_s);
    statements();
    focus(u"Edit2"_s);
    EXPECT_EQ(messages(), Lines{refused}) << editor.toStdString();
    EXPECT_EQ(statements(), Lines{u"select wl_id from D1801 where wl_id='000007'"_s});
    EXPECT_TRUE(get(u"Edit1"_s)["focused"_L1].toBool());
    type(u"Edit1"_s, u"000008"_s);
    focus(u"Edit2"_s);
    EXPECT_EQ(messages(), Lines());
    click(u"btn_Cancel"_s);
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(ProductEditor, TheCostIsAnEditLikeThePricesThatNobodyChanges) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  const QJsonObject cost = get(u"DJ"_s);
  EXPECT_EQ(cost["class"_L1].toString(), get(u"SJ"_s)["class"_L1].toString());
  EXPECT_TRUE(cost["readonly"_L1].toBool());
  EXPECT_EQ(cost["text"_L1].toString(), u"2.00"_s);
  onGui([] {
    const QWidget* window = QApplication::activeModalWidget();
    EXPECT_EQ(window->findChild<QWidget*>(u"DJ"_s)->width(), window->findChild<QWidget*>(u"SJ"_s)->width());
  });
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, AutomaticNumbersMayBeginWithTheCategory) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM1"_s, u"1"_s);
  set(u"GPARAM2"_s, u"3"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, QString());
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit2"_s) << "without a category there is nothing to check yet";
  EXPECT_EQ(messages(), Lines());
  fill({});
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"01001"_s}}));
}

TEST_F(ProductEditor, ANumberByCategoryAsksForTheCategory) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM1"_s, u"1"_s);
  openList();
  act(u"Act_Add"_s);
  statements();
  type(u"Edit2"_s, u"可乐"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"商品分类不能为空!"_s});
  EXPECT_TRUE(get(u"CLASS_ID"_s)["focused"_L1].toBool());
  EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
  EXPECT_EQ(statements(), Lines());
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, AnEmptiedCodeIsFilledOnLeavingIt) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM2"_s, u"3"_s);
  openList();
  act(u"Act_Add"_s);
  statements();
  type(u"Edit1"_s, QString());
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit2"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"001"_s);
  EXPECT_EQ(statements().back(), u"select wl_id from D1801 where wl_id='001'"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductEditor, NameCategoryAndUnitAreAskedForAtTheSave) {
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"P1"_s);
  focus(u"Edit2"_s);
  EXPECT_EQ(focus(u"CD"_s), u"CD"_s) << "fields may be filled in any order";
  for (const auto& [name, label, value] : {std::tuple{u"Edit2"_s, u"商品名称"_s, u"可乐"_s},
                                           {u"CLASS_ID"_s, u"商品分类"_s, u"01"_s},
                                           {u"dw_id"_s, u"单位"_s, u"01"_s}}) {
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{label + u"不能为空!"_s});
    EXPECT_TRUE(get(name)["focused"_L1].toBool());
    type(name, value);
  }
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 1);
}

TEST_F(ProductEditor, ViewingSavesNothing) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_View"_s);
  EXPECT_TRUE(get(u"Edit2"_s)["readonly"_L1].toBool());
  EXPECT_TRUE(get(u"BTN_CHANGE"_s)["visible"_L1].toBool());
  EXPECT_FALSE(get(u"btn_ok"_s)["visible"_L1].toBool());
  press(u"F11"_s);
  EXPECT_EQ(frontClass(), u"TF2101_2"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
}

TEST_F(ProductEditor, TheInputStyleIsRemembered) {
  const auto remembered = [this] {
    return QSettings(folder() + u'/' + G_inifielname, QSettings::IniFormat).value(u"Login/BA001"_s);
  };
  openList();
  act(u"Act_Add"_s);
  EXPECT_TRUE(get(u"dw_id"_s)["visible"_L1].toBool());
  press(u"F6"_s);
  EXPECT_FALSE(get(u"dw_id"_s)["visible"_L1].toBool());
  EXPECT_TRUE(get(u"DBGridEh1"_s)["visible"_L1].toBool());
  click(u"btn_Cancel"_s);
  ASSERT_TRUE(remembered().isValid());
  EXPECT_FALSE(remembered().toBool());
  open(101);
  act(u"Act_Add"_s);
  EXPECT_TRUE(get(u"DBGridEh1"_s)["visible"_L1].toBool());
  press(u"F6"_s);
  click(u"btn_Cancel"_s);
  EXPECT_TRUE(remembered().toBool());
}

}  // namespace
}  // namespace goodsbook
