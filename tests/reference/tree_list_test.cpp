// The tree and the list beside it; what screens of one family keep apart.
#include <gtest/gtest.h>

#include <QApplication>

#include "host/controls/TDBGridEh.h"
#include "tests/reference/reference_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using Lines = std::vector<QString>;

class ListScreens : public ReferenceTest {
 protected:
  // The grid of the list on the screen.
  void onGrid(const std::function<void(TDBGridEh&)>& work) {
    onGui([&work] {
      for (QWidget* widget : QApplication::allWidgets()) {
        auto* grid = qobject_cast<TDBGridEh*>(widget);
        if (grid && grid->isVisible() && grid->objectName() == "DBGridEh"_L1) work(*grid);
      }
    });
  }
};

class TreeBesideList : public ListScreens {
 protected:
  void SetUp() override {
    ReferenceTest::SetUp();
    sql(u"insert into D1004 values ('A','茶','','Z','C'),('B','食品','','Z','SP'),('C','食品柜','','Z','SPG'),"
        "('X','孤儿','','Q','GE');"
        "insert into D1801 (WL_ID,CLASS_ID) values ('P1','C')"_s);
    openList(104);
  }
  QStringList tree() {
    QStringList lines;
    const QJsonArray nodes = done({{u"cmd"_s, u"tree"_s}})["nodes"_L1].toArray();
    for (const QJsonValue& node : nodes) lines << node["caption"_L1].toString();
    return lines;
  }
  QString selected() {
    const QJsonArray nodes = done({{u"cmd"_s, u"tree"_s}})["nodes"_L1].toArray();
    for (const QJsonValue& node : nodes)
      if (node["selected"_L1].toBool()) return node["caption"_L1].toString();
    return {};
  }
  void select(const QString& code) {
    done({{u"cmd"_s, u"node"_s}, {u"code"_s, code.isNull() ? QJsonValue() : QJsonValue(code)}});
  }
  void clickRow(int row, bool twice = false) {
    done({{u"cmd"_s, u"cellclick"_s},
          {u"element"_s, u"DBGridEh"_s},
          {u"row"_s, row},
          {u"field"_s, u"CLASS_NAME"_s},
          {u"double"_s, twice}});
  }
};

TEST_F(TreeBesideList, TheTreeKeepsItsOrderWhenTheListIsSorted) {
  const QStringList before = tree();
  onGrid([](TDBGridEh& grid) { grid.recordSet()->setSort(u"CLASS_ID"_s, true); });
  press(u"F5"_s);
  EXPECT_EQ(column(u"CLASS_ID"_s), (QStringList{u"X"_s, u"C"_s, u"B"_s, u"A"_s})) << "the list stays sorted";
  EXPECT_EQ(tree(), before);
}

TEST_F(TreeBesideList, ARowClickedWhileNoNodeIsSelectedIsTheOneWorkedOn) {
  for (const bool twice : {false, true}) {
    select({});
    clickRow(1, twice);  // it stood out already
    EXPECT_EQ(frontClass(), twice ? u"TF2104_1"_s : u"TF2104"_s);
    if (twice) click(u"btn_Cancel"_s);
    EXPECT_EQ(selected(), u"A 茶 (0)"_s);
  }
  focus(u"TreeView"_s);
  select({});
  focus(u"DBGridEh"_s);
  answer({u"n"_s});
  press(u"Del"_s);
  EXPECT_EQ(messages(), Lines{u"是否删除【A 茶】?"_s});
}

TEST_F(TreeBesideList, AfterTheEditorTheFocusIsWhereItWas) {
  for (const QString& place : {u"DBGridEh"_s, u"TreeView"_s}) {
    focus(place);
    act(u"Act_Edit"_s);
    click(u"btn_Cancel"_s);
    EXPECT_EQ(focused(), place);
  }
}

TEST_F(TreeBesideList, NodesAreFoundByTheirNamesWithoutTheCount) {
  type(u"FindNode"_s, u"食品"_s);
  EXPECT_EQ(selected(), u"B 食品 (0)"_s);
  select(u"A"_s);
  type(u"FindNode"_s, u"(1)"_s);
  EXPECT_EQ(selected(), u"A 茶 (0)"_s);
}

TEST_F(TreeBesideList, TheCodeOfTheTopLevelIsNoCode) {
  act(u"Act_Add"_s);
  type(u"t0"_s, u"z"_s);
  EXPECT_EQ(focus(u"t1"_s), u"t0"_s);
  EXPECT_EQ(messages(), Lines{u"代号【Z】表示最上级，不能使用!"_s});
  EXPECT_EQ(statements(), Lines());
  type(u"t0"_s, u"z1"_s);
  EXPECT_EQ(focus(u"t1"_s), u"t1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(TreeBesideList, OneChildAfterTheOtherCanBeAdded) {
  select(u"B"_s);
  act(u"Act_CopyAdd"_s);
  EXPECT_FALSE(get(u"ContinueAdd"_s)["checked"_L1].toBool());
  done({{u"cmd"_s, u"check"_s}, {u"element"_s, u"ContinueAdd"_s}, {u"on"_s, true}});
  for (const QString& code : {u"b1"_s, u"b2"_s}) {
    EXPECT_EQ(focused(), u"t0"_s);
    type(u"t0"_s, code);
    type(u"t1"_s, u"饼干"_s);
    click(u"btn_ok"_s);
    EXPECT_EQ(text(u"t1"_s), QString());
  }
  click(u"btn_Cancel"_s);
  EXPECT_EQ(sql(u"select CLASS_ID from D1004 where OID='B' order by CLASS_ID"_s),
            (std::vector<std::vector<QString>>{{u"B1"_s}, {u"B2"_s}}));
  act(u"Act_Add"_s);
  EXPECT_FALSE(get(u"ContinueAdd"_s)["checked"_L1].toBool()) << "each opening begins without";
  click(u"btn_Cancel"_s);
}

TEST_F(ListScreens, EachMemberOfAFamilyKeepsItsOwnColumns) {
  const int families[][2] = {{103, 123}, {104, 108}, {113, 114}};
  for (const auto& [one, other] : families) {
    const auto width = [this] {
      int first = 0;
      onGrid([&first](TDBGridEh& grid) { first = grid.columnWidth(0); });
      return first;
    };
    for (const auto& [module, wide] : {std::pair(one, 131), std::pair(other, 173)}) {
      openList(module);
      onGrid([wide](TDBGridEh& grid) { grid.setColumnWidth(0, wide); });
      done({{u"cmd"_s, u"close"_s}});
    }
    for (const auto& [module, wide] : {std::pair(one, 131), std::pair(other, 173)}) {
      openList(module);
      EXPECT_EQ(width(), wide) << module;
      done({{u"cmd"_s, u"close"_s}});
    }
  }
}

}  // namespace
}  // namespace goodsbook
