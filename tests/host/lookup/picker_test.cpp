#include "host/lookup/picker.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "host/U_linkedit.h"
#include "host/controls/TDBGridEh.h"
#include "host/lookup/pickers.h"
#include "tests/host/data/test_session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class PickerTest : public testing::Test {
 protected:
  void SetUp() override {
    session.run(
        u"insert into D1004 (CLASS_ID,CLASS_NAME,OID,PYM) values('01','饮料','Z','YL');"
        "insert into D1004 (CLASS_ID,CLASS_NAME,OID,PYM) values('02','食品','Z','SP');"
        "insert into D1004 (CLASS_ID,CLASS_NAME,OID,PYM) values('0101','矿泉水','01','KQS');"
        "insert into D1004 (CLASS_ID,CLASS_NAME,OID,PYM) values('03','水产','Z','SC');"
        "insert into D1003 (dw_id,dw_name,pym) values('KG','公斤','GJ');"
        "insert into D1003 (dw_id,dw_name,pym) values('PC','个','G');"
        "insert into D1101 (YW_ID,YW_NAME,PYM,T) values('01','王芳','WF',0);"
        "insert into D1101 (YW_ID,YW_NAME,PYM,T) values('02','李强','LQ',1);"
        "insert into D6801 (km_id,km_name) values('1001','库存现金');"
        "insert into D6801 (km_id,km_name) values('1002','银行存款');"
        "insert into D6801 (km_id,km_name) values('100201','工商银行')"_s);
    session.session().takeStatements();
    column.addWidget(&code);
    column.addWidget(&name);
    column.addWidget(&next);
    code.setObjectName(u"CLASS_ID"_s);
    code.setNameLabel(&name);
    screen.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    code.setFocus();
  }

  static QString shown(LookupPicker& picker) {
    const RecordSet& rows = *list(picker)->recordSet();
    QStringList codes;
    for (int row = 0; row < rows.rowCount(); ++row) codes << rows.textAt(row, 0);
    return codes.join(u' ');
  }
  static QString current(LookupPicker& picker) {
    const RecordSet& rows = *list(picker)->recordSet();
    return rows.isEmpty() ? QString() : rows.textAt(rows.currentRow(), 0);
  }
  static TDBGridEh* list(LookupPicker& picker) { return picker.findChild<TDBGridEh*>(u"DBGridEh"_s); }
  static QLineEdit* search(LookupPicker& picker) { return picker.findChild<QLineEdit*>(u"Edit1"_s); }

  test::TestSession session;
  QWidget screen;
  QVBoxLayout column{&screen};
  TExtEdit code;
  QLabel name;
  TCustomDBEditEh next;
};

TEST_F(PickerTest, ButtonDropsItBelowTheEdit) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  QTest::mouseClick(code.button(), Qt::LeftButton);
  EXPECT_TRUE(picker.isVisible());
  EXPECT_FALSE(picker.isModal());
  EXPECT_EQ(shown(picker), u"01 0101 02 03"_s);
  EXPECT_EQ(current(picker), u"01"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return search(picker)->hasFocus(); }));
  EXPECT_TRUE(session.session().takeStatements().empty());
}

TEST_F(PickerTest, TypingNarrowsOverCodeNameAndInitialsBeginningsFirst) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.openPicker();
  QTest::keyClicks(search(picker), u"s"_s);
  EXPECT_EQ(shown(picker), u"02 03 0101"_s);
  QTest::keyClicks(search(picker), u"c"_s);
  EXPECT_EQ(shown(picker), u"03"_s);
  search(picker)->selectAll();
  QTest::keyClicks(search(picker), u"1"_s);
  EXPECT_EQ(shown(picker), u"01 0101"_s);
  search(picker)->selectAll();
  search(picker)->insert(u"水"_s);
  EXPECT_EQ(shown(picker), u"03 0101"_s);
  QTest::keyClicks(search(picker), u"!"_s);
  EXPECT_EQ(shown(picker), QString());
  QTest::keyClick(search(picker), Qt::Key_Return);
  EXPECT_TRUE(picker.isVisible());
}

TEST_F(PickerTest, ArrowsMoveAndReturnTakesTheRow) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.openPicker();
  QTest::keyClick(search(picker), Qt::Key_Down);
  QTest::keyClick(search(picker), Qt::Key_Down);
  QTest::keyClick(search(picker), Qt::Key_Down);
  QTest::keyClick(search(picker), Qt::Key_Up);
  EXPECT_TRUE(QTest::qWaitFor([&] { return search(picker)->hasFocus(); }));
  QTest::keyClick(search(picker), Qt::Key_Return);
  EXPECT_FALSE(picker.isVisible());
  EXPECT_EQ(code.text(), u"02"_s);
  EXPECT_EQ(name.text(), u"食品"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return next.hasFocus(); }));
}

TEST_F(PickerTest, DoubleClickTakesTheRow) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.openPicker();
  list(picker)->clickCell(1, u"CLASS_NAME"_s, true);
  EXPECT_EQ(code.text(), u"0101"_s);
  EXPECT_EQ(name.text(), u"矿泉水"_s);
  EXPECT_FALSE(picker.isVisible());
}

