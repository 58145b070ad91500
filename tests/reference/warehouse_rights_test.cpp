// The users' rights on a warehouse.
#include <gtest/gtest.h>

#include <QApplication>

#include "host/U_glo.h"
#include "host/controls/TDBGridEh.h"
#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class WarehouseRights : public ReferenceTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    onGui([] { G_CHKCK = true; });
    sql(u"insert into D1007 (ck_id,ck_name,oid) values ('k1','东仓','Z'),('k2','西仓','Z');"
        "insert into SYS_USER values ('A1','甲',1),('A2','乙',1),('B1','丙',1),('B2','丁',0);"
        "insert into SYS_USER_CK values ('A1','k1',1),('A2','k1',0),('B2','k1',1)"_s);
  }
  void TearDown() override {
    onGui([] { G_CHKCK = false; });
    ScreenTest::TearDown();
  }
  void edit() {
    open(107);
    done({{u"cmd"_s, u"node"_s}, {u"code"_s, u"k1"_s}});
    act(u"Act_Edit"_s);
    statements();
  }
  QStringList ticks() {  // user, read, write; the administrator left out
    QStringList lines;
    const QJsonArray list = rows(u"DBGridEh1"_s);
    for (const QJsonValue& row : list) {
      if (row["USER_ID"_L1].toString() == "ADMIN"_L1) continue;
      const auto on = [&row](const char* field) {
        const QString shown = row[QLatin1String(field)].toString();
        return shown == "1"_L1 || shown.compare("true"_L1, Qt::CaseInsensitive) == 0;
      };
      lines << row["USER_ID"_L1].toString() + (on("R") ? u" R"_s : QString()) +
                   (on("W") ? u" W"_s : QString());
    }
    lines.sort();
    return lines;
  }
  int rowOf(const QString& user) {
    const QJsonArray list = rows(u"DBGridEh1"_s);
    for (int row = 0; row < list.size(); ++row) {
      if (list[row]["USER_ID"_L1].toString() == user) return row;
    }
    return -1;
  }
  void tick(const QString& user, const QString& field, bool on) {
    done({{u"cmd"_s, u"cell"_s},
          {u"element"_s, u"DBGridEh1"_s},
          {u"row"_s, rowOf(user)},
          {u"field"_s, field},
          {u"text"_s, on ? u"1"_s : u"0"_s}});
  }
  Table stored() { return sql(u"select ck_id,user_id,w from SYS_USER_CK order by ck_id,user_id"_s); }
};

