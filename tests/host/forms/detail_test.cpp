#include <QKeyEvent>

#include "host/forms/Base_detail.h"
#include "host/forms/form_builder.h"
#include "tests/host/forms/form_world.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Editor : public TFrm_Base_Detail {
 public:
  Editor() {
    FormBuilder(*this).fields({
        {.name = u"Edit1"_s, .label = u"单位编号"_s, .limit = 2, .upper = true, .column = u"dw_id"_s},
        {.name = u"Edit2"_s, .label = u"单位名称"_s, .limit = 6, .required = true, .column = u"dw_name"_s},
        {.name = u"hl"_s, .label = u"汇    率"_s, .kind = FieldKind::Number, .column = u"rate"_s},
        {.name = u"bw"_s, .label = u"本 位 币"_s, .kind = FieldKind::Check, .column = u"home"_s},
    });
    FormCreate();
  }
  void RefreshData() override {
    setLoading(true);
    firstFocus = isAdding() ? u"Edit1"_s : u"Edit2"_s;
    if (mode() == "Edit"_L1) lockedFields = u"EDIT1"_s;
    loadFields();
    if (refusesToOpen) throw EAbort();
    TFrm_Base_Detail::RefreshData();
  }
  void SaveData() override {
    ++saves;
    if (failure) throw EDatabaseError(2627, 14, 1, 1, u"编号重复"_s);
  }
  void showSaved() override {
    TFrm_Base_Detail::showSaved();
    if (failsAfterwards) throw EDatabaseError(50000, 16, 1, 1, u"图片未保存"_s);
  }
  using TFrm_Base_Detail::appendsRow;

  bool refusesToOpen = false;
  bool failure = false;
  bool failsAfterwards = false;
  int saves = 0;
};

