// The prompt of a known barcode, and the offline library behind it.
#include <gtest/gtest.h>

#include <QFile>

#include "host/barcodes/barcode_library.h"
#include "host/barcodes/library_builder.h"
#include "host/data/database.h"
#include "tests/products/quick_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString downloadHint = u"  离线条码库不存在,离线库存在可从条码选择品名,省去录入中文。点击从官网下载"_s;

class BarcodePrompt : public QuickScreen {
 protected:
  void library(const QByteArray& table) {
    QFile file(folder() + u"/table.csv"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(table);
    file.close();
    buildBarcodeLibrary(file.fileName(), BarcodeLibrary::fileIn(folder()),
                        {.progress = [](qint64, int) {}, .wrongLine = [](qint64, const QString&) {}});
  }
  void spoilt(const QByteArray& contents) {
    QFile file(BarcodeLibrary::fileIn(folder()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
  }
  // Opens a new product and leaves its barcode.
  void leaveBarcode(const QString& barcode) {
    openList();
    act(u"Act_Add"_s);
    type(u"Edit1"_s, u"NEW"_s);
    type(u"TM"_s, barcode);
    focus(u"Edit3"_s);
  }
  QStringList opened() {
    QStringList urls;
    for (const QJsonValue& url : done({{u"cmd"_s, u"opened"_s}})["urls"_L1].toArray()) urls << url.toString();
    return urls;
  }
  void leaveAll() {
    while (frontClass() != "TF2101"_L1) click(u"btn_Cancel"_s);
  }
};

TEST_F(BarcodePrompt, ListsEveryProductWithTheBarcode) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  product(u"P2"_s, u"雪碧"_s, u"6901"_s);
  product(u"P3"_s, u"芬达"_s, u"6902"_s);
  leaveBarcode(u"6901"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_2"_s);
  EXPECT_EQ(caption(), u"重复条码提示"_s);
  EXPECT_EQ(
      statements().back(),
      u"SELECT '本地库' as C,D1801DW.TM, D1801.WL_NAME, D1801.WL_GG, D1003.DW_NAME, D1801.CD,D1801DW.SJ, D1801DW.CGJ, D1801.BDATE, D1801.EDATE, D1801.WL_ID FROM D1801 INNER JOIN D1801DW ON D1801.WL_ID = D1801DW.WL_ID INNER JOIN D1003 ON D1801DW.DW_ID = D1003.DW_ID where D1801DW.tm='6901'"_s);
  const QJsonObject list = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}});
  EXPECT_EQ(list["count"_L1].toInt(), 2);
  EXPECT_EQ(list["current"_L1].toInt(), 0);
  const QJsonObject row = list["rows"_L1][0].toObject();
  for (const auto& [field, value] : {std::pair{u"C"_s, u"本地库"_s},
                                     {u"TM"_s, u"6901"_s},
                                     {u"WL_NAME"_s, u"可乐"_s},
                                     {u"WL_GG"_s, u"500ml"_s},
                                     {u"DW_NAME"_s, u"瓶"_s},
                                     {u"CD"_s, u"上海"_s},
                                     {u"SJ"_s, u"5.00"_s},
                                     {u"CGJ"_s, u"2.50"_s},
                                     {u"WL_ID"_s, u"P1"_s}})
    EXPECT_EQ(row[field].toString(), value) << field.toStdString();
  QStringList titles;
  for (const QJsonValue& column : list["columns"_L1].toArray()) titles << column["title"_L1].toString();
  EXPECT_EQ(titles.join(u' '), u"类型 条码 品名 规格 单位 产地 零售价 进货价 登录日期 最后更改 商品编号"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, ShowsItsInstructionsAndNoOk) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  leaveBarcode(u"6901"_s);
  EXPECT_EQ(text(u"Label1"_s), u"当增加新商品条码检查重复时会出现此提示,请按以下步骤进行操作："_s);
  EXPECT_EQ(text(u"Label3"_s),
            u"[回车]键  继续当新商品条码（会出现不同商品相同条码）    [ESC]键  返回更改条码"_s);
  EXPECT_FALSE(shown(u"btn_ok"_s));
  EXPECT_FALSE(get(u"btn_ok"_s)["enabled"_L1].toBool());
  EXPECT_TRUE(shown(u"btn_Cancel"_s));
  click(u"Label1"_s);
  EXPECT_EQ(opened(), QStringList());
  click(u"Label3"_s);
  EXPECT_EQ(opened(), QStringList{u"https://goodsbook.example/barcodes"_s});
  leaveAll();
}

