// `goodsbook drive` as a script sees it: another process at the other end of two pipes.
#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int patience = 30'000;

class DriveProcess : public ::testing::Test {
 protected:
  void start(const QStringList& further = {}) {
    startWith(QStringList{u"drive"_s, u"--database"_s, folder_.filePath(u"shop.db"_s), u"--program-dir"_s,
                          folder_.filePath(u"a/b"_s)} +
              further);
  }
  void startWith(const QStringList& arguments) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
      environment.remove(QLatin1StringView(name));
    }
    process_.setProcessEnvironment(environment);
    process_.start(QStringLiteral(GOODSBOOK_PROGRAM), arguments);
    ASSERT_TRUE(process_.waitForStarted(patience));
  }
  QByteArray reply() {
    while (!process_.canReadLine()) {
      if (!process_.waitForReadyRead(patience)) return {};
    }
    return process_.readLine();
  }
  QJsonObject send(const QByteArray& line) {
    process_.write(line + '\n');
    return QJsonDocument::fromJson(reply()).object();
  }
  void TearDown() override {
    process_.closeWriteChannel();
    EXPECT_TRUE(process_.state() == QProcess::NotRunning || process_.waitForFinished(patience));
  }
  int exitCode() {
    EXPECT_TRUE(process_.state() == QProcess::NotRunning || process_.waitForFinished(patience));
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
  }

  QTemporaryDir folder_;
  QProcess process_;
};

TEST_F(DriveProcess, AnswersEveryLineInOrderAndEndsWithQuit) {
  start();
  process_.write(
      "{\"cmd\":\"wait\",\"ms\":50}\n{\"cmd\":\"screens\"}\nno json\n[1]\n\n{\"cmd\":\"dance\"}\n");
  EXPECT_EQ(reply(), "{\"ok\":true}\n");
  EXPECT_EQ(reply(), "{\"ok\":true,\"screens\":[]}\n");
  for (int i = 0; i < 4; ++i) {
    const QJsonObject refused = QJsonDocument::fromJson(reply()).object();
    EXPECT_EQ(refused["ok"_L1], false) << i;
    EXPECT_NE(refused["error"_L1].toString(), u""_s) << i;
  }
  EXPECT_EQ(send("{\"cmd\":\"quit\"}")["ok"_L1], true);
  EXPECT_EQ(exitCode(), 0);
}

TEST_F(DriveProcess, EndOfInputEndsTheProgramWhenAllIsAnswered) {
  start();
  process_.write("{\"cmd\":\"wait\",\"ms\":30}\n{\"cmd\":\"screens\"}");
  process_.closeWriteChannel();
  EXPECT_EQ(exitCode(), 0);
  EXPECT_EQ(process_.readAllStandardOutput(), "{\"ok\":true}\n{\"ok\":true,\"screens\":[]}\n");
}

TEST_F(DriveProcess, ADialogThatIsOpenDoesNotKeepTheProgram) {
  start();
  ASSERT_EQ(send("{\"cmd\":\"open\",\"module\":103}")["ok"_L1], true);
  EXPECT_EQ(send("{\"cmd\":\"action\",\"name\":\"Act_Add\"}")["ok"_L1], true);
  EXPECT_EQ(send("{\"cmd\":\"quit\"}")["ok"_L1], true);
  EXPECT_EQ(exitCode(), 0);
}

TEST_F(DriveProcess, MakesFolderAndDatabaseAndKeepsWhatWasSaved) {
  start({u"--today"_s, u"2026-11-20 10:11:12"_s, u"--set"_s, u"G_CoName=样例商店"_s});
  const QJsonObject time = send("{\"cmd\":\"sql\",\"text\":\"select GETDATE()\"}");
  EXPECT_TRUE(time["sets"_L1][0]["rows"_L1][0][0].toString().startsWith(u"2026-11-20 10:1"_s));
  EXPECT_TRUE(QFile::exists(folder_.filePath(u"a/b"_s)));
  const QJsonObject users = send("{\"cmd\":\"sql\",\"text\":\"select * from SYS_USER\"}");
  EXPECT_EQ(users["sets"_L1][0]["rows"_L1].toArray(),
            (QJsonArray{QJsonArray{u"ADMIN"_s, u"系统管理员"_s, u"1"_s}}));
  ASSERT_EQ(
      send("{\"cmd\":\"sql\",\"text\":\"insert into D1003 (dw_id,dw_name) values ('KG',N'公斤')\"}")["ok"_L1],
      true);
  process_.kill();
  process_.waitForFinished(patience);
  start();
  const QJsonObject units = send("{\"cmd\":\"sql\",\"text\":\"select dw_name from D1003\"}");
  EXPECT_EQ(units["sets"_L1][0]["rows"_L1][0][0], u"公斤"_s);
  send("{\"cmd\":\"quit\"}");
  EXPECT_EQ(exitCode(), 0);
}

