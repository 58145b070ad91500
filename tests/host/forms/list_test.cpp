#include <QAction>
#include <QToolButton>

#include "host/forms/Base_detail.h"
#include "host/forms/Base_outer.h"
#include "host/forms/Base_qry.h"
#include "host/forms/Sys_filter.h"
#include "host/forms/form_builder.h"
#include "tests/host/forms/form_world.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Editor : public TFrm_Base_Detail {
 public:
  explicit Editor(QWidget* owner) : TFrm_Base_Detail(owner) {
    FormBuilder(*this).fields({{.name = u"Edit1"_s, .label = u"编号"_s, .column = u"dw_id"_s},
                               {.name = u"Edit2"_s, .label = u"名称"_s, .column = u"dw_name"_s}});
    FormCreate();
  }
  void RefreshData() override {
    opened.push_back(mode().toStdString());
    loadFields();
    TFrm_Base_Detail::RefreshData();
  }
  void SaveData() override {}
  std::vector<std::string> opened;
};

class Filter : public TFrm_Sys_Filter {
 public:
  explicit Filter(QWidget* owner) : TFrm_Sys_Filter(owner) {
    FormBuilder(*this).fields({{.name = u"Edit1"_s, .label = u"名称"_s, .limit = 20}});
    FormCreate();
  }
  void btn_okClick() override {
    TFrm_Sys_Filter::btn_okClick();
    resetCondition();
    Condition_t(u"LIKE"_s, u"dw_name"_s, text(u"Edit1"_s));
    if (!conditionText.isEmpty()) displayText = u" ●名称 包含 "_s + text(u"Edit1"_s);
    setModalResult(1);
  }
};

// A list whose rows come from the test instead of a database.
class List : public TFrm_Base_Outer {
 public:
  List() {
    setWindowTitle(u"计量单位资料"_s);
    setColumns({{.field = u"dw_id"_s, .title = u"单位编号"_s}, {.field = u"dw_name"_s, .title = u"单位"_s}});
    FormCreate();
  }
  void InitForm(const Trecord& record) override {
    TFrm_Base_Outer::InitForm(record);
    SetBodyParam(bodyparam::make({{bodyparam::keyField, u"DW_id"_s}, {bodyparam::moneyColumns, u"price"_s}}));
    editor = new Editor(this);
    editor->SetBodyParam(bodyparam::make({}));
    setEditor(editor);
    filter = new Filter(this);
    filter->InitForm();
    setFilterDialog(filter);
  }
  void GetData() override {
    ++loads;
    if (failure) throw EDatabaseError(102, 15, 1, 1, u"语句有误"_s);
    AdoQry_Main.create(
        {{.name = u"dw_id"_s}, {.name = u"dw_name"_s}, {.name = u"price"_s, .type = FieldType::Float}});
    for (const auto& [code, name] : data) {
      AdoQry_Main.append();
      AdoQry_Main.setValue(u"dw_id"_s, code);
      AdoQry_Main.setValue(u"dw_name"_s, name);
      AdoQry_Main.setValue(u"price"_s, 2.5);
      AdoQry_Main.post();
    }
    AdoQry_Main.first();
  }
  using TFrm_Base_Outer::hideColumns;

  std::vector<std::pair<QString, QString>> data{{u"BX"_s, u"箱"_s}, {u"KG"_s, u"公斤"_s}, {u"PC"_s, u"个"_s}};
  Editor* editor = nullptr;
  Filter* filter = nullptr;
  int loads = 0;
  bool failure = false;
};

class Lists : public FormWorld {
 protected:
  ~Lists() override { delete list; }

