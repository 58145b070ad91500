// Several units of one product: the grid of the editor, its checks and the statements of its changes.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>

#include "host/controls/TDBGridEh.h"
#include "tests/products/product_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString grid = u"DBGridEh1"_s;

class ProductUnits : public ProductScreen {
 protected:
  void SetUp() override {
    ProductScreen::SetUp();
    product(u"P1"_s, u"可乐"_s);
    sql(u"insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE,SJ,VIPSJ,PFJ,CGJ) values (0,'P1','02','70',12,50,40,30,25)"_s);
  }
  void openUnits(const QString& action) {
    openList();
    act(action);
    press(u"F6"_s);
    ASSERT_TRUE(get(grid)["visible"_L1].toBool());
  }
  // What the save sent between the header and the guard on main units.
  QString unitStatements() {
    const QJsonArray all = sent(u"ExecSql"_s);
    if (all.isEmpty()) return u"none"_s;
    const QString batch = all.last()["sql"_L1].toString();
    const QString header = u"from d1801 where wl_id='P1';"_s;
    const qsizetype from = batch.startsWith(u"insert into D1801 "_s) ? batch.indexOf(u"');"_s) + 3
                                                                     : batch.indexOf(header) + header.size();
    return batch.mid(from, batch.indexOf(u"if EXISTS("_s) - from);
  }
  // In the window of that size, or the nearest that it may have: titles that are not wholly in sight.
  QString hiddenTitles(QSize size) {
    QStringList hidden;
    onGui([&] {
      QWidget* window = QApplication::activeModalWidget();
      window->resize(size);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
      const auto* shown = window->findChild<TDBGridEh*>(grid);
      const QHeaderView* header = shown->horizontalHeader();
      for (int i = 0; i < header->count(); ++i) {
        if (header->isSectionHidden(i)) continue;
        const QString title = header->model()->headerData(i, Qt::Horizontal).toString();
        const int right = header->sectionViewportPosition(i) + header->sectionSize(i);
        const bool fits = header->sectionSizeHint(i) <= header->sectionSize(i);
        if (!fits || right > shown->viewport()->width()) hidden << title;
      }
    });
    return hidden.join(u',');
  }
  bool hasScrollBar() {
    bool shown = false;
    onGui([&] {
      shown =
          QApplication::activeModalWidget()->findChild<TDBGridEh*>(grid)->verticalScrollBar()->isVisible();
    });
    return shown;
  }
  QString focused() {
    QString name;
    onGui(
        [&] { name = QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString(); });
    return name;
  }
  QString unitOf(const QString& unit) {
    return sql(u"select adw from D1801DW where WL_ID='P1' and DW_ID='"_s + unit + u'\'')[0][0];
  }
};