TEST_F(PickerTest, ReturnAndEscWorkInTheListToo) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.openPicker();
  list(picker)->setFocus();
  QTest::keyClick(list(picker), Qt::Key_Down);
  QTest::keyClick(list(picker), Qt::Key_Return);
  EXPECT_EQ(code.text(), u"0101"_s);
  code.openPicker();
  list(picker)->setFocus();
  QTest::keyClick(list(picker), Qt::Key_K);
  EXPECT_EQ(picker.focusWidget(), search(picker));
  EXPECT_EQ(shown(picker), u"0101"_s);
  QTest::keyClick(search(picker), Qt::Key_Escape);
  EXPECT_FALSE(picker.isVisible());
}

TEST_F(PickerTest, EscClosesAndChangesNothing) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.setText(u"02"_s);
  name.setText(u"食品"_s);
  code.openPicker();
  EXPECT_EQ(current(picker), u"02"_s);
  QTest::keyClick(search(picker), Qt::Key_Up);
  QTest::keyClick(search(picker), Qt::Key_Escape);
  EXPECT_FALSE(picker.isVisible());
  EXPECT_EQ(code.text(), u"02"_s);
  EXPECT_EQ(name.text(), u"食品"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return code.hasFocus(); }));
}

TEST_F(PickerTest, ATextThatIsNoCodeIsSearched) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.setText(u"KQ"_s);
  code.openPicker();
  EXPECT_EQ(search(picker)->text(), u"KQ"_s);
  EXPECT_EQ(shown(picker), u"0101"_s);
  QTest::keyClick(search(picker), Qt::Key_Escape);
  code.setText(u"nothing"_s);
  code.openPicker();
  EXPECT_EQ(search(picker)->text(), QString());
  EXPECT_EQ(shown(picker), u"01 0101 02 03"_s);
}

TEST_F(PickerTest, ClosesWhenTheUserGoesElsewhereButNotForItsEdit) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.openPicker();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&picker));
  screen.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
  EXPECT_TRUE(code.hasFocus());
  EXPECT_TRUE(picker.isVisible());
  next.setFocus();
  EXPECT_FALSE(picker.isVisible());
  code.openPicker();
  screen.hide();
  EXPECT_FALSE(picker.isVisible());
}

TEST_F(PickerTest, ReadOnlyEditsOpenNothing) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code);
  code.setReadOnly(true);
  QTest::mouseClick(code.button(), Qt::LeftButton);
  QTest::keyClick(&code, Qt::Key_F4);
  EXPECT_FALSE(picker.isVisible());
}

TEST_F(PickerTest, StaffThatLeftAreNotOfferedButHaveTheirName) {
  TFrm_Sys_LINK_YW picker(&screen);
  picker.init(&code);
  code.openPicker();
  EXPECT_EQ(shown(picker), u"01"_s);
  EXPECT_EQ(lookup::salespeople().nameOf(u"02"_s), u"李强"_s);
}

TEST_F(PickerTest, AConditionNarrowsTheRowsOffered) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code, u"OID='Z'"_s);
  code.openPicker();
  EXPECT_EQ(shown(picker), u"01 02 03"_s);
}

TEST_F(PickerTest, UnitsGoIntoARecordSetAsWell) {
  RecordSet lines;
  lines.create({{.name = u"DW_ID"_s, .size = 2}, {.name = u"dw_name"_s, .size = 6}});
  lines.append();
  TFrm_Sys_LINK_DW picker(&screen);
  picker.init(&lines, &name, &code, nullptr, u"DW_ID"_s, u"dw_name"_s, QString());
  code.openPicker();
  QTest::keyClicks(search(picker), u"pc"_s);
  QTest::keyClick(search(picker), Qt::Key_Return);
  EXPECT_EQ(code.text(), u"PC"_s);
  EXPECT_EQ(name.text(), u"个"_s);
  EXPECT_EQ(lines.text(u"dw_id"_s), u"PC"_s);
  EXPECT_EQ(lines.text(u"dw_name"_s), u"个"_s);
}

TEST_F(PickerTest, ACellOfAGridIsChosenFor) {
  RecordSet lines;
  lines.create({{.name = u"DW_ID"_s, .size = 2}, {.name = u"dw_name"_s, .size = 6}, {.name = u"TM"_s}});
  lines.append();
  lines.setValue(u"DW_ID"_s, u"PC"_s);
  lines.post();
  TDBGridEh grid(&screen);
  column.addWidget(&grid);
  grid.setColumns(
      {{.field = u"DW_ID"_s, .readOnly = false, .ellipsis = true}, {.field = u"TM"_s, .readOnly = false}});
  grid.setRecordSet(&lines);
  grid.setFocus();
  TFrm_Sys_LINK_DW picker(&screen);
  QObject::connect(&grid, &TDBGridEh::columnButtonClicked, &picker,
                   [&] { picker.showForCell(&grid, u"DW_ID"_s, u"dw_name"_s); });
  QTest::keyClick(&grid, Qt::Key_F4);
  ASSERT_TRUE(picker.isVisible());
  EXPECT_EQ(current(picker), u"PC"_s);
  QTest::keyClick(search(picker), Qt::Key_Up);
  QTest::keyClick(search(picker), Qt::Key_Return);
  EXPECT_EQ(lines.text(u"DW_ID"_s), u"KG"_s);
  EXPECT_EQ(lines.text(u"dw_name"_s), u"公斤"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return grid.hasFocus() && grid.selectedField() == u"TM"_s; }));
}

