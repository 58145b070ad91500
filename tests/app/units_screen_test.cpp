// The driver over a screen of the plug-in: the units of measure.
#include <algorithm>

#include "app/driver/screen_test.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using UnitsScreen = ScreenTest;

TEST_F(UnitsScreen, OpenTellsTheScreen) {
  const QJsonObject screen = open(103);
  EXPECT_EQ(screen["class"_L1], u"TF2103"_s);
  EXPECT_EQ(screen["caption"_L1], u"计量单位资料"_s);
  EXPECT_EQ(screen["tag"_L1], 103);
  EXPECT_EQ(screen["modal"_L1], false);
  EXPECT_EQ(screen["visible"_L1], true);
}

TEST_F(UnitsScreen, AModuleWithoutAScreenGivesNull) {
  const QJsonObject reply = done({{u"cmd"_s, u"open"_s}, {u"module"_s, 105}});
  EXPECT_TRUE(reply["screen"_L1].isNull());
  const QJsonArray shown = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  ASSERT_EQ(shown.size(), 1);
  EXPECT_EQ(shown[0]["text"_L1], u"模块未制作105"_s);
  EXPECT_EQ(shown[0]["kind"_L1], 0);
}

TEST_F(UnitsScreen, OpenTakesTheWholeCallRecord) {
  QJsonArray words;
  for (int i = 0; i < 28; ++i) words << (i == 24 ? 103 : 0x01010101);
  EXPECT_EQ(done({{u"cmd"_s, u"open"_s}, {u"words"_s, words}})["screen"_L1]["class"_L1], u"TF2103"_s);
  words.removeLast();
  EXPECT_TRUE(refused({{u"cmd"_s, u"open"_s}, {u"words"_s, words}}).contains(u"28"_s));
}

TEST_F(UnitsScreen, RightsThatAreNotGivenSwitchActionsOff) {
  open(103, {{u"add"_s, false}});
  EXPECT_TRUE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_Add"_s}}).contains(u"Act_Add"_s));
  EXPECT_TRUE(
      refused({{u"cmd"_s, u"open"_s}, {u"module"_s, 103}, {u"rights"_s, QJsonObject{{u"fly"_s, true}}}})
          .contains(u"fly"_s));
}

TEST_F(UnitsScreen, AddingAUnitSendsTheLookUpAndTheInsert) {
  open(103);
  statements();
  act(u"Act_Add"_s);
  type(u"Edit1"_s, u"kg"_s);
  type(u"Edit2"_s, u"公斤"_s);
  click(u"btn_ok"_s);
  const std::vector<QString> sent = statements();
  ASSERT_GE(sent.size(), 2U);
  EXPECT_EQ(sent[0], u"select * from d1003 where dw_id='KG'"_s);
  EXPECT_EQ(sent[1], u"insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('KG','公斤','GJ','')"_s);
  const QJsonArray list = rows(u"DBGridEh"_s);
  ASSERT_EQ(list.size(), 1);
  EXPECT_EQ(list[0]["DW_ID"_L1], u"KG"_s);
  EXPECT_EQ(list[0]["DW_NAME"_L1], u"公斤"_s);
}

TEST_F(UnitsScreen, DeletingAsksAndTakesTheQueuedAnswer) {
  sql(u"insert into D1003 (dw_id,dw_name) values ('KG',N'公斤')"_s);
  open(103);
  answer({u"n"_s, u"y"_s});
  act(u"Act_Delete"_s);
  EXPECT_EQ(sql(u"select count(*) from D1003"_s).at(0).at(0), u"1"_s);
  act(u"Act_Delete"_s);
  EXPECT_EQ(sql(u"select count(*) from D1003"_s).at(0).at(0), u"0"_s);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 0);
}

TEST_F(UnitsScreen, TheScreenThatIsClosedIsGone) {
  const int first = open(103)["id"_L1].toInt();
  const int second = open(103)["id"_L1].toInt();
  EXPECT_GT(second, first);
  done({{u"cmd"_s, u"close"_s}, {u"id"_s, first}});
  const QJsonArray left = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  ASSERT_EQ(left.size(), 1);
  EXPECT_EQ(left[0]["id"_L1], second);
}

TEST_F(UnitsScreen, AQuickEditorThatIsNotPublishedIsNamed) {
  EXPECT_TRUE(refused({{u"cmd"_s, u"purchase"_s}, {u"class"_s, u"TF9999"_s}}).contains(u"TF9999"_s));
}

}  // namespace
}  // namespace goodsbook
