// What each code table differs in.
#include <gtest/gtest.h>

#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Member {
  const char* name;
  int module;
  QString listClass, caption, list, columns, fields;
  QString uniqueness, taken, insert, update, remove, idField;
};

const Member members[] = {
    {"delivery methods", 123, u"TF2123"_s, u"送货方式资料"_s, u"select * From d1011"_s,
     u"SEND_ID 送货方式代号,SEND_NAME 送货方式"_s, u"送货方式代号 2,送货方式名称 10"_s,
     u"select send_id from D1011 where send_id='A1'"_s, u"送货方式已登记!"_s,
     u"insert into D1011 (send_id,send_name,PYM)ValueS('A1',' 自提','ZT')"_s,
     u"update D1011 set send_name='快递',PYM='KD' where send_id='A1'"_s,
     u"delete from d1011 Where send_id='A1'"_s, u"SEND_ID"_s},
    {"payment methods", 124, u"TF2124"_s, u"付款方式"_s, u"SELECT * FROM D1012 "_s,
     u"FF_ID 代号,FF_NAME 付款方式"_s, u"代    号 2,付款方式 30"_s,
     u"select ff_id from D1012 where ff_id='A1'"_s, u"付款方式代号已登记!"_s,
     u"insert into D1012 (FF_id,pym,FF_name)ValueS('A1','ZT',' 自提')"_s,
     u"update D1012 set ff_name='快递',PYM='KD' where ff_id='A1'"_s, u"delete from D1012 Where FF_id='A1'"_s,
     u"FF_ID"_s},
    {"currencies", 125, u"TF2125"_s, u"货币基本资料"_s, u"select * From D1001"_s,
     u"HB_ID 货币代号,HB_NAME 货币名称,HB_BW 本位币,HB_HL 汇率,HB_NOTE 备注"_s, u"货币代号 2,货币名称 6"_s,
     u"select hb_id from D1001 where hb_id='A1'"_s, u"货币编号已登记!"_s,
     u"insert into D1001 (hb_id,hb_name,pym,hb_note,hb_bw,hb_hl)ValueS('A1',' 自提','ZT','',0,0.000000)"_s,
     u"update D1001 set hb_id='A1',PYM='KD',hb_name='快递',hb_note='',hb_bw=0,hb_hl=0.000000 where hb_id='A1'"_s,
     u"delete from D1001 Where hb_id='A1'"_s, u"HB_ID"_s},
};

class CodeTables : public ReferenceTest, public testing::WithParamInterface<Member> {
 protected:
  void addOne() {
    act(u"Act_Add"_s);
    type(u"Edit1"_s, u"a1"_s);
    type(u"Edit2"_s, u" 自提"_s);
    click(u"btn_ok"_s);
  }
};

INSTANTIATE_TEST_SUITE_P(Members, CodeTables, testing::ValuesIn(members),
                         [](const auto& made) { return "Module" + std::to_string(made.param.module); });

TEST_P(CodeTables, TheListShowsItsColumns) {
  const QJsonObject screen = open(GetParam().module);
  EXPECT_EQ(screen["class"_L1].toString(), GetParam().listClass);
  EXPECT_EQ(screen["caption"_L1].toString(), GetParam().caption);
  EXPECT_EQ(screen["tag"_L1].toInt(), GetParam().module);
  EXPECT_EQ(shownColumns(), GetParam().columns.toStdString());
  EXPECT_EQ(statements(), Lines{GetParam().list});
}

TEST_P(CodeTables, TheEditorHasTheSameCaptionAndItsFields) {
  open(GetParam().module);
  act(u"Act_Add"_s);
  const QJsonArray windows = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  EXPECT_EQ(windows.last()["class"_L1].toString(), GetParam().listClass + u"_1"_s);
  EXPECT_EQ(windows.last()["caption"_L1].toString(), GetParam().caption);
  EXPECT_TRUE(windows.last()["modal"_L1].toBool());
  QStringList fields;
  for (const QString& name : {u"Edit1"_s, u"Edit2"_s}) {
    const QJsonObject got = get(name);
    fields << got["title"_L1].toString() + u' ' + QString::number(got["maxlength"_L1].toInt());
  }
  EXPECT_EQ(fields.join(u',').toStdString(), GetParam().fields.toStdString());
  click(u"btn_Cancel"_s);
}

TEST_P(CodeTables, ARowIsAddedChangedAndDeletedByItsStatements) {
  open(GetParam().module);
  rows(u"DBGridEh"_s);
  statements();
  addOne();
  EXPECT_EQ(statements(), (Lines{GetParam().uniqueness, GetParam().insert}));
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s), u"A1 自提"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  type(u"Edit2"_s, u"快递"_s);
  click(u"btn_ok"_s);
  const QJsonArray sent = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(sent.size(), 1);
  EXPECT_EQ(sent[0]["sql"_L1].toString(), GetParam().update);
  EXPECT_EQ(sent[0]["module"_L1].toString(), QString::number(GetParam().module));
  EXPECT_EQ(sent[0]["key"_L1].toString(), u"A1"_s);
  const QJsonArray list = rows(u"DBGridEh"_s);
  ASSERT_EQ(list.size(), 1);
  EXPECT_EQ(list[0][GetParam().idField].toString(), u"A1"_s);
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines{GetParam().remove});
  EXPECT_TRUE(rows(u"DBGridEh"_s).isEmpty());
  EXPECT_EQ(done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray().size(), 1) << "only the question";
}

TEST_P(CodeTables, ACodeThatIsTakenIsRefused) {
  open(GetParam().module);
  addOne();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"a1"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{GetParam().taken});
  click(u"btn_Cancel"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 1);
}

class CodeCheckLabels : public ReferenceTest {};

