#include "host/data/field_value.h"

#include <QCoreApplication>
#include <QDateTime>
#include <array>
#include <cmath>

#include "host/data/display_format.h"
#include "host/data/errors.h"
#include "host/data/value_text.h"

namespace goodsbook {
namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(RecordSet)
};

constexpr int conversionFailed = 245;
constexpr int failureSeverity = 16;

[[noreturn]] void refuse(const Field& field, const QString& text, const QString& reason) {
  const QString name = field.label.isEmpty() ? field.name : field.label;
  throw EDatabaseError(conversionFailed, failureSeverity, 1, 1, reason.arg(name, text));
}

bool isText(const QVariant& value) {
  return value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray ||
         value.typeId() == QMetaType::QChar;
}

QString plainText(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
    case QMetaType::Float:
      return floatText(value.toDouble());
    case QMetaType::QDateTime:
      return dateTimeText(fromDateTime(value.toDateTime()));
    case QMetaType::QDate:
      return value.toDate().toString(Qt::ISODate);
    default:
      return value.toString();
  }
}

QVariant integerOf(const Field& field, const QVariant& value) {
  if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float) {
    return static_cast<qlonglong>(std::trunc(value.toDouble()));
  }
  bool ok = false;
  const qlonglong number = isText(value) ? value.toString().trimmed().toLongLong(&ok) : value.toLongLong(&ok);
  if (!ok) refuse(field, plainText(value), Texts::tr("%1：“%2”不是有效的整数"));
  return number;
}

QVariant floatOf(const Field& field, const QVariant& value) {
  bool ok = false;
  if (!isText(value)) {
    const double number = value.toDouble(&ok);
    if (!ok || !std::isfinite(number)) refuse(field, plainText(value), Texts::tr("%1：“%2”不是有效的数字"));
    return number;
  }
  const QString typed = value.toString().trimmed();
  const double number = typed.toDouble(&ok);
  if (!ok || !std::isfinite(number)) refuse(field, typed, Texts::tr("%1：“%2”不是有效的数字"));
  if (floatText(number) == typed) return number;
  return typed;
}

QVariant booleanOf(const Field& field, const QVariant& value) {
  if (!isText(value)) return value.toDouble() != 0;
  const QString text = value.toString().trimmed();
  bool ok = false;
  const double number = text.toDouble(&ok);
  if (ok) return number != 0;
  if (text.compare(u"true", Qt::CaseInsensitive) == 0) return true;
  if (text.compare(u"false", Qt::CaseInsensitive) == 0) return false;
  refuse(field, text, Texts::tr("%1：“%2”不是有效的是否值"));
}

QVariant dateTimeOf(const Field& field, const QVariant& value) {
  if (value.typeId() == QMetaType::QDateTime && value.toDateTime().isValid()) return value;
  if (value.typeId() == QMetaType::QDate && value.toDate().isValid())
    return QDateTime(value.toDate(), QTime(0, 0));
  const QString text = plainText(value).simplified().replace(u'/', u'-').replace(u'T', u' ');
  static constexpr std::array forms = {u"yyyy-M-d", u"yyyy-M-d H:m", u"yyyy-M-d H:m:s", u"yyyy-M-d H:m:s.z",
                                       u"yyyyMMdd"};
  for (const char16_t* form : forms) {
    const QDateTime parsed = QDateTime::fromString(text, QString::fromUtf16(form));
    if (parsed.isValid()) return parsed;
  }
  refuse(field, plainText(value), Texts::tr("%1：“%2”不是有效的日期"));
}

}  // namespace

QVariant toStored(const Field& field, const QVariant& value) {
  if (!value.isValid() || value.isNull()) return {};
  if (field.type == FieldType::Text) return plainText(value);
  if (field.type == FieldType::Blob) return value.toByteArray();
  if (isText(value) && value.toString().trimmed().isEmpty()) return {};
  switch (field.type) {
    case FieldType::Integer:
      return integerOf(field, value);
    case FieldType::Float:
      return floatOf(field, value);
    case FieldType::Boolean:
      return booleanOf(field, value);
    default:
      return dateTimeOf(field, value);
  }
}

QVariant fromStored(FieldType type, const QVariant& stored) {
  if (type == FieldType::Float && stored.typeId() == QMetaType::QString) return stored.toDouble();
  return stored;
}

QString shownText(const Field& field, const QVariant& stored, const QString& format) {
  if (!stored.isValid()) return {};
  const QString& by = format.isEmpty() ? field.displayFormat : format;
  switch (field.type) {
    case FieldType::Integer:
      return by.isEmpty() ? stored.toString() : formatNumber(stored.toDouble(), by);
    case FieldType::Float:
      if (stored.typeId() == QMetaType::QString) return stored.toString();
      return by.isEmpty() ? floatText(stored.toDouble()) : formatNumber(stored.toDouble(), by);
    case FieldType::Boolean:
      return stored.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case FieldType::DateTime:
      return formatDateTime(fromDateTime(stored.toDateTime()), by);
    case FieldType::Blob:
      return {};
    case FieldType::Text:
      break;
  }
  return stored.toString();
}

bool sameStored(const QVariant& a, const QVariant& b) {
  if (!a.isValid() || !b.isValid()) return a.isValid() == b.isValid();
  return a.typeId() == b.typeId() && a == b;
}

}  // namespace goodsbook
