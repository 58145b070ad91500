#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QVBoxLayout>

#include "tests/host/controls/grid_fixture.h"
#include "tests/host/data/test_session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

TEST_F(GridTest, ModelIsSound) {
  const QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  rows.append();
  rows.cancel();
  rows.moveTo(1);
  rows.remove();
  rows.setSort(u"SJ"_s, true);
  rows.close();
  rows.create(fields());
  EXPECT_EQ(grid.model()->rowCount(), 0);
}

TEST_F(GridTest, CurrentRowsAreOne) {
  EXPECT_EQ(grid.currentIndex().row(), 0);
  rows.moveTo(2);
  EXPECT_EQ(grid.currentIndex().row(), 2);
  QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(rows.currentRow(), 3);
  clickRow(1);
  EXPECT_EQ(rows.currentRow(), 1);
  rows.remove();
  EXPECT_EQ(grid.currentIndex().row(), rows.currentRow());
  EXPECT_EQ(codes(), u"A1 C3 D4"_s);
}

TEST_F(GridTest, TitleClicksSortUpDownAndNot) {
  QHeaderView* header = grid.horizontalHeader();
  rows.moveTo(1);
  const auto clickTitle = [&](const QString& field) {
    const int x = header->sectionViewportPosition(grid.columnOf(field)) + 10;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(x, header->height() / 2));
  };
  clickTitle(u"SJ"_s);
  EXPECT_EQ(codes(), u"C3 A1 D4 B2"_s);
  EXPECT_TRUE(header->isSortIndicatorShown());
  EXPECT_EQ(rows.text(u"WL_ID"_s), u"B2"_s);
  EXPECT_EQ(grid.currentIndex().row(), 3);
  clickTitle(u"SJ"_s);
  EXPECT_EQ(codes(), u"B2 D4 A1 C3"_s);
  EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
  clickTitle(u"SJ"_s);
  EXPECT_EQ(codes(), u"A1 B2 C3 D4"_s);
  EXPECT_FALSE(header->isSortIndicatorShown());
  clickTitle(u"SL"_s);
  EXPECT_EQ(codes(), u"B2 D4 A1 C3"_s);
}

TEST_F(GridTest, PicksKeepTheOrderOfPicking) {
  clickRow(2);
  EXPECT_EQ(picked(), u""_s);
  clickRow(0, Qt::ControlModifier);
  clickRow(3, Qt::ControlModifier);
  EXPECT_EQ(picked(), u"C3 A1 D4"_s);
  clickRow(0, Qt::ControlModifier);
  EXPECT_EQ(picked(), u"C3 D4"_s);
  rows.setSort(u"WL_ID"_s, true);
  EXPECT_EQ(picked(), u"C3 D4"_s);
  clickRow(1);
  EXPECT_EQ(picked(), u""_s);
}

TEST_F(GridTest, ShiftPicksARangeFromWhereItBegan) {
  clickRow(2);
  clickRow(0, Qt::ShiftModifier);
  EXPECT_EQ(picked(), u"C3 B2 A1"_s);
  clickRow(3, Qt::ShiftModifier);
  EXPECT_EQ(picked(), u"C3 D4"_s);
}

