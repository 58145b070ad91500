// The import of new products: what OK makes of the rows.
#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include "host/data/database.h"
#include "host/data/sql_sets.h"
#include "tests/products/import_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ImportProducts : public ImportScreen {
 protected:
  void start(const QString& path) {
    openImport();
    read(path);
    fillDefaults();
    statements();
  }
  int currentRow() { return done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"GRID1"_s}})["current"_L1].toInt(); }
  Table stored() {
    return sql(
        u"select d.WL_ID,WL_NAME,WL_GG,TM,SJ,VIPSJ,PFJ,CGJ from D1801 d,D1801DW w where d.WL_ID=w.WL_ID order by d.WL_ID"_s);
  }
};

TEST_F(ImportProducts, SendsALookUpANumberAndOneBatchForEachRow) {
  start(csv(u"6901,农夫山泉,550ml,2.50,2\n"_s));
  click(u"btn_ok"_s);
  EXPECT_EQ(
      statements(),
      (Lines{
          u"SELECT TM FROM D1801DW WHERE TM='6901'"_s, u""_s,
          u"insert into D1801 (WL_ID, WL_NAME, WL_GG, WL_YS,CHECK_KC, CLASS_ID, DJ,MONEY,KC,USER_ID,BDATE, T, NOTE,cd,PYM,DW_ZH,DW_J_NAME)  ValueS('000001','农夫山泉','550ml',1,1,'01',0,0,0,'ADMIN',GETDATE(),1,'','','NFSQ','1','');insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,pfj,cgj) values (1,'000001','02','6901',1,2.50,2,2.50,0);"_s}));
  EXPECT_EQ(stored(),
            (Table{{u"000001"_s, u"农夫山泉"_s, u"550ml"_s, u"6901"_s, u"2.5"_s, u"2"_s, u"2.5"_s, u"0"_s}}));
  EXPECT_EQ(result(), u"读取 1 行，导入 1，已存在 0，失败 0"_s);
  EXPECT_EQ(text(u"lab_hint"_s), u"0"_s);
  EXPECT_EQ(frontClass(), u"TF2101_IMP"_s);
  EXPECT_EQ(messages(), Lines{});
}

TEST_F(ImportProducts, SendsTheOperationsOfModule101) {
  start(csv(u"6901,农夫山泉,550ml,2.50,2\n"_s));
  statements();
  click(u"btn_ok"_s);
  const QJsonArray batches = sent(u"ExecSql"_s);
  ASSERT_EQ(batches.size(), 1);
  EXPECT_EQ(batches[0]["module"_L1].toString(), u"101"_s);
  EXPECT_EQ(batches[0]["key"_L1].toString(), u"000001"_s);
  EXPECT_EQ(batches[0]["operation"_L1].toString(), u"Add"_s);
}

TEST_F(ImportProducts, WithStockControlTheFirstWarehouseGetsARow) {
  set(u"G_CKCOUNT_C"_s, u"1"_s);
  start(csv(u"6901,水,1,2,2\n"_s));
  type(u"CK_ID1"_s, u"B"_s);
  click(u"btn_ok"_s);
  EXPECT_TRUE(statements().back().endsWith(
      u"INSERT INTO D1802 (WL_ID, CHECK_KC, CK_ID) select top 1 '000001',1,ck_id from d1007;"_s));
  EXPECT_EQ(sql(u"select WL_ID,CHECK_KC,CK_ID from D1802"_s), (Table{{u"000001"_s, u"1"_s, u"A"_s}}));
}

TEST_F(ImportProducts, NumbersCanCarryTheCategory) {
  set(u"GPARAM1"_s, u"1"_s);
  set(u"GPARAM2"_s, u"4"_s);
  start(csv(u"6901,水,1,2,2\n6902,茶,1,2,2\n"_s));
  click(u"btn_ok"_s);
  EXPECT_EQ(sql(u"select WL_ID from D1801 order by WL_ID"_s), (Table{{u"010001"_s}, {u"010002"_s}}));
}

