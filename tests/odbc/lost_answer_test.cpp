// Screens whose save was committed by the server while its answer got lost.
#include <gtest/gtest.h>

#include <QFile>

#include "app/driver/screen_test.h"
#include "host/U_glo.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr QLatin1StringView grid("DBGridEh");

// On a server of the test's own, whose cable it cuts (tests/odbc/engine_driver/cable.h).
class LostAnswer : public ScreenTest {
 protected:
  using Lines = std::vector<QString>;
  using Table = std::vector<std::vector<QString>>;

  static void SetUpTestSuite() {
    static const QTemporaryDir folder;
    server() = folder.path();
    qputenv("GOODSBOOK_TEST_SERVER",
            u"Driver=%1;Server=%2;Database=master"_s.arg(QStringLiteral(GOODSBOOK_ENGINE_DRIVER), server())
                .toUtf8());
  }
  void SetUp() override {
    ScreenTest::SetUp();
    set(u"GPARAM2"_s, u"5"_s);
    set(u"GKH1"_s, u"0"_s);
    sql(u"insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('01','饮料','Z');"
        "insert into D1003 (dw_id,dw_name) values ('01','瓶'),('02','箱');"
        "insert into D1007 (CK_ID,CK_NAME,OID) values ('A','总店','Z');"
        "insert into D1002 (addr_id,addr_name,oid) values ('01','本地','Z');"
        "insert into D1011 (send_id,send_name) values ('01','自提')"_s);
  }
  void TearDown() override {
    mend();
    for (const QString& file : {u"cut-after-commit"_s, u"cut-before-commit"_s}) {
      EXPECT_FALSE(QFile::exists(at(file))) << "nothing was committed";
      QFile::remove(at(file));
    }
    ScreenTest::TearDown();
  }

  // The save's answer is lost, and the server is gone until mend().
  static void loseAnswer() { make(u"cut-after-commit"_s, "SYS_AUDIT"); }
  // It is gone before it commits the save.
  static void loseSave() { make(u"cut-before-commit"_s, "SYS_AUDIT"); }
  static void cut() { make(u"cut"_s, {}); }
  static void mend() { QFile::remove(at(u"cut"_s)); }

  void set(const QString& name, const QString& value) {
    onGui([&] { setGlobal(name, value); });
  }
  void openList(int module) {
    open(module);
    rows(grid);
    statements();
  }
  // The import of one product, read and ready.
  void openImport() {
    QFile file(folder() + u"/goods.csv"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(u"条码,品名,规格,零售价,会员价\n69,甲,1,2,3\n"_s.toUtf8());
    file.close();
    openList(101);
    act(u"Act_imp"_s);
    done({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, file.fileName()}});
    click(u"Edt_path.button"_s);
    click(u"btn_ref"_s);
    type(u"CLASS_ID"_s, u"01"_s);
    type(u"dw_id"_s, u"01"_s);
  }
  QStringList column(const QString& field) {
    QStringList texts;
    const QJsonArray list = rows(grid);
    for (const QJsonValue& row : list) texts << row[field].toString();
    return texts;
  }
  void fillProduct() {
    type(u"Edit2"_s, u"可乐"_s);
    type(u"CLASS_ID"_s, u"01"_s);
    type(u"dw_id"_s, u"01"_s);
    type(u"SJ"_s, u"5"_s);
  }
  Table products() { return sql(u"select WL_ID,WL_NAME from D1801 order by WL_ID"_s); }

  // OK while the server is away, and away still; nothing more is sent.
  void pressOkInVain() {
    statements();
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{unknown()});
    statements();
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{unknown()});
    EXPECT_EQ(statements(), Lines());
    mend();
  }
  // OK that finds the save made: nothing is asked or told, the editor is gone.
  void pressOkAndFindItSaved(const QString& list) {
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
    EXPECT_EQ(frontClass(), list);
    EXPECT_EQ(sql(u"select count(*) as n from SYS_AUDIT"_s), (Table{{u"1"_s}}));
  }
  void pressOkAfterAChange() {
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(),
              Lines{u"上一次其实已经保存，之后又改了内容，这一次没有保存。请关闭后重新打开再修改。"_s});
  }

 private:
  static QString& server() {
    static QString folder;
    return folder;
  }
  static QString at(const QString& file) { return server() + u'/' + file; }
  static void make(const QString& file, const QByteArray& text) {
    QFile made(at(file));
    ASSERT_TRUE(made.open(QIODevice::WriteOnly));
    made.write(text);
  }
  QString unknown() {
    QString name;
    onGui([&] { name = Session::current().database().displayName(); });
    return u"与服务器 %1 的连接断开了，还不知道上一次是否已经保存。连接恢复后请再保存一次：程序会先查对，不会重复保存。"_s
        .arg(name);
  }
};

