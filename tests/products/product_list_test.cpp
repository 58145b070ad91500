// The product list: columns, statement, rights, and which editor it opens.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QToolBar>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ProductList : public ProductScreen {
 protected:
  QJsonObject firstRow() { return rows(u"DBGridEh"_s)[0].toObject(); }
  QJsonObject action(const QString& name) {
    const QJsonArray all = done({{u"cmd"_s, u"actions"_s}})["actions"_L1].toArray();
    for (const QJsonValue& one : all) {
      if (one["name"_L1].toString() == name) return one.toObject();
    }
    return {};
  }
};

const QString selectHead =
    u" SELECT d1801.wl_id,d1801.wl_name,d1801.wl_gg,d1004.class_id, d1004.class_name,D1801.dwcount,d1003.dw_id,d1003.dw_name,d1801.cd, d1801.wl_ys,d1801.CHECK_KC,"_s;
const QString selectTail =
    u"d1801dw.sj,d1801dw.vipsj,d1801dw.pfj,d1801dw.pfj1,d1801dw.pfj2,d1801dw.pfj3,d1801dw.pfj4,d1801dw.tm,d1801.pym,"
    " sys_user.user_id,sys_user.user_name,d1801.bdate,d1801.edate,d1801.note,d1801.dw_zh,d1801.DW_J_NAME,d1801.TMC"
    " FROM d1801 INNER JOIN d1004 ON d1801.class_id = d1004.class_id INNER JOIN sys_user ON d1801.user_id = sys_user.user_id INNER JOIN"
    " d1801dw ON d1801.wl_id = d1801dw.wl_id INNER JOIN d1003 ON d1801dw.dw_id = d1003.dw_id  AND (D1801DW.T = 1)  "_s;

TEST_F(ProductList, ShowsItsColumnsInOrder) {
  const QJsonObject screen = open(101);
  EXPECT_EQ(screen["class"_L1].toString(), u"TF2101"_s);
  EXPECT_EQ(screen["caption"_L1].toString(), u"商品基本资料 "_s);
  QStringList columns;
  const QJsonArray all = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}})["columns"_L1].toArray();
  for (const QJsonValue& column : all) {
    const QString hidden = column["visible"_L1].toBool() ? QString() : u"-"_s;
    columns << hidden + column["field"_L1].toString().toUpper();
  }
  EXPECT_EQ(columns.join(u' ').toStdString(),
            "WL_YS WL_ID TMC TM WL_NAME WL_GG -CLASS_ID CLASS_NAME -DW_ID DW_NAME DWCOUNT SJ VIPSJ PFJ PFJ1 "
            "PFJ2 PFJ3 PFJ4 CGJ DJ CHECK_KC CD BDATE EDATE -USER_ID USER_NAME NOTE -PYM");
  const std::vector<int> widths{37, 83, 30, 106, 204, 80};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(all[i]["width"_L1].toInt(), widths[static_cast<std::size_t>(i)]) << i;
  EXPECT_EQ(all[7]["width"_L1].toInt(), 72);
  EXPECT_EQ(all[9]["width"_L1].toInt(), 44);
  EXPECT_EQ(all[10]["width"_L1].toInt(), 58);
}

TEST_F(ProductList, WhoSeesCostsSeesTheCostPrice) {
  product(u"P1"_s, u"可乐"_s);
  open(101);
  const QJsonObject row = firstRow();
  EXPECT_EQ(row["DJ"_L1].toString().toDouble(), 2);
  EXPECT_EQ(row["CGJ"_L1].toString().toDouble(), 2.5);
  EXPECT_EQ(row["USER_NAME"_L1].toString(), u"系统管理员"_s);
  EXPECT_TRUE(row.contains(u"DW_ZH"_s));
  EXPECT_TRUE(row.contains(u"DW_J_NAME"_s));
  EXPECT_EQ(statements(), Lines{selectHead + u"d1801.dj,d1801dw.cgj,"_s + selectTail});
}

TEST_F(ProductList, WithoutTheCostRightTheCostIsZeroAndThePurchasePriceStays) {
  product(u"P1"_s, u"可乐"_s);
  open(101, {{u"cost"_s, false}});
  EXPECT_EQ(firstRow()["DJ"_L1].toString().toDouble(), 0);
  EXPECT_EQ(firstRow()["CGJ"_L1].toString().toDouble(), 2.5);
  EXPECT_EQ(statements(), Lines{selectHead + u"0.0 as dj,d1801dw.cgj,"_s + selectTail});
}

