// A whole session at the keyboard: find products by their initials, change prices one after the other.
#include <gtest/gtest.h>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ProductSession : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    QString batch;
    for (int i = 0; i < 500; ++i) {
      const QString code = QString::number(i).rightJustified(6, u'0');
      const bool wanted = i % 100 == 7;
      batch +=
          u"insert into D1801 (WL_ID,WL_NAME,CLASS_ID,USER_ID,WL_YS,CHECK_KC,PYM,dwcount) values ('%1','%2','01','ADMIN',1,1,'%3',1);"
          "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ) values (1,'%1','01','69%1',1,5,4,3,2);"_s
              .arg(code, wanted ? u"苏打饼干"_s : u"矿泉水"_s, wanted ? u"SDBG"_s : u"KQS"_s);
    }
    sql(batch);
  }
  void keys(const QString& typed) {
    for (const QChar key : typed) press(key);
  }
  QString focused() {
    const QJsonArray all = done({{u"cmd"_s, u"elements"_s}})["elements"_L1].toArray();
    for (const QJsonValue& element : all) {
      if (element["focused"_L1].toBool()) return element["name"_L1].toString();
    }
    return {};
  }
  // Enter leads from field to field.
  void enterTo(const QString& field) {
    for (int steps = 0; steps < 20 && focused() != field; ++steps) press(u"Return"_s);
    ASSERT_EQ(focused(), field);
  }
};

TEST_F(ProductSession, FindByInitialsChangeAPriceSaveNext) {
  open(101);
  ASSERT_EQ(rows(u"DBGridEh"_s).size(), 500);
  press(u"Ctrl+F"_s);
  keys(u"sdb"_s);
  press(u"F3"_s);
  ASSERT_EQ(rows(u"DBGridEh"_s).size(), 5);
  for (const QString& price : {u"6.5"_s, u"7.25"_s}) {
    press(u"Return"_s);
    ASSERT_EQ(frontClass(), u"TF2101_1"_s);
    enterTo(u"SJ"_s);
    keys(price);
    press(u"F9"_s);
    ASSERT_EQ(frontClass(), u"TF2101"_s);
    press(u"Down"_s);
  }
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select WL_ID,SJ from D1801DW where SJ<>5 order by WL_ID"_s),
            (Table{{u"000007"_s, u"6.5"_s}, {u"000107"_s, u"7.25"_s}}));
  const QJsonObject list = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}});
  EXPECT_EQ(list["current"_L1].toInt(), 2);
  EXPECT_EQ(list["rows"_L1].toArray()[0]["SJ"_L1].toString().toDouble(), 6.5);
}

TEST_F(ProductSession, AddByEnterAloneAndGoOn) {
  open(101);
  rows(u"DBGridEh"_s);
  press(u"Ins"_s);
  ASSERT_EQ(frontClass(), u"TF2101_1"_s);
  EXPECT_EQ(focused(), u"Edit1"_s);
  keys(u"x1"_s);
  enterTo(u"Edit2"_s);
  keys(u"abc"_s);
  enterTo(u"CLASS_ID"_s);
  keys(u"02"_s);
  enterTo(u"dw_id"_s);
  keys(u"02"_s);
  enterTo(u"SJ"_s);
  keys(u"9.9"_s);
  enterTo(u"btn_ok"_s);
  press(u"Return"_s);
  EXPECT_EQ(messages(), Lines());
  ASSERT_EQ(frontClass(), u"TF2101"_s);
  EXPECT_EQ(
      sql(u"select WL_NAME,CLASS_ID,DW_ID,SJ from D1801 inner join D1801DW on D1801.WL_ID=D1801DW.WL_ID where D1801.WL_ID='X1'"_s),
      (Table{{u"abc"_s, u"02"_s, u"02"_s, u"9.9"_s}}));
}

}  // namespace
}  // namespace goodsbook