TEST_F(ImportProducts, AProductAppearsInTheList) {
  start(csv(u"6901,农夫's,550ml,2.50,2\n"_s));
  click(u"btn_ok"_s);
  press(u"Esc"_s);
  const QJsonArray list = rows(u"DBGridEh"_s);
  ASSERT_EQ(list.size(), 1);
  const QJsonObject row = list[0].toObject();
  const std::vector<std::pair<QString, QString>> expected{{u"WL_ID"_s, u"000001"_s},
                                                          {u"WL_NAME"_s, u"农夫\"s"_s},
                                                          {u"WL_GG"_s, u"550ml"_s},
                                                          {u"CLASS_ID"_s, u"01"_s},
                                                          {u"CLASS_NAME"_s, u"饮料"_s},
                                                          {u"USER_ID"_s, u"ADMIN"_s},
                                                          {u"USER_NAME"_s, u"系统管理员"_s},
                                                          {u"DW_ID"_s, u"02"_s},
                                                          {u"DW_NAME"_s, u"箱"_s},
                                                          {u"TM"_s, u"6901"_s},
                                                          {u"NOTE"_s, u""_s},
                                                          {u"CD"_s, u""_s}};
  for (const auto& [field, value] : expected) EXPECT_EQ(row[field].toString(), value) << field.toStdString();
  EXPECT_EQ(row["SJ"_L1].toString().toDouble(), 2.5);
  EXPECT_EQ(row["PFJ"_L1].toString().toDouble(), 2.5);
  EXPECT_EQ(row["VIPSJ"_L1].toString().toDouble(), 2);
}

TEST_F(ImportProducts, AKnownBarcodeIsNotImported) {
  product(u"P1"_s, u"旧"_s, u"6901"_s);
  start(csv(u"6901,水,1,2,2\n6902,茶,1,2,2\n"_s));
  click(u"btn_ok"_s);
  EXPECT_EQ(column(u"COL6"_s), (Lines{u"条码已存在，该商品未导入!"_s, u""_s}));
  EXPECT_EQ(result(), u"读取 2 行，导入 1，已存在 1，失败 0"_s);
}

TEST_F(ImportProducts, ABarcodeTwiceInTheFileIsImportedOnce) {
  for (const QString& name : {u"twice.xls"_s, u"twice.xlsx"_s}) {
    SCOPED_TRACE(name.toStdString());
    sql(u"delete from D1801DW;delete from D1801"_s);
    start(fixture(name));
    click(u"btn_ok"_s);
    EXPECT_EQ(column(u"COL6"_s), (Lines{u""_s, u""_s, u"条码已存在，该商品未导入!"_s}));
    press(u"Esc"_s);
    press(u"Esc"_s);
  }
}

TEST_F(ImportProducts, ABarcodeCanBeImportedAgainOnDemand) {
  start(fixture(u"twice.xls"_s));
  check(u"cb1"_s, true);
  click(u"btn_ok"_s);
  for (const QString& statement : statements()) EXPECT_FALSE(statement.startsWith(u"SELECT TM"_s));
  EXPECT_EQ(result(), u"读取 3 行，导入 3，已存在 0，失败 0"_s);
}

TEST_F(ImportProducts, ASecondRunFindsEveryRow) {
  start(fixture(u"twice.xls"_s));
  click(u"btn_ok"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(result(), u"读取 3 行，导入 0，已存在 3，失败 0"_s);
}

TEST_F(ImportProducts, AQuoteTypedIntoTheGridIsDropped) {
  start(csv(u"6901,水,1,2,2\n"_s));
  cell(u"GRID1"_s, 0, u"COL2"_s, u"农'夫"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(stored().at(0).at(1), u"农夫"_s);
}

TEST_F(ImportProducts, CategoryAndUnitMustBeValid) {
  openImport();
  read(csv(u"6901,水,1,2,2\n"_s));
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"指定导入商品的默认【商品分类】不能为空!"_s});
  type(u"CLASS_ID"_s, u"01"_s);
  type(u"dw_id"_s, u"99"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"指定导入商品的默认【计量单位】【99】不存在!"_s});
  type(u"dw_id"_s, u"01"_s);
  type(u"CK_ID1"_s, u"Z"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"仓库【Z】不存在!"_s});
  EXPECT_EQ(sql(u"select count(*) from D1801"_s)[0][0], u"0"_s);
}

