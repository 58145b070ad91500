// Categories, departments, regions and warehouses: the trees.
#include <gtest/gtest.h>

#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class TreeScreen : public ReferenceTest {
 protected:
  QStringList tree() {  // a line a node, indented by depth, the selected one marked
    QStringList lines;
    const QJsonArray nodes = done({{u"cmd"_s, u"tree"_s}})["nodes"_L1].toArray();
    for (const QJsonValue& node : nodes) {
      lines << QString(node["depth"_L1].toInt(), u'.') + node["caption"_L1].toString() +
                   (node["selected"_L1].toBool() ? u"*"_s : QString());
    }
    return lines;
  }
  void select(const QString& code) {
    done({{u"cmd"_s, u"node"_s}, {u"code"_s, code.isNull() ? QJsonValue() : QJsonValue(code)}});
  }
  QJsonObject lastSent() {
    return done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray().last().toObject();
  }
};

struct Member {
  int module;
  QString listClass, caption, list;
  QString fields;  // element, label and limit of each, in tab order
  QString code, name;
  QString stored;  // a select of all rows
  QString rowStatement, uniqueness, taken, checkLabel, insertTop, insertChild, update, remove;
  QString rows;        // inserts a top row 'A' and its child 'B'
  QStringList loaded;  // the tree of these rows
};

