#pragma once

#include "tests/products/product_screen.h"

namespace goodsbook {

// Base of tests on the quick editors: the products' data, and the list opened with TF2101A_1 as its editor.
class QuickScreen : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    set(QStringLiteral("GPARAM23"), QStringLiteral("0"));
  }
  // Everything that a new product takes but its number.
  void fill() {
    using namespace Qt::StringLiterals;
    type(u"TM"_s, u"690"_s);
    type(u"Edit2"_s, u"可乐"_s);
    type(u"Edit3"_s, u"500ml"_s);
    type(u"CD"_s, u"上海"_s);
    type(u"CLASS_ID"_s, u"01"_s);
    type(u"dw_id"_s, u"01"_s);
    type(u"SJ"_s, u"5"_s);
    type(u"vipsj"_s, u"4.5"_s);
    type(u"CGJ"_s, u"2"_s);
    type(u"NOTE"_s, u"注"_s);
  }
  QJsonObject executed() {
    const QJsonArray all = sent(QStringLiteral("ExecSql"));
    return all.isEmpty() ? QJsonObject() : all.last().toObject();
  }
  QString batch() { return executed()[QStringLiteral("sql")].toString(); }
  void purchase(const QString& className) {
    done({{QStringLiteral("cmd"), QStringLiteral("purchase")}, {QStringLiteral("class"), className}});
  }
  bool shown(const QString& element) { return get(element)[QStringLiteral("visible")].toBool(); }
};

}  // namespace goodsbook
