// Units of measure: the family's list and editor at full depth.
#include <gtest/gtest.h>

#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Units : public ReferenceTest {
 protected:
  void add(const QString& code, const QString& name, const QString& note = {}) {
    act(u"Act_Add"_s);
    type(u"Edit1"_s, code);
    type(u"Edit2"_s, name);
    type(u"Edit3"_s, note);
    click(u"btn_ok"_s);
  }
  void openWith(const QString& rowsToInsert) {
    sql(rowsToInsert);
    openList(103);
  }
  QStringList shown() {  // the list's cells
    QStringList lines;
    const QJsonArray list = rows(u"DBGridEh"_s);
    for (const QJsonValue& row : list) {
      lines << row["DW_ID"_L1].toString() + u'|' + row["DW_NAME"_L1].toString() + u'|' +
                   row["DW_NOTE"_L1].toString();
    }
    return lines;
  }
  Table stored() { return sql(u"select dw_id,dw_name,pym,dw_note from D1003 order by dw_id"_s); }
  QJsonObject lastSent() {
    return done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray().last().toObject();
  }
};

TEST_F(Units, TheListShowsItsColumnsAndRows) {
  sql(u"insert into D1003 (dw_id,dw_name,dw_note) values ('01','瓶',null);insert into D1003 (dw_id,dw_name,dw_note) values ('02','箱','大')"_s);
  const QJsonObject screen = open(103);
  EXPECT_EQ(screen["class"_L1].toString(), u"TF2103"_s);
  EXPECT_EQ(screen["caption"_L1].toString(), u"计量单位资料"_s);
  EXPECT_EQ(screen["tag"_L1].toInt(), 103);
  const QJsonObject list = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}});
  QStringList columns;
  const QJsonArray all = list["columns"_L1].toArray();
  for (const QJsonValue& column : all) {
    if (!column["visible"_L1].toBool()) continue;
    columns << column["field"_L1].toString().toUpper() + u' ' + column["title"_L1].toString() + u' ' +
                   QString::number(column["width"_L1].toInt());
  }
  EXPECT_EQ(columns.join(u'\n').toStdString(), "DW_ID 单位编号 60\nDW_NAME 单位 62\nDW_NOTE 备注 89");
  EXPECT_EQ(shown(), (QStringList{u"01|瓶|"_s, u"02|箱|大"_s}));
  EXPECT_EQ(statements(), Lines{u"select * From D1003"_s});
}

TEST_F(Units, ARequestFromTheMenuToTheNewRow) {
  open(103);
  EXPECT_EQ(shown(), QStringList());
  act(u"Act_Add"_s);
  EXPECT_EQ(frontClass(), u"TF2103_1"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s), QString());
  type(u"Edit1"_s, u"kg"_s);
  type(u"Edit2"_s, u"公斤"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(frontClass(), u"TF2103"_s);
  const QJsonArray sent = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(sent.size(), 3);
  EXPECT_EQ(sent[0]["sql"_L1].toString(), u"select * From D1003"_s);
  EXPECT_EQ(sent[1]["op"_L1].toString(), u"opensql"_s);
  EXPECT_EQ(sent[1]["module"_L1].toString(), u"103"_s);
  EXPECT_EQ(sent[1]["sql"_L1].toString(), u"select * from d1003 where dw_id='KG'"_s);
  const QJsonObject insert{
      {u"op"_s, u"ExecSql"_s},
      {u"module"_s, u"103"_s},
      {u"key"_s, u"KG"_s},
      {u"operation"_s, u"Add"_s},
      {u"sql"_s, u"insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('KG','公斤','GJ','')"_s},
      {u"result"_s, u"Y"_s}};
  EXPECT_EQ(sent[2].toObject(), insert);
  EXPECT_EQ(shown(), QStringList{u"KG|公斤|"_s});
  EXPECT_EQ(stored(), (Table{{u"KG"_s, u"公斤"_s, u"GJ"_s, u""_s}}));
  EXPECT_EQ(messages(), Lines());
}

