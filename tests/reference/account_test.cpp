// Cash and bank accounts.
#include <gtest/gtest.h>

#include <QApplication>

#include "host/controls/TDBGridEh.h"
#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Accounts : public ReferenceTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    sql(u"insert into D6801 values ('1001','现金'),('100101','门店现金'),('1002','银行存款'),('100201','工行'),('2131','预收')"_s);
  }
  void check(const QString& box) { done({{u"cmd"_s, u"check"_s}, {u"element"_s, box}, {u"on"_s, true}}); }
  bool checked(const QString& box) { return get(box)["checked"_L1].toBool(); }
  void openRow(const QString& row) {
    sql(u"insert into D1010 (jy_id,jy_name,classid,yh_num,yh_name,km_id,qcmoney) values "_s + row);
    openList(122);
  }
  void startNew() {
    openList(122);
    act(u"Act_Add"_s);
    type(u"Edit1"_s, u"01"_s);
    type(u"Edit2"_s, u"工行"_s);
  }
};

TEST_F(Accounts, TheListShowsItsColumnsAndTypeNames) {
  sql(u"insert into D1010 (jy_id,jy_name,classid) values ('01','a',0),('02','b',1),('03','c',2)"_s);
  const QJsonObject screen = open(122);
  EXPECT_EQ(screen["class"_L1].toString(), u"TF2122"_s);
  EXPECT_EQ(screen["caption"_L1].toString(), u"现金银行"_s);
  EXPECT_EQ(shownColumns(),
            "JY_ID 帐户编号,JY_NAME 帐户名称,CLASSID 类型号,CLSNAME 类型,YH_NUM 银行帐号,YH_NAME "
            "银行全称,KM_ID 会计科目,QCMONEY 期初余额");
  QStringList types;
  const QJsonArray list = rows(u"DBGridEh"_s);
  for (const QJsonValue& row : list) types << row["CLSNAME"_L1].toString();
  EXPECT_EQ(types, (QStringList{u"现金"_s, u"银行存款"_s, u"系统使用"_s}));
  EXPECT_EQ(
      statements(),
      Lines{
          u"SELECT JY_ID, JY_NAME, PYM, CLASSID, YH_NUM, YH_NAME, KM_ID,QCMONEY  ,CASE CLASSID WHEN 0 THEN '现金' WHEN 1 THEN '银行存款' WHEN 2 THEN '系统使用' END AS CLSNAME FROM D1010"_s});
}

