#include "app/commands/drive_options.h"

#include <QCommandLineParser>

#include "app/start.h"

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

DriveOptions readDriveOptions(const QStringList& arguments) {
  QCommandLineParser parser;
  const QCommandLineOption database(u"database"_s, {}, u"FILE"_s), programDir(u"program-dir"_s, {}, u"DIR"_s),
      user(u"user"_s, {}, u"ID"_s, u"ADMIN"_s), password(u"password"_s, {}, u"TEXT"_s),
      set(u"set"_s, {}, u"NAME=VALUE"_s), today(u"today"_s, {}, u"DATE"_s);
  parser.addOptions({database, programDir, user, password, set, today});
  if (!parser.parse(arguments)) throw StartError(parser.errorText());
  if (!parser.positionalArguments().isEmpty()) {
    throw StartError(Texts::tr("多余的参数：%1").arg(parser.positionalArguments().join(u' ')));
  }
  for (const QCommandLineOption* needed : {&database, &programDir}) {
    if (parser.value(*needed).isEmpty())
      throw StartError(Texts::tr("缺少参数 --%1").arg(needed->names().constFirst()));
  }
  DriveOptions options{
      parser.value(database), parser.value(programDir), parser.value(user), parser.value(password), {}, {}};
  for (const QString& global : parser.values(set)) options.globals.push_back(readGlobal(global));
  if (parser.isSet(today)) options.start = readDateTime(parser.value(today));
  return options;
}

}  // namespace goodsbook