const Member members[] = {
    {104,
     u"TF2104"_s,
     u"类别资料设定"_s,
     u"SELECT D1004.CLASS_ID, D1004.CLASS_NAME + ' (' + CONVERT(varchar(10),COUNT(D1801.WL_ID)) + ')' AS CLASS_NAME, D1004.OID FROM D1004 LEFT OUTER JOIN D1801 ON D1004.CLASS_ID = D1801.CLASS_ID GROUP BY D1004.CLASS_ID, D1004.CLASS_NAME, D1004.OID ORDER BY D1004.OID, D1004.CLASS_ID"_s,
     u"t0 类别代号 4,t1 类别名称 30,t2 备    注 50"_s,
     u"t0"_s,
     u"t1"_s,
     u"select class_id,oid from D1004 order by class_id"_s,
     u"SELECT CLASS_ID, CLASS_NAME, CLASS_NOTE, OID FROM D1004 WHERE (CLASS_id ='%1')"_s,
     u"select * from D1004 where CLASS_id='%1'"_s,
     u"类型编号已登记!"_s,
     u"类型编号"_s,
     u"insert into D1004 ValueS('K1','食品','','Z','SP')"_s,
     u"insert into D1004 ValueS('K2','食品','旧','A','SP')"_s,
     u"UPDATE D1004 SET  class_NAME = '新品',PYM='XP', class_NOTE = '旧' where class_id='A'"_s,
     u"delete from d1004 Where class_id='A'"_s,
     u"insert into D1004 values ('A','甲','旧','Z','J');insert into D1004 values ('B','乙','','A','Y');"
     "insert into D1801 (WL_ID,CLASS_ID) values ('P1','B')"_s,
     {u"A 甲 (0)*"_s, u".B 乙 (1)"_s}},
    {108,
     u"TF2108"_s,
     u"部门基本资料"_s,
     u"SELECT BM_ID, BM_NAME, BM_ZG, BM_NOTE, OID FROM D1008 ORDER BY OID,BM_ID "_s,
     u"Edit1 部门代号 4,Edit2 部门名称 10,Edit3 部门主管 8,Edit4 备    注 20"_s,
     u"Edit1"_s,
     u"Edit2"_s,
     u"select bm_id,oid from D1008 order by bm_id"_s,
     u"SELECT BM_ID, BM_NAME, BM_ZG, BM_NOTE, OID FROM D1008 WHERE (BM_id ='%1')"_s,
     u"select * from d1008 where bm_id='%1'"_s,
     u"部门编号已登记!"_s,
     u"部门编号"_s,
     u"insert into D1008 (bm_id,bm_name,pym,bm_zg,bm_note,oid) ValueS('K1','食品','SP','','','Z')"_s,
     u"insert into D1008 (bm_id,bm_name,pym,bm_zg,bm_note,oid) ValueS('K2','食品','SP','王','旧','A')"_s,
     u"update d1008 set bm_name='新品',pym='XP',bm_zg='王',bm_note='旧' where BM_id='A'"_s,
     u"delete from d1008 Where BM_id='A'"_s,
     u"insert into D1008 (bm_id,bm_name,bm_zg,bm_note,oid) values ('A','甲','王','旧','Z');"
     "insert into D1008 (bm_id,bm_name,oid) values ('B','乙','A')"_s,
     {u"A 甲*"_s, u".B 乙"_s}},
    {111,
     u"TF2111"_s,
     u"区域详细划分"_s,
     u"SELECT  * from  D1002 ORDER BY  OID,ADDR_ID "_s,
     u"Edit1 区域代号 4,Edit3 区域名称 10,Edit4 负 责 人 10,Edit5 电    话 15,Edit6 地    址 40,Edit7 备    注 100"_s,
     u"Edit1"_s,
     u"Edit3"_s,
     u"select addr_id,oid from D1002 order by addr_id"_s,
     u"SELECT * FROM D1002 WHERE (D1002.addr_id ='%1')"_s,
     u"select * from d1002 where addr_id='%1'"_s,
     u"区域代号已登记!"_s,
     u"区域代号"_s,
     u"insert into D1002 (addr_ID, addr_NAME, addr_GL, addr_TEL, addr_ADDR, addr_NOTE,OID)ValueS('k1','食品','王','','','','Z')"_s,
     u"insert into D1002 (addr_ID, addr_NAME, addr_GL, addr_TEL, addr_ADDR, addr_NOTE,OID)ValueS('k2','食品','王','1','路','旧','A')"_s,
     u"update D1002 set addr_NAME='新品',addr_GL='王',addr_TEL='1',addr_ADDR='路',addr_NOTE='旧' where addr_id='A'"_s,
     u"delete from d1002 Where ADDR_id='A'"_s,
     u"insert into D1002 values ('A','甲','王','1','路','旧','Z');"
     "insert into D1002 (addr_id,addr_name,addr_gl,oid) values ('B','乙','王','A')"_s,
     {u"A 甲*"_s, u".B 乙"_s}},
    {107,
     u"TF2107"_s,
     u"仓库基本资料"_s,
     u"SELECT D1007.CK_ID, D1007.CK_NAME + ' (' + CONVERT(varchar(10),COUNT(D1802.WL_ID)) + ')' AS CK_NAME, D1007.OID FROM D1007 LEFT OUTER JOIN D1802 ON D1007.CK_ID = D1802.CK_ID GROUP BY D1007.CK_ID, D1007.CK_NAME, D1007.OID ORDER BY D1007.OID, D1007.CK_ID "_s,
     u"Edit1 仓库代号 4,Edit3 仓库名称 16,Edit4 管 理 员 10,Edit5 电    话 15,Edit6 地    址 40,Edit7 备    注 100"_s,
     u"Edit1"_s,
     u"Edit3"_s,
     u"select ck_id,oid from D1007 order by ck_id"_s,
     u"SELECT D1007.* FROM D1007  WHERE (D1007.ck_id ='%1')"_s,
     u"select * from d1007 where ck_id='%1'"_s,
     u"仓库编号已登记!"_s,
     u"仓库编号"_s,
     u"insert into D1007 ( CK_ID, CK_NAME,PYM, CK_GL, CK_TEL, CK_ADDR, CK_NOTE,OID) ValueS('k1','食品','SP','','','','','Z')"_s,
     u"insert into D1007 ( CK_ID, CK_NAME,PYM, CK_GL, CK_TEL, CK_ADDR, CK_NOTE,OID) ValueS('k2','食品','SP','王','1','路','旧','A')"_s,
     u"update d1007 set CK_NAME='新品',pym='XP',CK_GL='王',CK_TEL='1',CK_ADDR='路',CK_NOTE='旧' where ck_id='A'"_s,
     u"delete from d1007 Where ck_id='A'"_s,
     u"insert into D1007 values ('A','甲','J','王','1','路','旧','Z');"
     "insert into D1007 (ck_id,ck_name,oid) values ('B','乙','A');"
     "insert into D1802 (CK_ID,WL_ID) values ('B','P1');insert into D1802 (CK_ID,WL_ID) values ('B','P2')"_s,
     {u"A 甲 (0)*"_s, u".B 乙 (2)"_s}},
};

class Trees : public TreeScreen, public testing::WithParamInterface<Member> {
 protected:
  const Member& member() { return GetParam(); }
  bool isRegion() { return member().module == 111; }
  void openRows() {
    sql(member().rows);
    open(member().module);
    tree();
    statements();
  }
  // The code as the field keeps it: two of the trees force upper case.
  QString kept(const QString& code) {
    return member().module == 104 || member().module == 108 ? code.toUpper() : code;
  }
  void typeNew(const QString& code) {
    type(member().code, code);
    type(member().name, u"食品"_s);
    if (isRegion()) type(u"Edit4"_s, u"王"_s);
  }
};

