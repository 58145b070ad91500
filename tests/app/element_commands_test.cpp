#include <QCheckBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QTabWidget>

#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using ElementCommands = SampleScreenTest;

QJsonObject named(const QString& command, const QString& element) {
  return {{u"cmd"_s, command}, {u"element"_s, element}};
}

QJsonObject typing(const QString& element, const QString& text) {
  return {{u"cmd"_s, u"type"_s}, {u"element"_s, element}, {u"text"_s, text}};
}

TEST_F(ElementCommands, GetTellsEverythingAboutAnEdit) {
  type(u"Edit1"_s, u"kg"_s);
  EXPECT_EQ(get(u"Edit1"_s), (QJsonObject{{u"ok"_s, true},
                                          {u"name"_s, u"Edit1"_s},
                                          {u"class"_s, u"TCustomDBEditEh"_s},
                                          {u"text"_s, u"KG"_s},
                                          {u"checked"_s, QJsonValue::Null},
                                          {u"enabled"_s, true},
                                          {u"visible"_s, true},
                                          {u"readonly"_s, false},
                                          {u"focused"_s, true},
                                          {u"maxlength"_s, 4},
                                          {u"title"_s, u"编号"_s}}));
}

TEST_F(ElementCommands, GetKeepsBlanksOfTitlesAndDropsMnemonics) {
  EXPECT_EQ(get(u"Edit2"_s)["title"_L1], u"名    称"_s);
  EXPECT_EQ(get(u"Edit2"_s)["maxlength"_L1], QJsonValue::Null);
  EXPECT_EQ(text(u"YS"_s), u"有效(V)"_s);
}

TEST_F(ElementCommands, HiddenAndLockedElementsAnswerToo) {
  const QJsonObject hidden = get(u"Hidden"_s);
  EXPECT_EQ(hidden["text"_L1], u"看不见"_s);
  EXPECT_EQ(hidden["visible"_L1], false);
  EXPECT_EQ(get(u"Locked"_s)["readonly"_L1], true);
  EXPECT_EQ(get(u"btn_off"_s)["enabled"_L1], false);
}

TEST_F(ElementCommands, ElementsListsThePartsOfTheWindowAndNotThoseOfItsDialogs) {
  QStringList names;
  const QJsonArray list = done({{u"cmd"_s, u"elements"_s}})["elements"_L1].toArray();
  for (const QJsonValue& element : list) names << element["name"_L1].toString();
  for (const char* name : {"Edit1", "Edit2", "NOTE", "YS", "btn_ask", "DBGridEh", "TreeView", "Hidden"}) {
    EXPECT_TRUE(names.contains(QLatin1StringView(name))) << name;
  }
  EXPECT_FALSE(names.contains(u"Edit9"_s));
}

TEST_F(ElementCommands, UnknownElementsAreNamed) {
  for (const char* command : {"get", "focus", "click"}) {
    EXPECT_TRUE(refused(named(QLatin1StringView(command), u"Edit77"_s)).contains(u"Edit77"_s)) << command;
  }
  EXPECT_TRUE(refused(named(u"get"_s, u"Edit9"_s)).contains(u"Edit9"_s)) << "an element of another window";
}

TEST_F(ElementCommands, ANameThatDiffersInCaseOnlyIsFound) {
  EXPECT_EQ(get(u"edit1"_s)["name"_L1], u"Edit1"_s);
}

TEST_F(ElementCommands, TypeReplacesTheTextKeyByKey) {
  EXPECT_EQ(type(u"Edit2"_s, u"公斤 (1/2)"_s), u"公斤 (1/2)"_s);
  EXPECT_EQ(type(u"Edit2"_s, u"𠮷野 Aa"_s), u"𠮷野 Aa"_s);
  EXPECT_EQ(type(u"Edit2"_s, u""_s), u""_s);
}

TEST_F(ElementCommands, LimitsAndUpperCasingApplyToTyping) {
  EXPECT_EQ(type(u"Edit1"_s, u"abcdef"_s), u"ABCD"_s);
}

TEST_F(ElementCommands, NewLinesAreTypedIntoAMemo) {
  EXPECT_EQ(type(u"NOTE"_s, u"一\n二"_s), u"一\n二"_s);
}

TEST_F(ElementCommands, TypeLeavesTheFocusInTheElement) {
  type(u"Edit2"_s, u"x"_s);
  EXPECT_EQ(get(u"Edit2"_s)["focused"_L1], true);
}

TEST_F(ElementCommands, WhatCannotBeTypedIntoIsRefused) {
  EXPECT_TRUE(refused(typing(u"Locked"_s, u"x"_s)).contains(u"Locked"_s));
  EXPECT_TRUE(refused(typing(u"btn_ask"_s, u"x"_s)).contains(u"btn_ask"_s));
  EXPECT_TRUE(refused(typing(u"Hidden"_s, u"x"_s)).contains(u"Hidden"_s));
  EXPECT_EQ(text(u"Locked"_s), u"固定"_s);
}

