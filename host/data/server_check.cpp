#include <QCoreApplication>

#include "host/data/errors.h"
#include "host/data/odbc/connect_problem.h"
#include "host/data/server_database.h"
#include "host/data/sql_sets.h"
#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int unknownTable = 208;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(ServerCheck)
};

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
    return checkSchema(*openServerDatabase(address, login, std::move(options)));
  } catch (const EConnectFailed& error) {
    return {error.problem, error.text};
  } catch (const EDatabaseError& error) {
    return {ServerProblem::Other, error.text};
  }
}

}  // namespace goodsbook