TEST_F(GridTest, KeysPickRows) {
  grid.setReadOnly(true);
  clickRow(1);
  QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
  QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(picked(), u"B2 C3 D4"_s);
  QTest::keyClick(&grid, Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(picked(), u"B2 C3"_s);
  QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(picked(), u"B2 C3 A1 D4"_s);
  rows.remove();
  EXPECT_EQ(picked(), u"B2 A1 D4"_s);
  grid.clearSelectedRows();
  grid.selectRow(2);
  grid.selectRow(0);
  EXPECT_EQ(picked(), u"D4 A1"_s);
}

TEST_F(GridTest, CtrlTSortsByTheCurrentColumnAndTellsWhoCountsPicks) {
  grid.setReadOnly(true);
  grid.setKeyField(u"WL_ID"_s);
  grid.setCurrentIndex(grid.model()->index(0, grid.columnOf(u"SL"_s)));
  const QString before = codes();
  QTest::keyClick(&grid, Qt::Key_T, Qt::ControlModifier);
  QTest::keyClick(&grid, Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(codes(), u"C3 A1 D4 B2"_s);
  EXPECT_EQ(grid.selectedField(), u"SL"_s);
  QTest::keyClick(&grid, Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(codes(), before);
  int told = 0;
  QObject::connect(&grid, &TDBGridEh::picksChanged, &grid, [&] { ++told; });
  QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(grid.selectedRowCount(), 4);
  rows.remove();
  EXPECT_EQ(grid.selectedRowCount(), 3);
  grid.clearSelectedRows();
  EXPECT_EQ(grid.selectedRowCount(), 0);
  EXPECT_GE(told, 3);
}

TEST_F(GridTest, CellIsEditedThroughItsEditor) {
  EXPECT_TRUE(grid.editCell(1, u"WL_NAME"_s, u"大香蕉"_s));
  EXPECT_EQ(rows.currentRow(), 1);
  EXPECT_EQ(rows.text(u"WL_NAME"_s), u"大香蕉"_s);
  EXPECT_EQ(rows.state(), RecordSet::State::Edit);
  EXPECT_TRUE(grid.editCell(2, u"SJ"_s, u"1x2.345"_s));
  EXPECT_EQ(rows.number(u"SJ"_s), 12.34);
  EXPECT_EQ(rows.textAt(1, 1), u"大香蕉"_s);
  EXPECT_FALSE(grid.editCell(0, u"WL_ID"_s, u"Z"_s));
  EXPECT_FALSE(grid.editCell(0, u"COST"_s, u"1"_s));
  EXPECT_FALSE(grid.editCell(9, u"SJ"_s, u"1"_s));
  grid.setReadOnly(true);
  EXPECT_FALSE(grid.editCell(0, u"WL_NAME"_s, u"Z"_s));
}

TEST_F(GridTest, EmptyNumberCellIsNull) {
  EXPECT_TRUE(grid.editCell(0, u"SJ"_s, u""_s));
  EXPECT_TRUE(rows.isNull(u"SJ"_s));
  EXPECT_EQ(rows.text(u"SJ"_s), QString());
}

TEST_F(GridTest, AValueThatCannotBeIsToldAndNotTaken) {
  test::TestSession session;
  std::vector<Field> dated = fields();
  dated.push_back({.name = u"BDATE"_s, .type = FieldType::DateTime});
  rows.create(dated);
  add("A1", "苹果", 1, 1, true);
  std::vector<GridColumn> shown = columns();
  shown.push_back({.field = u"BDATE"_s, .readOnly = false});
  grid.setColumns(shown);
  EXPECT_FALSE(grid.editCell(0, u"BDATE"_s, u"2026-02-30"_s));
  EXPECT_EQ(session.desktop().messages.size(), 1);
  EXPECT_TRUE(rows.isNull(u"BDATE"_s));
  EXPECT_TRUE(grid.editCell(0, u"BDATE"_s, u"2026-02-28"_s));
  EXPECT_EQ(rows.value(u"BDATE"_s).toDateTime().date(), QDate(2026, 2, 28));
}

TEST_F(GridTest, TypingLimitIsTheFieldsSize) {
  EXPECT_TRUE(grid.editCell(0, u"WL_NAME"_s, QString(30, u'x')));
  EXPECT_EQ(rows.text(u"WL_NAME"_s), QString(20, u'x'));
}

TEST_F(GridTest, TypingOpensTheEditorAndEnterGoesOn) {
  grid.setSelectedField(u"WL_NAME"_s);
  QTest::keyClick(&grid, Qt::Key_N);
  auto* editor = grid.findChild<QLineEdit*>(u"DBGridEh.WL_NAME"_s);
  ASSERT_NE(editor, nullptr);
  QTest::keyClicks(editor, u"ew"_s);
  QTest::keyClick(editor, Qt::Key_Return);
  EXPECT_EQ(rows.text(u"WL_NAME"_s), u"new"_s);
  EXPECT_EQ(grid.selectedField(), u"SJ"_s);
  QTest::keyClick(&grid, Qt::Key_Return);
  QTest::keyClick(&grid, Qt::Key_Return);
  EXPECT_EQ(grid.selectedField(), u"WL_YS"_s);
  QTest::keyClick(&grid, Qt::Key_Return);
  EXPECT_EQ(rows.currentRow(), 1);
  EXPECT_EQ(grid.selectedField(), u"WL_NAME"_s);
}

TEST_F(GridTest, EscLeavesTheCellAndThenTheRowAsTheyWere) {
  ASSERT_TRUE(grid.editCell(0, u"SL"_s, u"77"_s));
  grid.setSelectedField(u"WL_NAME"_s);
  QTest::keyClick(&grid, Qt::Key_X);
  auto* editor = grid.findChild<QLineEdit*>(u"DBGridEh.WL_NAME"_s);
  ASSERT_NE(editor, nullptr);
  QTest::keyClick(editor, Qt::Key_Escape);
  EXPECT_EQ(rows.text(u"WL_NAME"_s), u"苹果"_s);
  EXPECT_EQ(rows.integer(u"SL"_s), 77);
  QTest::keyClick(&grid, Qt::Key_Escape);
  EXPECT_EQ(rows.integer(u"SL"_s), 10);
  EXPECT_EQ(rows.state(), RecordSet::State::Browse);
}

TEST_F(GridTest, CheckBoxesChangeByClickAndSpace) {
  grid.clickCell(0, u"WL_YS"_s);
  EXPECT_FALSE(rows.flag(u"WL_YS"_s));
  QTest::keyClick(&grid, Qt::Key_Space);
  EXPECT_TRUE(rows.flag(u"WL_YS"_s));
  EXPECT_TRUE(grid.editCell(1, u"WL_YS"_s, u"1"_s));
  EXPECT_TRUE(rows.flag(u"WL_YS"_s));
  EXPECT_TRUE(grid.editCell(1, u"WL_YS"_s, u"1"_s));
  EXPECT_TRUE(rows.flag(u"WL_YS"_s));
  grid.setReadOnly(true);
  grid.clickCell(1, u"WL_YS"_s);
  EXPECT_TRUE(rows.flag(u"WL_YS"_s));
}

TEST_F(GridTest, ButtonsTellWhereTheyWerePressed) {
  QSignalSpy pressed(&grid, &TDBGridEh::columnButtonClicked);
  grid.clickCell(2, u"MORE"_s);
  ASSERT_EQ(pressed.count(), 1);
  EXPECT_EQ(pressed[0][0].toInt(), 2);
  EXPECT_EQ(pressed[0][1].toString(), u"MORE"_s);
  EXPECT_EQ(rows.currentRow(), 2);
  QTest::keyClick(&grid, Qt::Key_Space);
  EXPECT_EQ(pressed.count(), 2);
}

TEST_F(GridTest, DoubleClickTellsTheRowWhereNothingIsEdited) {
  QSignalSpy opened(&grid, &TDBGridEh::rowDoubleClicked);
  grid.clickCell(1, u"WL_ID"_s, true);
  EXPECT_EQ(opened.count(), 1);
  grid.clickCell(1, u"WL_NAME"_s, true);
  EXPECT_EQ(opened.count(), 1);
  EXPECT_NE(grid.findChild<QLineEdit*>(u"DBGridEh.WL_NAME"_s), nullptr);
}

TEST_F(GridTest, DownBehindTheLastRowAppendsAndUpTakesItBack) {
  rows.last();
  QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(rows.rowCount(), 4);
  grid.setAllowAppend(true);
  QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(rows.rowCount(), 5);
  EXPECT_EQ(rows.state(), RecordSet::State::Insert);
  QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(rows.rowCount(), 5);
  QTest::keyClick(&grid, Qt::Key_Up);
  EXPECT_EQ(rows.rowCount(), 4);
  EXPECT_EQ(grid.currentIndex().row(), 3);
}

TEST_F(GridTest, TypingFindsRowsInAColumnThatIsNotEdited) {
  grid.setReadOnly(true);
  add("C35", "柠檬", 1, 1, true);
  rows.first();
  grid.setSelectedField(u"WL_ID"_s);
  QTest::keyClicks(&grid, u"c3"_s);
  EXPECT_EQ(rows.text(u"WL_ID"_s), u"C3"_s);
  auto* hint = grid.viewport()->findChild<QLabel*>();
  EXPECT_TRUE(hint->isVisible());
  EXPECT_EQ(hint->text(), u"查找：c3"_s);
  QTest::keyClick(&grid, Qt::Key_F3);
  EXPECT_EQ(rows.text(u"WL_ID"_s), u"C35"_s);
  QTest::keyClick(&grid, Qt::Key_X);
  EXPECT_EQ(rows.text(u"WL_ID"_s), u"C35"_s);
  QTest::keyClick(&grid, Qt::Key_Escape);
  EXPECT_FALSE(hint->isVisible());
}

TEST_F(GridTest, SearchingKeepsItsKeysFromShortcuts) {
  grid.setReadOnly(true);
  grid.setSelectedField(u"WL_ID"_s);
  QStringList fired;
  for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::Key_F3)}) {
    auto* action = new QAction(&grid);
    action->setShortcut(key);
    QObject::connect(action, &QAction::triggered, &grid, [&fired, key] { fired << key.toString(); });
    grid.addAction(action);
  }
  QTest::keyClicks(&grid, u"c"_s);
  QTest::keyClick(&grid, Qt::Key_F3);
  QTest::keyClick(&grid, Qt::Key_F3, Qt::ShiftModifier);
  QTest::keyClick(&grid, Qt::Key_Escape);
  EXPECT_EQ(fired, QStringList());
  QTest::keyClick(&grid, Qt::Key_F3);
  QTest::keyClick(&grid, Qt::Key_Escape);
  EXPECT_EQ(fired, (QStringList{u"F3"_s, u"Esc"_s}));
}