TEST_F(PickerTest, AFailingLookUpIsToldAndOpensNothing) {
  TFrm_Sys_LINK_CL picker(&screen);
  picker.init(&code, u"NO_SUCH_FIELD=1"_s);
  code.openPicker();
  EXPECT_FALSE(picker.isVisible());
  EXPECT_EQ(session.desktop().messages.size(), 1);
}

TEST_F(PickerTest, HintListOffersAnyTable) {
  const auto hint = [](QLineEdit& edit, RecordSet& rows, const QString& condition) {
    CommonHint(&edit, rows, u"km_name"_s, condition, u"d6801"_s, u"科目"_s, u"km_id"_s, u"科目编号"_s);
    return edit.findChild<LookupPicker*>();
  };
  RecordSet rows;
  hint(next, rows, u" km_id like '1002%'"_s);
  auto* picker = next.findChild<LookupPicker*>();
  ASSERT_NE(picker, nullptr);
  EXPECT_TRUE(picker->isVisible());
  EXPECT_EQ(shown(*picker), u"1002 100201"_s);
  EXPECT_EQ(rows.rowCount(), 2);
  EXPECT_EQ(list(*picker)->model()->headerData(0, Qt::Horizontal).toString(), u"科目编号"_s);
  QTest::keyClick(search(*picker), Qt::Key_Down);
  QTest::keyClick(search(*picker), Qt::Key_Return);
  EXPECT_EQ(next.text(), u"100201"_s);
  picker = hint(next, rows, u" km_id like '1001%'"_s);
  EXPECT_EQ(shown(*picker), u"1001"_s);
  QTest::keyClick(search(*picker), Qt::Key_Escape);
  EXPECT_EQ(next.text(), u"100201"_s);
  delete picker;
}

TEST_F(PickerTest, TablesWithoutInitialsAreFoundByThoseOfTheName) {
  session.run(u"insert into D1002 (ADDR_ID,ADDR_NAME,OID) values('01','华东','Z'),('02','华南','Z')"_s);
  LookupPicker regions(lookup::regions(), &screen);
  regions.attach(&code);
  regions.show();
  search(regions)->setFocus();
  QTest::keyClicks(search(regions), u"hn"_s);
  EXPECT_EQ(shown(regions), u"02"_s);
  QTest::keyClick(search(regions), Qt::Key_Escape);
  RecordSet rows;
  CommonHint(&next, rows, u"km_name"_s, {}, u"d6801"_s, u"科目"_s, u"km_id"_s, u"科目编号"_s);
  auto* ledger = next.findChild<LookupPicker*>();
  QTest::keyClicks(search(*ledger), u"yhck"_s);
  EXPECT_EQ(shown(*ledger), u"1002"_s);
  delete ledger;
}

TEST_F(PickerTest, EditsKnowTheirTableForTheCheck) {
  {
    TFrm_Sys_LINK_CL picker(&screen);
    picker.init(&code);
    ASSERT_NE(code.lookup(), nullptr);
    EXPECT_EQ(code.lookup()->nameOf(u" 0101 "_s), u"矿泉水"_s);
    EXPECT_EQ(code.lookup()->nameOf(u"99"_s), std::nullopt);
    EXPECT_EQ(code.lookup()->nameOf(u"0'1"_s), std::nullopt);
    EXPECT_EQ(code.lookup()->nameOf(QString()), std::nullopt);
  }
  EXPECT_EQ(code.lookup(), nullptr);
  EXPECT_EQ(code.picker(), nullptr);
}

TEST_F(PickerTest, AllTablesCanBeRead) {
  for (const LookupTable* table :
       {&lookup::categories(), &lookup::units(), &lookup::warehouses(), &lookup::departments(),
        &lookup::salespeople(), &lookup::regions(), &lookup::deliveryMethods()}) {
    EXPECT_NO_THROW(table->rows()) << table->table.toStdString();
    EXPECT_EQ(table->nameOf(u"??"_s), std::nullopt);
  }
}

TEST_F(PickerTest, TreesThatTurnInCirclesAreStillListedOnce) {
  session.run(
      u"insert into D1008 (BM_ID,BM_NAME,OID) values('A','甲','B');"
      "insert into D1008 (BM_ID,BM_NAME,OID) values('B','乙','A');"
      "insert into D1008 (BM_ID,BM_NAME,OID) values('C','丙','gone')"_s);
  QStringList codes;
  for (const LookupTable::Row& row : lookup::departments().rows())
    codes << row.id + QString::number(row.level);
  EXPECT_EQ(codes.join(u' '), u"C0 A0 B1"_s);
}

}  // namespace
}  // namespace goodsbook