TEST_F(ElementCommands, AFieldThatKeepsTheFocusKeepsOtherFieldsFromBeingTypedInto) {
  onGui([this] { screen->keepFocusInCode = true; });
  type(u"Edit1"_s, u"A"_s);
  EXPECT_TRUE(refused(typing(u"Edit2"_s, u"x"_s)).contains(u"Edit2"_s));
  EXPECT_EQ(text(u"Edit2"_s), u""_s);
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit1"_s);
}

TEST_F(ElementCommands, FocusTellsWhereTheFocusIs) {
  EXPECT_EQ(focus(u"Edit2"_s), u"Edit2"_s);
  EXPECT_EQ(focus(u"DBGridEh"_s), u"DBGridEh"_s);
  EXPECT_TRUE(refused(named(u"focus"_s, u"btn_off"_s)).contains(u"btn_off"_s));
}

TEST_F(ElementCommands, CheckClicksOnlyWhatDiffers) {
  const auto check = [this](const QString& element, bool on) {
    done({{u"cmd"_s, u"check"_s}, {u"element"_s, element}, {u"on"_s, on}});
    return get(element)["checked"_L1];
  };
  EXPECT_EQ(check(u"YS"_s, true), true);
  EXPECT_EQ(check(u"YS"_s, true), true);
  EXPECT_EQ(check(u"YS"_s, false), false);
  EXPECT_EQ(check(u"Options"_s, true), true);
  EXPECT_TRUE(
      refused({{u"cmd"_s, u"check"_s}, {u"element"_s, u"Edit1"_s}, {u"on"_s, true}}).contains(u"Edit1"_s));
}

TEST_F(ElementCommands, ABoxThatDoesNotChangeIsTold) {
  onGui([this] {
    QObject::connect(screen->valid, &QCheckBox::clicked, screen,
                     [this] { screen->valid->setChecked(false); });
  });
  EXPECT_EQ(refused({{u"cmd"_s, u"check"_s}, {u"element"_s, u"YS"_s}, {u"on"_s, true}}),
            u"元素 YS 没有改变"_s);
}

using RealScreen = ScreenTest;

TEST_F(RealScreen, AFieldThatKeepsTheFocusKeepsABoxFromChanging) {
  open(125);
  act(u"Act_Add"_s);
  focus(u"Edit1"_s);
  EXPECT_EQ(refused({{u"cmd"_s, u"check"_s}, {u"element"_s, u"hb_bw"_s}, {u"on"_s, true}}),
            u"元素 hb_bw 没有改变"_s);
  EXPECT_EQ(messages().size(), 1);
  EXPECT_EQ(get(u"hb_bw"_s)["checked"_L1], false);
}

TEST_F(ElementCommands, ClickPressesAButton) {
  click(u"btn_ask"_s);
  onGui([this] { EXPECT_EQ(screen->clicks, 1); });
  EXPECT_TRUE(refused(named(u"click"_s, u"btn_off"_s)).contains(u"btn_off"_s));
}

TEST_F(ElementCommands, PressGoesToTheElementWithTheFocus) {
  type(u"Edit2"_s, u"abc"_s);
  press(u"Backspace"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"ab"_s);
  press(u"Home"_s);
  press(u"Shift+X"_s);
  EXPECT_EQ(text(u"Edit2"_s), u"Xab"_s);
  press(u"Ctrl+A"_s);
  press(u"Del"_s);
  EXPECT_EQ(text(u"Edit2"_s), u""_s);
  focus(u"btn_ask"_s);
  press(u"Space"_s);
  onGui([this] { EXPECT_EQ(screen->clicks, 1); });
}

TEST_F(ElementCommands, APageBehindATabComesUpForItsElement) {
  onGui([this] {
    auto* tabs = new QTabWidget(screen);
    tabs->addTab(new QWidget, u"一"_s);
    auto* page = new QWidget;
    tabs->addTab(page, u"二"_s);
    auto* behind = new QLineEdit(page);
    behind->setObjectName(u"Behind"_s);
    tabs->resize(300, 100);
    tabs->show();
  });
  EXPECT_EQ(get(u"Behind"_s)["visible"_L1], false);
  EXPECT_EQ(type(u"Behind"_s, u"x"_s), u"x"_s);
  EXPECT_EQ(get(u"Behind"_s)["visible"_L1], true);
}

TEST_F(ElementCommands, PressRefusesWhatIsNoKey) {
  EXPECT_TRUE(refused({{u"cmd"_s, u"press"_s}, {u"keys"_s, u"Ctrl+Nonsense"_s}}).contains(u"Nonsense"_s));
}

}  // namespace
}  // namespace goodsbook