TEST_F(Units, FieldsHaveTheirLabelsAndLimits) {
  open(103);
  act(u"Act_Add"_s);
  const auto field = [this](const QString& name) {
    const QJsonObject got = get(name);
    return got["title"_L1].toString() + u' ' + QString::number(got["maxlength"_L1].toInt());
  };
  EXPECT_EQ(field(u"Edit1"_s), u"单位编号 2"_s);
  EXPECT_EQ(field(u"Edit2"_s), u"单位名称 6"_s);
  EXPECT_EQ(field(u"Edit3"_s), u"备    注 20"_s);
  EXPECT_EQ(type(u"Edit1"_s, u"abc"_s), u"AB"_s);
  EXPECT_EQ(type(u"Edit2"_s, u"一二三四五六七"_s), u"一二三四五六"_s);
  EXPECT_EQ(type(u"Edit3"_s, QString(25, u'x')), QString(20, u'x'));
  click(u"btn_Cancel"_s);
}

TEST_F(Units, ABlankCodeIsRefusedAndKeepsTheFocus) {
  open(103);
  act(u"Act_Add"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{u"单位编号不能为空!"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位编号不能为空!"_s});
  EXPECT_EQ(focused(), u"Edit1"_s);
  EXPECT_EQ(frontClass(), u"TF2103_1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Units, ACodeWithABlankOrAQuoteIsRefused) {
  open(103);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"a "_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{u"单位编号中不能有空格!"_s});
  type(u"Edit1"_s, u"a'"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  EXPECT_EQ(messages(), Lines{u"单位编号中不能有引号!"_s});
  EXPECT_EQ(statements(), Lines{u"select * From D1003"_s});
  click(u"btn_Cancel"_s);
}

TEST_F(Units, ACodeThatIsTakenKeepsTheFocus) {
  openWith(u"insert into D1003 (dw_id,dw_name) values ('KG','公斤')"_s);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"kg"_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
  const QJsonArray boxes = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0]["text"_L1].toString(), u"单位编号已登记!"_s);
  EXPECT_EQ(boxes[0]["kind"_L1].toInt(), 5);
  EXPECT_EQ(statements(), Lines{u"select * from d1003 where dw_id='KG'"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位编号已登记!"_s});
  EXPECT_EQ(frontClass(), u"TF2103_1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(shown(), QStringList{u"KG|公斤|"_s});
}

TEST_F(Units, CancelNeverChecksTheCode) {
  openWith(u"insert into D1003 (dw_id,dw_name) values ('KG','公斤')"_s);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"KG"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(frontClass(), u"TF2103"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(statements(), Lines());
  act(u"Act_Add"_s);
  click(u"btn_Cancel"_s);  // with a blank code, too
  EXPECT_EQ(messages(), Lines());
}

TEST_F(Units, ABlankNameIsRefused) {
  open(103);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"A"_s);
  focus(u"Edit2"_s);
  EXPECT_EQ(focus(u"Edit3"_s), u"Edit2"_s);
  EXPECT_EQ(messages(), Lines{u"单位名称不能为空!"_s});
  type(u"Edit2"_s, u"   "_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位名称不能为空!"_s});
  EXPECT_EQ(focused(), u"Edit2"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(stored(), Table());
}

TEST_F(Units, OkChecksFieldsThatNobodyVisited) {
  open(103);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"A"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位名称不能为空!"_s});
  EXPECT_EQ(focused(), u"Edit2"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Units, InitialsAreOfTheTrimmedNameThatIsStoredAsTyped) {
  open(103);
  add(u"a1"_s, u"  公斤"_s, u" 备注 "_s);
  EXPECT_EQ(stored(), (Table{{u"A1"_s, u"  公斤"_s, u"GJ"_s, u" 备注 "_s}}));
}

TEST_F(Units, CopyAddStartsFromTheCurrentRowAndAsksForANewCode) {
  openWith(u"insert into D1003 (dw_id,dw_name,pym,dw_note) values ('KG','公斤','GJ','重')"_s);
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  EXPECT_FALSE(get(u"Edit1"_s)["readonly"_L1].toBool());
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s), u"KG公斤重"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位编号已登记!"_s});
  EXPECT_EQ(focused(), u"Edit1"_s);
  type(u"Edit1"_s, u"k2"_s);
  click(u"btn_ok"_s);
  const QJsonObject sent = lastSent();
  EXPECT_EQ(sent["operation"_L1].toString(), u"CopyAdd"_s);
  EXPECT_EQ(sent["key"_L1].toString(), u"K2"_s);
  EXPECT_EQ(sent["sql"_L1].toString(),
            u"insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('K2','公斤','GJ','重')"_s);
  EXPECT_EQ(shown(), (QStringList{u"KG|公斤|重"_s, u"K2|公斤|重"_s}));
}

TEST_F(Units, EditKeepsTheCodeAndChangesTheRow) {
  openWith(
      u"insert into D1003 (dw_id,dw_name,pym,dw_note) values ('01','瓶','P','');"
      "insert into D1003 (dw_id,dw_name,pym,dw_note) values ('02','箱','X','旧')"_s);
  done({{u"cmd"_s, u"row"_s}, {u"element"_s, u"DBGridEh"_s}, {u"index"_s, 1}});
  act(u"Act_Edit"_s);
  EXPECT_EQ(focused(), u"Edit2"_s);
  EXPECT_TRUE(get(u"Edit1"_s)["readonly"_L1].toBool());
  EXPECT_FALSE(get(u"Edit2"_s)["readonly"_L1].toBool());
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s), u"02箱旧"_s);
  type(u"Edit2"_s, u"纸箱"_s);
  type(u"Edit3"_s, u"新"_s);
  click(u"btn_ok"_s);
  const QJsonArray sent = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(sent.size(), 1) << "the code of a row that is there is not looked up";
  EXPECT_EQ(sent[0]["operation"_L1].toString(), u"Edit"_s);
  EXPECT_EQ(sent[0]["key"_L1].toString(), u"02"_s);
  EXPECT_EQ(sent[0]["sql"_L1].toString(),
            u"update D1003 set dw_name='纸箱',PYM='ZX',dw_note='新' where dw_id='02'"_s);
  EXPECT_EQ(shown(), (QStringList{u"01|瓶|"_s, u"02|纸箱|新"_s}));
  EXPECT_EQ(stored().at(1), (std::vector<QString>{u"02"_s, u"纸箱"_s, u"ZX"_s, u"新"_s}));
}

TEST_F(Units, ViewingChangesNothing) {
  openWith(u"insert into D1003 (dw_id,dw_name,dw_note) values ('01','瓶','玻璃')"_s);
  act(u"Act_View"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s), u"01瓶玻璃"_s);
  for (const QString& name : {u"Edit1"_s, u"Edit2"_s, u"Edit3"_s})
    EXPECT_TRUE(get(name)["readonly"_L1].toBool());
  EXPECT_FALSE(get(u"btn_ok"_s)["visible"_L1].toBool());
  click(u"btn_Cancel"_s);
  EXPECT_EQ(statements(), Lines());
}

TEST_F(Units, EveryOpeningFillsTheEditorAnew) {
  openWith(u"insert into D1003 (dw_id,dw_name,dw_note) values ('01','瓶','玻璃')"_s);
  act(u"Act_Edit"_s);
  type(u"Edit2"_s, u"罐"_s);
  click(u"btn_Cancel"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"瓶"_s);
  click(u"btn_Cancel"_s);
  act(u"Act_Add"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s) + text(u"Edit3"_s), QString());
  EXPECT_FALSE(get(u"Edit1"_s)["readonly"_L1].toBool());
  click(u"btn_Cancel"_s);
}

TEST_F(Units, AQuoteInTheNameBreaksTheStatementAndNothingElse) {
  openWith(u"insert into D1003 (dw_id,dw_name) values ('01','瓶')"_s);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"02"_s);
  type(u"Edit2"_s, u"O'x"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2103_1"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"O'x"_s);
  EXPECT_EQ(lastSent()["sql"_L1].toString(),
            u"insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('02','O'x','OX','')"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(shown(), QStringList{u"01|瓶|"_s});
  EXPECT_EQ(sql(u"select dw_id from D1003"_s), (Table{{u"01"_s}}));
}

TEST_F(Units, ASaveThatTheDatabaseRefusesLeavesTheListAsItWas) {
  openWith(u"insert into D1003 (dw_id,dw_name) values ('01','瓶')"_s);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"02"_s);
  type(u"Edit2"_s, u"箱"_s);
  sql(u"insert into D1003 (dw_id,dw_name) values ('02','袋')"_s);  // another user was faster
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), u"TF2103_1"_s);
  EXPECT_EQ(text(u"Edit1"_s) + text(u"Edit2"_s), u"02箱"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(shown(), QStringList{u"01|瓶|"_s});
}

TEST_F(Units, BracesInAValueStayWhatTheyAre) {
  open(103);
  add(u"{}"_s, u"{pym}"_s, u"{Edit1}{row}"_s);
  EXPECT_EQ(stored(), (Table{{u"{}"_s, u"{pym}"_s, u"PYM"_s, u"{Edit1}{row}"_s}}));
}

TEST_F(Units, DeletingAsksFirst) {
  openWith(
      u"insert into D1003 (dw_id,dw_name) values ('01','瓶');insert into D1003 (dw_id,dw_name) values ('02','箱')"_s);
  answer({u"n"_s, u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines());
  EXPECT_EQ(shown().size(), 2);
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines{u"delete from D1003 Where dw_id='01'"_s});
  EXPECT_EQ(shown(), QStringList{u"02|箱|"_s});
  EXPECT_EQ(sql(u"select dw_id from D1003"_s), (Table{{u"02"_s}}));
  const QJsonArray boxes = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  ASSERT_EQ(boxes.size(), 2);
  EXPECT_EQ(boxes[0]["kind"_L1].toInt(), 2);
}

TEST_F(Units, AUnitInUseIsDeletedIfTheDatabaseLetsIt) {
  openWith(
      u"insert into D1003 (dw_id,dw_name) values ('01','瓶');"
      "insert into D1801DW (T,WL_ID,DW_ID,ABASE) values (1,'P1','01',1)"_s);
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(sql(u"select dw_id from D1003"_s), Table());
}

TEST_F(Units, TheKeyboardIsEnough) {
  open(103);
  rows(u"DBGridEh"_s);
  press(u"Ins"_s);
  EXPECT_EQ(frontClass(), u"TF2103_1"_s);
  for (const QString& key : {u"k"_s, u"g"_s, u"Return"_s}) press(key);
  EXPECT_EQ(focused(), u"Edit2"_s);
  for (const QString& key : {u"g"_s, u"j"_s, u"Return"_s}) press(key);
  EXPECT_EQ(focused(), u"Edit3"_s);
  press(u"Return"_s);
  EXPECT_EQ(focused(), u"btn_ok"_s);
  press(u"Return"_s);
  EXPECT_EQ(frontClass(), u"TF2103"_s);
  EXPECT_EQ(shown(), QStringList{u"KG|gj|"_s});
  press(u"F2"_s);
  EXPECT_EQ(focused(), u"Edit2"_s);
  press(u"x"_s);
  press(u"F9"_s);
  EXPECT_EQ(shown(), QStringList{u"KG|x|"_s});
}

TEST_F(Units, RightsDecideWhatCanBeDone) {
  sql(u"insert into D1003 (dw_id,dw_name) values ('01','瓶')"_s);
  open(103, {{u"add"_s, false}, {u"edit"_s, false}, {u"delete"_s, false}});
  rows(u"DBGridEh"_s);
  for (const QString& name : {u"Act_Add"_s, u"Act_CopyAdd"_s, u"Act_Edit"_s, u"Act_Delete"_s}) {
    EXPECT_NE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, name}}), QString()) << name.toStdString();
  }
  act(u"Act_View"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(Units, ASmallListHasNoFilter) {
  open(103);
  QStringList names;
  const QJsonArray actions = done({{u"cmd"_s, u"actions"_s}})["actions"_L1].toArray();
  for (const QJsonValue& action : actions) {
    if (action["visible"_L1].toBool()) names << action["name"_L1].toString();
  }
  EXPECT_FALSE(names.contains(u"Act_Filter"_s));
  EXPECT_FALSE(names.contains(u"Act_Other"_s));
  EXPECT_TRUE(names.contains(u"Act_Add"_s));
}

}  // namespace
}  // namespace goodsbook
