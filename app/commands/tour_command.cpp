#include "app/commands/tour_command.h"

#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <thread>

#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "app/commands/init_command.h"
#include "app/driver/drive_desktop.h"
#include "app/driver/driver.h"
#include "app/main_window/main_window.h"
#include "app/master_data.h"
#include "app/sign_in/log_in_window.h"
#include "app/sign_in/server_dialog.h"
#include "app/start.h"
#include "app/tour/tour.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(TourCommand)
};

// Before the session of the tour is opened: the window has one of its own.
bool pictureOfLogIn(const QString& database, const QString& programDir, const QString& path) {
  LogInWindow window(programDir, [] { return std::make_unique<DriveDesktop>(); });
  window.chooseDatabase(database);
  window.show();
  return window.grab().save(path, "PNG");
}

bool pictureOfServer(const QString& path) {
  ServerDialog dialog(
      ServerAddress::parse(u"Driver=FreeTDS;Server=192.168.0.5;Port=1433;Database=goodsbook"_s),
      {u"shop"_s, {}});
  dialog.show();
  return dialog.grab().save(path, "PNG");
}

int report(const QStringList& pictures, const QStringList& problems) {
  for (const QString& picture : pictures) printLine(picture);
  for (const QString& problem : problems) printError(Texts::tr("没有完成：%1").arg(problem));
  return problems.isEmpty() ? commandDone : commandFailed;
}

int tour(const QString& database, const QString& programDir, const QDir& folder) {
  const QString logIn = folder.filePath(u"log-in.png"_s);
  if (!pictureOfLogIn(database, programDir, logIn)) throw StartError(Texts::tr("不能写文件 %1").arg(logIn));
  const QString server = folder.filePath(u"server.png"_s);
  if (!pictureOfServer(server)) throw StartError(Texts::tr("不能写文件 %1").arg(server));

  auto ownDesktop = std::make_unique<DriveDesktop>();
  DriveDesktop& desktop = *ownDesktop;
  const auto session = openSession(database, programDir, std::move(ownDesktop), loginForChosen(database));
  signIn(*session, u"ADMIN"_s, {});
  takeFirstWarehouse(*session);
  MasterData masterData;
  MainWindow window(*session, masterData);
  window.show();
  Driver driver(desktop, masterData, &window);
  Tour pictures(driver, window, folder);
  pictures.mayChangeData(QFileInfo(database).absolutePath() == QFileInfo(programDir).absoluteFilePath());
  QString failure;
  std::thread guide([&] {
    try {
      pictures.run();
    } catch (const std::exception& error) {
      failure = QString::fromUtf8(error.what());
    }
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
  });
  QApplication::exec();
  guide.join();
  QStringList problems = pictures.problems();
  if (!failure.isEmpty()) problems << failure;
  return report(QStringList{logIn, server} + pictures.pictures(), problems);
}

}  // namespace

int runTour(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(Texts::tr("打开每个窗口，各存一张图片"));
  const QCommandLineOption out(u"out"_s, Texts::tr("存图片的目录；没有就新建"), u"DIR"_s);
  parser.addOption(out);
  const DatabaseChoice choice(parser, Texts::tr("数据库文件；不给就用样例数据"));
  if (const auto status = readArguments(parser, arguments)) return *status;
  if (!parser.isSet(out)) {
    printError(Texts::tr("缺少参数 --%1").arg(u"out"_s));
    return unusableArguments;
  }
  QApplication::setQuitOnLastWindowClosed(false);
  const QTemporaryDir work;
  QString file;
  try {
    file = choice.chosen();
  } catch (const EDatabaseError& error) {
    printError(error.text);
    return unusableArguments;
  }
  if (file.isEmpty()) {
    file = work.filePath(u"sample.db"_s);
    const int status = runInitCommand({u"--database"_s, file, u"--sample"_s, u"200"_s});
    if (status != commandDone) return status;
  }
  const QDir folder(parser.value(out));
  try {
    if (!folder.mkpath(u"."_s)) throw StartError(Texts::tr("不能建立目录 %1").arg(folder.path()));
    return tour(file, work.path(), folder);
  } catch (const StartError& error) {
    printError(error.text());
    return unusableArguments;
  }
}

}  // namespace goodsbook