TEST_F(GridTest, BoxesAreNotSearchedButTheKey) {
  grid.setReadOnly(true);
  grid.setKeyField(u"WL_NAME"_s);
  grid.setSelectedField(u"WL_YS"_s);
  EXPECT_TRUE(grid.findText(u"橙"_s));
  EXPECT_EQ(rows.text(u"WL_ID"_s), u"C3"_s);
  EXPECT_EQ(grid.selectedField(), u"WL_NAME"_s);
  grid.setKeyField({});
  grid.setSelectedField(u"WL_YS"_s);
  QTest::keyClicks(&grid, u"b"_s);
  EXPECT_EQ(rows.text(u"WL_ID"_s), u"B2"_s) << "without a key the first column that can be searched";
}

TEST_F(GridTest, OpensInTheColumnOfTheKey) {
  rows.close();
  grid.setKeyField(u"WL_NAME"_s);
  rows.create(fields());
  add("A1", "苹果", 3.5, 10, true);
  EXPECT_EQ(grid.selectedField(), u"WL_NAME"_s);
}

// A grid between two fields, as it stands in editors and dialogs.
class GridAmongFields : public GridTest {
 protected:
  void SetUp() override {
    GridTest::SetUp();
    auto* layout = new QVBoxLayout(&window_);
    layout->addWidget(&before_);
    layout->addWidget(&grid);
    layout->addWidget(&after_);
    QWidget::setTabOrder(&before_, &grid);
    QWidget::setTabOrder(&grid, &after_);
    grid.setReadOnly(false);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    grid.setFocus();
  }
  void TearDown() override { grid.setParent(nullptr); }
  static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  QString cell() const { return QString::number(rows.currentRow()) + grid.selectedField(); }

