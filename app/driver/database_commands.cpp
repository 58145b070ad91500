#include <QJsonArray>
#include <memory>

#include "app/driver/driver.h"
#include "app/driver/table.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

QJsonObject described(const SqlSet& set) {
  QJsonArray columns;
  for (const QString& name : set.columns) columns.append(name);
  QJsonArray rows;
  for (const auto& row : set.rows) {
    QJsonArray values;
    for (const std::optional<QString>& value : row)
      values.append(value ? QJsonValue(*value) : QJsonValue::Null);
    rows.append(values);
  }
  return {{u"columns"_s, columns}, {u"rows"_s, rows}};
}

Step sql(Driver&, const Arguments& arguments) {
  auto sets = std::make_shared<QJsonArray>();
  return {.actions = {[sets, text = arguments.text("text")] {
            try {
              const SqlSets answers =
                  runSql(Session::current().database(), text, Database::Permission::Owner);
              for (const SqlSet& set : answers.sets) sets->append(described(set));
            } catch (const EDatabaseError& error) {
              throw CommandError(
                  error.text,
                  {{u"number"_s, error.number}, {u"severity"_s, error.severity}, {u"line"_s, error.line}});
            }
          }},
          .answer = [sets] {
            return QJsonObject{{u"sets"_s, *sets}};
          }};
}

Step statements(Driver&, const Arguments&) {
  return {.actions = {}, .answer = [] {
            QJsonArray list;
            for (const SentStatement& sent : Session::current().takeStatements()) {
              list.append(QJsonObject{{u"op"_s, sent.op},
                                      {u"module"_s, sent.module},
                                      {u"key"_s, sent.key},
                                      {u"operation"_s, sent.operation},
                                      {u"sql"_s, sent.sql},
                                      {u"result"_s, sent.result}});
            }
            return QJsonObject{{u"statements"_s, list}};
          }};
}

constexpr Command commands[] = {{"sql", sql}, {"statements", statements}};

}  // namespace

std::span<const Command> databaseCommands() {
  return commands;
}

}  // namespace goodsbook