  static Trecord record(std::initializer_list<Trecord::RightByte> rights) {
    Trecord made;
    made.setModule(103);
    for (const Trecord::RightByte right : rights) made.setRight(right, true);
    return made;
  }
  static Trecord everyRight() {
    return record({Trecord::addRight, Trecord::editRight, Trecord::deleteRight, Trecord::printRight,
                   Trecord::exportRight, Trecord::costRight});
  }
  void open(const Trecord& given = everyRight()) {
    list->InitForm(given);
    activate(*list);
    ASSERT_TRUE(QTest::qWaitFor([this] { return list->loads > 0; }));
    QCoreApplication::processEvents();
  }
  bool enabled(const char* name) { return list->action(QString::fromLatin1(name))->isEnabled(); }
  void act(const char* name) { list->action(QString::fromLatin1(name))->trigger(); }
  QString count() { return list->label(u"RecordCount"_s)->text(); }

  QPointer<List> list = new List;
};

TEST_F(Lists, RowsAreLoadedOnceTheScreenIsSetUp) {
  list->InitForm(everyRight());
  EXPECT_EQ(list->loads, 0);
  EXPECT_TRUE(list->isVisible());
  ASSERT_TRUE(QTest::qWaitFor([this] { return list->loads > 0; }));
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
  EXPECT_EQ(list->moduleCode(), u"103"_s);
  EXPECT_EQ(list->Tag, 103);
}

TEST_F(Lists, TheStatusLineCounts) {
  open();
  EXPECT_EQ(count(), u"共 3 行"_s);
  list->DBGridEh->selectRow(0);
  list->DBGridEh->selectRow(2);
  QCoreApplication::processEvents();
  EXPECT_EQ(count(), u"共 3 行，已选 2 行"_s);
  list->DBGridEh->clearSelectedRows();
  QCoreApplication::processEvents();
  EXPECT_EQ(count(), u"共 3 行"_s);
}

TEST_F(Lists, MoneyColumnsTakeThePriceFormat) {
  open();
  EXPECT_EQ(list->AdoQry_Main.text(u"price"_s), u"2.50"_s);
}

TEST_F(Lists, RightsDecideWhatCanBeDone) {
  open(record({Trecord::editRight}));
  EXPECT_FALSE(enabled("Act_Add"));
  EXPECT_FALSE(enabled("Act_CopyAdd"));
  EXPECT_TRUE(enabled("Act_Edit"));
  EXPECT_TRUE(enabled("Act_View"));
  EXPECT_FALSE(enabled("Act_Delete"));
  EXPECT_FALSE(enabled("Act_Print"));
  EXPECT_FALSE(enabled("Act_Export"));
}

TEST_F(Lists, AnEmptyListOffersOnlyToAdd) {
  list->data.clear();
  open();
  EXPECT_TRUE(enabled("Act_Add"));
  for (const char* name : {"Act_CopyAdd", "Act_Edit", "Act_View", "Act_Delete"})
    EXPECT_FALSE(enabled(name)) << name;
}

TEST_F(Lists, EveryShownActionNamesItsShortcut) {
  open();
  for (const QAction* action : list->actions()) {
    EXPECT_FALSE(action->shortcut().isEmpty()) << action->text().toStdString();
    EXPECT_TRUE(action->toolTip().contains(action->shortcut().toString(QKeySequence::NativeText)));
  }
  EXPECT_FALSE(list->action(u"Act_Other"_s)->isVisible());
  EXPECT_FALSE(list->action(u"Act_Other"_s)->isEnabled());
}

TEST_F(Lists, DeletingAsksForTheRowAndNoLeavesIt) {
  open();
  list->AdoQry_Main.moveTo(1);
  desktop().answers = {'n'};
  act("Act_Delete");
  EXPECT_EQ(messages(), std::vector<std::string>{"是否删除【KG 公斤】?"});
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
}

TEST_F(Lists, EnterChangesTheRowOrShowsItWithoutTheRight) {
  open();
  whileModal([this] { QTest::keyClick(list->DBGridEh, Qt::Key_Return); },
             [this] { QTest::keyClick(list->editor->focusWidget(), Qt::Key_Escape); });
  EXPECT_EQ(list->editor->opened, std::vector<std::string>{"Edit"});
  delete list;
  list = new List;
  open(record({}));
  whileModal([this] { QTest::keyClick(list->DBGridEh, Qt::Key_Return); },
             [this] { QTest::keyClick(list->editor->focusWidget(), Qt::Key_Escape); });
  EXPECT_EQ(list->editor->opened, std::vector<std::string>{"ReadOnly"});
}