TEST_F(WarehouseRights, TheDialogListsTheActiveUsers) {
  edit();
  EXPECT_EQ(text(u"BTN_QS"_s), u"  权限设定"_s);
  click(u"BTN_QS"_s);
  EXPECT_EQ(frontClass(), u"TF2107_2"_s);
  EXPECT_EQ(
      statements(),
      Lines{
          u"SELECT LEFT(U.USER_ID,2) AS G,U.USER_ID, U.USER_NAME, case WHEN(K.W >= 0) then convert(bit,1)  ELSE convert(bit,0) end as R,case WHEN K.W = 1 then convert(bit,1)  ELSE convert(bit,0) end as W FROM SYS_USER U LEFT OUTER JOIN SYS_USER_CK K on K.USER_ID = U.USER_ID and K.CK_ID = 'k1' WHERE (U.T = 1)"_s});
  EXPECT_EQ(ticks(), (QStringList{u"A1 R W"_s, u"A2 R"_s, u"B1"_s}));
  QStringList columns;
  const QJsonArray all =
      done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh1"_s}})["columns"_L1].toArray();
  for (const QJsonValue& column : all) {
    columns << column["field"_L1].toString() + u' ' + column["title"_L1].toString() +
                   (column["readonly"_L1].toBool() ? QString() : u" open"_s);
  }
  EXPECT_EQ(columns.join(u',').toStdString(), "G 组,USER_ID 用户号,USER_NAME 名称,R 读 open,W 写 open");
  EXPECT_EQ(text(u"Label1"_s), u"系统提示：拥有写权限，系统自动赋于读权限。"_s);
  EXPECT_EQ(text(u"btn_Cancel"_s), u"取消 ESC"_s);
  EXPECT_EQ(text(u"bsSkinButton1"_s), u"清空"_s);
  const QJsonArray windows = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  EXPECT_EQ(windows.last()["caption"_L1].toString(), u"仓库权限设定"_s);
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(WarehouseRights, TabGoesFromTickToTick) {
  edit();
  click(u"BTN_QS"_s);
  done({{u"cmd"_s, u"cellclick"_s},
        {u"element"_s, u"DBGridEh1"_s},
        {u"row"_s, rowOf(u"B1"_s)},
        {u"field"_s, u"R"_s}});
  press(u"Space"_s);
  press(u"Tab"_s);
  press(u"Space"_s);
  EXPECT_EQ(ticks(), (QStringList{u"A1 R W"_s, u"A2 R"_s, u"B1 R W"_s}));
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(WarehouseRights, AreWrittenWithTheWarehouseInOneBatch) {
  edit();
  click(u"BTN_QS"_s);
  tick(u"B1"_s, u"W"_s, true);
  tick(u"A2"_s, u"R"_s, false);
  EXPECT_EQ(ticks(), (QStringList{u"A1 R W"_s, u"A2"_s, u"B1 R W"_s})) << "write brings read along";
  tick(u"A1"_s, u"W"_s, false);
  click(u"btn_ok"_s);
  EXPECT_EQ(stored().size(), 3U) << "OK of the dialog writes nothing";
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements(),
      Lines{
          u"update d1007 set CK_NAME='东仓',pym='DC',CK_GL='',CK_TEL='',CK_ADDR='',CK_NOTE='' where ck_id='k1'"
          "delete from SYS_USER_CK where ck_id='k1';"
          "insert into SYS_USER_CK values('A1','k1',0);insert into SYS_USER_CK values('B1','k1',1);"_s});
  EXPECT_EQ(stored(), (Table{{u"k1"_s, u"A1"_s, u"0"_s}, {u"k1"_s, u"B1"_s, u"1"_s}}));
}

TEST_F(WarehouseRights, WriteWinsOverAReadThatWasCleared) {
  edit();
  click(u"BTN_QS"_s);
  tick(u"A1"_s, u"R"_s, false);
  EXPECT_EQ(ticks().first(), u"A1 W"_s);
  click(u"btn_ok"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(stored(), (Table{{u"k1"_s, u"A1"_s, u"1"_s}, {u"k1"_s, u"A2"_s, u"0"_s}}));
}

TEST_F(WarehouseRights, ClearingTakesAllAway) {
  edit();
  click(u"BTN_QS"_s);
  click(u"bsSkinButton1"_s);
  EXPECT_EQ(ticks(), (QStringList{u"A1"_s, u"A2"_s, u"B1"_s}));
  click(u"btn_ok"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(stored(), Table());
}

TEST_F(WarehouseRights, CancelUndoesTheTicks) {
  edit();
  click(u"BTN_QS"_s);
  tick(u"B1"_s, u"W"_s, true);
  click(u"bsSkinButton1"_s);
  click(u"btn_Cancel"_s);
  click(u"BTN_QS"_s);
  EXPECT_EQ(ticks(), (QStringList{u"A1 R W"_s, u"A2 R"_s, u"B1"_s}));
  click(u"btn_ok"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(stored().size(), 3U);
}

TEST_F(WarehouseRights, TicksSurviveUntilAnotherWarehouseIsOpened) {
  edit();
  click(u"BTN_QS"_s);
  tick(u"B1"_s, u"W"_s, true);
  click(u"btn_ok"_s);
  statements();
  click(u"BTN_QS"_s);
  EXPECT_EQ(ticks().last(), u"B1 R W"_s);
  EXPECT_EQ(statements(), Lines()) << "the rows are still there";
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
  done({{u"cmd"_s, u"node"_s}, {u"code"_s, u"k2"_s}});
  act(u"Act_Edit"_s);
  click(u"BTN_QS"_s);
  EXPECT_EQ(ticks(), (QStringList{u"A1"_s, u"A2"_s, u"B1"_s}));
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(WarehouseRights, ALookUpThatFailsLeavesNoOthersRightsBehind) {
  edit();
  click(u"BTN_QS"_s);
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
  done({{u"cmd"_s, u"node"_s}, {u"code"_s, u"k2"_s}});
  act(u"Act_Edit"_s);
  sql(u"drop table SYS_USER"_s);
  click(u"BTN_QS"_s);
  EXPECT_EQ(frontClass(), u"TF2107_1"_s);
  EXPECT_EQ(messages().size(), 1U);
  statements();
  click(u"btn_ok"_s);
  ASSERT_EQ(statements().size(), 1U);
  EXPECT_EQ(sql(u"select count(*) as n from SYS_USER_CK where ck_id='k2'"_s), (Table{{u"0"_s}}));
  EXPECT_EQ(stored().size(), 3U);
  sql(u"create table SYS_USER (USER_ID nvarchar(10) not null primary key, USER_NAME nvarchar(20), T int)"_s);
  sql(u"insert into SYS_USER values ('A1','甲',1),('B1','丙',1)"_s);
  act(u"Act_Edit"_s);
  click(u"BTN_QS"_s);
  EXPECT_EQ(ticks(), (QStringList{u"A1"_s, u"B1"_s}));
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(WarehouseRights, TheCurrentCellIsPaintedByTheFocus) {
  edit();
  click(u"BTN_QS"_s);
  const auto colour = [this](int column) {
    QColor painted;
    onGui([&painted, column] {
      for (QWidget* widget : QApplication::allWidgets()) {
        auto* grid = qobject_cast<TDBGridEh*>(widget);
        if (!grid || grid->objectName() != "DBGridEh1"_L1) continue;
        const QRect cell = grid->visualRect(grid->model()->index(0, column));
        painted =
            grid->viewport()->grab(QRect(cell.right() - 3, cell.top() + 2, 1, 1)).toImage().pixelColor(0, 0);
      }
    });
    return painted;
  };
  done({{u"cmd"_s, u"cellclick"_s},
        {u"element"_s, u"DBGridEh1"_s},
        {u"row"_s, 0},
        {u"field"_s, u"USER_NAME"_s}});
  const QColor focusedCell = colour(2);
  EXPECT_NE(focusedCell, colour(1));
  focus(u"btn_ok"_s);
  EXPECT_NE(colour(2), focusedCell);
  EXPECT_NE(colour(2), colour(1)) << "it is still seen to be the current one";
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(WarehouseRights, ABatchForAnotherCodeIsNotBuiltAnew) {
  open(107);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"n1"_s);
  type(u"Edit3"_s, u"新仓"_s);
  click(u"BTN_QS"_s);
  tick(u"B1"_s, u"R"_s, true);
  click(u"btn_ok"_s);
  type(u"Edit1"_s, u"N1"_s);  // another spelling of the same code
  type(u"Edit1"_s, u"n2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements().back(),
      u"insert into D1007 ( CK_ID, CK_NAME,PYM, CK_GL, CK_TEL, CK_ADDR, CK_NOTE,OID) ValueS('n2','新仓','XC','','','','','Z')"
      "delete from SYS_USER_CK where ck_id='n1';insert into SYS_USER_CK values('B1','n1',0);"_s);
}

TEST_F(WarehouseRights, TheCodesCaseDoesNotCount) {
  for (const auto& [opened, saved, batch] :
       {std::tuple(u"n1"_s, u"N1"_s, u"delete from SYS_USER_CK where ck_id='n1';"_s),
        std::tuple(u"n2"_s, u"n3"_s, QString())}) {
    open(107);
    act(u"Act_Add"_s);
    type(u"Edit1"_s, opened);
    type(u"Edit3"_s, u"新仓"_s);
    click(u"BTN_QS"_s);
    click(u"btn_Cancel"_s);  // its rows stay loaded, no batch is built yet
    type(u"Edit1"_s, saved);
    click(u"btn_ok"_s);
    EXPECT_EQ(statements().back().section(u')', -1), batch) << saved.toStdString();
  }
}

TEST_F(WarehouseRights, ReadingTheWarehouseShowsItsRightsLocked) {
  open(107);
  done({{u"cmd"_s, u"node"_s}, {u"code"_s, u"k1"_s}});
  act(u"Act_View"_s);
  click(u"BTN_QS"_s);
  EXPECT_EQ(ticks().first(), u"A1 R W"_s);
  EXPECT_FALSE(get(u"bsSkinButton1"_s)["visible"_L1].toBool());
  EXPECT_FALSE(get(u"btn_ok"_s)["visible"_L1].toBool());
  EXPECT_NE(refused({{u"cmd"_s, u"cell"_s},
                     {u"element"_s, u"DBGridEh1"_s},
                     {u"row"_s, 0},
                     {u"field"_s, u"W"_s},
                     {u"text"_s, u"1"_s}}),
            QString());
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2107_1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(WarehouseRights, ASaveThatFailsLeavesThemAsTheyAre) {
  open(107);
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"n1"_s);
  type(u"Edit3"_s, u"新仓"_s);
  click(u"BTN_QS"_s);
  tick(u"B1"_s, u"R"_s, true);
  click(u"btn_ok"_s);
  sql(u"insert into D1007 (ck_id,oid) values ('n1','Z')"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(stored().size(), 3U);
}

TEST_F(WarehouseRights, AreHiddenWhereTheyAreNotInUse) {
  onGui([] { G_CHKCK = false; });
  edit();
  EXPECT_FALSE(get(u"BTN_QS"_s)["visible"_L1].toBool());
  type(u"Edit3"_s, u"O'仓"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements(),
      Lines{
          u"update d1007 set CK_NAME='O''仓',pym='OC',CK_GL='',CK_TEL='',CK_ADDR='',CK_NOTE='' where ck_id='k1'"_s});
  EXPECT_EQ(stored().size(), 3U);
}

}  // namespace
}  // namespace goodsbook
