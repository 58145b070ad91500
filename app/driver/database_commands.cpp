#include <QJsonArray>
#include <memory>

#include "app/driver/driver.h"
#include "app/driver/table.h"
#include "host/data/errors.h"
#include "host/data/sql_json.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

Step sql(Driver&, const Arguments& arguments) {
  auto answer = std::make_shared<QJsonObject>();
  return {.actions = {[answer, text = arguments.text("text")] {
            try {
              *answer = toJson(runSql(Session::current().database(), text, Database::Permission::Owner));
            } catch (const EDatabaseError& error) {
              throw CommandError(error.text, toJson(error));
            }
          }},
          .answer = [answer] { return *answer; }};
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
