// The import of new products: its elements, and reading a file into the grid.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QHelpEvent>
#include <QTableView>
#include <QTimer>
#include <QToolTip>

#include "app/driver/driver.h"
#include "tests/products/import_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class ImportDialog : public ImportScreen {};

TEST_F(ImportDialog, HasItsElements) {
  openImport();
  EXPECT_EQ(caption(), u"新商品导入"_s);
  EXPECT_EQ(get(u"Edt_path"_s)["title"_L1].toString(), u"文件路径："_s);
  EXPECT_EQ(get(u"Edt_path"_s)["maxlength"_L1].toInt(), 20);
  EXPECT_EQ(text(u"btn_ref"_s), u"刷新(F12)"_s);
  EXPECT_EQ(get(u"CLASS_ID"_s)["title"_L1].toString(), u"指定导入商品的默认【商品分类】"_s);
  EXPECT_EQ(get(u"CLASS_ID"_s)["maxlength"_L1].toInt(), 4);
  EXPECT_EQ(get(u"dw_id"_s)["title"_L1].toString(), u"指定导入商品的默认【计量单位】"_s);
  EXPECT_EQ(get(u"dw_id"_s)["maxlength"_L1].toInt(), 2);
  EXPECT_EQ(get(u"CK_ID1"_s)["title"_L1].toString(), u"仓库:"_s);
  EXPECT_EQ(get(u"CK_ID1"_s)["maxlength"_L1].toInt(), 6);
  EXPECT_EQ(text(u"cb1"_s), u"重复条码当新商品导入"_s);
  EXPECT_FALSE(get(u"cb1"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"cb2"_s), u"导入前清空商品资料(初次使用时可勾选)"_s);
  EXPECT_FALSE(get(u"cb2"_s)["checked"_L1].toBool());
  EXPECT_EQ(text(u"Label6"_s), u"导入文件内容含(')号的自动替换成(\")"_s);
  EXPECT_EQ(text(u"Label4"_s), u"行计数："_s);
  EXPECT_EQ(text(u"lab_hint"_s), u"0"_s);
  const QJsonObject grid = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"GRID1"_s}});
  QStringList titles;
  for (const QJsonValue& column : grid["columns"_L1].toArray()) titles << column["title"_L1].toString();
  EXPECT_EQ(titles.join(u' '), u"条码 品名 规格 零售价 会员价 - - - - -"_s);
}

TEST_F(ImportDialog, IsOpenedByWhoMayImport) {
  openList({{u"import"_s, false}});
  EXPECT_TRUE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_imp"_s}}).contains(u"Act_imp"_s));
}

TEST_F(ImportDialog, TheWarehouseIsTheUsersOwnAndLockedByTheHost) {
  set(u"G_ckid"_s, u"A"_s);
  set(u"G_CkName"_s, u"总店"_s);
  set(u"G_CKCOUNT_R"_s, u"1"_s);
  openImport();
  EXPECT_EQ(text(u"CK_ID1"_s), u"A"_s);
  EXPECT_EQ(text(u"ck_name"_s), u"总店"_s);
  EXPECT_FALSE(get(u"CK_ID1"_s)["enabled"_L1].toBool());
}

TEST_F(ImportDialog, AFileMustBeChosen) {
  openImport();
  click(u"btn_ref"_s);
  EXPECT_EQ(messages(), Lines{u"请选择导入的文件!"_s});
  EXPECT_TRUE(get(u"Edt_path"_s)["focused"_L1].toBool());
}

TEST_F(ImportDialog, BlankDefaultsDoNotHoldTheFocus) {
  openImport();
  for (const QString& name : {u"CLASS_ID"_s, u"dw_id"_s}) {
    focus(name);
    choose(fixture(u"twice.xls"_s));
    EXPECT_EQ(messages(), Lines{}) << name.toStdString();
    EXPECT_EQ(text(u"Edt_path"_s), fixture(u"twice.xls"_s)) << name.toStdString();
    type(u"Edt_path"_s, {});
  }
}

TEST_F(ImportDialog, WithoutAFileF12TellsThatAloneFromAnyField) {
  openImport();
  for (const QString& code : {QString(), u"99"_s}) {
    for (const QString& name : {u"CLASS_ID"_s, u"dw_id"_s}) {
      focus(name);
      if (!code.isEmpty()) type(name, code);
      press(u"F12"_s);
      EXPECT_EQ(messages(), Lines{u"请选择导入的文件!"_s}) << name.toStdString();
      EXPECT_TRUE(get(u"Edt_path"_s)["focused"_L1].toBool()) << name.toStdString();
    }
  }
}

