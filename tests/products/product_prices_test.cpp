// Prices that an editor shows but the user does not touch stay what they are, whatever the price format.
#include <gtest/gtest.h>

#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ProductPrices : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    product(u"P1"_s, u"可乐"_s);
    sql(u"update D1801DW set CGJ=0.1234,SJ=1234.5678,PFJ1=1,PFJ2=1,PFJ3=1,PFJ4=1;update D1801 set DJ=2.345"_s);
  }
  void saveWithOtherNote(const QString& editor) {
    set(u"GPARAM23"_s, editor);
    openList();
    act(u"Act_Edit"_s);
    type(u"NOTE"_s, u"新"_s);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
  }
  Table stored(const QString& code = u"P1"_s) {
    return sql(u"select SJ,VIPSJ,PFJ,CGJ from D1801DW where WL_ID='"_s + code + u'\'');
  }
  const Table untouched{{u"1234.5678"_s, u"4"_s, u"3"_s, u"0.1234"_s}};
};

TEST_F(ProductPrices, AnotherFieldsEditLeavesThem) {
  for (const QString& format : {u"0.00"_s, u"#,##0.00"_s}) {
    for (const QString& editor : {u"0"_s, u"1"_s, u"2"_s}) {
      set(u"G_PriceFormat"_s, format);
      saveWithOtherNote(editor);
      EXPECT_EQ(stored(), untouched) << format.toStdString() << " " << editor.toStdString();
      const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
      EXPECT_EQ(row["DJ"_L1].toString(), u"2.35"_s) << "the cost stays as it was";
      done({{u"cmd"_s, u"close"_s}});
    }
  }
  EXPECT_EQ(sql(u"select DJ from D1801"_s), (Table{{u"2.345"_s}}));
}

TEST_F(ProductPrices, TheListShowsNumbersHoweverTheyWereTyped) {
  for (const auto& [editor, member] : {std::pair{u"0"_s, u"vipsj"_s}, {u"1"_s, u"VIPSJ"_s}}) {
    sql(u"update D1801DW set PFJ=null"_s);
    set(u"GPARAM23"_s, editor);
    openList();
    act(u"Act_Edit"_s);
    type(u"SJ"_s, u"12."_s);
    type(member, u".5"_s);
    click(u"btn_ok"_s);
    messages();
    const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
    EXPECT_EQ(row["SJ"_L1].toString() + u' ' + row["VIPSJ"_L1].toString(), u"12.00 0.50"_s)
        << editor.toStdString();
    const QString wholesale = sql(u"select PFJ from D1801DW"_s)[0][0];
    EXPECT_EQ(row["PFJ"_L1].toString().toDouble(), wholesale.toDouble());
    EXPECT_EQ(row["PFJ"_L1].toString().isEmpty(), wholesale == "NULL"_L1);
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(ProductPrices, ACopyTakesThemWhole) {
  set(u"G_PriceFormat"_s, u"#,##0.00"_s);
  for (const QString& editor : {u"0"_s, u"1"_s, u"2"_s}) {
    set(u"GPARAM23"_s, editor);
    openList();
    act(u"Act_CopyAdd"_s);
    const QString code = u"C"_s + editor;
    type(u"Edit1"_s, code);
    type(u"TM"_s, code);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines());
    ASSERT_EQ(stored(code).size(), 1U) << editor.toStdString();
    EXPECT_EQ(stored(code)[0][0], u"1234.5678"_s);
    EXPECT_EQ(stored(code)[0][3], u"0.1234"_s);
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(ProductPrices, AnEditShowsTheFormatWhereNothingIsLost) {
  openList();
  act(u"Act_Edit"_s);
  EXPECT_EQ(text(u"SJ"_s), u"1234.5678"_s);
  EXPECT_EQ(text(u"CGJ"_s), u"0.1234"_s);
  EXPECT_EQ(text(u"VIPSJ"_s), u"4.00"_s);
  EXPECT_EQ(text(u"DJ"_s), u"2.35"_s);
  click(u"btn_Cancel"_s);
}

}  // namespace
}  // namespace goodsbook
