// What the user finds when a product's save is refused: a message, and the focus where the work goes on.
#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString grid = u"DBGridEh1"_s;

class ProductRefusals : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    product(u"P1"_s, u"可乐"_s);
    openList();
    act(u"Act_Edit"_s);
  }
  bool focused(const QString& element) { return get(element)["focused"_L1].toBool(); }
  // Negative stock refuses the save without a field of its own.
  void refuseEverySave() {
    sql(u"insert into D1802 (WL_ID,CK_ID,KC,CHECK_KC) values ('P1','A',-1,1)"_s);
    check(u"check_kc"_s, false);
  }
};

TEST_F(ProductRefusals, TheFocusIsBackInTheFieldByKeyAndByMouse) {
  refuseEverySave();
  focus(u"NOTE"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"该商品有负库存,不能取消该商品的负库存状态!"_s});
  EXPECT_TRUE(focused(u"NOTE"_s));
  focus(u"SJ"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_TRUE(focused(u"SJ"_s));
  click(u"btn_Cancel"_s);
}

TEST_F(ProductRefusals, TheFocusIsBackAfterAnErrorOfTheDatabase) {
  type(u"NOTE"_s, u"5'"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_TRUE(focused(u"NOTE"_s));
  click(u"btn_Cancel"_s);
}

TEST_F(ProductRefusals, TheFieldToBlameKeepsTheFocus) {
  type(u"Edit2"_s, {});
  focus(u"NOTE"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"商品名称不能为空!"_s});
  EXPECT_TRUE(focused(u"Edit2"_s));
  click(u"btn_Cancel"_s);
}

TEST_F(ProductRefusals, AUnitThatThereIsNotPointsToItsCell) {
  press(u"F6"_s);
  act(u"N5"_s);
  cell(grid, 1, u"TM"_s, u"77"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位不能为空!"_s});
  EXPECT_TRUE(focused(grid));
  cell(grid, 1, u"DW_ID"_s, u"ZZ"_s);
  done({{u"cmd"_s, u"row"_s}, {u"element"_s, grid}, {u"index"_s, 0}});
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"单位【ZZ】不存在!"_s});
  EXPECT_TRUE(focused(grid));
  EXPECT_EQ(done({{u"cmd"_s, u"rows"_s}, {u"element"_s, grid}})["current"_L1].toInt(), 1);
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  EXPECT_EQ(sql(u"select count(*) as n from D1801DW"_s), (Table{{u"1"_s}}));
  cell(grid, 1, u"DW_ID"_s, u"02"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

TEST_F(ProductRefusals, ARefusedCategoryHasNoOtherOnesNameBesideIt) {
  type(u"CLASS_ID"_s, u"01"_s);
  focus(u"NOTE"_s);
  EXPECT_EQ(text(u"CLASS_NAME"_s), u"饮料"_s);
  type(u"CLASS_ID"_s, u"99"_s);
  focus(u"NOTE"_s);
  EXPECT_EQ(messages(), Lines{u"商品分类【99】不存在!"_s});
  EXPECT_EQ(text(u"CLASS_NAME"_s), QString());
  click(u"btn_Cancel"_s);
}

TEST_F(ProductRefusals, ACategoryThatIsGoneRefusesACopyAndAnEdit) {
  click(u"btn_Cancel"_s);
  for (const QString& action : {u"Act_CopyAdd"_s, u"Act_Edit"_s}) {
    SCOPED_TRACE(action.toStdString());
    act(action);
    if (action == "Act_CopyAdd"_L1) type(u"Edit1"_s, u"P2"_s);
    sql(u"delete from D1004 where CLASS_ID='01'"_s);
    statements();
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{u"商品分类【01】不存在!"_s});
    EXPECT_TRUE(focused(u"CLASS_ID"_s));
    EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
    click(u"btn_Cancel"_s);
    sql(u"insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('01','饮料','Z')"_s);
  }
}

TEST_F(ProductRefusals, APriceThatIsNoNumberIsRefusedWhereF6HidIt) {
  const std::vector<std::pair<QString, QString>> prices{
      {u"SJ"_s, u"零售价"_s}, {u"VIPSJ"_s, u"会员价"_s}, {u"pfj"_s, u"批发价"_s}, {u"CGJ"_s, u"采购价"_s}};
  for (const auto& [price, label] : prices) {
    SCOPED_TRACE(price.toStdString());
    type(price, u"-"_s);
    press(u"F6"_s);
    focus(u"Edit2"_s);
    press(u"F6"_s);
    statements();
    press(u"F9"_s);
    EXPECT_EQ(messages(), Lines{label + u"应输入数字!"_s});
    EXPECT_TRUE(focused(price));
    EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
    type(price, u"1"_s);
  }
  type(u"SJ"_s, {});
  press(u"F6"_s);
  focus(u"Edit2"_s);
  press(u"F6"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines()) << "none may be given";
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

TEST_F(ProductRefusals, ABarcodeThatIsTooLongIsShownInTheBox) {
  press(u"F6"_s);
  cellClick(grid, 0, u"多条码"_s);
  type(u"Memo1"_s, u"1"_s.repeated(31));
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"条码长度不可超过30位!"_s});
  EXPECT_TRUE(focused(u"Memo1"_s));
  click(u"btn_Cancel"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductRefusals, NoPicturesAreNotPrinted) {
  click(u"btn_Cancel"_s);
  sql(u"delete from D1801DW;delete from D1801"_s);
  act(u"Act_Other"_s);
  press(u"F2"_s);
  EXPECT_EQ(messages(), Lines{u"没有可打印的图片"_s});
  done({{u"cmd"_s, u"close"_s}});
}

TEST_F(ProductRefusals, WindowsStayOnTheScreen) {
  onGui([] {
    const QSize screen = QApplication::primaryScreen()->availableSize();
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible()) continue;
      EXPECT_LE(window->width(), screen.width()) << window->metaObject()->className();
      EXPECT_LE(window->height(), screen.height()) << window->metaObject()->className();
    }
  });
  click(u"btn_Cancel"_s);
}

}  // namespace
}  // namespace goodsbook
