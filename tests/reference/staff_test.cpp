// Staff and salespeople.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QPushButton>

#include "host/controls/edits.h"
#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Staff : public ReferenceTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    sql(u"insert into D1008 (bm_id,bm_name,oid) values ('01','营业部','Z'),('02','仓储部','Z');"
        "insert into D1101 values ('A1','张三','ZS','01','138','0755','a@b','路',0.3,'2025-01-02','2027-05-06',0,'旧')"_s);
  }
  void openStaff() { openList(112); }
  QStringList codes() { return column(u"YW_ID"_s); }
};

TEST_F(Staff, TheListShowsThoseWhoseDepartmentExists) {
  sql(u"insert into D1101 (yw_id,yw_name,bm_id) values ('X1','李四','99')"_s);
  const QJsonObject screen = open(112);
  EXPECT_EQ(screen["class"_L1].toString(), u"TF2112"_s);
  EXPECT_EQ(screen["caption"_L1].toString(), u"公司职员"_s);
  EXPECT_EQ(codes(), QStringList{u"A1"_s});
  EXPECT_EQ(
      statements(),
      Lines{u"SELECT D1101.*, D1008.BM_NAME FROM D1101 INNER JOIN  D1008 ON D1101.BM_ID = D1008.BM_ID"_s});
  EXPECT_EQ(shownColumns(),
            "YW_ID 职员代号,YW_NAME 名称,BM_ID 部门代号,BM_NAME 部门名称,TEL 电话,FAX 传真,EMAIL EMAIL,ADDR "
            "联系地址,TC 提成比,BDATE 合同日期,EDATE 结束日期,T 离职否,NOTE 备注");
}

TEST_F(Staff, FieldsHaveTheirLabelsLimitsAndOrder) {
  openStaff();
  act(u"Act_Add"_s);
  EXPECT_EQ(frontClass(), u"TF2112_1"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  EXPECT_EQ(text(u"BDATE"_s).left(16) + u' ' + text(u"EDATE"_s).left(16),
            u"2026-11-20 10:11 2026-11-20 10:11"_s);
  EXPECT_EQ(text(u"tc"_s).toDouble(), 0.0);
  EXPECT_FALSE(text(u"tc"_s).isEmpty());
  EXPECT_FALSE(get(u"chk1"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"BM_ID"_s) + text(u"bm_NAME"_s), QString());
  type(u"Edit1"_s, u"b1"_s);
  EXPECT_EQ(text(u"Edit1"_s), u"B1"_s);
  type(u"Edit2"_s, u"王五"_s);
  type(u"BM_ID"_s, u"01"_s);
  focus(u"Edit1"_s);
  QStringList fields;
  for (int i = 0; i < 12; ++i) {
    const QJsonObject field = get(focused());
    fields << field["name"_L1].toString() + u' ' +
                  (field["name"_L1].toString() == u"chk1" ? field["text"_L1] : field["title"_L1]).toString() +
                  u' ' + QString::number(field["maxlength"_L1].toInt());
    press(u"Return"_s);
  }
  EXPECT_EQ(
      fields.join(u',').toStdString(),
      "Edit1 代    号 4,Edit2 名    称 20,BM_ID 部    门 4,Edit3 电 话 一 40,Edit4 传    真 40,Edit5 地  "
      "  址 60,Edit6 EMAIL 40,tc 提 成 比 0,BDATE 合同日期 0,EDATE 结束日期 0,chk1 离职否 0,Edit7 备    "
      "注 100");
  EXPECT_EQ(focused(), u"btn_ok"_s);
  EXPECT_EQ(text(u"bm_NAME"_s), u"营业部"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Staff, ANewOneIsAdded) {
  openStaff();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"b1"_s);
  type(u"Edit2"_s, u"王五"_s);
  type(u"BM_ID"_s, u"02"_s);
  type(u"Edit3"_s, u"139"_s);
  type(u"tc"_s, u"1"_s);
  type(u"BDATE"_s, u"2026-01-01"_s);
  type(u"EDATE"_s, u"2026-12-31"_s);
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"chk1"_s}, {u"on"_s, true}});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(
      statements(),
      (Lines{
          u"select * from d1101 where yw_id='B1'"_s,
          u"INSERT INTO D1101(YW_ID, YW_NAME,PYM,BM_ID, TEL, FAX, EMAIL, ADDR, TC, BDATE, EDATE, T, NOTE) ValueS('B1','王五','WW','02','139','','','',1,'2026-01-01','2026-12-31',1,'')"_s}));
  const QJsonObject row = rows(u"DBGridEh"_s)[1].toObject();
  EXPECT_EQ(row["BM_NAME"_L1].toString(), u"仓储部"_s);
  EXPECT_EQ(row["EDATE"_L1].toString(), u"2026-12-31"_s);
}