TEST_F(Accounts, TheOpeningBalancesAreSummed) {
  sql(u"insert into D1010 (jy_id,jy_name,classid,qcmoney) values ('01','a',0,100.5),('02','b',1,20.25),('03','c',1,null)"_s);
  openList(122);
  const auto footer = [this] {
    QString sum;
    onGui([&sum] {
      for (const QWidget* window : QApplication::topLevelWidgets()) {
        const auto* grid = window->findChild<TDBGridEh*>(u"DBGridEh"_s);
        if (grid && grid->isVisible()) sum = grid->footerText(u"QCMONEY"_s);
      }
    });
    return sum;
  };
  EXPECT_EQ(footer().toDouble(), 120.75);
  act(u"Act_Edit"_s);
  type(u"QCMONEY"_s, u"200.5"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(footer().toDouble(), 220.75) << "it follows an edit";
}

TEST_F(Accounts, FieldsHaveTheirLabelsAndLimits) {
  open(122);
  act(u"Act_Add"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  const auto field = [this](const QString& name) {
    const QJsonObject got = get(name);
    return got["title"_L1].toString() + u' ' + QString::number(got["maxlength"_L1].toInt());
  };
  EXPECT_EQ(field(u"Edit1"_s), u"帐户编号 2"_s);
  EXPECT_EQ(field(u"Edit2"_s), u"帐户名称 50"_s);
  EXPECT_EQ(field(u"Edit3"_s), u"银行帐号 25"_s);
  EXPECT_EQ(field(u"Edit4"_s), u"银行全称 50"_s);
  EXPECT_EQ(field(u"KM_ID"_s), u"会计科目 18"_s);
  EXPECT_EQ(get(u"QCMONEY"_s)["title"_L1].toString(), u"期初余额"_s);
  EXPECT_EQ(text(u"RB1"_s) + u' ' + text(u"RB2"_s), u"银行存款 现金"_s);
  EXPECT_EQ(get(u"RB1"_s)["title"_L1].toString() + get(u"RB2"_s)["title"_L1].toString(),
            u"类    型类    型"_s);
  EXPECT_TRUE(checked(u"RB1"_s));
  EXPECT_FALSE(checked(u"RB2"_s));
  EXPECT_EQ(text(u"QCMONEY"_s), u"0"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s) + text(u"Edit4"_s) + text(u"KM_ID"_s),
            QString());
  click(u"btn_Cancel"_s);
}

TEST_F(Accounts, ABankAccountIsAdded) {
  startNew();
  type(u"Edit3"_s, u"6222"_s);
  type(u"Edit4"_s, u"工商银行"_s);
  type(u"KM_ID"_s, u"100201"_s);
  type(u"QCMONEY"_s, u"12.5"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements(),
      (Lines{
          u"select jy_id from D1010 where jy_id='01'"_s,
          u"select km_id from d6801 where (km_id='100201') and (km_id like '1002%')"_s,
          u"insert into D1010 (jy_id,jy_name,PYM,CLASSID, YH_NUM, YH_NAME, KM_ID,QCMONEY)ValueS('01','工行','GH','1','6222','工商银行','100201','12.5')"_s}));
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["CLSNAME"_L1].toString(), u"银行存款"_s);
  EXPECT_EQ(row["CLASSID"_L1].toString(), u"1"_s);
  EXPECT_EQ(row["KM_ID"_L1].toString(), u"100201"_s);
}

TEST_F(Accounts, ACashAccountKeepsNoBankData) {
  startNew();
  type(u"Edit3"_s, u"6222"_s);
  type(u"Edit4"_s, u"工商银行"_s);
  check(u"RB2"_s);
  EXPECT_FALSE(checked(u"RB1"_s));
  type(u"KM_ID"_s, u"100101"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements().back(),
      u"insert into D1010 (jy_id,jy_name,PYM,CLASSID, YH_NUM, YH_NAME, KM_ID,QCMONEY)ValueS('01','工行','GH','0','','','100101','0')"_s);
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["CLSNAME"_L1].toString() + row["YH_NUM"_L1].toString() + row["YH_NAME"_L1].toString(),
            u"现金"_s);
}