  QWidget window_;
  QLineEdit before_{&window_}, after_{&window_};
};

TEST_F(GridAmongFields, TabLeavesBehindTheLastCell) {
  rows.moveTo(2);
  grid.setSelectedField(u"MORE"_s);
  for (const char* field : {"WL_NAME", "SJ", "SL", "WL_YS", "MORE"}) {
    key(Qt::Key_Tab);
    EXPECT_EQ(cell(), u'3' + QString::fromLatin1(field));
  }
  key(Qt::Key_Tab);
  EXPECT_TRUE(after_.hasFocus());
  EXPECT_EQ(cell(), u"3MORE"_s);
}

TEST_F(GridAmongFields, ShiftTabLeavesBeforeTheFirstCell) {
  rows.moveTo(1);
  grid.setSelectedField(u"WL_NAME"_s);
  key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(cell(), u"0MORE"_s);
  grid.setSelectedField(u"WL_NAME"_s);
  key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(before_.hasFocus());
}

TEST_F(GridAmongFields, TabKnowsWhatCanBeEditedOfRowsThatAreOpenedLater) {
  rows.close();
  grid.setColumns(columns());
  rows.create(fields());
  add("A1", "苹果", 3.5, 10, true);
  rows.first();
  grid.setSelectedField(u"SJ"_s);
  key(Qt::Key_Tab);
  EXPECT_TRUE(grid.hasFocus());
  EXPECT_EQ(cell(), u"0SL"_s);
  rows.close();
  key(Qt::Key_Tab);
  EXPECT_TRUE(after_.hasFocus()) << "nothing to be edited";
}