TEST_F(BarcodePrompt, EnterTakesTheCurrentRowAndKeepsTheUnitsCode) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  product(u"P2"_s, u"雪碧"_s, u"6901"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"NEW"_s);
  type(u"dw_id"_s, u"02"_s);
  type(u"CLASS_ID"_s, u"01"_s);
  type(u"TM"_s, u"6901"_s);
  focus(u"Edit3"_s);
  done({{u"cmd"_s, u"row"_s}, {u"element"_s, u"DBGridEh"_s}, {u"index"_s, 1}});
  press(u"Return"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  EXPECT_EQ(text(u"Edit2"_s) + text(u"Edit3"_s) + text(u"CD"_s), u"雪碧500ml上海"_s);
  EXPECT_EQ(text(u"DW_NAME"_s), u"瓶"_s);
  EXPECT_EQ(text(u"dw_id"_s), u"02"_s);
  EXPECT_TRUE(get(u"Edit3"_s)["focused"_L1].toBool());
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select DW_ID,TM from D1801DW where WL_ID='NEW'"_s), (Table{{u"02"_s, u"6901"_s}}));
}

TEST_F(BarcodePrompt, ADoubleClickTakesTheRowToo) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  leaveBarcode(u"6901"_s);
  done({{u"cmd"_s, u"cellclick"_s},
        {u"element"_s, u"DBGridEh"_s},
        {u"row"_s, 0},
        {u"field"_s, u"WL_NAME"_s},
        {u"double"_s, true}});
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"可乐"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, EscAndCancelGoBackToTheBarcode) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  leaveBarcode(u"6901"_s);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  EXPECT_TRUE(get(u"TM"_s)["focused"_L1].toBool());
  EXPECT_EQ(text(u"Edit2"_s), QString());
  type(u"TM"_s, u"69"_s);
  type(u"TM"_s, u"6901"_s);
  focus(u"Edit3"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  EXPECT_TRUE(get(u"TM"_s)["focused"_L1].toBool());
  leaveAll();
}

TEST_F(BarcodePrompt, AnUnchangedBarcodeIsLookedUpOnce) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  leaveBarcode(u"6901"_s);
  press(u"Esc"_s);
  statements();
  focus(u"Edit3"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  EXPECT_TRUE(get(u"Edit3"_s)["focused"_L1].toBool());
  focus(u"TM"_s);
  focus(u"Edit3"_s);
  EXPECT_EQ(statements(), Lines());
  leaveAll();
}

TEST_F(BarcodePrompt, OkAsksFirst) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"NEW"_s);
  fill();
  type(u"TM"_s, u"6901"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_2"_s);
  press(u"Esc"_s);
  EXPECT_EQ(sql(u"select count(*) from D1801"_s), (Table{{u"1"_s}}));
  click(u"btn_ok"_s);  // he means it
  EXPECT_EQ(sql(u"select count(*) from D1801"_s), (Table{{u"2"_s}}));
}

