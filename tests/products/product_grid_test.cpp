// Work in the grid of the product list: sorting, searching, picking, copying, and what is remembered.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QTest>

#include "host/controls/TDBGridEh.h"
#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ProductGrid : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    product(u"P1"_s, u"雪碧"_s, u"693"_s);
    product(u"P2"_s, u"可乐"_s, u"691"_s);
    product(u"P3"_s, u"可可"_s, u"692"_s);
  }
  void withGrid(const std::function<void(TDBGridEh&)>& work) {
    onGui([&] {
      for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* grid = window->findChild<TDBGridEh*>(u"DBGridEh"_s); grid && grid->isVisible())
          return work(*grid);
      }
      FAIL() << "no grid";
    });
  }
  void clickTitle(const QString& field) {
    withGrid([&](TDBGridEh& grid) {
      QHeaderView* header = grid.horizontalHeader();
      const int x = header->sectionViewportPosition(grid.columnOf(field)) + 10;
      QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
    });
  }
  QString codes() {
    QStringList list;
    const QJsonArray all = rows(u"DBGridEh"_s);
    for (const QJsonValue& row : all) list << row["WL_ID"_L1].toString();
    return list.join(u' ');
  }
  QString currentCode() {
    const QJsonObject all = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}});
    return all["rows"_L1].toArray()[all["current"_L1].toInt()]["WL_ID"_L1].toString();
  }
};

TEST_F(ProductGrid, ATitleSortsAndFilterAndRefreshKeepTheOrder) {
  openList();
  clickTitle(u"TM"_s);
  EXPECT_EQ(codes(), u"P2 P3 P1"_s);
  act(u"Act_Refresh"_s);
  EXPECT_EQ(codes(), u"P2 P3 P1"_s);
  act(u"Act_Filter"_s);
  type(u"Edit1"_s, u"69"_s);
  press(u"F3"_s);
  EXPECT_EQ(codes(), u"P2 P3 P1"_s);
  clickTitle(u"TM"_s);
  EXPECT_EQ(codes(), u"P1 P3 P2"_s);
}

TEST_F(ProductGrid, TypingFindsTheRowInTheCurrentColumn) {
  openList();
  withGrid([](TDBGridEh& grid) { grid.setSelectedField(u"WL_NAME"_s); });
  withGrid([](TDBGridEh& grid) { EXPECT_TRUE(grid.findText(u"可可"_s)); });
  EXPECT_EQ(currentCode(), u"P3"_s);
  withGrid([](TDBGridEh& grid) { grid.setSelectedField(u"TM"_s); });
  for (const QString& key : {u"6"_s, u"9"_s, u"1"_s}) press(key);
  EXPECT_EQ(currentCode(), u"P2"_s);
}

TEST_F(ProductGrid, TheListOpensInTheColumnOfTheCodeAndTypingFindsCodes) {
  openList();
  focus(u"DBGridEh"_s);
  for (const QString& key : {u"p"_s, u"2"_s}) press(key);
  EXPECT_EQ(currentCode(), u"P2"_s);
  withGrid([](TDBGridEh& grid) { grid.setSelectedField(u"WL_YS"_s); });
  for (const QString& key : {u"p"_s, u"3"_s}) press(key);
  EXPECT_EQ(currentCode(), u"P3"_s) << "boxes are not searched";
}

TEST_F(ProductGrid, KeysOfTheSearchAreNotTheLists) {
  openList();
  withGrid([](TDBGridEh& grid) { grid.setSelectedField(u"WL_NAME"_s); });
  focus(u"DBGridEh"_s);
  withGrid([](TDBGridEh& grid) { EXPECT_TRUE(grid.findText(u"可"_s)); });
  EXPECT_EQ(currentCode(), u"P2"_s);
  press(u"F3"_s);
  EXPECT_EQ(frontClass(), u"TF2101"_s) << "no viewer";
  EXPECT_EQ(currentCode(), u"P3"_s);
  press(u"Shift+F3"_s);
  EXPECT_EQ(currentCode(), u"P2"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101"_s) << "the list is still there";
  press(u"F3"_s);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s) << "the search has ended";
  EXPECT_EQ(get(u"btn_Cancel"_s)["text"_L1].toString(), u"关闭"_s);
  press(u"Esc"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), QString());
}

TEST_F(ProductGrid, PickedRowsAreCopiedInTheirOrderWithHeadings) {
  openList();
  select({2, 0});
  press(u"Ctrl+C"_s);
  QStringList lines;
  onGui([&] { lines = QApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts); });
  ASSERT_EQ(lines.size(), 3);
  EXPECT_TRUE(lines[0].startsWith(u"有效\t商品编号\t重码\t条码\t商品名称\t"_s)) << lines[0].toStdString();
  EXPECT_TRUE(lines[1].contains(u"\tP3\t"_s));
  EXPECT_TRUE(lines[2].contains(u"\tP1\t"_s));
}

TEST_F(ProductGrid, RowsAreNumbered) {
  openList();
  withGrid([](TDBGridEh& grid) {
    EXPECT_TRUE(grid.verticalHeader()->isVisible());
    EXPECT_EQ(grid.model()->headerData(2, Qt::Vertical).toString(), u"3"_s);
  });
}

TEST_F(ProductGrid, WidthOrderAndSortAreThereTheNextTime) {
  const int id = open(101)["id"_L1].toInt();
  rows(u"DBGridEh"_s);
  withGrid([](TDBGridEh& grid) {
    grid.setColumnWidth(grid.columnOf(u"WL_NAME"_s), 321);
    grid.horizontalHeader()->moveSection(4, 0);
  });
  clickTitle(u"TM"_s);
  done({{u"cmd"_s, u"close"_s}, {u"id"_s, id}});
  openList();
  EXPECT_EQ(codes(), u"P2 P3 P1"_s);
  withGrid([](TDBGridEh& grid) {
    EXPECT_EQ(grid.columnWidth(grid.columnOf(u"WL_NAME"_s)), 321);
    EXPECT_EQ(grid.horizontalHeader()->logicalIndex(0), grid.columnOf(u"WL_NAME"_s));
  });
}

}  // namespace
}  // namespace goodsbook