TEST_F(ImportDialog, EnterGoesOnFromAGridWithoutRows) {
  openImport();
  focus(u"GRID1"_s);
  press(u"Return"_s);
  EXPECT_TRUE(get(u"CLASS_ID"_s)["focused"_L1].toBool());
}

TEST_F(ImportDialog, TheReasonTakesTheWidthThatIsLeftAndStandsInTheToolTip) {
  openImport();
  const QString reason(30, u'长');
  read(csv(u"69,甲,1,2,3\n"_s));
  cell(u"GRID1"_s, 0, u"COL6"_s, reason);
  onGui([&] {
    QWidget* dialog = driver().addressing().foremost();
    auto* grid = dialog->findChild<QTableView*>(u"GRID1"_s);
    const auto width = [grid] { return grid->columnWidth(5); };
    const auto restOf = [grid] {
      return grid->viewport()->width() - (grid->horizontalHeader()->length() - grid->columnWidth(5));
    };
    for (const int wide : {1200, 960, 800}) {
      dialog->resize(wide, dialog->height());
      QCoreApplication::processEvents();
      EXPECT_EQ(width(), restOf()) << wide;
      EXPECT_GE(width(), grid->fontMetrics().horizontalAdvance(u"条码已存在，该商品未导入!"_s) + 8) << wide;
    }
    const QPoint place = grid->visualRect(grid->model()->index(0, 5)).center();
    QHelpEvent asked(QEvent::ToolTip, place, grid->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(grid->viewport(), &asked);
    EXPECT_EQ(QToolTip::text(), reason);
    QToolTip::hideText();
  });
}

TEST_F(ImportDialog, ACancelledChoiceKeepsThePath) {
  openImport();
  choose(fixture(u"twice.xls"_s));
  click(u"Edt_path.button"_s);
  EXPECT_EQ(text(u"Edt_path"_s), fixture(u"twice.xls"_s));
}

TEST_F(ImportDialog, ThePathIsRememberedInTheCompanysFile) {
  set(u"G_CoName"_s, u"样例商店"_s);
  openImport();
  choose(fixture(u"twice.xls"_s));
  press(u"Esc"_s);
  EXPECT_TRUE(QFile::exists(folder() + u"/样例商店"_s));
  act(u"Act_imp"_s);
  EXPECT_EQ(text(u"Edt_path"_s), fixture(u"twice.xls"_s));
}

TEST_F(ImportDialog, AnErrorOfTheFileIsABoxAndKeepsTheGrid) {
  openImport();
  read(fixture(u"twice.xlsx"_s));
  read(folder() + u"/no.xlsx"_s);
  const QJsonArray told = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  ASSERT_EQ(told.size(), 1);
  EXPECT_EQ(told[0]["caption"_L1].toString(), u"提示"_s);
  EXPECT_EQ(told[0]["kind"_L1].toInt(), 0);
  EXPECT_TRUE(told[0]["text"_L1].toString().contains(u"no.xlsx 打不开"_s));
  EXPECT_EQ(column(u"COL2"_s), (Lines{u"甲"_s, u"乙"_s, u"丙"_s}));
}

TEST_F(ImportDialog, CellsAreReadAsShownUpToTheFirstRowWithoutABarcode) {
  openImport();
  read(fixture(u"shown.xls"_s));
  EXPECT_EQ(column(u"COL1"_s),
            (Lines{u"6901234567892"_s, u"0012345678905"_s, u"0069012345678"_s, u"6900000000001"_s,
                   u"6901234567893"_s, u"123456789012345"_s, u"TRUE?"_s, u"5"_s}));
  EXPECT_EQ(column(u"COL4"_s), (Lines{u"2.50"_s, u"1,234.50"_s, u"1.01"_s, u"10.00"_s, u"5.00"_s, u"12.5%"_s,
                                      u"0.001"_s, u"1000000"_s}));
  EXPECT_EQ(text(u"lab_hint"_s), u"10"_s);
}

TEST_F(ImportDialog, SingleQuotesBecomeDoubleOnes) {
  openImport();
  read(csv(u"69,农夫's 'x',1,2,3\n"_s));
  EXPECT_EQ(column(u"COL2"_s), Lines{u"农夫\"s \"x\""_s});
}

TEST_F(ImportDialog, ControlCharactersDoNotArrive) {
  openImport();
  for (const QString& name : {u"control.xlsx"_s, u"control.xls"_s}) {
    read(fixture(name));
    EXPECT_EQ(column(u"COL1"_s), Lines{u"6900000000001"_s});
    EXPECT_EQ(column(u"COL2"_s), Lines{u"两 行"_s});
  }
  read(csv(u"\"69\t\",\"两\r\n行\",1,2,3\n"_s));
  EXPECT_EQ(column(u"COL1"_s), Lines{u"69"_s});
  EXPECT_EQ(column(u"COL2"_s), Lines{u"两 行"_s});
}

TEST_F(ImportDialog, ABarcodeOfControlCharactersAloneDoesNotEndTheReading) {
  openImport();
  read(csv(u"69,甲,1,2,3\n\"\t\",乙,1,2,3\n70,丙,1,2,3\n"_s));
  EXPECT_EQ(column(u"COL1"_s), (Lines{u"69"_s, QString(), u"70"_s}));
  EXPECT_EQ(text(u"lab_hint"_s), u"5"_s);
}

TEST_F(ImportDialog, TheCounterChangesOnlyWithARowRead) {
  openImport();
  read(csv(u"69,甲,1,2,3\n"_s));
  EXPECT_EQ(text(u"lab_hint"_s), u"3"_s);
  read(csv({}));
  EXPECT_EQ(text(u"lab_hint"_s), u"3"_s);
}

TEST_F(ImportDialog, ItsRowsAreLow) {
  openImport();
  read(csv(u"69,甲,1,2,3\n"_s));
  int height = 0;
  onGui([&] { height = driver().addressing().foremost()->findChild<QTableView*>(u"GRID1"_s)->rowHeight(0); });
  EXPECT_EQ(height, 20);
}

TEST_F(ImportDialog, ASecondRowWithoutABarcodeLeavesTheGridEmpty) {
  openImport();
  read(fixture(u"twice.xls"_s));
  read(csv(u",甲,1,2,3\n69,乙,1,2,3\n"_s));
  EXPECT_EQ(column(u"COL1"_s), Lines{});
  EXPECT_TRUE(result().contains(u"没有读到商品"_s));
  EXPECT_EQ(messages(), Lines{});
  fillDefaults();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{});
  EXPECT_EQ(sql(u"select count(*) from D1801"_s)[0][0], u"0"_s);
}