TEST_F(DriveProcess, AScriptAddsAUnit) {
  start();
  for (const char* line :
       {R"({"cmd":"open","module":103})", R"({"cmd":"action","name":"Act_Add"})",
        R"({"cmd":"type","element":"Edit1","text":"kg"})",
        R"({"cmd":"type","element":"Edit2","text":"公斤"})", R"({"cmd":"click","element":"btn_ok"})"}) {
    EXPECT_EQ(send(line)["ok"_L1], true) << line;
  }
  QStringList sent;
  const QJsonArray statements = send(R"({"cmd":"statements"})")["statements"_L1].toArray();
  for (const QJsonValue& statement : statements) {
    sent << statement["op"_L1].toString() + u": "_s + statement["sql"_L1].toString();
  }
  EXPECT_EQ(sent.join(u'\n').toStdString(),
            "opensql: select * From D1003\n"
            "opensql: select * from d1003 where dw_id='KG'\n"
            "ExecSql: insert into D1003 (dw_id,dw_name,pym,dw_note)ValueS('KG','公斤','GJ','')");
  const QJsonObject list = send(R"({"cmd":"rows","element":"DBGridEh"})");
  EXPECT_EQ(list["count"_L1], 1);
  EXPECT_EQ(list["rows"_L1][0]["DW_ID"_L1], u"KG"_s);
  EXPECT_EQ(list["rows"_L1][0]["DW_NAME"_L1], u"公斤"_s);
}

// What a screen keeps when it is closed is kept, whichever way the program ends.
TEST_F(DriveProcess, LeavingClosesTheScreens) {
  const QString set = folder_.filePath(u"a/b/KRTZ"_s);
  for (const bool byQuit : {true, false}) {
    start();
    send(R"({"cmd":"open","module":102})");  // with its modal dialog over it
    ASSERT_TRUE(QFile::remove(set));
    if (byQuit) {
      process_.write("{\"cmd\":\"quit\"}\n{\"cmd\":\"screens\"}\n");
      EXPECT_EQ(reply(), "{\"ok\":true}\n");
      EXPECT_EQ(reply(), "");
    } else {
      process_.closeWriteChannel();
    }
    EXPECT_EQ(exitCode(), 0);
    EXPECT_TRUE(QFile::exists(set)) << byQuit;
  }
}

TEST_F(DriveProcess, NoQuestionKeepsItFromLeaving) {
  start();
  for (const char* line : {R"({"cmd":"open","module":103})", R"({"cmd":"action","name":"Act_Add"})",
                           R"({"cmd":"type","element":"Edit2","text":"公斤"})"}) {
    send(line);
  }
  EXPECT_EQ(send(R"({"cmd":"quit"})")["ok"_L1], true);
  EXPECT_EQ(exitCode(), 0);
}

struct Unusable {
  const char* name;
  QStringList arguments;
};

TEST_F(DriveProcess, ArgumentsThatCannotBeUsedEndItWithTwo) {
  const QString file = folder_.filePath(u"shop.db"_s);
  const QStringList usable{u"drive"_s, u"--database"_s, file, u"--program-dir"_s, folder_.path()};
  const Unusable cases[] = {
      {"no arguments at all", {u"drive"_s}},
      {"no program folder", {u"drive"_s, u"--database"_s, file}},
      {"an unknown option", usable + QStringList{u"--colour"_s, u"red"_s}},
      {"an unknown global", usable + QStringList{u"--set"_s, u"GPARAM999=1"_s}},
      {"a flag that is neither 0 nor 1", usable + QStringList{u"--set"_s, u"GPARAM0=yes"_s}},
      {"no date", usable + QStringList{u"--today"_s, u"tomorrow"_s}},
      {"an unknown user", usable + QStringList{u"--user"_s, u"NOBODY"_s}},
      {"a wrong password", usable + QStringList{u"--password"_s, u"x"_s}},
      {"something left over", usable + QStringList{u"more"_s}},
      {"a database in a folder that is not there",
       {u"drive"_s, u"--database"_s, u"/nowhere/at/all.db"_s, u"--program-dir"_s, folder_.path()}},
      {"an unknown sub-command", {u"dance"_s}},
  };
  for (const Unusable& unusable : cases) {
    startWith(unusable.arguments);
    EXPECT_EQ(exitCode(), 2) << unusable.name;
    EXPECT_NE(process_.readAllStandardError(), "") << unusable.name;
    EXPECT_EQ(process_.readAllStandardOutput(), "") << unusable.name;
  }
}

TEST_F(DriveProcess, AWrongValueOfAKnownGlobalIsToldAsSuch) {
  const QStringList usable{u"drive"_s, u"--database"_s, u":memory:"_s, u"--program-dir"_s, folder_.path()};
  for (const QString& wrong : {u"GPARAM0=2"_s, u"GPARAM2=six"_s}) {
    startWith(usable + QStringList{u"--set"_s, wrong});
    EXPECT_EQ(exitCode(), 2);
    const QString said = QString::fromUtf8(process_.readAllStandardError());
    EXPECT_TRUE(said.contains(u"的值不对："_s + wrong.section(u'=', 1))) << said.toStdString();
  }
  startWith(usable + QStringList{u"--set"_s, u"GPARAM999=1"_s});
  EXPECT_EQ(exitCode(), 2);
  EXPECT_TRUE(QString::fromUtf8(process_.readAllStandardError()).contains(u"不认识名称 GPARAM999"_s));
}

TEST_F(DriveProcess, TheProgramTellsItsVersionAndItsUse) {
  startWith({u"--version"_s});
  EXPECT_EQ(exitCode(), 0);
  EXPECT_TRUE(process_.readAllStandardOutput().startsWith("goodsbook "));
  startWith({u"--help"_s});
  EXPECT_EQ(exitCode(), 0);
  EXPECT_TRUE(QString::fromUtf8(process_.readAllStandardOutput()).contains(u"用法"_s));
}

}  // namespace
}  // namespace goodsbook