TEST_F(LostAnswer, AQuickProductWithADrawnNumberIsSavedOnce) {
  set(u"GPARAM23"_s, u"0"_s);
  set(u"GPARAM0"_s, u"1"_s);
  for (const QString& mode : {u"Act_Add"_s, u"Act_CopyAdd"_s}) {
    SCOPED_TRACE(mode.toStdString());
    sql(u"truncate table SYS_AUDIT"_s);
    openList(101);
    act(mode);
    type(u"TM"_s, {});
    fillProduct();
    loseAnswer();
    pressOkInVain();
    pressOkAndFindItSaved(u"TF2101"_s);
    QStringList numbers{u"00001"_s};
    if (mode == "Act_CopyAdd"_L1) numbers << u"00002"_s;
    EXPECT_EQ(products().size(), static_cast<std::size_t>(numbers.size()));
    EXPECT_EQ(column(u"WL_ID"_s), numbers);
    EXPECT_EQ(column(u"TM"_s), numbers) << "the code is the barcode where there is none";
  }
}

TEST_F(LostAnswer, APurchaseHasOneLineForItsNewProduct) {
  set(u"GPARAM0"_s, u"1"_s);
  done({{u"cmd"_s, u"purchase"_s}, {u"class"_s, u"TF2101A_1"_s}});
  fillProduct();
  type(u"L"_s, u"3"_s);
  loseAnswer();
  pressOkInVain();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(products(), (Table{{u"00001"_s, u"可乐"_s}}));
  const QJsonArray lines = rows(u"purchase"_s);
  ASSERT_EQ(lines.size(), 1);
  EXPECT_EQ(lines[0]["WL_ID"_L1].toString() + u' ' + lines[0]["SL"_L1].toString(), u"00001 3"_s);
}

TEST_F(LostAnswer, AddingGoesOnWithTheNextRow) {
  openList(103);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"KG"_s);
  type(u"Edit2"_s, u"公斤"_s);
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"ContinueAdd"_s}, {u"on"_s, true}});
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2103_1"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s), QString());
  type(u"Edit1"_s, u"PC"_s);
  type(u"Edit2"_s, u"个"_s);
  click(u"btn_ok"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(column(u"DW_ID"_s), (QStringList{u"01"_s, u"02"_s, u"KG"_s, u"PC"_s}));
}

TEST_F(LostAnswer, AProductWithADrawnNumberIsSavedOnce) {
  set(u"GPARAM23"_s, u"1"_s);
  set(u"GPARAM0"_s, u"1"_s);
  openList(101);
  act(u"Act_Add"_s);
  fillProduct();
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2101"_s);
  EXPECT_EQ(products(), (Table{{u"00001"_s, u"可乐"_s}}));
  EXPECT_EQ(column(u"WL_ID"_s), QStringList(u"00001"_s));
}

TEST_F(LostAnswer, ACustomerWithADrawnNumberIsSavedOnce) {
  set(u"GPARAM6"_s, u"4"_s);
  openList(113);
  act(u"Act_Add"_s);
  type(u"Edit2"_s, u"永辉"_s);
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2113"_s);
  EXPECT_EQ(sql(u"select KH_GYS_ID,KG_NAME from D1102"_s), (Table{{u"0001"_s, u"永辉"_s}}));
  EXPECT_EQ(column(u"KH_GYS_ID"_s), QStringList(u"0001"_s));
  EXPECT_EQ(column(u"ADDR_NAME"_s), QStringList(u"本地"_s));
}

TEST_F(LostAnswer, ACodeTypedByTheUserIsNotCalledTakenByItsOwnSave) {
  openList(103);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"KG"_s);
  type(u"Edit2"_s, u"公斤"_s);
  focus(u"Edit1"_s);
  loseAnswer();
  pressOkInVain();
  focus(u"Edit1"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit2"_s);
  pressOkAndFindItSaved(u"TF2103"_s);
  EXPECT_EQ(column(u"DW_ID"_s), (QStringList{u"01"_s, u"02"_s, u"KG"_s}));
}

TEST_F(LostAnswer, ANodeStandsInTheTreeOnce) {
  openList(104);
  act(u"Act_Add"_s);
  type(u"t0"_s, u"02"_s);
  type(u"t1"_s, u"食品"_s);
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2104"_s);
  EXPECT_EQ(column(u"CLASS_ID"_s), (QStringList{u"01"_s, u"02"_s}));
}

TEST_F(LostAnswer, NobodyIsAskedAboutHisOwnSave) {
  openList(103);
  done({{u"cmd"_s, u"select"_s}, {u"element"_s, grid}, {u"rows"_s, QJsonArray{0}}});
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"小瓶"_s);
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2103"_s);
  EXPECT_EQ(column(u"DW_NAME"_s), (QStringList{u"小瓶"_s, u"箱"_s}));
}