TEST_F(Accounts, TheLedgerAccountHasToBeOfTheType) {
  startNew();
  type(u"KM_ID"_s, u"1001"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"KM_ID"_s);
  type(u"KM_ID"_s, u"100299"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"KM_ID"_s);
  const Lines refusal{u"该类的科目不存在!"_s, u"该类的科目不存在!"_s};
  EXPECT_EQ(messages(), refusal);
  type(u"KM_ID"_s, u"1002"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"QCMONEY"_s);
  check(u"RB2"_s);
  focus(u"KM_ID"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"KM_ID"_s);
  EXPECT_EQ(messages(), Lines{u"该类的科目不存在!"_s});
  type(u"KM_ID"_s, u"1001"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"QCMONEY"_s);
  statements();
  type(u"KM_ID"_s, u"x"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(statements(), Lines());
}

TEST_F(Accounts, ARefusedLedgerAccountIsPutRightByTheOtherType) {
  startNew();
  type(u"KM_ID"_s, u"1001"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"KM_ID"_s);
  EXPECT_EQ(messages(), Lines{u"该类的科目不存在!"_s});
  click(u"RB2"_s);
  EXPECT_TRUE(checked(u"RB2"_s));
  EXPECT_EQ(focused(), u"KM_ID"_s);
  EXPECT_EQ(focus(u"QCMONEY"_s), u"QCMONEY"_s);
  EXPECT_EQ(messages(), Lines());
  press(u"Return"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select classid,km_id from D1010"_s), (Table{{u"0"_s, u"1001"_s}}));
}

TEST_F(Accounts, EnterComesToTheTypeThatIsTicked) {
  startNew();
  for (const QString& type : {u"RB2"_s, u"RB1"_s}) {
    click(type);
    focus(u"Edit2"_s);
    press(u"Tab"_s);
    EXPECT_EQ(focused(), type);
  }
  click(u"btn_Cancel"_s);
}

TEST_F(Accounts, ATypeChangedAfterwardsIsNotHeldAgainstTheLedgerAccount) {
  openRow(u"('01','工行',1,'6222','工商银行','100201',3)"_s);
  act(u"Act_Edit"_s);
  check(u"RB2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(
      statements(),
      Lines{
          u"update D1010 set jy_name='工行',PYM='GH',CLASSID='0',YH_NUM='',YH_NAME='',km_id='100201',QCMONEY='3' where jy_id='01'"_s});
}

TEST_F(Accounts, AnAccountOfTheSystemIsSavedAsABankAccount) {
  openRow(u"('01','预收',2,'','','2131',0)"_s);
  act(u"Act_Edit"_s);
  EXPECT_TRUE(checked(u"RB1"_s));
  EXPECT_EQ(focused(), u"Edit2"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select classid from D1010"_s), (Table{{u"1"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["CLSNAME"_L1].toString(), u"银行存款"_s);
}

TEST_F(Accounts, TheLedgerAccountIsPickedFromTheTypesBranch) {
  startNew();
  click(u"KM_ID.button"_s);
  const QJsonArray banks = rows(u"DBGridEh"_s);
  ASSERT_EQ(banks.size(), 2);
  EXPECT_EQ(banks[0]["KM_ID"_L1].toString() + banks[0]["KM_NAME"_L1].toString(), u"1002银行存款"_s);
  QStringList titles;
  const QJsonArray all = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}})["columns"_L1].toArray();
  for (const QJsonValue& column : all) titles << column["title"_L1].toString();
  EXPECT_TRUE(titles.contains(u"科目编号"_s) && titles.contains(u"科目"_s))
      << titles.join(u',').toStdString();
  press(u"Down"_s);
  press(u"Return"_s);
  EXPECT_EQ(frontClass(), u"TF2122_1"_s);
  EXPECT_EQ(text(u"KM_ID"_s), u"100201"_s);
  check(u"RB2"_s);
  type(u"KM_ID"_s, QString());
  click(u"KM_ID.button"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["KM_ID"_L1].toString(), u"1001"_s);
  press(u"Return"_s);
  EXPECT_EQ(text(u"KM_ID"_s), u"1001"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Accounts, CodeNameAndBalanceAreChecked) {
  openRow(u"('01','工行',1,'','','1002',0)"_s);
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"帐户编号已登记!"_s});
  type(u"Edit1"_s, u"a'"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{u"帐户编号中不能有引号!"_s});
  type(u"Edit1"_s, u"a"_s);
  type(u"Edit2"_s, QString());
  EXPECT_EQ(focus(u"Edit3"_s), u"Edit2"_s);
  EXPECT_EQ(messages(), Lines{u"帐户名称不能为空!"_s});
  type(u"Edit2"_s, u"农行"_s);
  type(u"QCMONEY"_s, QString());
  EXPECT_EQ(focus(u"Edit3"_s), u"QCMONEY"_s);
  EXPECT_EQ(messages().size(), 1U);
  type(u"QCMONEY"_s, u"0"_s);
  EXPECT_EQ(focus(u"Edit3"_s), u"Edit3"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select jy_id from D1010 order by jy_id"_s), (Table{{u"01"_s}, {u"a"_s}}));
}

TEST_F(Accounts, DeletingSendsItsStatement) {
  openRow(u"('01','工行',1,'','','1002',0)"_s);
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines{u"delete from D1010 Where JY_id='01';"_s});
}

}  // namespace
}  // namespace goodsbook
