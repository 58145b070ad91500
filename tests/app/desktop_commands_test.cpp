#include <QElapsedTimer>

#include "app/driver/drive_desktop.h"
#include "host/U_function.h"
#include "host/session.h"
#include "tests/app/sample_screen.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using DesktopCommands = ScreenTest;

QJsonObject message(const QString& text, int kind, const QString& caption, const QString& answered) {
  return {{u"text"_s, text}, {u"kind"_s, kind}, {u"caption"_s, caption}, {u"answer"_s, answered}};
}

TEST_F(DesktopCommands, MessagesAreRecordedOnceInOrderWithTheirAnswers) {
  answer({u"y"_s, u"n"_s});
  onGui([] {
    DISPINFO(u"单位编号已登记!"_s, 5);
    EXPECT_EQ(DISPINFO(u"删除吗?"_s, 2), 'y');
    EXPECT_EQ(DISPINFO(u"继续吗?"_s, 2), 'n');
    plainBox(u"模块未制作105"_s);
  });
  EXPECT_EQ(
      done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray(),
      (QJsonArray{message(u"单位编号已登记!"_s, 5, u""_s, u""_s), message(u"删除吗?"_s, 2, u""_s, u"y"_s),
                  message(u"继续吗?"_s, 2, u""_s, u"n"_s), message(u"模块未制作105"_s, 0, u""_s, u""_s)}));
  EXPECT_EQ(done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray(), QJsonArray());
}

TEST_F(DesktopCommands, AQuestionWithoutAnAnswerIsAnsweredNo) {
  onGui([this] {
    EXPECT_EQ(DISPINFO(u"继续吗?"_s, 2), 'n');
    EXPECT_EQ(desktop().takeUnexpectedQuestions(), 1);
  });
}

TEST_F(DesktopCommands, OnlyYesAndNoAreAnswers) {
  EXPECT_TRUE(refused({{u"cmd"_s, u"answer"_s}, {u"answers"_s, QJsonArray{u"y"_s, u"maybe"_s}}})
                  .contains(u"maybe"_s));
  onGui([this] { EXPECT_EQ(desktop().takeUnused(), QStringList()); });
}

TEST_F(DesktopCommands, FilesAreHandedOutOneByOneAndThenDialogsAreCancelled) {
  done({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, u"/a.xls"_s}});
  done({{u"cmd"_s, u"pickfile"_s}, {u"path"_s, u"/b.xlsx"_s}});
  onGui([] {
    Desktop& desktop = Session::current().desktop();
    EXPECT_EQ(desktop.openFile(nullptr, {}, {}), u"/a.xls"_s);
    EXPECT_EQ(desktop.saveFile(nullptr, {}, {}, {}), u"/b.xlsx"_s);
    EXPECT_EQ(desktop.openFile(nullptr, {}, {}), u""_s);
  });
}

TEST_F(DesktopCommands, APrintTargetServesOnePrint) {
  done({{u"cmd"_s, u"printto"_s}, {u"path"_s, u"/list.pdf"_s}});
  onGui([] {
    EXPECT_EQ(Session::current().desktop().takePrintTarget(), u"/list.pdf"_s);
    EXPECT_EQ(Session::current().desktop().takePrintTarget(), u""_s);
  });
}

TEST_F(DesktopCommands, OpenedPagesAreRecorded) {
  onGui([] { Session::current().desktop().openUrl(u"http://www.example.com"_s); });
  EXPECT_EQ(done({{u"cmd"_s, u"opened"_s}})["urls"_L1].toArray(), QJsonArray{u"http://www.example.com"_s});
  EXPECT_EQ(done({{u"cmd"_s, u"opened"_s}})["urls"_L1].toArray(), QJsonArray());
}

TEST_F(DesktopCommands, WaitLetsTheProgramRun) {
  QElapsedTimer timer;
  timer.start();
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 120}});
  EXPECT_GE(timer.elapsed(), 115);
  EXPECT_TRUE(refused({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 10001}}).contains(u"10000"_s));
}

TEST_F(DesktopCommands, TheClockStartsWhereItWasToldAndRuns) {
  onGui([this] {
    const QDateTime start(QDate(2026, 11, 20), QTime(10, 11, 12));
    EXPECT_GE(desktop().now(), start);
    EXPECT_LT(desktop().now(), start.addSecs(60));
  });
  EXPECT_TRUE(sql(u"select GETDATE()"_s).at(0).at(0).startsWith(u"2026-11-20 10:1"_s));
}

}  // namespace
}  // namespace goodsbook
