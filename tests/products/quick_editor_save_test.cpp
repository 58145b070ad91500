// What the quick product editors save as editors of the list: numbers, statements, the list's row.
#include <gtest/gtest.h>

#include "tests/products/quick_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class QuickEditorSave : public QuickScreen {
 protected:
  QString header(const QString& number) {
    return u"insert into D1801 (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, DJ,MONEY,KC,  USER_ID, BDATE, T, NOTE,cd,PYM,DW_ZH,DW_J_NAME)  ValueS('%1','可乐','500ml','1','1','01',0,0,0,'ADMIN',GETDATE(),1,'注','上海','KL','1','');"_s
        .arg(number);
  }
};

TEST_F(QuickEditorSave, AddSendsOneBatch) {
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"p1"_s);
  fill();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  const QJsonObject save = executed();
  EXPECT_EQ(save["module"_L1].toString() + save["key"_L1].toString() + save["operation"_L1].toString(),
            u"101P1Add"_s);
  EXPECT_EQ(
      save["sql"_L1].toString(),
      header(u"P1"_s) +
          u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'P1','01','690',1,5,4.5,0,2);"_s);
  EXPECT_EQ(sql(u"select WL_NAME,T,DJ,DW_ZH from D1801"_s), (Table{{u"可乐"_s, u"1"_s, u"0"_s, u"1"_s}}));
  EXPECT_EQ(sql(u"select T,ABASE,TM,SJ,VIPSJ,PFJ,CGJ from D1801DW"_s),
            (Table{{u"1"_s, u"1"_s, u"690"_s, u"5"_s, u"4.5"_s, u"0"_s, u"2"_s}}));
  EXPECT_EQ(sql(u"select WL_ID from D1802"_s), Table());
}

TEST_F(QuickEditorSave, AddWithReferencePricesStoresThem) {
  set(u"GPARAM23"_s, u"2"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"P1"_s);
  fill();
  for (const int level : {1, 2, 3, 4}) type(u"PFJ%1"_s.arg(level), QString::number(level));
  click(u"btn_ok"_s);
  EXPECT_EQ(
      batch(),
      header(u"P1"_s) +
          u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,pfj1,pfj2,pfj3,pfj4,cgj) values (1,'P1','01','690',1,5,4.5,0,1,2,3,4,2);"_s);
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  for (const int level : {1, 2, 3, 4}) EXPECT_EQ(row[u"PFJ%1"_s.arg(level)].toString().toDouble(), level);
}

