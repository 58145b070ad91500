#include <QLineEdit>

#include "host/U_function.h"
#include "host/forms/Base_dialog.h"
#include "host/forms/form_builder.h"
#include "tests/host/forms/form_world.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// A code that must not be "BAD", a name that must not be blank, a button, OK and Cancel.
class Sample : public TFrm_Base_Dialog {
 public:
  Sample() {
    FormBuilder(*this).fields({
        {.name = u"Edit1"_s,
         .label = u"代    号"_s,
         .limit = 4,
         .upper = true,
         .exit = [this] { Edit1Exit(); },
         .code = true},
        {.name = u"Edit2"_s, .label = u"名称"_s, .limit = 6, .required = true},
        {.name = u"Edit3"_s, .label = u"备注"_s, .limit = 20},
        {.name = u"YS"_s, .label = u"有效"_s, .kind = FieldKind::Check},
    });
    extra = makeButton(u"BTN_CHANGE"_s, u"更改记录(F11)"_s);
    buttonRow()->insertWidget(0, extra);
    onClick(extra, [this] { ++extraClicks; });
    FormCreate();
    setText(u"Edit1"_s, u"OK"_s);
    setText(u"Edit2"_s, u"name"_s);
  }

  void Edit1Exit() {
    targets.push_back(focusTarget() ? focusTarget()->objectName().toStdString() : "");
    if (text(u"Edit1"_s) != "BAD"_L1) return;
    DISPINFO(u"编号已登记!"_s, 5);
    edit(u"Edit1"_s)->setFocus();
    throw EAbort();
  }
  void btn_okClick() override {
    TFrm_Base_Dialog::btn_okClick();
    ++accepted;
  }
  void btn_CancelClick() override {
    ++cancelled;
    TFrm_Base_Dialog::btn_CancelClick();
  }

  std::string focused() const {
    const QWidget* focus = focusWidget();
    return focus ? focus->objectName().toStdString() : "";
  }
  QWidget* at(const char* name) const { return elementNamed(QString::fromLatin1(name)); }

  std::vector<std::string> targets;  // of each run of Edit1Exit
  QPushButton* extra;
  int extraClicks = 0;
  int accepted = 0;
  int cancelled = 0;
};

class ExitChecks : public FormWorld {
 protected:
  void SetUp() override {
    show(screen);
    focus("Edit1");
    screen.targets.clear();
  }
  void focus(const char* name) { screen.at(name)->setFocus(); }
  void typeCode(const char* code) { screen.setText(u"Edit1"_s, QString::fromLatin1(code)); }
  void click(const char* name) { QTest::mouseClick(screen.at(name), Qt::LeftButton); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(screen.focusWidget(), key, modifiers);
  }

  using Names = std::vector<std::string>;
  Sample screen;
};

TEST_F(ExitChecks, TheCheckRunsWithTheTargetKnown) {
  focus("Edit3");
  EXPECT_EQ(screen.targets, Names{"Edit3"});
  EXPECT_EQ(screen.focused(), "Edit3");
  EXPECT_EQ(screen.focusTarget(), nullptr);
}

TEST_F(ExitChecks, AFailedCheckPutsTheFocusBackAndSaysSoOnce) {
  typeCode("BAD");
  focus("Edit2");
  EXPECT_EQ(screen.focused(), "Edit1");
  EXPECT_EQ(messages(), Names{"编号已登记!"});
}

TEST_F(ExitChecks, GoingBackDoesNotRunTheCheckOfTheFieldThatWasEnteredForAMoment) {
  screen.setText(u"Edit2"_s, u""_s);
  typeCode("BAD");
  focus("Edit2");
  EXPECT_EQ(messages(), Names{"编号已登记!"});
}

TEST_F(ExitChecks, CancelIsNeverHeldBack) {
  typeCode("BAD");
  click("btn_Cancel");
  EXPECT_EQ(messages(), Names{});
  EXPECT_EQ(screen.targets, Names{});
  EXPECT_EQ(screen.cancelled, 1);
  EXPECT_FALSE(screen.isVisible());
}

TEST_F(ExitChecks, EscLeavesWithoutACheck) {
  typeCode("BAD");
  press(Qt::Key_Escape);
  EXPECT_EQ(messages(), Names{});
  EXPECT_FALSE(screen.isVisible());
}

TEST_F(ExitChecks, OkByMouseRunsTheCheckOnceAndGoesOn) {
  click("btn_ok");
  EXPECT_EQ(screen.targets, Names{"btn_ok"});
  EXPECT_EQ(screen.accepted, 1);
}

TEST_F(ExitChecks, OkByMouseDoesNotGoOnAfterAFailedCheck) {
  typeCode("BAD");
  click("btn_ok");
  EXPECT_EQ(messages(), Names{"编号已登记!"});
  EXPECT_EQ(screen.accepted, 0);
  EXPECT_EQ(screen.focused(), "Edit1");
}

