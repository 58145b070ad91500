#include "app/driver/arguments.h"

#include <cmath>
#include <limits>

#include "app/driver/command.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

[[noreturn]] void wrongKind(const char* name, const QString& wanted) {
  throw CommandError(DriverTexts::tr("字段 %1 应为%2").arg(QLatin1StringView(name), wanted));
}

int toInteger(const QJsonValue& value, const char* name) {
  const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
  if (!(std::abs(number) < 2147483649.0) || number != std::trunc(number) ||
      number > std::numeric_limits<int>::max() || number < std::numeric_limits<int>::min()) {
    wrongKind(name, DriverTexts::tr("整数"));
  }
  return static_cast<int>(number);
}

}  // namespace

bool Arguments::has(const char* name) const {
  return fields_.contains(QLatin1StringView(name));
}

bool Arguments::isNull(const char* name) const {
  return fields_.value(QLatin1StringView(name)).isNull();
}

QJsonValue Arguments::required(const char* name) const {
  if (!has(name)) throw CommandError(DriverTexts::tr("缺少字段 %1").arg(QLatin1StringView(name)));
  return fields_.value(QLatin1StringView(name));
}

QString Arguments::text(const char* name) const {
  const QJsonValue value = required(name);
  if (!value.isString()) wrongKind(name, DriverTexts::tr("文本"));
  return value.toString();
}

std::optional<QString> Arguments::optionalText(const char* name) const {
  if (!has(name) || isNull(name)) return std::nullopt;
  return text(name);
}

int Arguments::integer(const char* name) const {
  return toInteger(required(name), name);
}

std::optional<int> Arguments::optionalInteger(const char* name) const {
  if (!has(name) || isNull(name)) return std::nullopt;
  return integer(name);
}

bool Arguments::flag(const char* name) const {
  const QJsonValue value = required(name);
  if (!value.isBool()) wrongKind(name, u"true/false"_s);
  return value.toBool();
}

bool Arguments::flag(const char* name, bool missing) const {
  return has(name) && !isNull(name) ? flag(name) : missing;
}

QStringList Arguments::texts(const char* name) const {
  const QJsonValue value = required(name);
  if (!value.isArray()) wrongKind(name, DriverTexts::tr("文本的列表"));
  QStringList result;
  const QJsonArray list = value.toArray();
  for (const QJsonValue& item : list) {
    if (!item.isString()) wrongKind(name, DriverTexts::tr("文本的列表"));
    result << item.toString();
  }
  return result;
}

std::vector<int> Arguments::integers(const char* name) const {
  const QJsonValue value = required(name);
  if (!value.isArray()) wrongKind(name, DriverTexts::tr("整数的列表"));
  std::vector<int> result;
  const QJsonArray list = value.toArray();
  for (const QJsonValue& item : list) result.push_back(toInteger(item, name));
  return result;
}

QJsonObject Arguments::object(const char* name) const {
  if (!has(name) || isNull(name)) return {};
  const QJsonValue value = required(name);
  if (!value.isObject()) wrongKind(name, DriverTexts::tr("对象"));
  return value.toObject();
}

}  // namespace goodsbook