TEST_F(ImportDialog, F12ReadsTheFileAgain) {
  openImport();
  read(csv(u"69,甲,1,2,3\n"_s));
  csv(u"69,甲,1,2,3\n70,乙,1,2,3\n"_s);
  cellClick(u"GRID1"_s, 0, u"COL2"_s);
  press(u"X"_s);  // into the cell's editor, which goes with the old rows
  press(u"F12"_s);
  EXPECT_EQ(column(u"COL2"_s), (Lines{u"甲"_s, u"乙"_s}));
  EXPECT_TRUE(get(u"GRID1"_s)["focused"_L1].toBool());
  press(u"X"_s);
  done({{u"cmd"_s, u"close"_s}});
  EXPECT_EQ(messages(), Lines()) << "the rows are not what the user has to keep";
}

TEST_F(ImportDialog, FiftyThousandRowsKeepTheWindowAlive) {
  openImport();
  QString lines;
  for (int i = 0; i < 50'000; ++i) lines += u"69%1,商品%1,500ml,2.5,2\n"_s.arg(i, 11, 10, QChar(u'0'));
  const QString path = csv(lines);
  QElapsedTimer sinceTurn;
  qint64 longest = 0;
  choose(path);
  onGui([&] {
    auto* timer = new QTimer(QCoreApplication::instance());
    timer->setObjectName(u"turns"_s);
    sinceTurn.start();
    QObject::connect(timer, &QTimer::timeout, timer, [&] {
      longest = std::max(longest, sinceTurn.elapsed());
      sinceTurn.start();
    });
    timer->start(0);
  });
  click(u"btn_ref"_s);
  onGui([&] { delete QCoreApplication::instance()->findChild<QTimer*>(u"turns"_s); });
  EXPECT_EQ(text(u"lab_hint"_s), u"50002"_s);
  EXPECT_LT(longest, 2000) << "milliseconds without a turn of the event loop";
}

}  // namespace
}  // namespace goodsbook
