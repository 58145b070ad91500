#include "app/commands/init_command.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "app/commands/sample_pictures.h"
#include "app/starting_set.h"
#include "host/data/database.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"
#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int mostProducts = 1'000'000;

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(InitCommand)
};

// A database is up to three files.
void removeDatabase(const QString& file) {
  for (const auto* ending : {"", "-wal", "-shm"}) QFile::remove(file + QLatin1StringView(ending));
}

void fill(Database& database, int products) {
  const sample::Tools tools = sampleTools(database);
  sample::startingSet(tools);
  if (products == 0) return;
  sample::sampleGoods(tools,
                      {.products = products, .makePicture = samplePicture, .progress = [products](int done) {
                         if (done % 10'000 == 0 || done == products)
                           printError(Texts::tr("已建立 %1 / %2 种商品").arg(done).arg(products));
                       }});
}

// Makes the tables in an empty database of a server, and what belongs into them.
int initServer(const ServerAddress& address, int products) {
  try {
    const auto database = openServerDatabase(address, serverLoginForCommand(address));
    const ServerCheck checked = checkSchema(*database);
    if (checked.problem != ServerProblem::SchemaMissing) {
      const bool present = checked.problem != ServerProblem::Other;
      printError(present ? Texts::tr("数据库 %1 中已有数据表").arg(address.displayName()) : checked.text);
      return commandFailed;
    }
    for (const schema::ScriptBatch& batch : schema::batches(schema::script())) {
      runSql(*database, QString::fromUtf8(batch.text.data(), static_cast<qsizetype>(batch.text.size())),
             Database::Permission::Owner);
    }
    fill(*database, products);
  } catch (const EDatabaseError& error) {
    printError(error.text);
    return commandFailed;
  }
  return commandDone;
}

}  // namespace

int runInitCommand(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(Texts::tr("建立新的数据库"));
  const DatabaseChoice choice(parser, Texts::tr("数据库文件"));
  const QCommandLineOption sampleOption(u"sample"_s, Texts::tr("样例商品的数量；0 只有新店的基本资料"),
                                        u"N"_s, u"0"_s);
  const QCommandLineOption force(u"force"_s, Texts::tr("替换已有的文件"));
  parser.addOptions({sampleOption, force});
  if (const auto status = readArguments(parser, arguments)) return *status;
  bool isNumber = false;
  const int products = parser.value(sampleOption).toInt(&isNumber);
  QString file;
  try {
    file = choice.chosen();
  } catch (const EDatabaseError& error) {
    printError(error.text);
    return unusableArguments;
  }
  if (file.isEmpty() || !isNumber || products < 0 || products > mostProducts ||
      !parser.positionalArguments().isEmpty()) {
    printError(parser.helpText());
    return unusableArguments;
  }
  if (ServerAddress::isAddress(file)) return initServer(ServerAddress::parse(file), products);
  if (QFileInfo::exists(file) && !parser.isSet(force)) {
    printError(Texts::tr("文件已存在：%1 (用 --force 替换)").arg(file));
    return commandFailed;
  }

  const QString unfinished = file + u".new"_s;
  removeDatabase(unfinished);
  try {
    fill(*openEmbeddedDatabase(unfinished), products);
  } catch (const EDatabaseError& error) {
    removeDatabase(unfinished);
    printError(error.text);
    return commandFailed;
  }
  removeDatabase(file);
  if (!QFile::rename(unfinished, file)) {
    printError(Texts::tr("不能写入文件：%1").arg(file));
    return commandFailed;
  }
  return commandDone;
}

}  // namespace goodsbook