TEST_F(LostAnswer, ContentsChangedSinceAreNotSaved) {
  set(u"GPARAM23"_s, u"0"_s);
  set(u"GPARAM0"_s, u"1"_s);
  openList(101);
  act(u"Act_Add"_s);
  fillProduct();
  loseAnswer();
  pressOkInVain();
  type(u"Edit2"_s, u"雪碧"_s);
  pressOkAfterAChange();
  pressOkAfterAChange();
  EXPECT_EQ(products(), (Table{{u"00001"_s, u"可乐"_s}}));
  EXPECT_EQ(text(u"Edit2"_s), u"雪碧"_s) << "the input stays";
  click(u"btn_Cancel"_s);
  EXPECT_EQ(column(u"WL_ID"_s), QStringList());
}

TEST_F(LostAnswer, WhatWasNotSavedIsSavedByTheNextOk) {
  set(u"GPARAM23"_s, u"1"_s);
  set(u"GPARAM0"_s, u"1"_s);
  openList(101);
  act(u"Act_Add"_s);
  fillProduct();
  loseSave();
  pressOkInVain();
  type(u"Edit2"_s, u"雪碧"_s);
  pressOkAndFindItSaved(u"TF2101"_s);
  EXPECT_EQ(products(), (Table{{u"00001"_s, u"雪碧"_s}})) << "with the number drawn before";
}

TEST_F(LostAnswer, AnEditorThatIsLeftTakesItsDoubtAlong) {
  openList(103);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"KG"_s);
  type(u"Edit2"_s, u"公斤"_s);
  loseAnswer();
  pressOkInVain();
  click(u"btn_Cancel"_s);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"PC"_s);
  type(u"Edit2"_s, u"个"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select dw_id from D1003 order by dw_id"_s),
            (Table{{u"01"_s}, {u"02"_s}, {u"KG"_s}, {u"PC"_s}}));
}

TEST_F(LostAnswer, TheSameWordsAreAnotherSaveOnceTheEditorWasLeft) {
  openList(103);
  done({{u"cmd"_s, u"select"_s}, {u"element"_s, grid}, {u"rows"_s, QJsonArray{0}}});
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"小瓶"_s);
  loseAnswer();
  pressOkInVain();
  click(u"btn_Cancel"_s);
  sql(u"update D1003 set dw_name='瓶' where dw_id='01'"_s);  // somebody sets it back
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"瓶"_s);
  type(u"Edit2"_s, u"小瓶"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select dw_name from D1003 where dw_id='01'"_s), (Table{{u"小瓶"_s}}));
}

TEST_F(LostAnswer, ADeletionAfterARefreshIsAnotherOne) {
  openList(103);
  const auto removeSecond = [&] {
    done({{u"cmd"_s, u"row"_s}, {u"element"_s, grid}, {u"index"_s, 1}});
    answer({u"y"_s});
    act(u"Act_Delete"_s);
  };
  loseAnswer();
  removeSecond();
  messages();
  mend();
  sql(u"insert into D1003 (dw_id,dw_name) values ('02','箱')"_s);  // deleted it was, and somebody adds it
                                                                   // again
  act(u"Act_Refresh"_s);
  EXPECT_EQ(column(u"DW_ID"_s), (QStringList{u"01"_s, u"02"_s}));
  removeSecond();
  EXPECT_EQ(sql(u"select dw_id from D1003"_s), (Table{{u"01"_s}}));
  messages();
}

TEST_F(LostAnswer, ALostLookUpAsksNoQuestionBeforeADeletion) {
  openList(103);
  cut();
  act(u"Act_Delete"_s);
  const Lines told = messages();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_FALSE(told.front().contains(u"是否删除"_s)) << told.front().toStdString();
  mend();
  EXPECT_EQ(column(u"DW_ID"_s), (QStringList{u"01"_s, u"02"_s}));
}

TEST_F(LostAnswer, ARowOfAnImportIsImportedOnce) {
  set(u"GPARAM0"_s, u"1"_s);
  openImport();
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"cb1"_s}, {u"on"_s, true}});
  messages();
  loseAnswer();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  mend();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select WL_NAME from D1801"_s), (Table{{u"甲"_s}}));
  click(u"btn_Cancel"_s);
}

