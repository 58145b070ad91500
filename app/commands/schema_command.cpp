#include "app/commands/schema_command.h"

#include <QCoreApplication>

#include "app/commands/console.h"
#include "schema/role.h"
#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(SchemaCommand)
};

}  // namespace

int runSchemaCommand(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(Texts::tr("输出建立数据库的 T-SQL 脚本"));
  const QCommandLineOption from(u"from"_s, Texts::tr("只输出由该版本升级到当前版本的步骤"), u"VERSION"_s);
  const QCommandLineOption role(u"role"_s, Texts::tr("输出服务器上程序所用角色的脚本，只有必需的权限"));
  parser.addOptions({from, role});
  if (const auto status = readArguments(parser, arguments)) return *status;

  if (parser.isSet(role)) {
    printLine(QString::fromStdString(schema::roleScript()));
    return commandDone;
  }
  if (!parser.isSet(from)) {
    printLine(QString::fromUtf8(schema::script()));
    return commandDone;
  }
  bool isNumber = false;
  const int version = parser.value(from).toInt(&isNumber);
  if (!isNumber || version < 1 || version > schema::version()) {
    printError(Texts::tr("没有版本 %1，当前版本是 %2").arg(parser.value(from)).arg(schema::version()));
    return unusableArguments;
  }
  const std::string steps = schema::upgradeScript(version);
  if (!steps.empty()) printLine(QString::fromStdString(steps));
  return commandDone;
}

}  // namespace goodsbook
