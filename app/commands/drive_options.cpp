#include "app/commands/drive_options.h"

#include <QCommandLineParser>

#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "app/start.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(DriveOptions)
};

QDateTime readDateTime(const QString& text) {
  for (const QString& form :
       {u"yyyy-MM-dd"_s, u"yyyy-MM-dd HH:mm"_s, u"yyyy-MM-dd HH:mm:ss"_s, u"yyyy-MM-dd HH:mm:ss.zzz"_s}) {
    const QDateTime time = QDateTime::fromString(text, form);
    if (time.isValid()) return time;
  }
  throw StartError(Texts::tr("--today 不是日期：%1").arg(text));
}

std::pair<QString, QString> readGlobal(const QString& text) {
  const qsizetype sign = text.indexOf(u'=');
  if (sign < 1) throw StartError(Texts::tr("--set 应为 名称=值：%1").arg(text));
  return {text.left(sign), text.mid(sign + 1)};
}

}  // namespace

std::optional<int> readDriveOptions(const QStringList& arguments, DriveOptions& options) {
  QCommandLineParser parser;
  parser.setApplicationDescription(Texts::tr("由标准输入的命令操作程序：每行一个 JSON 对象，每个答复一行。"));
  const DatabaseChoice choice(parser, Texts::tr("数据库文件；没有就新建"));
  const QCommandLineOption programDir(u"program-dir"_s, Texts::tr("程序目录；没有就新建"), u"DIR"_s);
  const QCommandLineOption user(u"user"_s, Texts::tr("登录用户"), u"ID"_s, options.user);
  const QCommandLineOption password(u"password"_s, Texts::tr("该用户的密码"), u"TEXT"_s);
  const QCommandLineOption set(u"set"_s, Texts::tr("本次运行的系统参数，可多次"), u"NAME=VALUE"_s);
  const QCommandLineOption today(
      u"today"_s, Texts::tr("程序时钟从这一天或时刻开始；服务器的 GETDATE() 仍是服务器自己的时刻"),
      u"DATE"_s);
  parser.addOptions({programDir, user, password, set, today});
  if (const auto status = readArguments(parser, arguments)) return status;
  if (!parser.positionalArguments().isEmpty()) {
    throw StartError(Texts::tr("多余的参数：%1").arg(parser.positionalArguments().join(u' ')));
  }
  try {
    options.database = choice.chosen();
  } catch (const EDatabaseError& error) {
    throw StartError(error.text);
  }
  if (options.database.isEmpty()) throw StartError(Texts::tr("缺少参数 --%1").arg(u"database"_s));
  if (parser.value(programDir).isEmpty()) throw StartError(Texts::tr("缺少参数 --%1").arg(u"program-dir"_s));
  options.programDir = parser.value(programDir);
  options.user = parser.value(user);
  options.password = parser.value(password);
  for (const QString& global : parser.values(set)) options.globals.push_back(readGlobal(global));
  if (parser.isSet(today)) options.start = readDateTime(parser.value(today));
  return std::nullopt;
}

}  // namespace goodsbook
