#include "host/data/sql_json.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

QJsonObject toJson(const SqlSet& set) {
  QJsonArray rows;
  for (const auto& row : set.rows) {
    QJsonArray values;
    for (const std::optional<QString>& value : row)
      values.append(value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null));
    rows.append(values);
  }
  return {{u"columns"_s, QJsonArray::fromStringList(QStringList(set.columns.begin(), set.columns.end()))},
          {u"rows"_s, rows}};
}

}  // namespace

QJsonObject toJson(const SqlSets& answers) {
  QJsonArray sets;
  for (const SqlSet& set : answers.sets) sets.append(toJson(set));
  return {{u"sets"_s, sets}};
}

QJsonObject toJson(const EDatabaseError& error) {
  return {{u"number"_s, error.number}, {u"severity"_s, error.severity}, {u"line"_s, error.line}};
}

}  // namespace goodsbook