TEST_F(ProductUnits, AllTitlesAreInSightInEverySizeOfTheWindow) {
  openUnits(u"Act_Edit"_s);
  EXPECT_EQ(hiddenTitles({880, 560}).toStdString(), "");
  EXPECT_FALSE(hasScrollBar());
  click(u"btn_Cancel"_s);
  for (int i = 0; i < 12; ++i)
    sql(u"insert into D1801DW (T,WL_ID,DW_ID,TM,ABASE) values (0,'P1','02','70',12)"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(hiddenTitles({100, 100}).toStdString(), "");
  EXPECT_TRUE(hasScrollBar());
  onGui([] { EXPECT_LE(QApplication::activeModalWidget()->width(), 800); });
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, AreLoadedWithTheMainUnitFirst) {
  openList();
  act(u"Act_Edit"_s);
  const Lines all = statements();
  EXPECT_NE(std::find(all.begin(), all.end(),
                      u"select *,0 AS ADDFLAG from D1801dw where wl_id='P1' order by T DESC,dw_id"_s),
            all.end());
  EXPECT_EQ(std::count(all.begin(), all.end(), u"select dw_id,dw_name from D1003"_s), 1);
  press(u"F6"_s);
  const QJsonArray list = rows(grid);
  ASSERT_EQ(list.size(), 2);
  EXPECT_EQ(list[0]["DW_NAME"_L1].toString() + list[1]["DW_NAME"_L1].toString(), u"瓶箱"_s);
  EXPECT_EQ(list[0]["T"_L1].toString() + list[1]["T"_L1].toString(), u"10"_s);
  EXPECT_EQ(list[0]["ADDFLAG"_L1].toString(), u"0"_s);
  click(u"btn_Cancel"_s);
  act(u"Act_Edit"_s);
  const Lines again = statements();
  EXPECT_EQ(std::count(again.begin(), again.end(), u"select dw_id,dw_name from D1003"_s), 0)
      << "names of units are read once";
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, AChangedRowGoesThroughTheProcedure) {
  openUnits(u"Act_Edit"_s);
  cell(grid, 1, u"SJ"_s, u"55"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(
      unitStatements(),
      u"exec SYS_DW @t='0',@adw='%1',@tm='70',@dw_id='02',@abase=12,@cgj=25,@pfj=30,@vipsj=40,@sj=55;"_s.arg(
          unitOf(u"02"_s)));
  EXPECT_EQ(sql(u"select SJ,PFJ from D1801DW where DW_ID='02'"_s), (Table{{u"55"_s, u"30"_s}}));
  EXPECT_EQ(sql(u"select dwcount from D1801"_s), (Table{{u"2"_s}}));
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["SJ"_L1].toString().toDouble(), 5) << "the list shows the main unit";
}

TEST_F(ProductUnits, ANewRowHasDefaultsAndIsInserted) {
  sql(u"insert into D1003 (dw_id,dw_name) values ('03','托')"_s);
  openUnits(u"Act_Edit"_s);
  act(u"N5"_s);
  const QJsonArray list = rows(grid);
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(list[2]["ADDFLAG"_L1].toString() + list[2]["ABASE"_L1].toString() + list[2]["SJ"_L1].toString() +
                list[2]["T"_L1].toString(),
            u"110.000"_s);
  cell(grid, 2, u"DW_ID"_s, u"03"_s);
  EXPECT_EQ(rows(grid)[2]["DW_NAME"_L1].toString(), u"托"_s);
  cell(grid, 2, u"ABASE"_s, u"144"_s);
  cell(grid, 2, u"TM"_s, u"71"_s);
  cellClick(grid, 2, u"多条码"_s);
  cellClick(grid, 2, u"区域售价"_s);
  const QString saveFirst = u"当您为商品新增加一种单位时，必须先保存后才可以定义相关的条码及区域售价!"_s;
  EXPECT_EQ(messages(), (Lines{saveFirst, saveFirst}));
  click(u"btn_ok"_s);
  EXPECT_EQ(
      unitStatements(),
      u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,PFJ,cgj) values (0,'P1','03','71',144,0,0,0,0);"_s);
  EXPECT_EQ(sql(u"select dwcount from D1801"_s), (Table{{u"3"_s}}));
}

TEST_F(ProductUnits, ADeletedRowIsRemovedByTheProcedure) {
  openUnits(u"Act_Edit"_s);
  const QString unit = unitOf(u"02"_s);
  done({{u"cmd"_s, u"row"_s}, {u"element"_s, grid}, {u"index"_s, 1}});
  act(u"N6"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(
      unitStatements(),
      u"exec SYS_DW @status=0,@t=0,@adw='%1',@tm='70',@dw_id='02',@abase=1,@cgj=1,@vipsj=1,@pfj=1,@sj=1;"_s
          .arg(unit));
  EXPECT_EQ(sql(u"select DW_ID from D1801DW"_s), (Table{{u"01"_s}}));
}

TEST_F(ProductUnits, KeysAddAndDeleteRows) {
  openUnits(u"Act_Edit"_s);
  focus(grid);
  press(u"Ins"_s);
  EXPECT_EQ(rows(grid).size(), 3);
  press(u"Ctrl+Del"_s);
  EXPECT_EQ(rows(grid).size(), 2);
  click(u"btn_ok"_s);
  EXPECT_EQ(unitStatements(), QString());
}

TEST_F(ProductUnits, EscAsksAboutADeletedRowButNotAboutAnUntouchedOne) {
  openUnits(u"Act_Edit"_s);
  done({{u"cmd"_s, u"focus"_s}, {u"element"_s, grid}});
  press(u"Insert"_s);
  press(u"Up"_s);
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines()) << "nothing was changed";
  EXPECT_EQ(frontClass(), u"TF2101"_s);
  act(u"Act_Edit"_s);
  done({{u"cmd"_s, u"focus"_s}, {u"element"_s, grid}});
  press(u"Ctrl+Delete"_s);
  answer({u"n"_s});
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
}

TEST_F(ProductUnits, AUnitThatThereIsNotIsRefusedBehindF6Too) {
  openList();
  act(u"Act_Edit"_s);
  type(u"dw_id"_s, u"ZZ"_s);
  press(u"F6"_s);
  done({{u"cmd"_s, u"focus"_s}, {u"element"_s, u"Edit2"_s}});
  press(u"F6"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, ACopyWithoutAPriceIsRefusedBeforeAnythingIsSent) {
  openList();
  sql(u"update D1801DW set VIPSJ=null where WL_ID='P1'"_s);
  act(u"Act_Refresh"_s);
  act(u"Act_CopyAdd"_s);
  type(u"Edit1"_s, u"NEW"_s);
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"会员价应输入数字!"_s});
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, AUnitAddedMeanwhileHasItsName) {
  openUnits(u"Act_Edit"_s);
  statements();
  sql(u"insert into D1003 (dw_id,dw_name) values ('03','打')"_s);
  cell(grid, 0, u"DW_ID"_s, u"03"_s);
  EXPECT_EQ(rows(grid)[0]["DW_NAME"_L1].toString(), u"打"_s);
  EXPECT_EQ(statements(), Lines()) << "looked up by the host";
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["DW_NAME"_L1].toString(), u"打"_s);
  act(u"Act_Edit"_s);
  EXPECT_EQ(rows(grid)[0]["DW_NAME"_L1].toString(), u"打"_s);
  press(u"F6"_s);
  EXPECT_EQ(text(u"DW_NAME"_s), u"打"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, TheKeyboardGoesThroughTheGridAndOn) {
  openUnits(u"Act_Edit"_s);
  focus(grid);
  press(u"Ctrl+Tab"_s);
  EXPECT_NE(focused(), grid);
  focus(grid);
  press(u"Ctrl+Shift+Backtab"_s);
  EXPECT_EQ(focused(), u"NOTE"_s);
  focus(grid);
  cellClick(grid, 1, u"SJ"_s);
  for (int i = 0; i < 6; ++i) press(u"Tab"_s);
  EXPECT_EQ(focused(), grid);
  press(u"Tab"_s);
  EXPECT_NE(focused(), grid) << "behind the last cell";
  cellClick(grid, 0, u"DW_ID"_s);
  press(u"Shift+Backtab"_s);
  EXPECT_EQ(focused(), grid);
  press(u"Shift+Backtab"_s);
  EXPECT_EQ(focused(), u"NOTE"_s) << "before the first cell";
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, ARowGoesUnderAnOpenCellAndTheKeyboardStays) {
  openUnits(u"Act_Edit"_s);
  cellClick(grid, 1, u"SJ"_s);
  press(u"5"_s);
  press(u"Ctrl+Delete"_s);
  EXPECT_EQ(rows(grid).size(), 1);
  EXPECT_EQ(focused(), grid);
  press(u"Ins"_s);
  EXPECT_EQ(rows(grid).size(), 2);
  EXPECT_EQ(messages(), Lines());
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, ANewRowThatGoesAgainIsNoInput) {
  openUnits(u"Act_Edit"_s);
  focus(grid);
  press(u"Ins"_s);
  press(u"Ctrl+Delete"_s);
  EXPECT_EQ(rows(grid).size(), 2);
  press(u"Esc"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101"_s);
}

TEST_F(ProductUnits, TheKeyboardLeavesAGridThatIsOnlyLookedAt) {
  openUnits(u"Act_View"_s);
  focus(grid);
  press(u"Ctrl+Tab"_s);
  EXPECT_EQ(focused(), u"BTN_CHANGE"_s);
  press(u"Shift+Tab"_s);
  EXPECT_EQ(focused(), grid);
  press(u"Ctrl+Shift+Tab"_s);
  EXPECT_EQ(focused(), u"btn_Cancel"_s) << "the fields before the grid cannot be entered";
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, InputInTheStyleThatIsNotShownIsAskedAbout) {
  const QString lostFields = u"在【一种单位】中输入的内容不会保存(F6可切换查看)，是否继续保存?"_s;
  const QString lostCells = u"在【多种单位】表格中输入的内容不会保存(F6可切换查看)，是否继续保存?"_s;
  openList();
  act(u"Act_Edit"_s);
  type(u"SJ"_s, u"4.5"_s);
  press(u"F6"_s);
  answer({u"n"_s});
  statements();
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{lostFields});
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  press(u"F6"_s);
  EXPECT_EQ(text(u"SJ"_s), u"4.5"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select SJ from D1801DW where WL_ID='P1' and T=1"_s), (Table{{u"4.5"_s}}));

  openUnits(u"Act_Edit"_s);
  cell(grid, 1, u"SJ"_s, u"51"_s);
  press(u"F6"_s);
  answer({u"y"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{lostCells});
  EXPECT_EQ(sql(u"select SJ from D1801DW where WL_ID='P1' and T=0"_s), (Table{{u"50"_s}}));
}

TEST_F(ProductUnits, EnterGoesFromUnitToUnitAndInAnEmptyOneToOk) {
  sql(u"insert into D1003 (dw_id,dw_name) values ('03','托')"_s);
  openUnits(u"Act_Edit"_s);
  cellClick(grid, 1, u"TM"_s);
  press(u"Return"_s);
  ASSERT_EQ(rows(grid).size(), 3);
  for (const QString& key : {u"0"_s, u"3"_s, u"Return"_s, u"5"_s, u"0"_s, u"Return"_s}) press(key);
  for (int i = 0; i < 5; ++i) press(u"Return"_s);
  ASSERT_EQ(rows(grid).size(), 4);
  press(u"Return"_s);
  EXPECT_EQ(rows(grid).size(), 3);
  EXPECT_EQ(focused(), u"btn_ok"_s);
  press(u"Return"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(
      unitStatements(),
      u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,PFJ,cgj) values (0,'P1','03','',50,0,0,0,0);"_s);
}

TEST_F(ProductUnits, ARowThatNothingWasTypedIntoIsNoUnit) {
  openUnits(u"Act_Edit"_s);
  cell(grid, 1, u"SJ"_s, u"55"_s);
  cellClick(grid, 1, u"TM"_s);
  press(u"Return"_s);
  ASSERT_EQ(rows(grid).size(), 3);
  press(u"F9"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select dwcount from D1801"_s), (Table{{u"2"_s}}));
  EXPECT_EQ(sql(u"select count(*) from D1801DW"_s), (Table{{u"2"_s}}));
}

TEST_F(ProductUnits, EscLeavesTheCellThenTheRowThenTheEditor) {
  openUnits(u"Act_Edit"_s);
  cellClick(grid, 0, u"SJ"_s);
  press(u"9"_s);
  press(u"Esc"_s);
  ASSERT_EQ(frontClass(), u"TF2101_1"_s);
  EXPECT_EQ(rows(grid)[0]["SJ"_L1].toString().toDouble(), 5);
  focus(grid);
  press(u"Ins"_s);
  press(u"Esc"_s);
  ASSERT_EQ(frontClass(), u"TF2101_1"_s);
  EXPECT_EQ(rows(grid).size(), 2);
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TF2101"_s);
  EXPECT_EQ(messages(), Lines()) << "all of it was taken back";
}

TEST_F(ProductUnits, ACellThatCannotBeReadStopsTheSaveAndStaysOpen) {
  const QString told = u"零售价：“-”不是有效的数字"_s;
  openUnits(u"Act_Edit"_s);
  const auto isHeld = [&](const Lines& said) {
    EXPECT_EQ(messages(), said);
    EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
    ASSERT_EQ(frontClass(), u"TF2101_1"_s);
    EXPECT_EQ(focused(), u"DBGridEh1.SJ"_s);
    onGui([] { EXPECT_EQ(qobject_cast<QLineEdit*>(QApplication::focusWidget())->text(), u"-"_s); });
  };
  cellClick(grid, 0, u"SJ"_s);
  press(u"-"_s);
  statements();
  for (const QString& keys : {u"F9"_s, u"Ctrl+Return"_s, u"Return"_s, u"Tab"_s, u"Ctrl+Tab"_s, u"F6"_s,
                              u"PgDown"_s, u"PgUp"_s, u"Ctrl+Home"_s, u"Shift+Down"_s, u"Alt+Down"_s}) {
    SCOPED_TRACE(keys.toStdString());
    press(keys);
    isHeld({told});
  }
  for (const QString& element : {u"btn_ok"_s, u"Edit2"_s, u"YS"_s, u"BTN_CHANGE"_s}) {
    SCOPED_TRACE(element.toStdString());
    click(element);
    isHeld({told});
  }
  cellClick(grid, 1, u"VIPSJ"_s);
  isHeld({told});
  EXPECT_TRUE(get(u"YS"_s)["checked"_L1].toBool()) << "the press did not reach the box";
  answer({u"y"_s});
  done({{u"cmd"_s, u"close"_s}});
  isHeld({u"资料已更改，是否保存?"_s, told});
  press(u"7"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(sql(u"select SJ from D1801DW where DW_ID='01'"_s), (Table{{u"7"_s}}));
}

TEST_F(ProductUnits, CancelDropsACellThatCannotBeReadUnasked) {
  openUnits(u"Act_Edit"_s);
  cellClick(grid, 0, u"SJ"_s);
  press(u"-"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(frontClass(), u"TF2101"_s);
  act(u"Act_Edit"_s);
  cellClick(grid, 0, u"SJ"_s);
  press(u"-"_s);
  answer({u"n"_s});
  done({{u"cmd"_s, u"close"_s}});
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
  EXPECT_EQ(frontClass(), u"TF2101"_s);
  act(u"Act_Edit"_s);
  onGui([] {
    EXPECT_EQ(QApplication::activeModalWidget()->findChild<QLineEdit*>(u"DBGridEh1.SJ"_s), nullptr);
  });
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, ACellThatIsOpenCountsAsInput) {
  openUnits(u"Act_Edit"_s);
  cellClick(grid, 0, u"SJ"_s);
  press(u"8"_s);
  answer({u"y"_s});
  done({{u"cmd"_s, u"close"_s}});
  EXPECT_EQ(messages(), Lines{u"资料已更改，是否保存?"_s});
  EXPECT_EQ(sql(u"select SJ from D1801DW where DW_ID='01'"_s), (Table{{u"8"_s}}));
}

TEST_F(ProductUnits, AreNamedByTheirTitlesInMessages) {
  openUnits(u"Act_Edit"_s);
  Lines said;
  for (const QString& field : {u"ABASE"_s, u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s, u"CGJ"_s}) {
    cellClick(grid, 0, field);
    press(u"."_s);
    press(u"Return"_s);
    for (const QString& text : messages()) said.push_back(text);
    press(u"Esc"_s);
  }
  EXPECT_EQ(said, (Lines{u"转换率：“.”不是有效的数字"_s, u"零售价：“.”不是有效的数字"_s,
                         u"会员价：“.”不是有效的数字"_s, u"批发价：“.”不是有效的数字"_s,
                         u"采购价：“.”不是有效的数字"_s}));
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, ShowTheYear) {
  sql(u"update D1801DW set Y=2026 where DW_ID='02'"_s);
  openUnits(u"Act_Edit"_s);
  const QJsonArray columns = done({{u"cmd"_s, u"rows"_s}, {u"element"_s, grid}})["columns"_L1].toArray();
  Lines shown;
  for (const QJsonValue& column : columns) {
    if (column["visible"_L1].toBool()) shown.push_back(column["field"_L1].toString());
  }
  EXPECT_EQ(shown, (Lines{u"T"_s, u"DW_ID"_s, u"dw_name"_s, u"ABASE"_s, u"SJ"_s, u"VIPSJ"_s, u"PFJ"_s,
                          u"CGJ"_s, u"TM"_s, u"Y"_s, u"多条码"_s, u"区域售价"_s}));
  EXPECT_EQ(rows(grid)[1]["Y"_L1].toString(), u"2026"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, AnEmptiedPriceIsZeroInTheListToo) {
  openUnits(u"Act_Edit"_s);
  cell(grid, 0, u"PFJ"_s, QString());
  cell(grid, 0, u"SJ"_s, u".5"_s);
  click(u"btn_ok"_s);
  const QJsonObject row = rows(u"DBGridEh"_s)[0].toObject();
  EXPECT_EQ(row["PFJ"_L1].toString(), u"0.00"_s);
  EXPECT_EQ(row["SJ"_L1].toString(), u"0.50"_s);
  EXPECT_EQ(sql(u"select PFJ,SJ from D1801DW where T=1"_s), (Table{{u"0"_s, u"0.5"_s}}));
}

TEST_F(ProductUnits, UnchangedRowsSendNothing) {
  openUnits(u"Act_Edit"_s);
  type(u"Edit2"_s, u"雪碧"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(unitStatements(), QString());
}

TEST_F(ProductUnits, OfANewProductShowTheirNames) {
  openUnits(u"Act_Add"_s);
  type(u"Edit1"_s, u"P2"_s);
  act(u"N5"_s);
  cell(grid, 0, u"DW_ID"_s, u"02"_s);
  EXPECT_EQ(rows(grid)[0]["DW_NAME"_L1].toString(), u"箱"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, AtLeastOneUnit) {
  openUnits(u"Act_Add"_s);
  type(u"Edit1"_s, u"P2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{u"请在表格最少输入一种单位,且至少要标志一个主单位!"_s});
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, ExactlyOneMainUnit) {
  const QString message = u"每一商品必须定义一个主单位!,不可定义多个,也不可没有"_s;
  openUnits(u"Act_Edit"_s);
  cell(grid, 1, u"T"_s, u"1"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{message});
  cell(grid, 1, u"T"_s, u"0"_s);
  cell(grid, 0, u"T"_s, u"0"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines{message});
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  EXPECT_EQ(frontClass(), u"TF2101_1"_s);
  click(u"btn_Cancel"_s);
}

TEST_F(ProductUnits, TheMainUnitsRateIsOneToFourPlaces) {
  openUnits(u"Act_Edit"_s);
  for (const QString& rate : {u"0.9999"_s, u"1.0001"_s, u"2"_s, u"0"_s}) {
    cell(grid, 0, u"ABASE"_s, rate);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines{u"主单位的转换率应该是  1  ,请更正!"_s}) << rate.toStdString();
  }
  EXPECT_EQ(sent(u"ExecSql"_s).size(), 0);
  click(u"btn_Cancel"_s);
  for (const QString& rate : {u"1.00004"_s, u"0.99996"_s}) {
    act(u"Act_Edit"_s);
    cell(grid, 0, u"ABASE"_s, rate);
    click(u"btn_ok"_s);
    EXPECT_EQ(messages(), Lines()) << rate.toStdString();
    EXPECT_TRUE(unitStatements().contains(u"@abase="_s + rate)) << rate.toStdString();
  }
}

TEST_F(ProductUnits, TwoMainUnitsInTheDatabaseFailTheWholeSave) {
  openList();
  act(u"Act_Edit"_s);
  sql(u"update D1801DW set T=1"_s);  // by somebody else
  type(u"Edit2"_s, u"雪碧"_s);
  answer({u"y"_s});
  click(u"btn_ok"_s);
  EXPECT_EQ(messages().back(), u"当您把一个已引用的主单位替换时会出现此错误!请把主单位还原回更改前的值"_s);
  EXPECT_EQ(sql(u"select WL_NAME from D1801"_s), (Table{{u"可乐"_s}}));
  EXPECT_EQ(sql(u"select WL_ID from D1801B"_s), Table());
  EXPECT_EQ(text(u"Edit2"_s), u"雪碧"_s);
  click(u"btn_Cancel"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s)[0]["WL_NAME"_L1].toString(), u"可乐"_s);
}

TEST_F(ProductUnits, ACopyInsertsAllUnitsForTheNewCode) {
  openUnits(u"Act_CopyAdd"_s);
  ASSERT_EQ(rows(grid).size(), 2);
  type(u"Edit1"_s, u"P2"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(messages(), Lines());
  EXPECT_EQ(
      unitStatements(),
      u"insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,PFJ,cgj) values (1,'P2','01','69',1,5,4,3,2.5);"
      "insert into d1801dw(t,wl_id,dw_id,tm,abase,sj,vipsj,PFJ,cgj) values (0,'P2','02','70',12,50,40,30,25);"_s);
}

}  // namespace
}  // namespace goodsbook
