#pragma once

#include <QFile>

#include "tests/products/product_screen.h"

namespace goodsbook {

// Base of tests on the import of new products: the list is open with the dialog over it.
class ImportScreen : public ProductScreen {
 protected:
  void openImport() {
    openList();
    act(QStringLiteral("Act_imp"));
    ASSERT_EQ(frontClass(), QStringLiteral("TF2101_IMP"));
  }
  // A text of rows under the heading 条码,品名,规格,零售价,会员价.
  QString csv(const QString& lines) {
    const QString path = folder() + QStringLiteral("/goods.csv");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write((QStringLiteral("条码,品名,规格,零售价,会员价\n") + lines).toUtf8());
    return path;
  }
  static QString fixture(const QString& name) {
    return QStringLiteral(GOODSBOOK_SOURCE_DIR) + QStringLiteral("/tests/products/fixtures/") + name;
  }
  void choose(const QString& path) {
    done({{QStringLiteral("cmd"), QStringLiteral("pickfile")}, {QStringLiteral("path"), path}});
    click(QStringLiteral("Edt_path.button"));
  }
  void read(const QString& path) {
    choose(path);
    click(QStringLiteral("btn_ref"));
  }
  void fillDefaults() {
    type(QStringLiteral("CLASS_ID"), QStringLiteral("01"));
    type(QStringLiteral("dw_id"), QStringLiteral("02"));
  }
  QString result() { return text(QStringLiteral("lab_result")); }
  Lines column(const QString& field) {
    Lines texts;
    for (const QJsonValue& row : rows(QStringLiteral("GRID1"))) texts.push_back(row[field].toString());
    return texts;
  }
};

}  // namespace goodsbook
