#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using ActionCommands = SampleScreenTest;

TEST_F(ActionCommands, ActionsTellCaptionHintAndShortcut) {
  const QJsonArray actions = done({{u"cmd"_s, u"actions"_s}})["actions"_L1].toArray();
  ASSERT_EQ(actions.size(), 2);
  EXPECT_EQ(actions[0].toObject(), (QJsonObject{{u"name"_s, u"Act_Add"_s},
                                                {u"caption"_s, u"增加(A)"_s},
                                                {u"hint"_s, u"增加一行"_s},
                                                {u"shortcut"_s, u"F6"_s},
                                                {u"enabled"_s, true},
                                                {u"visible"_s, true}}));
  EXPECT_EQ(actions[1]["enabled"_L1], false);
  EXPECT_EQ(actions[1]["visible"_L1], false);
}

TEST_F(ActionCommands, AnActionIsTriggeredOnce) {
  act(u"Act_Add"_s);
  onGui([this] { EXPECT_EQ(screen->addCalls, 1); });
}

TEST_F(ActionCommands, DisabledAndUnknownActionsAreNamed) {
  EXPECT_TRUE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_imp"_s}}).contains(u"Act_imp"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_None"_s}}).contains(u"Act_None"_s));
}

TEST_F(ActionCommands, AShortcutTriggersTheAction) {
  focus(u"Edit2"_s);
  press(u"F6"_s);
  onGui([this] { EXPECT_EQ(screen->addCalls, 1); });
}

}  // namespace
}  // namespace goodsbook
