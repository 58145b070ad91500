#include "app/start.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "app/sign_in/users.h"
#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/controls/window_attendant.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(Start)
};

QString oneValue(Database& database, const QString& select) {
  const SqlSets answer = runSql(database, select, Database::Permission::Screens);
  if (answer.sets.empty() || answer.sets.front().rows.empty()) return {};
  return answer.sets.front().rows.front().front().value_or(QString());
}

void nameWarehouse(Database& database) {
  if (!G_ckid.isEmpty() && G_CkName.isEmpty()) {
    G_CkName = oneValue(database, u"select CK_NAME from D1007 where CK_ID="_s + QuotedStr(G_ckid));
  }
}

void loadSettings(Database& database) {
  resetGlobals();
  const SqlSets answer =
      runSql(database, u"select NAME, VALUE from SYS_SETTING"_s, Database::Permission::Screens);
  for (const auto& row : answer.sets.at(0).rows)
    setGlobal(row.at(0).value_or(QString()), row.at(1).value_or(QString()));
  if (G_CoName.isEmpty()) G_CoName = oneValue(database, u"select top 1 co from sys_co order by id"_s);
  nameWarehouse(database);
}

std::unique_ptr<Database> openDatabase(const QString& database, Desktop& desktop, const ServerLogin& login) {
  if (!ServerAddress::isAddress(database)) {
    return openEmbeddedDatabase(database, {.clock = [&desktop] { return desktop.now(); }});
  }
  auto server = openServerDatabase(ServerAddress::parse(database), login, {.attend = attendInWindow()});
  const ServerCheck checked = checkSchema(*server);
  if (checked.problem != ServerProblem::None) throw StartError(checked.text);
  return server;
}

}  // namespace

QString defaultProgramDir() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/goodsbook"_s;
}

QString defaultDatabase(const QString& programDir) {
  return QDir(programDir).filePath(u"goodsbook.db"_s);
}

std::unique_ptr<Session> openSession(const QString& database, const QString& programDir,
                                     std::unique_ptr<Desktop> desktop, const ServerLogin& login) {
  if (!QDir().mkpath(programDir)) throw StartError(Texts::tr("不能建立程序目录 %1").arg(programDir));
  try {
    auto opened = openDatabase(database, *desktop, login);
    return std::make_unique<Session>(std::move(opened), std::move(desktop),
                                     QFileInfo(programDir).absoluteFilePath());
  } catch (const EDatabaseError& error) {
    if (ServerAddress::isAddress(database)) throw StartError(error.text);
    throw StartError(Texts::tr("不能打开数据库 %1：%2").arg(database, error.text));
  }
}

void signIn(Session& session, const QString& user, const QString& password) {
  const Users users(session.database());
  const std::optional<User> found = users.find(user);
  if (!found || !found->active) throw StartError(Texts::tr("没有用户 %1").arg(user));
  if (!users.isPassword(found->id, password))
    throw StartError(Texts::tr("用户 %1 的密码不对").arg(found->id));
  loadSettings(session.database());
  G_UserId = found->id;
  G_UserName = found->name;
}

void takeFirstWarehouse(Session& session) {
  Database& database = session.database();
  if (G_ckid.isEmpty()) {
    G_ckid = oneValue(database, u"select top 1 CK_ID from SYS_USER_CK where USER_ID="_s +
                                    QuotedStr(G_UserId) + u" order by CK_ID"_s);
  }
  if (G_ckid.isEmpty()) G_ckid = oneValue(database, u"select top 1 CK_ID from D1007 order by CK_ID"_s);
  nameWarehouse(database);
}

}  // namespace goodsbook