TEST_F(Staff, AnEditShowsTheContractDateAsTheEnd) {
  openStaff();
  act(u"Act_Edit"_s);
  EXPECT_EQ(focused(), u"Edit2"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  EXPECT_EQ(text(u"BDATE"_s) + u' ' + text(u"EDATE"_s), u"2025-01-02 2025-01-02"_s);
  EXPECT_EQ(text(u"BM_ID"_s) + text(u"bm_NAME"_s), u"01营业部"_s);
  EXPECT_EQ(text(u"tc"_s), u"0.3"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements(),
      Lines{
          u"update d1101 set YW_NAME='张三',PYM='ZS',TEL='138',BM_ID='01',FAX='0755',EMAIL='a@b',ADDR='路',NOTE='旧',tc='0.3',bdate='2025-01-02',edate='2025-01-02',t=0 where yw_id='A1'"_s});
  EXPECT_EQ(sql(u"select edate from D1101"_s), (Table{{u"2025-01-02 00:00:00"_s}}));
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  EXPECT_EQ(text(u"Edit1"_s) + u' ' + text(u"EDATE"_s), u"A1 2025-01-02"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"职员代号已登记!"_s});
  click(u"btn_Cancel"_s);
}

TEST_F(Staff, AnEditShowsTheDepartmentAsItIsNow) {
  openStaff();
  sql(u"update D1101 set BM_ID='02';update D1008 set BM_NAME='总仓' where BM_ID='02'"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"BM_ID"_s) + text(u"bm_NAME"_s), u"02总仓"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["BM_NAME"_L1].toString(), u"总仓"_s);
}

TEST_F(Staff, ARowWithoutARatioIsCopied) {
  sql(u"update D1101 set tc=null"_s);
  openStaff();
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"a2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select tc from D1101 where yw_id='A2'"_s), (Table{{u"0"_s}}));
}

TEST_F(Staff, ANewOnesDatesAreNowUntilTheyAreChosen) {
  openStaff();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"b1"_s);
  type(u"Edit2"_s, u"王五"_s);
  type(u"BM_ID"_s, u"01"_s);
  type(u"EDATE"_s, u"2027/3/1"_s);
  click(u"btn_ok"_s);
  EXPECT_TRUE(statements().back().contains(u",'2026-11-20 10:11:"_s));
  EXPECT_EQ(
      sql(u"select convert(varchar(10),bdate,120),convert(varchar(19),edate,120) from D1101 where yw_id='B1'"_s),
      (Table{{u"2026-11-20"_s, u"2027-03-01 00:00:00"_s}}));
}

