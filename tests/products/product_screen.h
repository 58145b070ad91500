#pragma once

#include "app/driver/screen_test.h"
#include "host/U_glo.h"

namespace goodsbook {

// Base of tests on products: two categories, two units, two warehouses and the full editor.
class ProductScreen : public ScreenTest {
 protected:
  using Lines = std::vector<QString>;
  using Table = std::vector<std::vector<QString>>;

  void SetUp() override {
    ScreenTest::SetUp();
    set(QStringLiteral("GPARAM23"), QStringLiteral("1"));
    sql(QStringLiteral(
        "insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('01','饮料','Z');"
        "insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('02','食品','Z');"
        "insert into D1003 (dw_id,dw_name) values ('01','瓶');insert into D1003 (dw_id,dw_name) values ('02','箱');"
        "insert into D1007 (CK_ID,CK_NAME,OID) values ('A','总店','Z');"
        "insert into D1007 (CK_ID,CK_NAME,OID) values ('B','分店','Z')"));
  }
  void set(const QString& name, const QString& value) {
    onGui([&] { setGlobal(name, value); });
  }
  // A product of category 01 with main unit 01, cost 2, retail 5, member 4, wholesale 3, purchase 2.5.
  void product(const QString& code, const QString& name, const QString& barcode = QStringLiteral("69")) {
    sql(QStringLiteral(
            "insert into D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CHECK_KC,CLASS_ID,DJ,USER_ID,BDATE,T,NOTE,cd,PYM,dwcount,TMC) "
            "values ('%1','%2','500ml',1,1,'01',2,'ADMIN','2026-11-01',1,'注','上海','%2',1,1);"
            "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ) values (1,'%1','01','%3',1,5,4,3,2.5)")
            .arg(code, name, barcode));
  }
  void openList(const QJsonObject& rights = {}) {
    open(101, rights);
    rows(QStringLiteral("DBGridEh"));
    statements();
  }
  void select(const QList<int>& picked) {
    QJsonArray list;
    for (const int row : picked) list.append(row);
    done({{QStringLiteral("cmd"), QStringLiteral("select")},
          {QStringLiteral("element"), QStringLiteral("DBGridEh")},
          {QStringLiteral("rows"), list}});
  }
  void check(const QString& element, bool on) {
    done({{QStringLiteral("cmd"), QStringLiteral("check")},
          {QStringLiteral("element"), element},
          {QStringLiteral("on"), on}});
  }
  void cell(const QString& grid, int row, const QString& field, const QString& typed) {
    done({{QStringLiteral("cmd"), QStringLiteral("cell")},
          {QStringLiteral("element"), grid},
          {QStringLiteral("row"), row},
          {QStringLiteral("field"), field},
          {QStringLiteral("text"), typed}});
  }
  void cellClick(const QString& grid, int row, const QString& field) {
    done({{QStringLiteral("cmd"), QStringLiteral("cellclick")},
          {QStringLiteral("element"), grid},
          {QStringLiteral("row"), row},
          {QStringLiteral("field"), field}});
  }
  QString caption() {
    const QJsonArray all =
        done({{QStringLiteral("cmd"), QStringLiteral("screens")}})[QStringLiteral("screens")].toArray();
    return all.last()[QStringLiteral("caption")].toString();
  }
  // What the screens sent through one operation, since the last call.
  QJsonArray sent(const QString& operation) {
    QJsonArray list;
    const QJsonArray all =
        done({{QStringLiteral("cmd"), QStringLiteral("statements")}})[QStringLiteral("statements")].toArray();
    for (const QJsonValue& one : all) {
      if (one[QStringLiteral("op")].toString() == operation) list.append(one);
    }
    return list;
  }
};

}  // namespace goodsbook
