#include "app/commands/sql_command.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include "app/commands/console.h"
#include "app/commands/database_choice.h"
#include "host/data/database.h"
#include "host/data/sql_json.h"
#include "host/data/value_text.h"
#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(SqlCommand)
};

// A field must not break the line that it stands in.
QString field(QString text) {
  return text.replace(u'\\', u"\\\\"_s)
      .replace(u'\t', u"\\t"_s)
      .replace(u'\n', u"\\n"_s)
      .replace(u'\r', u"\\r"_s);
}

// Prints answers as they come.
class Printer : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column> columns) override {
    if (printed_) printLine({});
    types_.clear();
    QStringList names;
    for (const engine::Column& column : columns) {
      types_.push_back(column.type);
      names << field(QString::fromStdString(column.name));
    }
    print(names.join(u'\t'));
  }

  void row(const engine::Row& row) override {
    QStringList fields;
    for (std::size_t i = 0; i < types_.size(); ++i) {
      const std::optional<QString> text = valueText(row, static_cast<int>(i), types_[i]);
      fields << (text ? field(*text) : u"NULL"_s);
    }
    print(fields.join(u'\t'));
  }

  void affected(std::int64_t rows) override { print(Texts::tr("%1 行受影响").arg(rows)); }
  void notice(const engine::Diagnostic& notice) override { print(QString::fromStdString(notice.text)); }

 private:
  void print(const QString& line) {
    printLine(line);
    printed_ = true;
  }

  std::vector<engine::Type> types_;
  bool printed_ = false;
};

struct Failure {
  EDatabaseError error;
  int line;  // of the whole text
};

// Runs the batches one after the other; gives the failure that ended it.
template <typename Run>
std::optional<Failure> runBatches(const QByteArray& text, const Run& run) {
  for (const schema::ScriptBatch& batch :
       schema::batches({text.constData(), static_cast<std::size_t>(text.size())})) {
    try {
      run(QString::fromUtf8(batch.text));
    } catch (const EDatabaseError& error) {
      return Failure{error, error.line + batch.line - 1};
    }
  }
  return std::nullopt;
}

int printAsText(Database& database, const QByteArray& text) {
  Printer printer;
  const auto failure = runBatches(
      text, [&](const QString& batch) { database.execute(batch, printer, Database::Permission::Owner); });
  if (!failure) return commandDone;
  const EDatabaseError& error = failure->error;
  printError(Texts::tr("消息 %1，级别 %2，状态 %3，行 %4：%5")
                 .arg(QString::number(error.number), QString::number(error.severity),
                      QString::number(error.state), QString::number(failure->line), error.text));
  return commandFailed;
}

int printAsJson(Database& database, const QByteArray& text) {
  QJsonArray sets;
  const auto failure = runBatches(text, [&](const QString& batch) {
    const QJsonObject answer = toJson(runSql(database, batch, Database::Permission::Owner));
    for (const QJsonValue& set : answer[u"sets"_s].toArray()) sets.append(set);
  });
  QJsonObject answer{{u"sets"_s, sets}};
  if (failure) {
    answer = toJson(failure->error);
    answer[u"error"_s] = failure->error.text;
    answer[u"line"_s] = failure->line;
  }
  answer[u"ok"_s] = !failure;
  printLine(QString::fromUtf8(QJsonDocument(answer).toJson(QJsonDocument::Compact)));
  return failure ? commandFailed : commandDone;
}

QByteArray standardInput() {
  QFile input;
  return input.open(stdin, QIODevice::ReadOnly) ? input.readAll() : QByteArray();
}

}  // namespace

int runSqlCommand(const QStringList& arguments) {
  QCommandLineParser parser;
  parser.setApplicationDescription(Texts::tr("在数据库上执行 T-SQL"));
  const DatabaseChoice choice(parser, Texts::tr("数据库文件"));
  const QCommandLineOption create(u"create"_s, Texts::tr("文件不存在时建立"));
  const QCommandLineOption json(u"json"_s, Texts::tr("以 JSON 输出"));
  parser.addOptions({create, json});
  parser.addPositionalArgument(u"TEXT"_s, Texts::tr("语句；省略时从标准输入读取"), u"[TEXT]"_s);
  if (const auto status = readArguments(parser, arguments)) return *status;
  const QStringList texts = parser.positionalArguments();
  try {
    const QString chosen = choice.chosen();
    if (chosen.isEmpty() || texts.size() > 1) {
      printError(parser.helpText());
      return unusableArguments;
    }
    const auto database = openChosen(chosen, parser.isSet(create));
    const QByteArray text = texts.isEmpty() ? standardInput() : texts.first().toUtf8();
    return parser.isSet(json) ? printAsJson(*database, text) : printAsText(*database, text);
  } catch (const EDatabaseError& error) {
    printError(error.text);
    return commandFailed;
  }
}

}  // namespace goodsbook