TEST_F(ExitChecks, TheNextClickAfterAFailedOneWorksAgain) {
  typeCode("BAD");
  click("btn_ok");
  typeCode("GOOD");
  click("btn_ok");
  EXPECT_EQ(screen.accepted, 1);
}

TEST_F(ExitChecks, OkByShortcutRunsTheCheckOnceAndGoesOn) {
  press(Qt::Key_F9);
  EXPECT_EQ(screen.targets, Names{"btn_ok"});
  press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(screen.accepted, 2);
}

TEST_F(ExitChecks, OkByShortcutDoesNotGoOnAfterAFailedCheck) {
  typeCode("BAD");
  press(Qt::Key_F9);
  EXPECT_EQ(messages(), Names{"编号已登记!"});
  EXPECT_EQ(screen.accepted, 0);
  EXPECT_EQ(screen.focused(), "Edit1");
}

TEST_F(ExitChecks, OkPressedByTheProgramRunsTheCheckToo) {
  typeCode("BAD");
  screen.element<QPushButton>(u"btn_ok"_s)->click();
  EXPECT_EQ(messages(), Names{"编号已登记!"});
  EXPECT_EQ(screen.accepted, 0);
}

TEST_F(ExitChecks, AClickOnAnotherButtonIsHeldBackByAFailedCheck) {
  typeCode("BAD");
  click("BTN_CHANGE");
  EXPECT_EQ(screen.extraClicks, 0);
  EXPECT_EQ(screen.focused(), "Edit1");
  typeCode("GOOD");
  click("BTN_CHANGE");
  EXPECT_EQ(screen.extraClicks, 1);
}

TEST_F(ExitChecks, AClickOnABoxIsHeldBackByAFailedCheck) {
  typeCode("BAD");
  QTest::mouseClick(screen.at("YS"), Qt::LeftButton, {}, QPoint(8, screen.at("YS")->height() / 2));
  EXPECT_FALSE(screen.isChecked(u"YS"_s));
}

TEST_F(ExitChecks, AMessageBoxThatTakesTheFocusStartsNoFurtherCheck) {
  desktop().whileShown = [] {
    QDialog box;
    QTimer::singleShot(0, &box, [&box] { box.accept(); });
    box.exec();
  };
  typeCode("BAD");
  focus("Edit2");
  EXPECT_EQ(messages(), Names{"编号已登记!"});
  EXPECT_EQ(screen.targets, Names{"Edit2"});
  EXPECT_EQ(screen.focused(), "Edit1");
}

TEST_F(ExitChecks, ABoxOverTheScreenRunsNoCheck) {
  typeCode("BAD");
  QDialog box(&screen);
  new QLineEdit(&box);
  show(box);
  box.done(0);
  EXPECT_EQ(screen.targets, Names{});
}

TEST_F(ExitChecks, OkMakesSureThatRequiredFieldsAreFilled) {
  screen.setText(u"Edit2"_s, u"  "_s);
  press(Qt::Key_F9);
  EXPECT_EQ(messages(), Names{"名称不能为空!"});
  EXPECT_EQ(screen.accepted, 0);
  EXPECT_EQ(screen.focused(), "Edit2");
}

TEST_F(ExitChecks, OkChecksACodeThatWasNeverLeft) {
  focus("btn_Cancel");
  typeCode("BAD");
  click("btn_ok");
  EXPECT_EQ(messages(), Names{"编号已登记!"});
  EXPECT_EQ(screen.accepted, 0);
  EXPECT_EQ(screen.focused(), "Edit1");
}

TEST_F(ExitChecks, EnterGoesFieldByFieldToOkAndPassesOtherButtons) {
  Names way;
  for (int i = 0; i < 4; ++i) {
    press(Qt::Key_Return);
    way.push_back(screen.focused());
  }
  EXPECT_EQ(way, (Names{"Edit2", "Edit3", "YS", "btn_ok"}));
  EXPECT_EQ(screen.accepted, 0);
  press(Qt::Key_Return);
  EXPECT_EQ(screen.accepted, 1);
}

TEST_F(ExitChecks, EnterStaysWhereTheCheckFails) {
  typeCode("BAD");
  press(Qt::Key_Return);
  EXPECT_EQ(screen.focused(), "Edit1");
}

TEST_F(ExitChecks, MessagesNameALabelWithoutItsInnerBlanks) {
  EXPECT_EQ(screen.labelOf(screen.at("Edit1")), u"代号"_s);
}

TEST_F(ExitChecks, ConditionsAreJoinedAndBlankValuesAddNothing) {
  screen.Condition_t(u"LIKE"_s, u"D1801.WL_GG"_s, u" 1L "_s);
  screen.Condition_t(u"="_s, u"D1801.CLASS_ID"_s, u"   "_s);
  screen.Condition_t(u"="_s, u"D1801.WL_YS"_s, u"1"_s);
  EXPECT_EQ(screen.conditionText, u"D1801.WL_GG LIKE '% 1L %' and D1801.WL_YS='1'"_s);
}

}  // namespace
}  // namespace goodsbook