TEST_F(LostAnswer, AnImportGoesOnBehindAClearingThatWasMade) {
  sql(u"insert into D1801 (WL_ID,WL_NAME,WL_YS,CHECK_KC,CLASS_ID,USER_ID,BDATE,T,dwcount) values ('P1','旧',1,1,'01','ADMIN','2026-11-01',1,1)"_s);
  set(u"GPARAM0"_s, u"1"_s);
  openImport();
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"cb2"_s}, {u"on"_s, true}});
  messages();
  loseAnswer();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_TRUE(get(u"cb2"_s)["checked"_L1].toBool());
  mend();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_FALSE(get(u"cb2"_s)["checked"_L1].toBool());
  EXPECT_EQ(sql(u"select WL_NAME from D1801"_s), (Table{{u"甲"_s}}));
  click(u"btn_Cancel"_s);
}

class LostAnswerOfUnits : public LostAnswer {
 protected:
  void SetUp() override {
    LostAnswer::SetUp();
    sql(u"insert into D1801 (WL_ID,WL_NAME,WL_YS,CHECK_KC,CLASS_ID,USER_ID,BDATE,T,dwcount) values ('P1','可乐',1,1,'01','ADMIN','2026-11-01',1,1);"
        "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ) values (1,'P1','01','69',1,5,4,3,2.5)"_s);
    set(u"GPARAM23"_s, u"1"_s);
    openList(101);
    act(u"Act_Edit"_s);
    press(u"F6"_s);
  }
  void cellClick(const QString& field) {
    done({{u"cmd"_s, u"cellclick"_s}, {u"element"_s, u"DBGridEh1"_s}, {u"row"_s, 0}, {u"field"_s, field}});
  }
  void cell(const QString& element, const QString& field, const QString& typed) {
    done({{u"cmd"_s, u"cell"_s},
          {u"element"_s, element},
          {u"row"_s, 0},
          {u"field"_s, field},
          {u"text"_s, typed}});
  }
};

TEST_F(LostAnswerOfUnits, BarcodesAreNotAskedAboutTheirOwnSave) {
  cellClick(u"多条码"_s);
  ASSERT_EQ(frontClass(), u"TF2101_TM"_s);
  type(u"Memo1"_s, u"690"_s);
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2101_1"_s);
  EXPECT_EQ(sql(u"select TM from D1801DWTM"_s), (Table{{u"690"_s}}));
  click(u"btn_Cancel"_s);
}

TEST_F(LostAnswerOfUnits, BarcodesChangedSinceAreNotSaved) {
  cellClick(u"多条码"_s);
  type(u"Memo1"_s, u"690"_s);
  loseAnswer();
  pressOkInVain();
  type(u"Memo1"_s, u"691"_s);
  pressOkAfterAChange();
  EXPECT_EQ(sql(u"select TM from D1801DWTM"_s), (Table{{u"690"_s}}));
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(LostAnswerOfUnits, PricesOfWarehousesAreNotAskedAboutTheirOwnSave) {
  cellClick(u"区域售价"_s);
  ASSERT_EQ(frontClass(), u"TF2101_SJ"_s);
  for (const QString& field : {u"SJ"_s, u"VIPSJ"_s}) cell(grid, field, u"8"_s);
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2101_1"_s);
  EXPECT_EQ(sql(u"select CK_ID,SJ from D1801DWSJ"_s), (Table{{u"A"_s, u"8"_s}}));
  click(u"btn_Cancel"_s);
}

TEST_F(LostAnswerOfUnits, ACellChangedSinceIsNotSaved) {
  cell(u"DBGridEh1"_s, u"SJ"_s, u"6"_s);
  loseAnswer();
  pressOkInVain();
  cell(u"DBGridEh1"_s, u"SJ"_s, u"7"_s);
  pressOkAfterAChange();
  EXPECT_EQ(sql(u"select SJ from D1801DW"_s)[0][0].toDouble(), 6);
  click(u"btn_Cancel"_s);
}

TEST_F(LostAnswerOfUnits, UnitsAreShownInTheList) {
  cell(u"DBGridEh1"_s, u"SJ"_s, u"6"_s);
  loseAnswer();
  pressOkInVain();
  pressOkAndFindItSaved(u"TF2101"_s);
  EXPECT_EQ(rows(grid)[0]["SJ"_L1].toString().toDouble(), 6);
  EXPECT_EQ(column(u"WL_ID"_s), QStringList(u"P1"_s));
}

TEST_F(LostAnswer, ALookUpThatIsLostIsNotToldAsASave) {
  openList(103);
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"小瓶"_s);
  cut();
  click(u"btn_ok"_s);
  const Lines told = messages();
  ASSERT_EQ(told.size(), 1U);
  EXPECT_FALSE(told[0].contains(u"保存"_s)) << told[0].toStdString();
  EXPECT_TRUE(told[0].contains(u"连接断开了，这一步没有完成"_s)) << told[0].toStdString();
  mend();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(column(u"DW_NAME"_s), (QStringList{u"小瓶"_s, u"箱"_s}));
}

}  // namespace
}  // namespace goodsbook