TEST_F(GridAmongFields, SortingByKeyTakesTheOpenCellAndKeepsTheKeyboard) {
  grid.setSelectedField(u"SJ"_s);
  key(Qt::Key_7);
  key(Qt::Key_T, Qt::ControlModifier);
  EXPECT_TRUE(grid.hasFocus());
  EXPECT_EQ(rows.sortField(), u"SJ"_s);
  EXPECT_EQ(grid.selectedField(), u"SJ"_s);
  EXPECT_EQ(rows.number(u"SJ"_s), 7);
}

TEST_F(GridAmongFields, CtrlTabLeavesAnywhereAlsoOutOfACell) {
  rows.moveTo(1);
  grid.setSelectedField(u"SJ"_s);
  key(Qt::Key_7);
  ASSERT_NE(grid.findChild<QLineEdit*>(u"DBGridEh.SJ"_s), nullptr);
  key(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_TRUE(after_.hasFocus());
  EXPECT_EQ(rows.number(u"SJ"_s), 7);
  grid.setFocus();
  key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(before_.hasFocus());
}

TEST_F(GridAmongFields, EnterInANewRowThatIsStillEmptyDropsItAndGoesOn) {
  QSignalSpy behind(&grid, &TDBGridEh::enteredBehindLast);
  grid.setAllowAppend(true);
  rows.last();
  grid.setSelectedField(u"WL_YS"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(cell(), u"4WL_NAME"_s);
  EXPECT_EQ(behind.count(), 0);
  key(Qt::Key_Return);
  EXPECT_EQ(rows.rowCount(), 4);
  EXPECT_EQ(behind.count(), 1);
}

TEST_F(GridAmongFields, EnterBehindTheLastCellGoesOnWhereNoRowCanBeAppended) {
  QSignalSpy behind(&grid, &TDBGridEh::enteredBehindLast);
  rows.last();
  grid.setSelectedField(u"SL"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(cell(), u"3WL_YS"_s);
  EXPECT_EQ(behind.count(), 0);
  key(Qt::Key_Return);
  EXPECT_EQ(behind.count(), 1);
}

TEST_F(GridTest, HandlersOfKeysComeFirst) {
  QObject::connect(&grid, &TDBGridEh::keyPressed, &grid, [](QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) event->accept();
  });
  QTest::keyClick(&grid, Qt::Key_Down);
  EXPECT_EQ(rows.currentRow(), 0);
  QTest::keyClick(&grid, Qt::Key_PageDown);
  EXPECT_EQ(rows.currentRow(), 3);
}

TEST_F(GridTest, CopyTakesPickedRowsWithHeadings) {
  grid.setColumnVisible(u"WL_YS"_s, false);
  grid.selectRow(2);
  grid.selectRow(0);
  QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            u"编号\t名称\t售价\tSL\nC3\t橙子\t0.75\t100\nA1\t苹果\t3.50\t10\n"_s);
}

TEST_F(GridTest, CopiedTextsKeepTheirBlanks) {
  rows.edit();
  rows.setValue(u"WL_NAME"_s, u" 双  空\t格 "_s);
  rows.post();
  QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(u"\t 双  空 格 \t"_s))
      << QGuiApplication::clipboard()->text().toStdString();
}

TEST_F(GridTest, LayoutComesBack) {
  QHeaderView* header = grid.horizontalHeader();
  header->moveSection(header->visualIndex(grid.columnOf(u"SL"_s)), 0);
  header->resizeSection(grid.columnOf(u"WL_NAME"_s), 222);
  rows.setSort(u"SL"_s, true);
  const QByteArray layout = grid.saveLayout();

  TDBGridEh other;
  RecordSet rowsOfOther;
  other.setColumns(columns());
  other.setRecordSet(&rowsOfOther);
  other.restoreLayout(layout);
  rowsOfOther.create(fields());
  EXPECT_EQ(other.horizontalHeader()->visualIndex(other.columnOf(u"SL"_s)), 0);
  EXPECT_EQ(other.columnWidth(other.columnOf(u"WL_NAME"_s)), 222);
  EXPECT_EQ(rowsOfOther.sortField(), u"SL"_s);
  EXPECT_TRUE(rowsOfOther.sortDescending());
  EXPECT_TRUE(other.isColumnHidden(other.columnOf(u"COST"_s)));
}

