// The example module for other modules' authors, loaded as the program loads a module.
#include <gtest/gtest.h>

#include <QLibrary>

#include "app/driver/screen_test.h"
#include "app/master_data.h"
#include "host/U_glo.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class PurchaseExample : public ScreenTest {
 protected:
  void openExample() {
    onGui([this] {
      using Entry = void (*)(const Trecord&, QWidget*);
      QLibrary module(QStringLiteral(GOODSBOOK_EXAMPLE_PURCHASE));
      const auto entry = reinterpret_cast<Entry>(module.resolve("ProcDLL1"));
      ASSERT_NE(entry, nullptr) << module.errorString().toStdString();
      Trecord record;
      record.setModule(201);
      entry(record, driver().owner());
    });
  }
};

TEST_F(PurchaseExample, NewProductsBecomeLinesOfItsPurchase) {
  onGui([this] { ASSERT_TRUE(driver().masterData().load()); });
  sql(u"insert into D1003 (dw_id,dw_name) values ('01','瓶')"_s);
  openExample();
  EXPECT_EQ(frontClass(), u"PurchaseScreen"_s);
  press(u"F2"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  for (const QString& number : {u"P1"_s, u"P2"_s}) {
    if (number == "P2"_L1) click(u"btn_New"_s);
    type(u"Edit1"_s, number);
    type(u"Edit2"_s, u"可乐"_s);
    if (number == "P1"_L1) type(u"dw_id"_s, u"01"_s);
    type(u"L"_s, u"3"_s);
    type(u"JJ"_s, u"2.50"_s);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), std::vector<QString>());
    EXPECT_EQ(frontClass(), u"PurchaseScreen"_s);
  }
  const QJsonArray lines = rows(u"DBGridEh"_s);
  ASSERT_EQ(lines.size(), 2);
  EXPECT_EQ(lines[1]["WL_ID"_L1].toString(), u"P2"_s);
  EXPECT_EQ(lines[1]["DW_NAME"_L1].toString(), u"瓶"_s);
  EXPECT_EQ(lines[1]["MONEY"_L1].toString().toDouble(), 7.5);
  EXPECT_EQ(sql(u"select count(*) from D1801"_s).at(0).at(0), u"2"_s);
}

}  // namespace
}  // namespace goodsbook