TEST_F(ImportProducts, AFailedRowSaysWhyAndTheRunStopsUnlessTheUserGoesOn) {
  start(csv(u"6901,水,1,2,2\n6902,茶,1,面议,2\n6903,酒,1,2,2\n"_s));
  answer({u"n"_s});
  click(u"btn_ok"_s);
  const Lines told = messages();
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(told[1], u"第 2 行导入失败，是否继续导入其余的行?"_s);
  EXPECT_TRUE(column(u"COL6"_s).at(1).contains(told[0])) << told[0].toStdString();
  EXPECT_TRUE(column(u"COL6"_s).at(1).startsWith(u"零售价“面议”不是数字："_s))
      << column(u"COL6"_s).at(1).toStdString();
  EXPECT_EQ(result(), u"读取 3 行，导入 1，已存在 0，失败 1，已停止，1 行未处理"_s);
  EXPECT_EQ(currentRow(), 1);
}

TEST_F(ImportProducts, TheGridEndsAtTheLastRowHandled) {
  start(csv(u"6901,水,1,2,2\n6902,茶,1,2,2\n6903,酒,1,2,2\n"_s));
  for (int run = 0; run < 2; ++run) {
    click(u"btn_ok"_s);
    EXPECT_EQ(currentRow(), 2) << run;
  }
}

TEST_F(ImportProducts, CategoryAndUnitMustBeGiven) {
  openImport();
  read(csv(u"6901,水,1,2,2\n"_s));
  type(u"CLASS_ID"_s, u"01"_s);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines{u"指定导入商品的默认【计量单位】不能为空!"_s});
  EXPECT_TRUE(get(u"dw_id"_s)["focused"_L1].toBool());
  EXPECT_EQ(sql(u"select count(*) from D1801"_s)[0][0], u"0"_s);
}

