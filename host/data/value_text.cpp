#include "host/data/value_text.h"

#include <array>
#include <charconv>
#include <cmath>

namespace goodsbook {
namespace {

constexpr qint64 dayLength = 24LL * 60 * 60 * 1000;
const QDate epoch(1900, 1, 1);

struct Moment {
  QDate date;
  QTime time;
};

Moment momentOf(qint64 milliseconds) {
  qint64 day = milliseconds / dayLength;
  qint64 rest = milliseconds % dayLength;
  if (rest < 0) {
    rest += dayLength;
    --day;
  }
  return {epoch.addDays(day), QTime::fromMSecsSinceStartOfDay(static_cast<int>(rest))};
}

}  // namespace

QString floatText(double value) {
  if (value == 0) return QStringLiteral("0");
  if (!std::isfinite(value)) return {};
  std::array<char, 64> digits;
  const double size = std::abs(value);
  const auto format = size >= 1e-6 && size < 1e17 ? std::chars_format::fixed : std::chars_format::scientific;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, format).ptr;
  return QString::fromLatin1(digits.data(), end - digits.data());
}

QString dateTimeText(qint64 milliseconds) {
  const auto [date, time] = momentOf(milliseconds);
  return date.toString(Qt::ISODate) + u' ' +
         time.toString(time.msec() == 0 ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm:ss.zzz"));
}

QDateTime toDateTime(qint64 milliseconds) {
  const auto [date, time] = momentOf(milliseconds);
  return QDateTime(date, time);
}

qint64 fromDateTime(const QDateTime& dateTime) {
  return epoch.daysTo(dateTime.date()) * dayLength + dateTime.time().msecsSinceStartOfDay();
}

std::optional<QString> valueText(const engine::Row& row, int column, engine::Type type) {
  if (row.isNull(column)) return std::nullopt;
  switch (type) {
    case engine::Type::Bit:
      return row.integer(column) != 0 ? QStringLiteral("1") : QStringLiteral("0");
    case engine::Type::Integer:
      return QString::number(row.integer(column));
    case engine::Type::Float:
      return floatText(row.real(column));
    case engine::Type::DateTime:
      return dateTimeText(row.integer(column));
    case engine::Type::Text: {
      const auto text = row.text(column);
      return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    case engine::Type::Blob: {
      const auto bytes = row.blob(column);
      const auto raw = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                               static_cast<qsizetype>(bytes.size()));
      return QStringLiteral("0x") + QString::fromLatin1(raw.toHex().toUpper());
    }
  }
  return std::nullopt;
}

}  // namespace goodsbook