TEST_F(QuickEditorSave, EditSendsOneBatch) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"insert into D1802 (WL_ID,CK_ID,KC,CHECK_KC) values ('P1','A',0,1)"_s);
  for (const bool reference : {false, true}) {
    set(u"GPARAM23"_s, reference ? u"2"_s : u"0"_s);
    openList();
    act(u"Act_Edit"_s);
    type(u"Edit2"_s, u"雪碧"_s);
    type(u"dw_id"_s, u"02"_s);
    check(u"YS"_s, false);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
    const QJsonObject save = executed();
    EXPECT_EQ(save["key"_L1].toString() + save["operation"_L1].toString(), u"P1Edit"_s);
    EXPECT_EQ(
        save["sql"_L1].toString(),
        u"UPDATE D1801 set WL_NAME='雪碧',WL_GG='500ml',WL_YS='0',CHECK_KC='1',CLASS_ID='01',NOTE='注',cd='上海',DW_ZH='%1',DW_J_NAME='',USER_ID='ADMIN',pym='XB',EDATE=GETDATE() where WL_ID='P1';"
        "insert into d1801b (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, BDATE,EDATE, T, NOTE,CD) select WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, KC, DJ, money, USER_ID, getdate(),EDATE, T, NOTE,CD from d1801 where wl_id='P1';"
        "update d1801dw set dw_id='02',tm='69',pfj='3.00'%2,sj='5.00',vipsj='4.00',cgj='2.50' where t=1 and wl_id='P1';"
        "update d1802 set CHECK_KC=1 where wl_id='P1';"_s.arg(
            reference ? u"0.00"_s : QString(),
            reference ? u",pfj1='',pfj2='',pfj3='',pfj4=''"_s : QString()));
    EXPECT_EQ(sql(u"select top 1 WL_NAME,WL_YS from d1801b"_s),
              (Table{{u"雪碧"_s, u"0"_s}}));  // as it is now
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(QuickEditorSave, TheListsRowTakesWhatWasSaved) {
  product(u"P1"_s, u"可乐"_s);
  set(u"GPARAM28"_s, u"1"_s);
  openList();
  act(u"Act_Edit"_s);
  type(u"TM"_s, u" 690 "_s);
  type(u"Edit2"_s, u"雪碧"_s);
  type(u"Edit3"_s, u"1L"_s);
  type(u"CD"_s, u"北京"_s);
  type(u"CLASS_ID"_s, u"02"_s);
  type(u"dw_id"_s, u"02"_s);
  type(u"dw_zh"_s, u"24"_s);
  type(u"Edit4"_s, u"箱"_s);
  type(u"SJ"_s, u"6"_s);
  type(u"vipsj"_s, u"5"_s);
  type(u"PFJ"_s, u"4"_s);
  type(u"CGJ"_s, u"3"_s);
  type(u"NOTE"_s, u"新"_s);
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  const std::vector<std::pair<QString, QString>> texts{
      {u"WL_ID"_s, u"P1"_s},    {u"WL_NAME"_s, u"雪碧"_s},    {u"WL_GG"_s, u"1L"_s},
      {u"CLASS_ID"_s, u"02"_s}, {u"CLASS_NAME"_s, u"食品"_s}, {u"USER_ID"_s, u"ADMIN"_s},
      {u"NOTE"_s, u"新"_s},     {u"CD"_s, u"北京"_s},         {u"DW_ID"_s, u"02"_s},
      {u"DW_NAME"_s, u"箱"_s},  {u"TM"_s, u" 690 "_s},        {u"USER_NAME"_s, u"系统管理员"_s}};
  for (const auto& [field, value] : texts) EXPECT_EQ(row[field].toString(), value) << field.toStdString();
  for (const auto& [field, value] : {std::pair{u"SJ"_s, 6.0},
                                     {u"VIPSJ"_s, 5.0},
                                     {u"PFJ"_s, 4.0},
                                     {u"CGJ"_s, 3.0},
                                     {u"DJ"_s, 2.0},
                                     {u"DW_ZH"_s, 24.0}})
    EXPECT_EQ(row[field].toString().toDouble(), value) << field.toStdString();
  EXPECT_EQ(
      sql(u"select TM,DW_ZH,DW_J_NAME,CHECK_KC from D1801DW inner join D1801 on D1801.WL_ID=D1801DW.WL_ID"_s),
      (Table{{u"690"_s, u"24"_s, u"箱"_s, u"0"_s}}));
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit4"_s), u"箱"_s);
  EXPECT_FALSE(get(u"check_kc"_s)["checked"_L1].toBool());
  click(u"btn_Cancel"_s);
}

TEST_F(QuickEditorSave, NegativeStockKeepsItsPermission) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"insert into D1802 (WL_ID,CK_ID,KC,CHECK_KC) values ('P1','A',5,1);insert into D1802 (WL_ID,CK_ID,KC,CHECK_KC) values ('P1','B',-1,1)"_s);
  openList();
  act(u"Act_Edit"_s);
  statements();
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"该商品当前库存为负库存,不能取消该商品的负库存状态!"_s});
  EXPECT_EQ(statements(), Lines{u"select wl_id from D1802 where wl_id='P1' and kc<0"_s});
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  check(u"check_kc"_s, true);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

TEST_F(QuickEditorSave, ANewProductGetsStockInOneWarehouseWhenTheShopWantsIt) {
  set(u"G_CKCOUNT_C"_s, u"1"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"P1"_s);
  fill();
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  EXPECT_TRUE(batch().endsWith(
      u"0,2);INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 'P1',0,ck_id from d1007;"_s));
  EXPECT_EQ(sql(u"select WL_ID,CK_ID,CHECK_KC from D1802"_s), (Table{{u"P1"_s, u"A"_s, u"0"_s}}));
}

TEST_F(QuickEditorSave, NumbersAreDrawnAtTheSaveOnly) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM2"_s, u"4"_s);
  openList();
  act(u"Act_Add"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"自动编号"_s);
  EXPECT_FALSE(get(u"Edit1"_s)["enabled"_L1].toBool());
  fill();
  EXPECT_EQ(sent(u"GetNOID"_s).size(), 0);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"0001"_s}}));
  EXPECT_EQ(executed()["key"_L1].toString(), u"0001"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"0001"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sent(u"GetNOID"_s).size(), 0);
}