TEST_F(BarcodePrompt, NothingIsAskedWithoutNeed) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  leaveBarcode(u"  "_s);  // blank
  EXPECT_EQ(statements().size(), 1U);
  type(u"TM"_s, u"6999"_s);  // unknown
  focus(u"Edit3"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  type(u"TM"_s, u"6901"_s);
  leaveAll();  // towards Cancel
  act(u"Act_Edit"_s);
  type(u"TM"_s, u"6901"_s);
  focus(u"Edit3"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, ACopysBarcodeIsLookedUp) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  set(u"GPARAM0"_s, u"1"_s);
  openList();
  act(u"Act_CopyAdd"_s);
  focus(u"Edit3"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_2"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, TheLibrarysRowsComeBehindTheShopsOwn) {
  library(
      "6901234567892,可口可乐,330ml,听,上海\n6901234567892,可乐,500ml,瓶,北京\n6920000012345,雪碧,1L,瓶,广东\n");
  product(u"P1"_s, u"可乐"_s, u"6901234567892"_s);
  leaveBarcode(u"6901234567892"_s);
  EXPECT_EQ(text(u"Label1"_s), u"  本地离线条码库共：3"_s);
  click(u"Label1"_s);
  EXPECT_EQ(opened(), QStringList());
  click(u"Label3"_s);
  EXPECT_EQ(opened().size(), 1);
  const QJsonArray list = rows(u"DBGridEh"_s);
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(list[0]["C"_L1].toString(), u"本地库"_s);
  const QJsonObject row = list[1].toObject();
  for (const auto& [field, value] : {std::pair{u"C"_s, u"离线库"_s},
                                     {u"TM"_s, u"6901234567892"_s},
                                     {u"WL_NAME"_s, u"可口可乐"_s},
                                     {u"WL_GG"_s, u"330ml"_s},
                                     {u"CD"_s, u"上海"_s},
                                     {u"DW_NAME"_s, QString()},
                                     {u"SJ"_s, QString()},
                                     {u"BDATE"_s, QString()},
                                     {u"WL_ID"_s, QString()}})
    EXPECT_EQ(row[field].toString(), value) << field.toStdString();
  EXPECT_EQ(list[2]["WL_NAME"_L1].toString(), u"可乐"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, ALibrarysRowGivesNoUnit) {
  library("6920000012345,雪碧,1L,瓶,广东\n");
  openList();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"NEW"_s);
  type(u"dw_id"_s, u"01"_s);
  type(u"TM"_s, u"6920000012345"_s);
  focus(u"Edit3"_s);
  press(u"Return"_s);
  EXPECT_EQ(text(u"Edit2"_s) + text(u"Edit3"_s) + text(u"CD"_s), u"雪碧1L广东"_s);
  EXPECT_EQ(text(u"DW_NAME"_s), QString());
  EXPECT_EQ(text(u"dw_id"_s), u"01"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, EachLookUpReplacesTheList) {
  library("6920000012345,雪碧,1L,瓶,广东\n6920000054321,芬达,1L,瓶,广东\n");
  leaveBarcode(u"6920000012345"_s);
  press(u"Esc"_s);
  type(u"TM"_s, u"6920000054321"_s);
  focus(u"Edit3"_s);
  const QJsonArray list = rows(u"DBGridEh"_s);
  ASSERT_EQ(list.size(), 1);
  EXPECT_EQ(list[0]["WL_NAME"_L1].toString(), u"芬达"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, OneServesAllEditorsAndCountsItsLibraryOnce) {
  const auto promptShown = [this] {
    return done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().last()["id"_L1].toInt();
  };
  library("6920000012345,雪碧,1L,瓶,广东\n");
  leaveBarcode(u"6920000012345"_s);
  const int first = promptShown();
  EXPECT_EQ(text(u"Label1"_s), u"  本地离线条码库共：1"_s);
  leaveAll();
  done({{u"cmd"_s, u"close"_s}});
  library("6920000012345,雪碧,1L,瓶,广东\n6920000054321,芬达,1L,瓶,广东\n");
  set(u"GPARAM23"_s, u"2"_s);  // the other editor, of another list
  leaveBarcode(u"6920000012345"_s);
  EXPECT_EQ(frontClass(), u"TF2101A_2"_s);
  EXPECT_EQ(promptShown(), first);
  EXPECT_EQ(text(u"Label1"_s), u"  本地离线条码库共：1"_s);
  leaveAll();
}

TEST_F(BarcodePrompt, ShortBarcodesAreNotInTheLibrary) {
  library("6920000012345,雪碧,1L,瓶,广东\n");
  for (const QString& barcode : {u"692000"_s, u"ABC1234567"_s}) {
    leaveBarcode(barcode);
    EXPECT_EQ(frontClass(), u"TF2101A_1"_s);
    leaveAll();
    done({{u"cmd"_s, u"close"_s}});
  }
}

TEST_F(BarcodePrompt, ALibraryThatCannotBeOpenedOffersTheDownload) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  spoilt("this is no library");
  leaveBarcode(u"6901"_s);
  EXPECT_EQ(text(u"Label1"_s), downloadHint + u"https://goodsbook.example/barcodes"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 1);
  EXPECT_EQ(messages(), Lines());
  click(u"Label1"_s);
  EXPECT_EQ(opened(), QStringList{u"https://goodsbook.example/barcodes"_s});
  leaveAll();
}

TEST_F(BarcodePrompt, AnotherDatabaseIsNoLibrary) {
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  onGui([this] { openEmbeddedDatabase(BarcodeLibrary::fileIn(folder())); });
  leaveBarcode(u"6901"_s);
  EXPECT_TRUE(text(u"Label1"_s).startsWith(downloadHint));
  leaveAll();
}

TEST_F(BarcodePrompt, TheDownloadPageIsASetting) {
  sql(u"insert into SYS_SETTING (NAME,VALUE) values ('BarcodeLibraryPage','https://shop.example/library')"_s);
  product(u"P1"_s, u"可乐"_s, u"6901"_s);
  spoilt("this is no library");
  leaveBarcode(u"6901"_s);
  EXPECT_EQ(text(u"Label1"_s), downloadHint + u"https://shop.example/library"_s);
  click(u"Label3"_s);
  EXPECT_EQ(opened(), QStringList{u"https://shop.example/library"_s});
  leaveAll();
}

TEST_F(BarcodePrompt, ALibraryThatBreaksLaterLeavesTheShopsOwnRows) {
  product(u"P1"_s, u"可乐"_s, u"6901234567892"_s);
  QByteArray table;
  for (int i = 0; i < 5000; ++i) table += QByteArray::number(6900000000000 + i) + ",some name of a product\n";
  library(table);
  leaveBarcode(u"6901234567892"_s);
  EXPECT_EQ(text(u"Label1"_s), u"  本地离线条码库共：5000"_s);
  press(u"Esc"_s);
  QFile file(BarcodeLibrary::fileIn(folder()));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.write(QByteArray(static_cast<qsizetype>(file.size()), 'x'));
  file.close();
  type(u"TM"_s, u"690123456789"_s);
  type(u"TM"_s, u"6901234567892"_s);
  focus(u"Edit3"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 1);
  EXPECT_TRUE(text(u"Label1"_s).startsWith(downloadHint));
  leaveAll();
}

}  // namespace
}  // namespace goodsbook
