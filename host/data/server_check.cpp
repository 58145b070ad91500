#include <QCoreApplication>
#include <optional>
#include <utility>

#include "host/data/errors.h"
#include "host/data/odbc/connect_problem.h"
#include "host/data/server_database.h"
#include "host/data/sql_sets.h"
#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int unknownTable = 208;

// What a server of the SQL Server class says of the database; nothing where a server has no such list.
std::optional<std::pair<QString, bool>> collationAndSnapshots(Database& database) {
  try {
    const SqlSets answer = runSql(
        database,
        u"select collation_name,is_read_committed_snapshot_on from sys.databases where database_id=db_id()"_s,
        Database::Permission::Screens);
    if (answer.sets.empty() || answer.sets.front().rows.empty()) return std::nullopt;
    const auto& row = answer.sets.front().rows.front();
    return std::pair(row.at(0).value_or(QString()), row.at(1).value_or(QString()) == "1"_L1);
  } catch (const EDatabaseError&) {
    return std::nullopt;
  }
}

// "Chinese_PRC_CS_AS", "Latin1_General_BIN2"
bool tellsCapitals(const QString& collation) {
  const QStringList parts = collation.toUpper().split(u'_');
  return parts.contains("CS"_L1) || parts.contains("BIN"_L1) || parts.contains("BIN2"_L1);
}

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ServerCheck)
};

// Names and codes are the same in capitals and small letters, and lists are read while others save.
ServerCheck checkSettings(Database& database, ServerCheck checked) {
  const auto settings = collationAndSnapshots(database);
  if (!settings) return checked;
  const auto& [collation, snapshots] = *settings;
  if (tellsCapitals(collation)) {
    return {ServerProblem::CollationUnfit, Texts::tr("数据库的排序规则 %1 区分大小写，程序不能使用；"
                                                     "请管理员改用不区分大小写的规则，如 Chinese_PRC_CI_AS")
                                               .arg(collation)};
  }
  if (!snapshots) {
    checked.advice = Texts::tr(
        "数据库没有打开 READ_COMMITTED_SNAPSHOT，读列表和保存会互相等待；请管理员执行 "
        "alter database … set read_committed_snapshot on");
  }
  return checked;
}

}  // namespace

ServerCheck checkSchema(Database& database) {
  try {
    const SqlSets answer =
        runSql(database, u"select VERSION from SYS_VERSION"_s, Database::Permission::Screens);
    const auto& rows = answer.sets.at(0).rows;
    const int present = rows.empty() ? 0 : rows.front().front().value_or(QString()).toInt();
    if (present > schema::version()) {
      return {ServerProblem::SchemaNewer,
              Texts::tr("数据库由更新版本的程序建立(版本 %1，本程序版本 %2)，请先升级程序")
                  .arg(present)
                  .arg(schema::version())};
    }
    if (present < schema::version()) {
      return {
          ServerProblem::SchemaOlder,
          Texts::tr(
              "数据库的表是旧版本(版本 %1，需要版本 %2)，请管理员执行 goodsbook schema --from %1 输出的脚本")
              .arg(present)
              .arg(schema::version())};
    }
    return {ServerProblem::None, Texts::tr("连接成功：%1").arg(database.displayName())};
  } catch (const EDatabaseError& error) {
    if (error.number == unknownTable) {
      return {ServerProblem::SchemaMissing,
              Texts::tr("数据库“%1”中还没有表，请管理员先执行 goodsbook schema 输出的脚本")
                  .arg(database.displayName())};
    }
    return {ServerProblem::Other, error.text};
  }
}

ServerCheck checkServer(const ServerAddress& address, const ServerLogin& login, ServerOptions options) {
  try {
    const auto database = openServerDatabase(address, login, std::move(options));
    return checkSettings(*database, checkSchema(*database));
  } catch (const EConnectFailed& error) {
    return {error.problem, error.text};
  } catch (const EDatabaseError& error) {
    return {ServerProblem::Other, error.text};
  }
}

}  // namespace goodsbook