TEST_F(Staff, WhatIsNoDateIsNeitherLeftNorSaved) {
  openStaff();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"b1"_s);
  type(u"Edit2"_s, u"王五"_s);
  type(u"BM_ID"_s, u"01"_s);
  statements();
  for (const QString& text : {u"2026"_s, u"10:30"_s, u"2026111"_s, u"202612"_s, u"2026-02-30"_s}) {
    SCOPED_TRACE(text.toStdString());
    type(u"EDATE"_s, text);
    EXPECT_EQ(focus(u"Edit7"_s), u"EDATE"_s);
    press(u"F9"_s);
    EXPECT_EQ(focused(), u"EDATE"_s);
    EXPECT_EQ(messages(), (Lines{u"结束日期应输入日期!"_s, u"结束日期应输入日期!"_s}));
  }
  onGui([] {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* date = window->findChild<TDBDateTimeEditEh*>(u"BDATE"_s)) date->setText(u"2026"_s);
    }
  });
  type(u"EDATE"_s, u"281231"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"合同日期应输入日期!"_s}) << "OK looks at every date";
  EXPECT_EQ(statements(), Lines());
  type(u"BDATE"_s, u"260102"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_TRUE(statements().back().contains(u",'2026-01-02','2028-12-31',"_s));
  EXPECT_EQ(rows(u"DBGridEh"_s)[1]["EDATE"_L1].toString(), u"2028-12-31"_s);
}