class Details : public FormWorld {
 protected:
  Details() {
    rows.create({{.name = u"DW_ID"_s, .size = 2},
                 {.name = u"DW_NAME"_s, .size = 6},
                 {.name = u"RATE"_s, .type = FieldType::Float},
                 {.name = u"HOME"_s, .type = FieldType::Boolean}});
    add(u"KG"_s, u"公斤"_s, 1.5, true);
    add(u"PC"_s, u"个"_s, 2, false);
    rows.first();
  }
  void add(const QString& code, const QString& name, double rate, bool home) {
    rows.append();
    rows.setValue(u"dw_id"_s, code);
    rows.setValue(u"dw_name"_s, name);
    rows.setValue(u"rate"_s, rate);
    rows.setValue(u"home"_s, home);
    rows.post();
  }
  // What a user does in the editor after it opened.
  bool edit(const QString& mode, const std::function<void()>& script) {
    bool saved = false;
    whileModal([&] { saved = editor.InitForm(mode, rows); }, script);
    return saved;
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(editor.focusWidget(), key, modifiers);
  }
  void click(const char* name) {
    QTest::mouseClick(editor.elementNamed(QString::fromLatin1(name)), Qt::LeftButton);
  }
  void type(const char* name, const char* text) {
    QWidget* element = editor.elementNamed(QString::fromLatin1(name));
    element->setFocus();
    QTest::keyClick(element, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(element, QString::fromUtf8(text));
  }
  std::string focused() { return editor.focusWidget()->objectName().toStdString(); }
  std::string list() {
    std::string text;
    for (int row = 0; row < rows.rowCount(); ++row)
      text += (rows.textAt(row, 0) + u'=' + rows.textAt(row, 1) + u' ').toStdString();
    return text;
  }

  RecordSet rows;
  Editor editor;
};

TEST_F(Details, EditShowsTheRowLocksTheCodeAndStartsAtTheName) {
  edit(u"Edit"_s, [this] {
    EXPECT_EQ(editor.text(u"Edit1"_s), u"KG"_s);
    EXPECT_EQ(editor.text(u"Edit2"_s), u"公斤"_s);
    EXPECT_EQ(editor.text(u"hl"_s), u"1.5"_s);
    EXPECT_TRUE(editor.isChecked(u"bw"_s));
    EXPECT_TRUE(editor.edit(u"Edit1"_s)->isReadOnly());
    EXPECT_EQ(focused(), "Edit2");
    QTest::keyClick(editor.focusWidget(), Qt::Key_Backtab);
    EXPECT_NE(focused(), "Edit1");  // out of the tab order
    press(Qt::Key_Escape);
  });
}

TEST_F(Details, TheLockGoesWithTheMode) {
  edit(u"Edit"_s, [this] { press(Qt::Key_Escape); });
  edit(u"CopyAdd"_s, [this] {
    EXPECT_FALSE(editor.edit(u"Edit1"_s)->isReadOnly());
    EXPECT_EQ(focused(), "Edit1");
    EXPECT_EQ(editor.text(u"Edit2"_s), u"公斤"_s);
    press(Qt::Key_Escape);
  });
}

TEST_F(Details, AddStartsEmptyAndAppendsTheRow) {
  const bool saved = edit(u"Add"_s, [this] {
    EXPECT_EQ(editor.text(u"Edit2"_s), u""_s);
    EXPECT_FALSE(editor.isChecked(u"bw"_s));
    type("Edit1", "bx");
    press(Qt::Key_Return);
    QTest::keyClicks(editor.focusWidget(), u"box"_s);
    click("btn_ok");
  });
  EXPECT_TRUE(saved);
  EXPECT_EQ(list(), "KG=公斤 PC=个 BX=box ");
  EXPECT_EQ(rows.currentRow(), 2);
  EXPECT_TRUE(rows.isNull(u"rate"_s));
}

TEST_F(Details, AFailingAddLeavesNoRowAndKeepsTheInput) {
  editor.failure = true;
  const bool saved = edit(u"Add"_s, [this] {
    type("Edit1", "bx");
    type("Edit2", "box");
    click("btn_ok");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(editor.text(u"Edit2"_s), u"box"_s);
    EXPECT_EQ(list(), "KG=公斤 PC=个 ");
    EXPECT_EQ(rows.currentRow(), 0);
    EXPECT_EQ(rows.state(), RecordSet::State::Browse);
    click("btn_Cancel");
  });
  EXPECT_FALSE(saved);
  EXPECT_EQ(messages(), std::vector<std::string>{"编号重复"});
}

TEST_F(Details, ARowThatWasPostedBeforeTheFailureGoesToo) {
  editor.failsAfterwards = true;
  edit(u"Add"_s, [this] {
    type("Edit1", "bx");
    type("Edit2", "box");
    click("btn_ok");
    click("btn_Cancel");
  });
  EXPECT_EQ(list(), "KG=公斤 PC=个 ");
  EXPECT_EQ(messages(), std::vector<std::string>{"图片未保存"});
}

TEST_F(Details, WhatFailsBehindTheSaveIsMadeUpForWithoutASecondSave) {
  editor.failsAfterwards = true;
  edit(u"Add"_s, [this] {
    type("Edit1", "bx");
    type("Edit2", "box");
    click("btn_ok");
    editor.failsAfterwards = false;
    click("btn_ok");
  });
  EXPECT_EQ(list(), "KG=公斤 PC=个 BX=box ");
  EXPECT_EQ(editor.saves, 1);
  EXPECT_EQ(messages().size(), 1U);
}

TEST_F(Details, AFailingEditLeavesTheRowAsItWas) {
  editor.failure = true;
  edit(u"Edit"_s, [this] {
    type("Edit2", "kilo");
    press(Qt::Key_F9);
    click("btn_Cancel");
  });
  EXPECT_EQ(list(), "KG=公斤 PC=个 ");
  EXPECT_EQ(messages().size(), 1U);
}

TEST_F(Details, OkSavesTheRowOnce) {
  EXPECT_TRUE(edit(u"Edit"_s, [this] {
    type("Edit2", "kilo");
    press(Qt::Key_Return, Qt::ControlModifier);
  }));
  EXPECT_EQ(editor.saves, 1);
  EXPECT_EQ(list(), "KG=kilo PC=个 ");
}

TEST_F(Details, ABlankNameIsRefusedAtOk) {
  edit(u"Add"_s, [this] {
    type("Edit1", "bx");
    click("btn_ok");
    EXPECT_EQ(focused(), "Edit2");
    click("btn_Cancel");
  });
  EXPECT_EQ(messages(), std::vector<std::string>{"单位名称不能为空!"});
  EXPECT_EQ(editor.saves, 0);
}

TEST_F(Details, ReadOnlyShowsWithoutOk) {
  edit(u"ReadOnly"_s, [this] {
    EXPECT_FALSE(editor.elementNamed(u"btn_ok"_s)->isVisible());
    EXPECT_EQ(editor.elementNamed(u"btn_Cancel"_s)->toolTip(), u"关闭 (Esc)"_s);
    EXPECT_TRUE(editor.edit(u"Edit2"_s)->isReadOnly());
    EXPECT_FALSE(editor.checkBox(u"bw"_s)->isEnabled());
    press(Qt::Key_F9);
    press(Qt::Key_Escape);
  });
  EXPECT_EQ(editor.saves, 0);
}

TEST_F(Details, CancelDoesNotAsk) {
  edit(u"Edit"_s, [this] {
    type("Edit2", "kilo");
    click("btn_Cancel");
  });
  EXPECT_TRUE(messages().empty());
}

TEST_F(Details, EscAsksWhenSomethingWasTyped) {
  desktop().answers = {'n'};
  edit(u"Edit"_s, [this] {
    type("Edit2", "kilo");
    press(Qt::Key_Escape);
  });
  EXPECT_EQ(messages().size(), 1U);
  EXPECT_EQ(list(), "KG=公斤 PC=个 ");
}

TEST_F(Details, ClosingTheWindowCanStillSave) {
  desktop().answers = {'y'};
  edit(u"Edit"_s, [this] {
    type("Edit2", "kilo");
    editor.close();
  });
  EXPECT_EQ(list(), "KG=kilo PC=个 ");
}

TEST_F(Details, AnEditorThatRefusesDoesNotOpen) {
  editor.refusesToOpen = true;
  EXPECT_THROW(editor.InitForm(u"Edit"_s, rows), EAbort);
  EXPECT_FALSE(editor.isVisible());
  EXPECT_FALSE(editor.loading());
}

TEST_F(Details, ContinueAddOpensTheNextEmptyOne) {
  edit(u"Add"_s, [this] {
    editor.checkBox(u"ContinueAdd"_s)->setChecked(true);
    type("Edit1", "bx");
    type("Edit2", "box");
    click("btn_ok");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(editor.text(u"Edit2"_s), u""_s);
    EXPECT_EQ(focused(), "Edit1");
    press(Qt::Key_Escape);
  });
  EXPECT_EQ(list(), "KG=公斤 PC=个 BX=box ");
  edit(u"Add"_s, [this] {
    EXPECT_FALSE(editor.checkBox(u"ContinueAdd"_s)->isChecked()) << "each opening begins without";
    editor.close();
  });
}

TEST_F(Details, RowsThatAreNoListGetNoRowOfTheirOwn) {
  editor.appendsRow = false;
  editor.SetStatus(rows);
  EXPECT_EQ(editor.mode(), u"Add"_s);
  EXPECT_TRUE(editor.isVisible());
  EXPECT_EQ(list(), "KG=公斤 PC=个 ");
  editor.done(0);
}

}  // namespace
}  // namespace goodsbook