INSTANTIATE_TEST_SUITE_P(Members, Trees, testing::ValuesIn(members),
                         [](const auto& made) { return "Module" + std::to_string(made.param.module); });

TEST_P(Trees, TheTreeIsBuiltFromTheParentsCodes) {
  sql(member().rows);
  const QJsonObject screen = open(member().module);
  EXPECT_EQ(screen["class"_L1].toString(), member().listClass);
  EXPECT_EQ(screen["caption"_L1].toString(), member().caption);
  EXPECT_EQ(tree(), member().loaded);
  EXPECT_EQ(statements(), Lines{member().list});
}

TEST_P(Trees, FieldsHaveTheirLabelsLimitsAndOrder) {
  open(member().module);
  act(u"Act_Add"_s);
  const QJsonArray windows = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  EXPECT_EQ(windows.last()["class"_L1].toString(), member().listClass + u"_1"_s);
  EXPECT_EQ(windows.last()["caption"_L1].toString(), member().caption);
  EXPECT_EQ(focused(), member().code);
  typeNew(u"x1"_s);
  focus(member().code);
  QStringList fields;
  const qsizetype count = member().fields.split(u',').size();
  for (qsizetype i = 0; i < count; ++i) {
    const QJsonObject field = get(focused());
    fields << field["name"_L1].toString() + u' ' + field["title"_L1].toString() + u' ' +
                  QString::number(field["maxlength"_L1].toInt());
    press(u"Return"_s);
  }
  EXPECT_EQ(fields.join(u',').toStdString(), member().fields.toStdString());
  EXPECT_EQ(focused(), u"btn_ok"_s);
  EXPECT_EQ(text(member().code), kept(u"x1"_s));
  click(u"btn_Cancel"_s);
}

TEST_P(Trees, WithNothingSelectedANodeComesToTheTop) {
  open(member().module);
  statements();
  act(u"Act_Add"_s);
  typeNew(u"k1"_s);
  click(u"btn_ok"_s);
  const QJsonArray sent = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(sent.size(), 2);
  EXPECT_EQ(sent[0]["sql"_L1].toString(), member().uniqueness.arg(kept(u"k1"_s)));
  EXPECT_EQ(sent[1]["sql"_L1].toString(), member().insertTop);
  EXPECT_EQ(sent[1]["operation"_L1].toString(), u"Add"_s);
  EXPECT_EQ(sent[1]["key"_L1].toString(), kept(u"k1"_s));
  EXPECT_EQ(sent[1]["module"_L1].toString(), QString::number(member().module));
  EXPECT_EQ(tree(), QStringList{kept(u"k1"_s) + u" 食品*"_s}) << "no count until the list is loaded again";
  EXPECT_EQ(sql(member().stored), (Table{{kept(u"k1"_s), u"Z"_s}}));
  EXPECT_EQ(messages(), Lines());
}