TEST_F(Staff, TheCalendarsTodayIsTheProgramsDate) {
  openStaff();
  act(u"Act_Edit"_s);
  type(u"EDATE"_s, QString());
  click(u"EDATE.button"_s);
  onGui([] {
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(popup->findChild<QCalendarWidget*>()->selectedDate(), QDate(2026, 11, 20));
    for (QPushButton* button : popup->findChildren<QPushButton*>()) {
      if (button->text() == u"今天") button->click();
    }
  });
  EXPECT_EQ(text(u"EDATE"_s), u"2026-11-20"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Staff, TheListShowsTheNumberThatWasSaved) {
  openStaff();
  for (const auto& [typed, shown] : {std::pair(u".5"_s, u"0.5"_s),
                                     {u"1."_s, u"1"_s},
                                     {u"-0"_s, u"0"_s},
                                     {u"00.5"_s, u"0.5"_s},
                                     {u"0.055555"_s, u"0.055555"_s}}) {
    act(u"Act_Edit"_s);
    type(u"tc"_s, typed);
    click(u"btn_ok"_s);
    EXPECT_EQ(rows(u"DBGridEh"_s)[0]["TC"_L1].toString(), shown);
    EXPECT_EQ(sql(u"select tc from D1101"_s), (Table{{shown}}));
  }
}

TEST_F(Staff, TheRatioIsAtMostOne) {
  openStaff();
  act(u"Act_Edit"_s);
  for (const QString& good : {u"1"_s, u"0"_s, u"-1"_s}) {
    type(u"tc"_s, good);
    EXPECT_EQ(focus(u"Edit7"_s), u"Edit7"_s) << good.toStdString();
  }
  EXPECT_EQ(messages(), Lines());
  type(u"tc"_s, u"1.01"_s);
  EXPECT_EQ(focus(u"Edit7"_s), u"tc"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(focused(), u"tc"_s);
  EXPECT_EQ(messages(),
            (Lines{u"提成比不能大于1!应该在0.01~1.00之间"_s, u"提成比不能大于1!应该在0.01~1.00之间"_s}));
  EXPECT_EQ(statements(), Lines());
  click(u"btn_Cancel"_s);
}

TEST_F(Staff, TheEditOfTheRatioKnowsItsMaximumAndLeavesWhatIsTyped) {
  openStaff();
  act(u"Act_Edit"_s);
  onGui([] {
    const auto* ratio = QApplication::activeModalWidget()->findChild<TDBNumberEditEh*>(u"tc"_s);
    EXPECT_EQ(ratio->maximum(), 1.0);
  });
  EXPECT_EQ(type(u"tc"_s, u"1.5"_s), u"1.5"_s);
  onGui([] {
    EXPECT_TRUE(QApplication::activeModalWidget()->findChild<TDBNumberEditEh*>(u"tc"_s)->exceedsMaximum());
  });
  click(u"btn_Cancel"_s);
}

TEST_F(Staff, TheDepartmentIsPicked) {
  openStaff();
  act(u"Act_Edit"_s);
  click(u"BM_ID.button"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 2);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2112_1"_s) << "Esc closes the picker only";
  type(u"BM_ID"_s, QString());
  click(u"BM_ID.button"_s);
  done({{u"cmd"_s, u"row"_s}, {u"element"_s, u"DBGridEh"_s}, {u"index"_s, 1}});
  press(u"Return"_s);
  EXPECT_EQ(text(u"BM_ID"_s) + text(u"bm_NAME"_s), u"02仓储部"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["BM_NAME"_L1].toString(), u"仓储部"_s);
}

TEST_F(Staff, CodesAndNamesAreChecked) {
  openStaff();
  act(u"Act_Add"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  type(u"Edit1"_s, u"a1"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  type(u"Edit1"_s, u"a2"_s);
  focus(u"Edit2"_s);
  EXPECT_EQ(focus(u"Edit3"_s), u"Edit2"_s);
  EXPECT_EQ(messages(), (Lines{u"职员代号不能为空!"_s, u"职员代号已登记!"_s, u"名称不能为空!"_s}));
  click(u"btn_Cancel"_s);
}

TEST_F(Staff, TheFilterFindsAPartOfCodeNameTelephoneOrInitials) {
  sql(u"insert into D1101 (yw_id,yw_name,pym,bm_id,tel) values ('B7','李四','LS','01','555')"_s);
  openStaff();
  const auto found = [this](const QString& part) {
    act(u"Act_Filter"_s);
    type(u"GYS_NAME"_s, part);
    press(u"F3"_s);
    return codes().join(u',');
  };
  EXPECT_EQ(found(u"张"_s), u"A1"_s);
  EXPECT_EQ(
      statements().back(),
      u"SELECT D1101.*, D1008.BM_NAME FROM D1101 INNER JOIN  D1008 ON D1101.BM_ID = D1008.BM_ID Where ((D1101.YW_ID like '%张%') or(D1101.YW_NAME like '%张%') or(D1101.TEL like '%张%') or(D1101.PYM like '%张%'))"_s);
  EXPECT_EQ(found(u"s"_s), u"A1,B7"_s);
  EXPECT_EQ(found(u"7"_s), u"B7"_s);
  EXPECT_EQ(found(u"55"_s), u"B7"_s);
  EXPECT_EQ(found(QString()), u"A1,B7"_s);
  EXPECT_EQ(messages(), Lines());
}

TEST_F(Staff, AQuoteInTheFilterBreaksTheStatementAndKeepsTheRows) {
  openStaff();
  act(u"Act_Filter"_s);
  type(u"GYS_NAME"_s, u"O'x"_s);
  press(u"F2"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_TRUE(statements().back().contains(u"(D1101.YW_ID like '%O'x%')"_s));
  EXPECT_EQ(frontClass(), u"TF2112"_s);
  EXPECT_EQ(codes(), QStringList{u"A1"_s});
  EXPECT_FALSE(get(u"FilterText"_s)["visible"_L1].toBool());
}

TEST_F(Staff, TheFilterIsDescribed) {
  openStaff();
  act(u"Act_Filter"_s);
  type(u"GYS_NAME"_s, u"张"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(text(u"FilterText"_s), u"编号/名称/拼音码    包含   张"_s);
  EXPECT_TRUE(get(u"FilterText"_s)["visible"_L1].toBool());
  act(u"Act_Filter"_s);
  type(u"GYS_NAME"_s, QString());
  click(u"btn_ok"_s);
  EXPECT_FALSE(get(u"FilterText"_s)["visible"_L1].toBool());
}

TEST_F(Staff, TheFilterIsLabelled) {
  openStaff();
  act(u"Act_Filter"_s);
  EXPECT_EQ(frontClass(), u"TF2112F"_s);
  const QJsonArray windows = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  EXPECT_EQ(windows.last()["caption"_L1].toString(), u"F2112F"_s);
  EXPECT_EQ(get(u"GYS_NAME"_s)["title"_L1].toString(), u"编号/名称/拼音码"_s);
  EXPECT_EQ(get(u"GYS_NAME"_s)["maxlength"_L1].toInt(), 20);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2112"_s);
}

}  // namespace
}  // namespace goodsbook