TEST_F(ImportProducts, WhoGoesOnIsAskedOnce) {
  start(csv(u"6901,水,1,,2\n6902,茶,1,面议,2\n6903,酒,1,2,2\n"_s));
  answer({u"y"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 2U);
  EXPECT_EQ(result(), u"读取 3 行，导入 1，已存在 0，失败 2"_s);
  EXPECT_EQ(stored().size(), 1U);
}

TEST_F(ImportProducts, PricesThatAreNoNumbersFailAndTheOthersAreStored) {
  for (const QString& name : {u"prices.xlsx"_s, u"prices.xls"_s}) {
    SCOPED_TRACE(name.toStdString());
    sql(u"delete from D1801DW;delete from D1801"_s);
    start(fixture(name));
    answer({u"y"_s});
    click(u"btn_ok"_s);
    messages();
    EXPECT_EQ(result(), u"读取 6 行，导入 2，已存在 0，失败 4"_s);
    const Lines why = column(u"COL6"_s);
    EXPECT_TRUE(why[0].contains(u"零售价“¥12.50”不是数字"_s)) << why[0].toStdString();
    EXPECT_TRUE(why[1].contains(u"零售价“1,234.50”不是数字"_s));
    EXPECT_TRUE(why[3].contains(u"零售价是空的"_s));
    press(u"Esc"_s);
    press(u"Esc"_s);
  }
}

TEST_F(ImportProducts, TextsThatAreTooLongAreRefusedNotCut) {
  for (const QString& name : {u"wide.xlsx"_s, u"wide.xls"_s}) {
    SCOPED_TRACE(name.toStdString());
    sql(u"delete from D1801DW;delete from D1801"_s);
    start(fixture(name));
    answer({u"y"_s});
    click(u"btn_ok"_s);
    messages();
    EXPECT_EQ(result(), u"读取 4 行，导入 1，已存在 0，失败 3"_s);
    ASSERT_EQ(stored().size(), 1U);
    EXPECT_EQ(stored()[0][1].size(), 80);
    EXPECT_EQ(stored()[0][2].size(), 40);
    press(u"Esc"_s);
    press(u"Esc"_s);
  }
}

TEST_F(ImportProducts, APriceCannotBringAStatementAlong) {
  product(u"P1"_s, u"旧"_s);
  start(csv(u"6901,水,1,\"1,1,1,0);delete from D1801;--\",2\n"_s));
  answer({u"n"_s});
  click(u"btn_ok"_s);
  messages();
  EXPECT_EQ(sql(u"select count(*) from D1801"_s)[0][0], u"1"_s);
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  EXPECT_EQ(result(), u"读取 1 行，导入 0，已存在 0，失败 1，已停止，0 行未处理"_s);
}

TEST_F(ImportProducts, ClearingFirstLeavesACheckedBackup) {
  product(u"P1"_s, u"旧"_s, u"6901"_s);
  start(csv(u"6901,水,1,面议,2\n"_s));
  check(u"cb2"_s, true);
  answer({u"n"_s});
  click(u"btn_ok"_s);
  messages();
  const QJsonArray batches = sent(u"ExecSql"_s);
  EXPECT_EQ(batches[0]["sql"_L1].toString(), u"delete from d1801dw;delete from d1801;"_s);
  EXPECT_EQ(batches[0]["module"_L1].toString(), u"101"_s);
  EXPECT_EQ(batches[0]["key"_L1].toString(), u""_s);
  EXPECT_EQ(batches[0]["operation"_L1].toString(), u"Add"_s);
  EXPECT_EQ(sql(u"select count(*) from D1801"_s)[0][0], u"0"_s);
  if (onServer()) return;  // which looks after its backups itself
  const QString mark = u"清空前的备份："_s;
  ASSERT_TRUE(result().contains(mark)) << result().toStdString();
  const QString backup = result().section(mark, 1);
  EXPECT_TRUE(backup.endsWith(u"-backup-20261120-101112.db"_s)) << backup.toStdString();
  onGui([&] {
    const auto copy = openEmbeddedDatabase(backup, {.create = false});
    const SqlSets kept = runSql(*copy, u"select WL_ID from D1801"_s, Database::Permission::Screens);
    EXPECT_EQ(kept.sets.at(0).rows.at(0).at(0), u"P1"_s);
  });
}

TEST_F(ImportProducts, ARunClearsOnceAndTheNextOneKeepsWhatItMade) {
  product(u"P1"_s, u"旧"_s, u"6900"_s);
  start(csv(u"6901,水,1,2,2\n"_s));
  check(u"cb2"_s, true);
  click(u"btn_ok"_s);
  EXPECT_FALSE(get(u"cb2"_s)["checked"_L1].toBool());
  click(u"btn_ok"_s);
  EXPECT_EQ(result(), u"读取 1 行，导入 0，已存在 1，失败 0"_s);
  EXPECT_EQ(sql(u"select TM from D1801DW"_s)[0][0], u"6901"_s);
  EXPECT_EQ(sql(u"select count(*) from SYS_AUDIT where STATEMENT like 'delete from d1801dw%'"_s)[0][0],
            u"1"_s);
}

TEST_F(ImportProducts, CancelStopsBetweenTwoRows) {
  QString lines;
  for (int i = 0; i < 3000; ++i) lines += u"69%1,水,1,2,2\n"_s.arg(i);
  start(csv(lines));
  onGui([] {
    QTimer::singleShot(0, QCoreApplication::instance(), [] {
      auto* timer = new QTimer(QCoreApplication::instance());
      QObject::connect(timer, &QTimer::timeout, timer, [timer] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
          const auto* ok = window->findChild<QPushButton*>(u"btn_ok"_s);
          if (!window->isVisible() || !window->isModal() || !ok || ok->isEnabled()) continue;
          window->findChild<QPushButton*>(u"btn_Cancel"_s)->click();
          timer->deleteLater();
        }
      });
      timer->start(20);
    });
  });
  click(u"btn_ok"_s);
  EXPECT_TRUE(result().contains(u"已停止"_s)) << result().toStdString();
  EXPECT_EQ(frontClass(), u"TF2101_IMP"_s);
  const Table whole = sql(u"select count(*) from D1801 d,D1801DW w where d.WL_ID=w.WL_ID"_s);
  EXPECT_TRUE(result().contains(u"导入 %1，"_s.arg(whole[0][0]))) << result().toStdString();
}

}  // namespace
}  // namespace goodsbook
