#pragma once

#include <QFile>

#include "app/driver/screen_test.h"
#include "host/U_glo.h"

namespace goodsbook {

// Base of tests on labels: three products (one of them sold by the bottle and by the box), six receipts.
class LabelScreen : public ScreenTest {
 protected:
  using Lines = std::vector<QString>;

  void SetUp() override {
    ScreenTest::SetUp();
    sql(
        QStringLiteral("insert into D1004 (CLASS_ID,CLASS_NAME,OID) values ('01','饮料','Z');"
                       "insert into D1003 (dw_id,dw_name) values ('01','瓶'),('02','箱');"
                       "insert into D1007 (CK_ID,CK_NAME,OID) values ('A','总店','Z');"
                       "insert into D1103 (KH_GYS_ID,KG_NAME) values ('G1','甲供应商');"
                       "insert into D1011 (SEND_ID,SEND_NAME) values ('01','送货');"
                       "insert into D1101 (YW_ID,YW_NAME) values ('Y1','张三');"
                       "insert into D1010 (JY_ID,JY_NAME) values ('01','现金')"));
    product(QStringLiteral("100"), QStringLiteral("矿泉水"), QStringLiteral("6901234567892"));
    product(QStringLiteral("200"), QStringLiteral("自编商品"), QStringLiteral("200"));
    product(QStringLiteral("300"), QStringLiteral("果汁"), QStringLiteral("96385074"));
    sql(QStringLiteral(
        "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ) values (2,'100','02','6901234567908',0,60,55.5)"));
    for (int i = 1; i <= 6; ++i) receipt(QStringLiteral("JH000%1").arg(i));
    line(QStringLiteral("JH0006"), 1, QStringLiteral("100"), 2, 12);
    line(QStringLiteral("JH0006"), 2, QStringLiteral("200"), 1, 3);
    line(QStringLiteral("JH0006"), 3, QStringLiteral("300"), 1, 0);
    line(QStringLiteral("JH0005"), 1, QStringLiteral("300"), 1, 5);
    line(QStringLiteral("JH0001"), 1, QStringLiteral("200"), 1, 1);
  }

  void product(const QString& code, const QString& name, const QString& barcode) {
    sql(QStringLiteral(
            "insert into D1801 (WL_ID,WL_NAME,WL_GG,WL_YS,CLASS_ID,USER_ID,cd) values "
            "('%1','%2','500ml',1,'01','ADMIN','上海');"
            "insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ) values (1,'%1','01','%3',1,5,4.5)")
            .arg(code, name, barcode));
  }
  void receipt(const QString& number) {
    sql(QStringLiteral(
            "insert into D8202 (noid,kh_gys_id,ck_id,bdate,edate,send_id,user_id,YW_ID,JY_ID,t) values "
            "('%1','G1','A','2026-11-01','2026-11-02','01','ADMIN','Y1','01',1)")
            .arg(number));
  }
  // Line `id` over `quantity` of a product in its unit `level` (1: the main one).
  void line(const QString& number, int id, const QString& code, int level, int quantity) {
    sql(QStringLiteral(
            "insert into D8202A (noid,id,wl_id,ck_id,sl,dj,money,sl_return,DW_J,DW_L,DW_ZH,note,d8201aid,adw) "
            "select '%1',%2,'%3','A',%5,2,10,0,0,0,1,N'',0,adw from D1801DW where WL_ID='%3' and T=%4")
            .arg(number)
            .arg(id)
            .arg(code)
            .arg(level)
            .arg(quantity));
  }

  // Opens the list and stays in the dialog that comes up over it.
  void openDialog() {
    open(102);
    EXPECT_EQ(frontClass(), QStringLiteral("TF2102F"));
    statements();
  }
  void openList() {
    openDialog();
    click(QStringLiteral("Button3"));
    EXPECT_EQ(frontClass(), QStringLiteral("TF2102"));
  }
  // Single labels for these products, through the dialog; back in the list.
  void make(const QStringList& products, int count = 1) {
    act(QStringLiteral("Act_Locate"));
    for (const QString& product : products) {
      type(QStringLiteral("Edit1"), product);
      type(QStringLiteral("tn"), QString::number(count));
      click(QStringLiteral("BTN_1"));
    }
    click(QStringLiteral("Button3"));
  }
  QJsonObject table(const QString& element) {
    return done({{QStringLiteral("cmd"), QStringLiteral("rows")}, {QStringLiteral("element"), element}});
  }
  // One field of all rows.
  QStringList column(const QString& element, const QString& field) {
    QStringList values;
    const QJsonArray all = rows(element);
    for (const QJsonValue& row : all) values << row[field].toString();
    return values;
  }
  QStringList codes() { return column(QStringLiteral("AdoQry_Main"), QStringLiteral("WL_ID")); }
  void select(const QString& element, const QList<int>& picked) {
    QJsonArray list;
    for (const int row : picked) list.append(row);
    done({{QStringLiteral("cmd"), QStringLiteral("select")},
          {QStringLiteral("element"), element},
          {QStringLiteral("rows"), list}});
  }
  void goTo(const QString& element, int row) {
    done({{QStringLiteral("cmd"), QStringLiteral("row")},
          {QStringLiteral("element"), element},
          {QStringLiteral("index"), row}});
  }
  void closeFront() { done({{QStringLiteral("cmd"), QStringLiteral("close")}}); }
  QString file(const QString& name) const { return folder() + QLatin1Char('/') + name; }
  QByteArray content(const QString& name) const {
    QFile opened(file(name));
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
  }
  void put(const QString& name, const QByteArray& bytes) const {
    QFile written(file(name));
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    written.write(bytes);
  }
};

}  // namespace goodsbook