TEST_F(QuickEditorSave, NumbersByCategoryNeedACategory) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GPARAM1"_s, u"1"_s);
  set(u"GPARAM2"_s, u"3"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit2"_s, u"可乐"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(text(u"Edit1"_s), QString());
  EXPECT_EQ(messages(), Lines{u"商品分类不能为空!"_s});
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  fill();
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select WL_ID from D1801"_s), (Table{{u"01001"_s}}));
}

TEST_F(QuickEditorSave, AnEmptyBarcodeTakesTheNumberWhereTheShopWantsIt) {
  for (const bool keepsEmpty : {false, true}) {
    set(u"GKH1"_s, keepsEmpty ? u"1"_s : u"0"_s);
    openList();
    act(u"Act_Add"_s);
    const QString number = keepsEmpty ? u"P1"_s : u"P2"_s;
    type(u"Edit1"_s, number);
    fill();
    type(u"TM"_s, QString());
    click(u"btn_ok"_s);
    EXPECT_EQ(sql(u"select TM from D1801DW where WL_ID='%1'"_s.arg(number)),
              (Table{{keepsEmpty ? QString() : number}}));
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(QuickEditorSave, ACopyFillsThePricesThatTheProductLacks) {
  set(u"GPARAM26"_s, QString());
  product(u"P1"_s, u"可乐"_s);
  sql(u"update D1801DW set PFJ=null,VIPSJ=null"_s);
  openList();
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"P2"_s);
  type(u"TM"_s, u"70"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select SJ,VIPSJ,PFJ from D1801DW where WL_ID='P2'"_s), (Table{{u"5"_s, u"5"_s, u"5"_s}}));
}

TEST_F(QuickEditorSave, ACopyAsksForReferencePricesThatTheProductLacks) {
  set(u"GPARAM23"_s, u"2"_s);
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"P2"_s);
  type(u"TM"_s, u"70"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"参考售价1应输入数字!"_s});
  EXPECT_TRUE(get(u"PFJ1"_s)["focused"_L1].toBool());
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  for (const int level : {1, 2, 3, 4}) type(u"PFJ%1"_s.arg(level), u"1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select PFJ4 from D1801DW where WL_ID='P2'"_s), (Table{{u"1"_s}}));
}

TEST_F(QuickEditorSave, ABarcodeTakenFromTheCodeGoesWithARefusedSave) {
  set(u"GPARAM0"_s, u"1"_s);
  set(u"GKH1"_s, u"0"_s);
  openList();
  act(u"Act_Add"_s);
  fill();
  type(u"TM"_s, {});
  type(u"NOTE"_s, u"it's"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(text(u"TM"_s), QString());
  type(u"NOTE"_s, {});
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select a.WL_ID,b.TM from D1801 a,D1801DW b where a.WL_ID=b.WL_ID and a.WL_ID<>b.TM"_s),
            Table());
  EXPECT_EQ(sql(u"select count(*) from D1801"_s), (Table{{u"1"_s}}));
}

TEST_F(QuickEditorSave, CodesThatWereDeletedMeanwhileAreRefused) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"P2"_s);
  type(u"TM"_s, u"70"_s);
  sql(u"delete from D1004;delete from D1003"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"商品分类【01】不存在!"_s});
  EXPECT_TRUE(get(u"CLASS_ID"_s)["focused"_L1].toBool());
  sql(u"insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('01','饮料','Z')"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位【01】不存在!"_s});
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  sql(u"insert into D1003 (dw_id,dw_name) values ('01','瓶')"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
}

TEST_F(QuickEditorSave, AFailingBatchLeavesEverythingAsItWas) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"可'乐"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"可'乐"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["WL_NAME"_L1].toString(), u"可乐"_s);
  EXPECT_EQ(sql(u"select WL_NAME from D1801"_s), (Table{{u"可乐"_s}}));
}

TEST_F(QuickEditorSave, RefusalsAreWarnings) {
  product(u"P1"_s, u"可乐"_s);
  sql(u"insert into D1802 (WL_ID,CK_ID,KC,CHECK_KC) values ('P1','A',-1,1)"_s);
  openList();
  act(u"Act_Edit"_s);
  check(u"check_kc"_s, false);
  click(u"btn_ok"_s);
  click(u"btn_Cancel"_s);
  act(u"Act_Add"_s);
  press(u"F11"_s);
  type(u"Edit1"_s, u"P1"_s);
  focus(u"TM"_s);
  click(u"btn_Cancel"_s);
  const QJsonArray list = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  EXPECT_EQ(list.size(), 3);
  for (const QJsonValue& message : list) EXPECT_EQ(message["kind"_L1].toInt(), 5);
}

}  // namespace
}  // namespace goodsbook
