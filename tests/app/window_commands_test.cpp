#include <QImage>

#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using WindowCommands = SampleScreenTest;

QJsonObject useWindow(int id) {
  return {{u"cmd"_s, u"use"_s}, {u"id"_s, id}};
}

TEST_F(WindowCommands, ScreensListsOpenWindowsNewestLast) {
  const QJsonArray before = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  ASSERT_EQ(before.size(), 1) << "the dialog that is not shown is not open";
  EXPECT_EQ(before[0].toObject(), (QJsonObject{{u"class"_s, u"SampleScreen"_s},
                                               {u"caption"_s, u"样例窗口 "_s},
                                               {u"tag"_s, 999},
                                               {u"modal"_s, false},
                                               {u"visible"_s, true},
                                               {u"id"_s, screenId}}));
  act(u"Act_Add"_s);
  const QJsonArray during = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  ASSERT_EQ(during.size(), 2);
  EXPECT_EQ(during[1]["caption"_L1], u"样例对话框"_s);
  EXPECT_EQ(during[1]["modal"_L1], true);
}

TEST_F(WindowCommands, ADialogThatIsOpenedLastIsListedLastWhereverItWasMade) {
  onGui([this] {
    auto* second = new SampleScreen(driver().owner());
    second->setAttribute(Qt::WA_DeleteOnClose);
    second->show();
  });
  done(useWindow(screenId));
  act(u"Act_Add"_s);
  const QJsonArray open = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  ASSERT_EQ(open.size(), 3);
  EXPECT_EQ(open[2]["caption"_L1], u"样例对话框"_s);
  EXPECT_LT(open[2]["id"_L1].toInt(), open[1]["id"_L1].toInt()) << "it was made before the second window";
}

TEST_F(WindowCommands, AScreenIsOpenedByItsModuleOrByAWholeRecord) {
  QJsonArray words;
  for (int i = 0; i < 28; ++i) words.append(0);
  EXPECT_EQ(refused({{u"cmd"_s, u"open"_s}, {u"module"_s, 103}, {u"words"_s, words}}),
            u"module 和 words 只能给出一个"_s);
  EXPECT_EQ(done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().size(), 1);
}

TEST_F(WindowCommands, AModalDialogIsAddressedWhileItShows) {
  act(u"Act_Add"_s);
  EXPECT_EQ(type(u"Edit9"_s, u"x"_s), u"x"_s);
  click(u"btn_ok"_s);
  EXPECT_EQ(type(u"Edit2"_s, u"y"_s), u"y"_s);
  onGui([this] { EXPECT_EQ(screen->dialogResult, QDialog::Accepted); });
}

TEST_F(WindowCommands, UseReachesAWindowBehindAndADialogGoesBeforeIt) {
  int secondId = 0;
  onGui([&] {
    auto* second = new SampleScreen(driver().owner());
    second->setAttribute(Qt::WA_DeleteOnClose);
    second->show();
    secondId = second->screenId();
    second->name->setText(u"第二个"_s);
  });
  EXPECT_EQ(text(u"Edit2"_s), u"第二个"_s) << "the newest is addressed";
  done(useWindow(screenId));
  EXPECT_EQ(text(u"Edit2"_s), u""_s);
  act(u"Act_Add"_s);
  EXPECT_EQ(get(u"Edit9"_s)["ok"_L1], true);
  press(u"Esc"_s);
  EXPECT_EQ(text(u"Edit2"_s), u""_s) << "the chosen window again";
  done({{u"cmd"_s, u"close"_s}, {u"id"_s, secondId}});
}

TEST_F(WindowCommands, AWindowBehindADialogCanBeReadButNotWorkedIn) {
  act(u"Act_Add"_s);
  done(useWindow(screenId));
  EXPECT_EQ(text(u"Locked"_s), u"固定"_s);
  EXPECT_TRUE(refused({{u"cmd"_s, u"click"_s}, {u"element"_s, u"btn_ask"_s}}).contains(u"SampleScreen"_s));
}

TEST_F(WindowCommands, UnknownWindowsAreNamed) {
  EXPECT_TRUE(refused(useWindow(123456)).contains(u"123456"_s));
  EXPECT_TRUE(refused({{u"cmd"_s, u"close"_s}, {u"id"_s, 123456}}).contains(u"123456"_s));
}

TEST_F(WindowCommands, CloseClosesAndWithoutWindowsCommandsSaySo) {
  done({{u"cmd"_s, u"close"_s}});
  EXPECT_EQ(done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray().size(), 0);
  EXPECT_NE(refused({{u"cmd"_s, u"elements"_s}}), u""_s);
}

class Pickers : public SampleScreenTest {
 protected:
  void openPicker() {
    sql(u"insert into D1004 values ('01',N'食品','','Z','SP'),('02',N'百货','','Z','BH')"_s);
    act(u"Act_Add"_s);
    click(u"CLASS_ID.button"_s);
    ASSERT_EQ(frontClass(), u"TFrm_Sys_LINK_CL"_s);
  }
};

TEST_F(Pickers, TheButtonInAnEditDropsAWindowOfItsOwn) {
  openPicker();
  const QJsonArray open = done({{u"cmd"_s, u"screens"_s}})["screens"_L1].toArray();
  EXPECT_EQ(open.size(), 3);
  EXPECT_EQ(rows(u"DBGridEh"_s).size(), 2);
}

TEST_F(Pickers, ReturnTakesTheRowThatTheSearchFound) {
  openPicker();
  type(u"Edit1"_s, u"bh"_s);
  press(u"Return"_s);
  EXPECT_EQ(frontClass(), u"TFrm_Base"_s);
  EXPECT_EQ(text(u"CLASS_ID"_s), u"02"_s);
}

TEST_F(Pickers, EscClosesThePickerAndNotTheDialog) {
  openPicker();
  press(u"Esc"_s);
  EXPECT_EQ(frontClass(), u"TFrm_Base"_s);
  EXPECT_EQ(text(u"CLASS_ID"_s), u""_s);
}

TEST_F(WindowCommands, ScreenshotsAreOfTheWindowOrOneElement) {
  const QString path = folder() + u"/shot.png"_s;
  done({{u"cmd"_s, u"screenshot"_s}, {u"path"_s, path}});
  EXPECT_EQ(QImage(path).size(), QSize(640, 700));
  done({{u"cmd"_s, u"screenshot"_s}, {u"path"_s, path}, {u"element"_s, u"Edit1"_s}});
  EXPECT_LT(QImage(path).height(), 60);
  const QString nowhere = folder() + u"/none/shot.png"_s;
  EXPECT_TRUE(refused({{u"cmd"_s, u"screenshot"_s}, {u"path"_s, nowhere}}).contains(nowhere));
}

TEST_F(WindowCommands, ClosingAWindowAtTheEndUnwindsItsDialogs) {
  act(u"Act_Add"_s);
  EXPECT_EQ(frontClass(), u"TFrm_Base"_s);
}

}  // namespace
}  // namespace goodsbook
