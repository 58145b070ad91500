#include "app/commands/copy_command.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "host/data/copy/database_copy.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(CopyCommand)
};

void removeDatabase(const QString& file) {
  for (const auto* ending : {"", "-wal", "-shm"}) QFile::remove(file + QLatin1StringView(ending));
}

bool tell(const QString& table, qint64 rows) {
  constexpr qint64 step = 10'000;
  if (rows % step == 0) printError(Texts::tr("%1：%2 行").arg(table).arg(rows));
  return true;
}

void copy(const QString& from, const QString& to) {
  const auto source = openChosen(from, false);
  const auto target = openChosen(to, true);
  qint64 rows = 0;
  const auto copied = copyDatabase(*source, *target, tell);
  for (const CopiedTable& table : copied) {
    rows += table.rows;
    if (table.rows > 0) printLine(table.name + u'\t' + QString::number(table.rows));
  }
  printLine(Texts::tr("共复制 %1 行，已逐表核对行数与内容").arg(rows));
}

// A file appears under its name only when all is in it.
void copyToFile(const QString& from, const QString& file) {
  if (QFileInfo::exists(file)) {
    throw EDatabaseError(50000, 16, 1, 1, Texts::tr("文件已存在：%1").arg(file));
  }
  const QString unfinished = file + u".new"_s;
  removeDatabase(unfinished);
  try {
    copy(from, unfinished);
  } catch (...) {
    removeDatabase(unfinished);
    throw;
  }
  if (!QFile::rename(unfinished, file)) {
    throw EDatabaseError(50000, 16, 1, 1, Texts::tr("不能写入文件：%1").arg(file));
  }
}

// The value of the one option of two that was given; empty for none and for both.
QString oneOf(const QCommandLineParser& parser, const QCommandLineOption& file,
              const QCommandLineOption& server) {
  if (parser.isSet(file) == parser.isSet(server)) return {};
  return parser.isSet(file) ? parser.value(file) : ServerAddress::parse(parser.value(server)).text();
}

}  // namespace

int runCopyCommand(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(Texts::tr("把一个数据库的全部数据复制到另一个空数据库，并逐表核对"));
  const QCommandLineOption fromFile(u"from"_s, Texts::tr("来源数据库文件"), u"FILE"_s);
  const QCommandLineOption fromServer(u"from-server"_s, Texts::tr("来源数据库服务器"), u"ADDRESS"_s);
  const QCommandLineOption toFile(u"to"_s, Texts::tr("新的数据库文件"), u"FILE"_s);
  const QCommandLineOption toServer(u"to-server"_s, Texts::tr("目标数据库服务器，表已建好，没有数据"),
                                    u"ADDRESS"_s);
  parser.addOptions({fromFile, fromServer, toFile, toServer});
  if (const auto status = readArguments(parser, arguments)) return *status;
  try {
    const QString from = oneOf(parser, fromFile, fromServer);
    const QString to = oneOf(parser, toFile, toServer);
    if (from.isEmpty() || to.isEmpty() || !parser.positionalArguments().isEmpty()) {
      printError(parser.helpText());
      return unusableArguments;
    }
    if (ServerAddress::isAddress(to)) {
      copy(from, to);
    } else {
      copyToFile(from, to);
    }
  } catch (const EDatabaseError& error) {
    printError(error.text);
    return commandFailed;
  }
  return commandDone;
}

}  // namespace goodsbook