TEST_F(CodeCheckLabels, MessagesNameTheCodeInTheMembersWords) {
  for (const auto& [module, label] :
       {std::pair(123, u"送货方式编号"_s), std::pair(124, u"代号"_s), std::pair(125, u"货币编号"_s)}) {
    open(module);
    act(u"Act_Add"_s);
    type(u"Edit1"_s, u"a'"_s);
    EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
    EXPECT_EQ(messages(), Lines{label + u"中不能有引号!"_s});
    click(u"btn_Cancel"_s);
  }
}

class Currencies : public ReferenceTest {};

TEST_F(Currencies, ANewOneStartsWithoutRateAndIsNotTheHomeCurrency) {
  open(125);
  act(u"Act_Add"_s);
  EXPECT_EQ(text(u"HB_HL"_s), u"0.000000"_s);
  EXPECT_FALSE(get(u"hb_bw"_s)["checked"_L1].toBool());
  EXPECT_EQ(get(u"hb_bw"_s)["text"_L1].toString(), u"本 位 币"_s);
  EXPECT_EQ(get(u"HB_HL"_s)["title"_L1].toString(), u"汇    率"_s);
  EXPECT_EQ(get(u"Edit3"_s)["title"_L1].toString(), u"备    注"_s);
  EXPECT_EQ(get(u"Edit3"_s)["maxlength"_L1].toInt(), 20);
  type(u"Edit1"_s, u"rm"_s);
  type(u"Edit2"_s, u"人民币"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select hb_id,hb_name,pym,hb_note,hb_bw,hb_hl from D1001"_s),
            (std::vector<std::vector<QString>>{{u"RM"_s, u"人民币"_s, u"RMB"_s, u""_s, u"0"_s, u"0"_s}}));
}

TEST_F(Currencies, BoxRateAndNoteGoIntoTheStatementsAndTheList) {
  open(125);
  rows(u"DBGridEh"_s);
  statements();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"us"_s);
  type(u"Edit2"_s, u"美元"_s);
  type(u"Edit3"_s, u"美国"_s);
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"hb_bw"_s}, {u"on"_s, true}});
  type(u"HB_HL"_s, u"7.1234"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements().back(),
      u"insert into D1001 (hb_id,hb_name,pym,hb_note,hb_bw,hb_hl)ValueS('US','美元','MY','美国',1,7.1234)"_s);
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["HB_HL"_L1].toString(), u"7.123400"_s);
  EXPECT_EQ(row["HB_NOTE"_L1].toString(), u"美国"_s);
  act(u"Act_Edit"_s);
  EXPECT_TRUE(get(u"hb_bw"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"HB_HL"_s).toDouble(), 7.1234);
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"hb_bw"_s}, {u"on"_s, false}});
  type(u"HB_HL"_s, u"7.2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements().back(),
      u"update D1001 set hb_id='US',PYM='MY',hb_name='美元',hb_note='美国',hb_bw=0,hb_hl=7.2 where hb_id='US'"_s);
  EXPECT_EQ(sql(u"select hb_bw,hb_hl from D1001"_s), (std::vector<std::vector<QString>>{{u"0"_s, u"7.2"_s}}));
}

TEST_F(Currencies, ARateThatIsNoNumberIsRefused) {
  open(125);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"us"_s);
  type(u"Edit2"_s, u"美元"_s);
  focus(u"Edit3"_s);
  statements();
  for (const QString& rate : {u"-"_s, u"."_s, u"-."_s}) {
    type(u"HB_HL"_s, rate);
    press(u"F9"_s);
    EXPECT_EQ(messages(), Lines{u"汇率应输入数字!"_s}) << rate.toStdString();
    EXPECT_TRUE(get(u"HB_HL"_s)["focused"_L1].toBool());
  }
  EXPECT_EQ(statements(), Lines());
  type(u"HB_HL"_s, QString());
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"汇率不能为空!"_s});
  click(u"btn_Cancel"_s);
}

TEST_F(Currencies, ARowWithoutARateAsksForOne) {
  sql(u"insert into D1001 (hb_id,hb_name) values ('US','美元')"_s);
  open(125);
  rows(u"DBGridEh"_s);
  statements();
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"HB_HL"_s), QString());
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"汇率不能为空!"_s});
  EXPECT_EQ(statements(), Lines());
  type(u"HB_HL"_s, u"7"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements(),
      Lines{
          u"update D1001 set hb_id='US',PYM='MY',hb_name='美元',hb_note='',hb_bw=0,hb_hl=7 where hb_id='US'"_s});
}

TEST_F(Currencies, ALongNoteIsShownAsItIsStored) {
  open(125);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"us"_s);
  type(u"Edit2"_s, u"美元"_s);
  const QString note = QString(20, u'注');
  type(u"Edit3"_s, note);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["HB_NOTE"_L1].toString(), note);
  act(u"Act_Refresh"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["HB_NOTE"_L1].toString(), note);
}

TEST_F(Currencies, CopyAddTakesBoxAndRateAlong) {
  sql(u"insert into D1001 (hb_id,hb_name,hb_note,hb_bw,hb_hl) values ('US','美元','x',1,7.25)"_s);
  open(125);
  rows(u"DBGridEh"_s);
  act(u"Act_CopyAdd"_s);
  EXPECT_TRUE(get(u"hb_bw"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"HB_HL"_s).toDouble(), 7.25);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s), u"US美元x"_s);
  type(u"Edit1"_s, u"u2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select hb_id from D1001 where hb_bw=1 order by hb_id"_s),
            (std::vector<std::vector<QString>>{{u"U2"_s}, {u"US"_s}}))
      << "nothing stops two home currencies";
}

}  // namespace
}  // namespace goodsbook