TEST_F(Lists, AnAddedRowIsCurrentAndCounted) {
  open();
  whileModal([this] { act("Act_Add"); },
             [this] {
               list->editor->setText(u"Edit1"_s, u"T"_s);
               QTest::keyClick(list->editor->focusWidget(), Qt::Key_F9);
             });
  QCoreApplication::processEvents();
  EXPECT_EQ(list->AdoQry_Main.text(u"dw_id"_s), u"T"_s);
  EXPECT_EQ(count(), u"共 4 行"_s);
}

TEST_F(Lists, RefreshKeepsTheCurrentRowByItsKey) {
  open();
  list->AdoQry_Main.moveTo(1);
  list->data.insert(list->data.begin(), {u"AA"_s, u"新"_s});
  QTest::keyClick(list->DBGridEh, Qt::Key_F5);
  EXPECT_EQ(list->AdoQry_Main.currentRow(), 2);
  EXPECT_EQ(list->AdoQry_Main.text(u"dw_id"_s), u"KG"_s);
}

TEST_F(Lists, TheFilterNarrowsAndOneClickClearsIt) {
  open();
  auto* clears = list->element<QToolButton>(u"btn_ClearFilter"_s);
  EXPECT_FALSE(clears->isVisible());
  whileModal([this] { act("Act_Filter"); },
             [this] {
               list->filter->setText(u"Edit1"_s, u"公"_s);
               QTest::mouseClick(list->filter->elementNamed(u"btn_ok"_s), Qt::LeftButton);
             });
  EXPECT_EQ(list->conditionText(), u"dw_name LIKE '%公%'"_s);
  EXPECT_EQ(list->label(u"FilterText"_s)->text(), u" ●名称 包含 公"_s);
  EXPECT_EQ(list->loads, 2);
  EXPECT_TRUE(clears->isVisible());
  QTest::mouseClick(clears, Qt::LeftButton);
  EXPECT_EQ(list->conditionText(), u""_s);
  EXPECT_FALSE(clears->isVisible());
  EXPECT_EQ(list->loads, 3);
}

TEST_F(Lists, ACancelledFilterLoadsNothing) {
  open();
  whileModal([this] { act("Act_Filter"); },
             [this] { QTest::keyClick(list->filter->focusWidget(), Qt::Key_Escape); });
  EXPECT_EQ(list->loads, 1);
}

TEST_F(Lists, AConditionThatTheDatabaseRefusesIsDroppedAgain) {
  open();
  list->failure = true;
  whileModal([this] { act("Act_Filter"); },
             [this] {
               list->filter->setText(u"Edit1"_s, u"'"_s);
               QTest::keyClick(list->filter->focusWidget(), Qt::Key_F9);
             });
  EXPECT_EQ(messages(), std::vector<std::string>{"语句有误"});
  EXPECT_EQ(list->conditionText(), u""_s);
  EXPECT_EQ(list->AdoQry_Main.rowCount(), 3);
}

TEST_F(Lists, HiddenColumnsAreGone) {
  open();
  list->hideColumns(u"DW_NAME, dj"_s);
  EXPECT_EQ(list->DBGridEh->columnOf(u"dw_name"_s), -1);
  EXPECT_EQ(list->DBGridEh->columnOf(u"dw_id"_s), 0);
}

TEST_F(Lists, AClosedListGoesAwayAndLeavesTheRegister) {
  open();
  const int id = list->screenId();
  QTest::keyClick(list->DBGridEh, Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitFor([this] { return list.isNull(); }));
  for (const TFrm_Base* screen : TFrm_Base::all()) EXPECT_NE(screen->screenId(), id);
}

}  // namespace
}  // namespace goodsbook
