#include "app/commands/drive_command.h"

#include <unistd.h>

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QWidget>
#include <csignal>
#include <cstdio>

#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "app/commands/drive_options.h"
#include "app/commands/line_reader.h"
#include "app/driver/drive_desktop.h"
#include "app/driver/driver.h"
#include "app/master_data.h"
#include "app/start.h"
#include "host/U_glo.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(Drive)
};

void write(const QJsonObject& reply) {
  const QByteArray line = QJsonDocument(reply).toJson(QJsonDocument::Compact) + '\n';
  std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
  std::fflush(stdout);
}

// Hands a line to the driver. What is no command is answered in its turn, too.
void submit(Driver& driver, const QByteArray& line) {
  QJsonParseError error{};
  const QJsonDocument document = QJsonDocument::fromJson(line, &error);
  if (document.isObject()) {
    driver.submit(document.object(), write);
    return;
  }
  const QString text = error.error == QJsonParseError::NoError
                           ? Texts::tr("一行应为一个 JSON 对象")
                           : Texts::tr("一行应为一个 JSON 对象：%1").arg(error.errorString());
  driver.refuse(text, write);
}

int drive(Session& session, DriveDesktop& desktop) {
  session.setRecording(true);
  MasterData masterData;
  QWidget owner;
  Driver driver(desktop, masterData, &owner);
  driver.onQuit = [] { QCoreApplication::exit(0); };
  LineReader input(STDIN_FILENO);
  QObject::connect(&input, &LineReader::line, &driver,
                   [&driver](const QByteArray& line) { submit(driver, line); });
  QObject::connect(&input, &LineReader::ended, &driver, [&driver] { driver.finish(); });
  return QApplication::exec();
}

}  // namespace

int runDrive(const QStringList& arguments) {
  std::signal(SIGPIPE, SIG_IGN);
  QApplication::setQuitOnLastWindowClosed(false);
  try {
    DriveOptions options;
    if (const auto status = readDriveOptions(arguments, options)) return *status;
    auto desktop = std::make_unique<DriveDesktop>(options.start);
    DriveDesktop& recorded = *desktop;
    const auto session = openSession(options.database, options.programDir, std::move(desktop),
                                     loginForChosen(options.database));
    signIn(*session, options.user, options.password);
    for (const auto& [name, value] : options.globals) {
      if (setGlobal(name, value)) continue;
      throw StartError(globalText(name)
                           ? Texts::tr("--set %1 的值不对：%2（开关为 0 或 1，数量为整数）").arg(name, value)
                           : Texts::tr("--set 不认识名称 %1").arg(name));
    }
    return drive(*session, recorded);
  } catch (const StartError& error) {
    printError(u"goodsbook drive: "_s + error.text());
    return unusableArguments;
  }
}

}  // namespace goodsbook