TEST_F(ProductList, AProductWithoutCategoryUserUnitRowOrUnitIsNotListed) {
  for (const QString& code : {u"P1"_s, u"P2"_s, u"P3"_s, u"P4"_s, u"P5"_s, u"P6"_s}) product(code, code);
  sql(u"update D1801 set CLASS_ID='99' where WL_ID='P2';update D1801 set USER_ID='X' where WL_ID='P3';"
      "delete from D1801DW where WL_ID='P4';update D1801DW set DW_ID='99' where WL_ID='P5';"
      "update D1801DW set T=0 where WL_ID='P6'"_s);
  open(101);
  ASSERT_EQ(rows(u"DBGridEh"_s).size(), 1);
  EXPECT_EQ(firstRow()["WL_ID"_L1].toString(), u"P1"_s);
}

TEST_F(ProductList, ItsActionsHaveTheirCaptions) {
  open(101);
  EXPECT_EQ(action(u"Act_Other"_s)["caption"_L1].toString(), u"图片"_s);
  EXPECT_TRUE(action(u"Act_Other"_s)["hint"_L1].toString().startsWith(u"图片浏览"_s));
  EXPECT_TRUE(action(u"Act_Other"_s)["visible"_L1].toBool());
  EXPECT_TRUE(action(u"Act_Other"_s)["enabled"_L1].toBool());
  EXPECT_EQ(action(u"Act_hb"_s)["caption"_L1].toString(), u"合并"_s);
}

TEST_F(ProductList, ImportingIsThereForWhoMayImport) {
  open(101);
  EXPECT_EQ(action(u"Act_imp"_s)["caption"_L1].toString(), u"导入"_s);
  EXPECT_EQ(action(u"Act_imp"_s)["hint"_L1].toString(), u"新品批量导入"_s);
  EXPECT_TRUE(action(u"Act_imp"_s)["visible"_L1].toBool());
  EXPECT_TRUE(action(u"Act_imp"_s)["enabled"_L1].toBool());
  EXPECT_TRUE(get(u"TlBtn_IMP"_s)["visible"_L1].toBool());
  open(101, {{u"import"_s, false}});
  EXPECT_FALSE(action(u"Act_imp"_s)["visible"_L1].toBool());
  EXPECT_FALSE(action(u"Act_imp"_s)["enabled"_L1].toBool());
}

TEST_F(ProductList, TheImportButtonNeverStartsBefore215PixelsOfTheToolBar) {
  open(101);
  const auto onScreen = [this](const std::function<void(QWidget&)>& work) {
    done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
    onGui([&work] {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->findChild<QToolBar*>(u"ToolBar"_s)) work(*window);
      }
    });
  };
  const auto left = [&onScreen] {
    int x = -1;
    onScreen([&x](QWidget& window) { x = window.findChild<QWidget*>(u"TlBtn_IMP"_s)->x(); });
    return x;
  };
  EXPECT_GE(left(), 215);
  onScreen([](QWidget& window) {
    for (const QString& name : {u"Act_CopyAdd"_s, u"Act_View"_s})
      window.findChild<QAction*>(name)->setVisible(false);
  });
  left();  // lets the bar lay itself out
  EXPECT_EQ(left(), 215) << "with fewer buttons before it";
}

TEST_F(ProductList, MergingIsInTheMenuOfTheGrid) {
  openList();
  EXPECT_EQ(action(u"N1"_s)["caption"_L1].toString(), u"合并"_s);
  act(u"N1"_s);
  EXPECT_EQ(messages(), Lines{u"合并功能必须选定两行以上!"_s});
}

TEST_F(ProductList, DeletingSendsTheTemplateWithTheQuotedCode) {
  product(u"P1"_s, u"可乐"_s);
  openList();
  answer({u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(statements(), Lines{u"delete from D1801 Where WL_ID='P1'"_s});
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 0);
  EXPECT_EQ(sql(u"select wl_id from D1801DW"_s), (Table{{u"P1"_s}}));
}

TEST_F(ProductList, TheSettingChoosesTheEditor) {
  product(u"P1"_s, u"可乐"_s);
  for (const auto& [value, editor] : {std::pair{u"0"_s, u"TF2101A_1"_s},
                                      {u"1"_s, u"TF2101_1"_s},
                                      {u"2"_s, u"TF2101A_3"_s},
                                      {QString(), u"TF2101A_3"_s}}) {
    set(u"GPARAM23"_s, value);
    const int id = open(101)["id"_L1].toInt();
    rows(u"DBGridEh"_s);
    for (const QString& action : {u"Act_Add"_s, u"Act_Edit"_s}) {
      act(action);
      EXPECT_EQ(frontClass(), editor) << value.toStdString() << " " << action.toStdString();
      click(u"btn_Cancel"_s);
    }
    done({{u"cmd"_s, u"close"_s}, {u"id"_s, id}});
  }
}

}  // namespace
}  // namespace goodsbook
