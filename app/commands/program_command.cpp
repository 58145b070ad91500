#include "app/commands/program_command.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>

#include "app/appearance.h"
#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "app/main_window/main_window.h"
#include "app/master_data.h"
#include "app/real_desktop.h"
#include "app/settings.h"
#include "app/sign_in/log_in_window.h"
#include "app/start.h"
#include "host/data/errors.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// The session of a user who signed in; null when the user went away.
std::unique_ptr<Session> logIn(const QString& programDir, const QString& database, const QString& user) {
  LogInWindow window(programDir, [] { return std::make_unique<RealDesktop>(); });
  const QStringList known = programSettings(programDir)->value("LogIn/databases"_L1).toStringList();
  const QString last = known.isEmpty() ? defaultDatabase(programDir) : known.constFirst();
  window.begin(database.isEmpty() ? last : database);
  if (!user.isEmpty()) window.chooseUser(user);
  const bool named = !database.isEmpty() && !user.isEmpty();
  if (!(named && window.trySigningIn()) && window.exec() != QDialog::Accepted) return nullptr;
  return window.takeSession();
}

}  // namespace

int runProgram(const QStringList& arguments) {
  QCommandLineParser parser;
  const DatabaseChoice choice(parser, {});
  const QCommandLineOption programDir(u"program-dir"_s, {}, u"DIR"_s);
  const QCommandLineOption user(u"user"_s, {}, u"ID"_s);
  parser.addOptions({programDir, user});
  if (const auto status = readArguments(parser, arguments)) return *status;
  const QString folder = parser.isSet(programDir) ? parser.value(programDir) : defaultProgramDir();
  setColours(programSettings(folder)->value("Appearance/colours"_L1).toString());
  QString database;
  try {
    database = choice.chosen();
  } catch (const EDatabaseError& error) {
    printError(error.text);
    return unusableArguments;
  }
  const auto session = logIn(folder, database, parser.value(user));
  if (!session) return 0;
  MasterData masterData;
  MainWindow window(*session, masterData);
  window.open();
  return QApplication::exec();
}

}  // namespace goodsbook