TEST_P(Trees, WithNothingSelectedANodeComesToTheTopBesideOthers) {
  openRows();
  select({});
  act(u"Act_Add"_s);
  typeNew(u"k1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(lastSent()["sql"_L1].toString(), member().insertTop);
}

TEST_P(Trees, BesideATopNodeANodeComesToTheTop) {
  openRows();
  act(u"Act_Add"_s);
  EXPECT_EQ(text(member().code) + text(member().name), QString());
  typeNew(u"k1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(lastSent()["sql"_L1].toString(), member().insertTop);
  EXPECT_EQ(tree().last(), kept(u"k1"_s) + u" 食品*"_s);
}

TEST_P(Trees, BesideAChildANodeGetsTheSameParent) {
  openRows();
  select(u"B"_s);
  act(u"Act_Add"_s);
  typeNew(u"k1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(tree().last(), u'.' + kept(u"k1"_s) + u" 食品*"_s);
  EXPECT_EQ(sql(member().stored).back(), (std::vector<QString>{kept(u"k1"_s), u"A"_s}));
}

TEST_P(Trees, AChildStartsFromItsParentsValuesAndNeedsACodeOfItsOwn) {
  openRows();
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(statements(), Lines{member().rowStatement.arg(u"A"_s)});
  EXPECT_EQ(focused(), member().code);
  EXPECT_EQ(text(member().code) + text(member().name), u"A甲"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{member().taken});
  EXPECT_EQ(focused(), member().code);
  typeNew(u"k2"_s);
  click(u"btn_ok"_s);
  const QJsonObject sent = lastSent();
  EXPECT_EQ(sent["sql"_L1].toString(), member().insertChild);
  EXPECT_EQ(sent["operation"_L1].toString(), u"CopyAdd"_s);
  EXPECT_EQ(tree(), (QStringList{member().loaded[0].chopped(1), member().loaded[1],
                                 u'.' + kept(u"k2"_s) + u" 食品*"_s}));
}

TEST_P(Trees, AnEditKeepsTheCodeAndRenamesTheNode) {
  openRows();
  act(u"Act_Edit"_s);
  EXPECT_EQ(statements(), Lines{member().rowStatement.arg(u"A"_s)});
  EXPECT_EQ(focused(), member().name);
  EXPECT_TRUE(get(member().code)["readonly"_L1].toBool());
  type(member().name, u"新品"_s);
  click(u"btn_ok"_s);
  const QJsonArray sent = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  ASSERT_EQ(sent.size(), 1);
  EXPECT_EQ(sent[0]["sql"_L1].toString(), member().update);
  EXPECT_EQ(sent[0]["operation"_L1].toString(), u"Edit"_s);
  EXPECT_EQ(tree().first(), u"A 新品*"_s);
  act(u"Act_Refresh"_s);
  EXPECT_EQ(tree().first(), QString(member().loaded[0]).replace(u"甲"_s, u"新品"_s));
}

TEST_P(Trees, CodesAreCheckedOnLeaving) {
  openRows();
  act(u"Act_Add"_s);
  EXPECT_EQ(focus(member().name), member().code);
  type(member().code, u"a'"_s);
  EXPECT_EQ(focus(member().name), member().code);
  type(member().code, u"A"_s);
  EXPECT_EQ(focus(member().name), member().code);
  EXPECT_EQ(messages(), (Lines{member().checkLabel + u"不能为空!"_s, member().checkLabel + u"中不能有引号!"_s,
                               member().taken}));
  EXPECT_EQ(statements(), Lines{member().uniqueness.arg(u"A"_s)});
  click(u"btn_Cancel"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(tree(), member().loaded);
}

TEST_P(Trees, ABlankNameIsRefused) {
  open(member().module);
  act(u"Act_Add"_s);
  type(member().code, u"k1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(focused(), member().name);
  EXPECT_EQ(messages(), Lines{get(member().name)["title"_L1].toString() + u"不能为空!"_s});
  click(u"btn_Cancel"_s);
  EXPECT_EQ(sql(member().stored), Table());
}

TEST_P(Trees, DeletingANodeLeavesItsChildren) {
  openRows();
  answer({u"n"_s, u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines());
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines{member().remove});
  EXPECT_EQ(sql(member().stored), (Table{{u"B"_s, u"A"_s}}));
  EXPECT_EQ(tree().size(), 2) << "the child under the node of rows without a parent";
}

TEST_P(Trees, BehindADeletedNodeTheNextOneOutsideOfItIsSelected) {
  openRows();
  const QString key = member().stored.section(u' ', 1, 1).section(u',', 0, 0);
  const QString table = member().stored.section(u' ', 3, 3);
  sql(u"insert into %1 (%2,OID) values ('B1','B');insert into %1 (%2,OID) values ('C','Z')"_s.arg(table,
                                                                                                  key));
  act(u"Act_Refresh"_s);
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  const QStringList marked = tree().filter(u"*"_s);
  ASSERT_EQ(marked.size(), 1);
  EXPECT_TRUE(marked.front().startsWith(u'C')) << tree().join(u'\n').toStdString();
}

TEST_P(Trees, ARowThatIsGoneDoesNotOpen) {
  openRows();
  sql(QString(member().remove));
  act(u"Act_Edit"_s);
  EXPECT_EQ(frontClass(), member().listClass);
  act(u"Act_CopyAdd"_s);
  EXPECT_EQ(frontClass(), member().listClass);
  EXPECT_EQ(messages(), (Lines{u"【A】已被删除，请刷新!"_s, u"【A】已被删除，请刷新!"_s}));
}

TEST_P(Trees, ASaveThatFailsLeavesTheTree) {
  openRows();
  act(u"Act_Add"_s);
  typeNew(u"k1"_s);
  focus(member().name);
  sql(member().insertTop);  // another user was faster
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(frontClass(), member().listClass + u"_1"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(tree(), member().loaded);
}

TEST_P(Trees, ViewingLocksEverything) {
  openRows();
  act(u"Act_View"_s);
  EXPECT_EQ(text(member().code) + text(member().name), u"A甲"_s);
  for (const QString& field : member().fields.split(u','))
    EXPECT_TRUE(get(field.section(u' ', 0, 0))["readonly"_L1].toBool()) << field.toStdString();
  EXPECT_FALSE(get(u"btn_ok"_s)["visible"_L1].toBool());
  click(u"btn_Cancel"_s);
}

TEST_P(Trees, NodesAreFoundByCodeNameAndInitials) {
  openRows();
  const auto selectedNow = [this] {
    for (const QString& line : tree())
      if (line.endsWith(u'*')) return line.section(u' ', 0, 0).remove(u'.');
    return QString();
  };
  press(u"Ctrl+L"_s);
  EXPECT_EQ(focused(), u"FindNode"_s);
  for (const QString& typed : {u"b"_s, u"乙"_s, u"Y"_s}) {
    type(u"FindNode"_s, u"a"_s);
    EXPECT_EQ(selectedNow(), u"A"_s);
    type(u"FindNode"_s, typed);
    EXPECT_EQ(selectedNow(), u"B"_s) << typed.toStdString();
  }
  type(u"FindNode"_s, u"nothing"_s);
  EXPECT_EQ(selectedNow(), u"B"_s);
  press(u"Esc"_s);
  EXPECT_EQ(focused(), u"TreeView"_s) << "Esc leaves the field, not the screen";
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 2);
}

TEST_P(Trees, NodesThatAnswerAlikeAreGoneThroughByTheArrows) {
  openRows();
  act(u"Act_CopyAdd"_s);
  typeNew(u"b2"_s);
  click(u"btn_ok"_s);
  act(u"Act_Locate"_s);
  type(u"FindNode"_s, u"b"_s);
  const auto current = [this] {
    return done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}})["current"_L1].toInt();
  };
  const int first = current();
  press(u"Down"_s);
  EXPECT_NE(current(), first);
  press(u"Down"_s);
  EXPECT_EQ(current(), first) << "around";
  press(u"Up"_s);
  EXPECT_NE(current(), first);
  press(u"Return"_s);
  EXPECT_EQ(focused(), u"TreeView"_s);
}

TEST_P(Trees, ARefreshKeepsTheSelectedNode) {
  openRows();
  select(u"B"_s);
  press(u"F5"_s);
  QStringList loaded = member().loaded;
  EXPECT_EQ(tree(), (QStringList{loaded[0].chopped(1), loaded[1] + u'*'}));
}

TEST_P(Trees, ARingOfRowsStaysInSight) {
  sql(member().rows);
  sql(u"update "_s + member().stored.section(u' ', 3, 3) + u" set oid='B' where oid='Z'"_s);
  open(member().module);
  const QStringList nodes = tree();
  ASSERT_EQ(nodes.size(), 3);
  EXPECT_TRUE(nodes[0].contains(u"上级不存在"_s));
  EXPECT_TRUE(nodes[1].startsWith(u".B 乙"_s)) << nodes[1].toStdString();
  EXPECT_TRUE(nodes[2].startsWith(u"..A 甲"_s)) << nodes[2].toStdString();
}

TEST_P(Trees, ARowThatIsItsOwnParentOrHasNoneStaysInSight) {
  const QString table = member().stored.section(u' ', 3, 3);
  for (const QString& parent : {u"'A'"_s, u"''"_s, u"null"_s}) {
    sql(u"delete from D1801;delete from D1802;delete from "_s + table);
    sql(member().rows);
    sql(u"update "_s + table + u" set oid="_s + parent + u" where oid='Z'"_s);
    open(member().module);
    const QString nodes = tree().join(u'|');
    EXPECT_TRUE(nodes.contains(u"A 甲"_s)) << nodes.toStdString();
    EXPECT_TRUE(nodes.contains(u"B 乙"_s)) << nodes.toStdString();
  }
}

class Regions : public TreeScreen {};

TEST_F(Regions, ThePersonInChargeIsRequired) {
  open(111);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"k1"_s);
  type(u"Edit3"_s, u"华东"_s);
  focus(u"Edit4"_s);
  EXPECT_EQ(focus(u"Edit5"_s), u"Edit4"_s);
  EXPECT_EQ(messages(), Lines{u"负责人不能为空!"_s});
  click(u"btn_Cancel"_s);
}

}  // namespace
}  // namespace goodsbook