TEST_F(GridTest, ADamagedLayoutChangesNothing) {
  grid.restoreLayout("{\"version\":1,\"columns\":[{\"field\":\"NONE\"},7");
  grid.restoreLayout("nonsense");
  EXPECT_EQ(grid.columnWidth(grid.columnOf(u"WL_NAME"_s)), 160);
}

TEST_F(GridTest, HeaderMenuHidesColumnsButShowsNoneThatTheScreenHides) {
  Q_EMIT grid.horizontalHeader()->customContextMenuRequested(QPoint(5, 5));
  auto* menu = grid.findChild<QMenu*>();
  ASSERT_NE(menu, nullptr);
  QStringList titles;
  for (const QAction* action : menu->actions()) {
    if (action->isCheckable()) titles << action->text();
  }
  EXPECT_EQ(titles.join(u' '), u"编号 名称 售价 SL 有效 多条码"_s);
  menu->actions().at(1)->trigger();
  EXPECT_TRUE(grid.isColumnHidden(grid.columnOf(u"WL_NAME"_s)));
  const QByteArray layout = grid.saveLayout();
  grid.setColumns(columns());
  EXPECT_FALSE(grid.isColumnHidden(grid.columnOf(u"WL_NAME"_s)));
  grid.restoreLayout(layout);
  EXPECT_TRUE(grid.isColumnHidden(grid.columnOf(u"WL_NAME"_s)));
  menu->close();
}

TEST_F(GridTest, RecordSetMayGoFirst) {
  auto* gone = new RecordSet;
  gone->create(fields());
  grid.setRecordSet(gone);
  delete gone;
  EXPECT_EQ(grid.recordSet(), nullptr);
  EXPECT_EQ(grid.model()->rowCount(), 0);
  QTest::keyClick(&grid, Qt::Key_Down);
  QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
  EXPECT_TRUE(grid.selectedRows().empty());
}

TEST_F(GridTest, EvenRowColourFitsLightAndDark) {
  grid.setEvenRowColor(QColor(0xF0, 0xF1, 0xF4));
  EXPECT_EQ(grid.viewport()->palette().color(QPalette::AlternateBase), QColor(0xF0, 0xF1, 0xF4));
  QPalette dark;
  dark.setColor(QPalette::Base, QColor(35, 35, 38));
  dark.setColor(QPalette::Text, Qt::white);
  grid.setPalette(dark);
  EXPECT_LT(grid.viewport()->palette().color(QPalette::AlternateBase).lightness(), 90);
}

TEST_F(GridTest, FooterSumsWhatIsThere) {
  grid.setFooterVisible(true);
  EXPECT_EQ(grid.footerText(u"SJ"_s), u"26.15"_s);
  EXPECT_EQ(grid.footerText(u"SL"_s), u"121"_s);
  EXPECT_EQ(grid.footerText(u"WL_NAME"_s), QString());
  ASSERT_TRUE(grid.editCell(0, u"SL"_s, u"11"_s));
  EXPECT_EQ(grid.footerText(u"SL"_s), u"122"_s);
  rows.moveTo(3);
  rows.remove();
  EXPECT_EQ(grid.footerText(u"SL"_s), u"113"_s);
  rows.clear();
  EXPECT_EQ(grid.footerText(u"SL"_s), u"0"_s);
}

TEST_F(GridTest, FewRowsStandAtTheTopAboveAFooter) {
  grid.resize(600, 400);
  grid.setFooterVisible(true);
  grid.show();
  QApplication::processEvents();
  EXPECT_EQ(grid.visualRect(grid.model()->index(0, 0)).top(), 0);
}

TEST_F(GridTest, FooterLeavesTheLastRowInSight) {
  grid.setFooterVisible(true);
  for (int i = 0; i < 40; ++i) add("X", "x", 1, 1, true);
  rows.last();
  QApplication::processEvents();
  const QRect last = grid.visualRect(grid.model()->index(rows.rowCount() - 1, 0));
  EXPECT_LE(last.bottom(), grid.viewport()->height());
  EXPECT_LT(grid.viewport()->geometry().bottom(), grid.height() - 15);
}

}  // namespace
}  // namespace goodsbook
