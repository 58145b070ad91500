#include "app/driver/screen_test.h"

#include <QApplication>
#include <QFile>
#include <QThread>
#include <QWidget>
#include <exception>

#include "app/driver/client.h"
#include "app/driver/drive_desktop.h"
#include "app/driver/driver.h"
#include "app/driver/test_server.h"
#include "app/master_data.h"
#include "host/U_glo.h"
#include "host/data/database.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

namespace goodsbook {

namespace {

// An empty shop, made once for all tests of the program: making the tables takes longer than most tests.
QString emptyShop() {
  static const QTemporaryDir folder;
  static const QString file = [] {
    const QString made = folder.filePath(u"empty.db"_s);
    openEmbeddedDatabase(made);
    return made;
  }();
  return file;
}

}  // namespace

class ScreenTest::Stage {
 public:
  using Opener = std::function<std::unique_ptr<Database>(std::function<QDateTime()> clock)>;

  Stage(const Opener& open, const QString& folder)
      : desktop_(new DriveDesktop(QDateTime(QDate(2026, 11, 20), QTime(10, 11, 12)))),
        session_(open([desktop = desktop_] { return desktop->now(); }), std::unique_ptr<Desktop>(desktop_),
                 folder),
        driver(*desktop_, masterData_, &owner_) {
    resetGlobals();
    setGlobal(u"G_UserId"_s, u"ADMIN"_s);
    setGlobal(u"G_UserName"_s, u"系统管理员"_s);
    session_.setRecording(true);
  }
  DriveDesktop& desktop() { return *desktop_; }

 private:
  DriveDesktop* desktop_;
  Session session_;
  MasterData masterData_;
  QWidget owner_;

 public:
  Driver driver;
};

ScreenTest::ScreenTest() = default;
ScreenTest::~ScreenTest() = default;

void ScreenTest::SetUp() {
  ASSERT_TRUE(folder_.isValid());
  if (TestServer::isGiven()) {
    onGui([&] {
      TestServer& server = TestServer::shared();
      server.beginShop(template_);
      stage_ = new Stage([&](auto clock) { return server.open(std::move(clock)); }, folder_.path());
    });
    return;
  }
  const QString file = folder_.filePath(u"test.db"_s);
  ASSERT_TRUE(QFile::copy(template_.isEmpty() ? emptyShop() : template_, file)) << template_.toStdString();
  onGui([&] {
    stage_ = new Stage([&](auto clock) { return openEmbeddedDatabase(file, {.clock = std::move(clock)}); },
                       folder_.path());
  });
}

void ScreenTest::TearDown() {
  if (!stage_) return;
  DriverClient(driver()).closeAll();
  onGui([this] {
    EXPECT_EQ(desktop().takeUnused().join(u", "_s).toStdString(), "") << "queued, but nobody asked";
    EXPECT_EQ(desktop().takeUnexpectedQuestions(), 0) << "questions without an answer";
    delete std::exchange(stage_, nullptr);
  });
}

const QJsonObject ScreenTest::send(const QJsonObject& command) {
  return DriverClient(driver()).send(command);
}

const QJsonObject ScreenTest::done(const QJsonObject& command) {
  const QJsonObject reply = send(command);
  EXPECT_TRUE(reply["ok"_L1].toBool())
      << command["cmd"_L1].toString().toStdString() << ": " << reply["error"_L1].toString().toStdString();
  return reply;
}

QString ScreenTest::refused(const QJsonObject& command) {
  const QJsonObject reply = send(command);
  EXPECT_FALSE(reply["ok"_L1].toBool(true)) << command["cmd"_L1].toString().toStdString();
  return reply["error"_L1].toString();
}

const QJsonObject ScreenTest::open(int module, const QJsonObject& rights) {
  return done({{u"cmd"_s, u"open"_s}, {u"module"_s, module}, {u"rights"_s, rights}})["screen"_L1].toObject();
}

void ScreenTest::act(const QString& action) {
  done({{u"cmd"_s, u"action"_s}, {u"name"_s, action}});
}

QString ScreenTest::type(const QString& element, const QString& text) {
  return done({{u"cmd"_s, u"type"_s}, {u"element"_s, element}, {u"text"_s, text}})["text"_L1].toString();
}

QString ScreenTest::focus(const QString& element) {
  return done({{u"cmd"_s, u"focus"_s}, {u"element"_s, element}})["focused"_L1].toString();
}

void ScreenTest::click(const QString& element) {
  done({{u"cmd"_s, u"click"_s}, {u"element"_s, element}});
}

void ScreenTest::press(const QString& keys) {
  done({{u"cmd"_s, u"press"_s}, {u"keys"_s, keys}});
}

const QJsonObject ScreenTest::get(const QString& element) {
  return done({{u"cmd"_s, u"get"_s}, {u"element"_s, element}});
}

QJsonArray ScreenTest::rows(const QString& element) {
  return done({{u"cmd"_s, u"rows"_s}, {u"element"_s, element}})["rows"_L1].toArray();
}

std::vector<QString> ScreenTest::messages() {
  std::vector<QString> texts;
  const QJsonArray list = done({{u"cmd"_s, u"messages"_s}})["messages"_L1].toArray();
  for (const QJsonValue& message : list) texts.push_back(message["text"_L1].toString());
  return texts;
}

std::vector<QString> ScreenTest::statements() {
  std::vector<QString> texts;
  const QJsonArray list = done({{u"cmd"_s, u"statements"_s}})["statements"_L1].toArray();
  for (const QJsonValue& sent : list) texts.push_back(sent["sql"_L1].toString());
  return texts;
}

std::vector<std::vector<QString>> ScreenTest::sql(const QString& batch) {
  std::vector<std::vector<QString>> result;
  const QJsonArray sets = done({{u"cmd"_s, u"sql"_s}, {u"text"_s, batch}})["sets"_L1].toArray();
  if (sets.isEmpty()) return result;
  const QJsonArray list = sets.last()["rows"_L1].toArray();
  for (const QJsonValue& row : list) {
    std::vector<QString> values;
    const QJsonArray cells = row.toArray();
    for (const QJsonValue& cell : cells) values.push_back(cell.isNull() ? u"NULL"_s : cell.toString());
    result.push_back(std::move(values));
  }
  return result;
}

void ScreenTest::answer(const QStringList& answers) {
  done({{u"cmd"_s, u"answer"_s}, {u"answers"_s, QJsonArray::fromStringList(answers)}});
}

QString ScreenTest::frontClass() {
  QString name;
  onGui([&] {
    const QWidget* window = driver().addressing().foremost();
    if (window) name = Addressing::describe(*window)["class"_L1].toString();
  });
  return name;
}

void ScreenTest::onGui(const std::function<void()>& work) {
  if (QThread::currentThread() == qApp->thread()) {
    work();
    return;
  }
  std::exception_ptr failure;
  QMetaObject::invokeMethod(
      qApp,
      [&] {
        try {
          work();
        } catch (...) {
          failure = std::current_exception();
        }
      },
      Qt::BlockingQueuedConnection);
  if (failure) std::rethrow_exception(failure);
}

bool ScreenTest::onServer() {
  return TestServer::isGiven();
}

Driver& ScreenTest::driver() {
  return stage_->driver;
}

DriveDesktop& ScreenTest::desktop() {
  return stage_->desktop();
}

}  // namespace goodsbook
