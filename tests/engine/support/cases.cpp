#include "tests/engine/support/cases.h"

#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstddef>
#include <stdexcept>

namespace goodsbook::engine::test {
namespace {

QByteArray readData(const char* name) {
  QFile file(QStringLiteral(GOODSBOOK_SOURCE_DIR "/tests/engine/data/") + QString::fromLatin1(name));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error(std::string("cannot read ") + name);
  return file.readAll();
}

std::string text(const QJsonValue& value) {
  return value.toString().toStdString();
}

CaseValue optionalText(const QJsonValue& value) {
  return value.isString() ? CaseValue(text(value)) : std::nullopt;
}

std::optional<int> optionalNumber(const QJsonValue& value) {
  return value.isDouble() ? std::optional<int>(value.toInt()) : std::nullopt;
}

CaseSet setOf(const QJsonObject& object) {
  CaseSet set;
  set.query = text(object["query"]);
  for (const QJsonValue& column : object["columns"].toArray()) set.columns.push_back(optionalText(column));
  for (const QJsonValue& type : object["types"].toArray()) set.types.push_back(text(type));
  for (const QJsonValue& row : object["rows"].toArray()) {
    auto& values = set.rows.emplace_back();
    for (const QJsonValue& value : row.toArray()) values.push_back(optionalText(value));
  }
  return set;
}

Case caseOf(const QJsonObject& object) {
  Case result;
  result.name = text(object["name"]);
  for (const QJsonValue& batch : object["setup"].toArray()) result.setup.push_back(text(batch));
  result.batch = text(object["batch"]);
  for (const QJsonValue& set : object["sets"].toArray()) result.sets.push_back(setOf(set.toObject()));
  for (const QJsonValue& count : object["counts"].toArray()) result.counts.push_back(count.toInteger());
  for (const QJsonValue& set : object["after"].toArray()) result.after.push_back(setOf(set.toObject()));
  if (object["error"].isObject()) {
    const QJsonObject error = object["error"].toObject();
    result.error = CaseError{optionalNumber(error["number"]), optionalNumber(error["documented"]),
                             error["severity"].toInt(), text(error["kind"])};
  }
  result.ordered = object["ordered"].toBool();
  result.subset = object["subset"].toBool();
  result.beyond = object["beyond"].toBool();
  return result;
}

}  // namespace

const std::vector<Case>& recordedCases() {
  static const std::vector<Case> cases = [] {
    std::vector<Case> result;
    for (const QByteArray& line : readData("cases.jsonl").split('\n')) {
      const QJsonObject object = QJsonDocument::fromJson(line).object();
      if (object.contains("name")) result.push_back(caseOf(object));
    }
    return result;
  }();
  return cases;
}

const std::string& preludeScript() {
  static const std::string script = readData("prelude.sql").toStdString();
  return script;
}

std::string withoutQueries(std::string batch) {
  for (std::size_t open = batch.find("{{"); open != std::string::npos; open = batch.find("{{")) {
    batch.replace(open, batch.find("}}") + 2 - open, "7");
  }
  return batch;
}

}  // namespace goodsbook::engine::test
