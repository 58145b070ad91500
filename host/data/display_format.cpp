#include "host/data/display_format.h"

#include <QDateTime>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "host/data/value_text.h"

namespace goodsbook {
namespace {

struct NumberFormat {
  QString prefix, suffix;
  int wholeDigits = 0;    // at least
  int decimals = 0;       // at most
  int fixedDecimals = 0;  // at least
  bool grouped = false;
};

NumberFormat parse(const QString& format) {
  const auto isDigitPlace = [](QChar c) { return c == u'0' || c == u'#' || c == u',' || c == u'.'; };
  qsizetype begin = 0;
  while (begin < format.size() && !isDigitPlace(format[begin])) ++begin;
  qsizetype end = begin;
  NumberFormat result;
  result.prefix = format.left(begin);
  bool behindPoint = false;
  for (; end < format.size() && isDigitPlace(format[end]); ++end) {
    const QChar c = format[end];
    if (c == u'.') {
      behindPoint = true;
    } else if (c == u',') {
      result.grouped = true;
    } else if (behindPoint) {
      ++result.decimals;
      if (c == u'0') result.fixedDecimals = result.decimals;
    } else if (c == u'0') {
      ++result.wholeDigits;
    }
  }
  result.suffix = format.mid(end);
  return result;
}

// Adds one to the last digit, with carry; `digits` holds digits and perhaps a point.
void increment(std::string& digits) {
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    if (*digit == '.') continue;
    if (*digit != '9') {
      ++*digit;
      return;
    }
    *digit = '0';
  }
  digits.insert(digits.begin(), '1');
}

std::string rounded(double size, int decimals) {
  std::array<char, 512> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), size, std::chars_format::fixed).ptr;
  std::string digits(buffer.data(), end);
  const std::size_t point = digits.find('.');
  if (point == std::string::npos) return digits;
  const std::size_t keep = point + 1 + static_cast<std::size_t>(decimals);
  if (keep < digits.size()) {
    const bool up = digits[keep] >= '5';
    digits.resize(keep);
    if (digits.back() == '.') digits.pop_back();
    if (up) increment(digits);
  }
  return digits;
}

}  // namespace

int decimalsOf(const QString& format) {
  return parse(format).decimals;
}

QString formatNumber(double value, const QString& format) {
  if (!std::isfinite(value)) return {};
  const NumberFormat by = parse(format);
  const std::string digits = rounded(std::abs(value), by.decimals);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  QString whole = QString::fromLatin1(digits.data(), static_cast<qsizetype>(point));
  QString decimals = point < digits.size() ? QString::fromStdString(digits.substr(point + 1)) : QString();
  while (decimals.size() > by.fixedDecimals && decimals.endsWith(u'0')) decimals.chop(1);
  decimals = decimals.leftJustified(by.fixedDecimals, u'0');
  if (whole == u"0" && by.wholeDigits == 0) whole.clear();
  whole = whole.rightJustified(by.wholeDigits, u'0');
  if (by.grouped) {
    for (qsizetype at = whole.size() - 3; at > 0; at -= 3) whole.insert(at, u',');
  }
  const bool nothing = digits.find_first_not_of("0.") == std::string::npos;
  QString text = value < 0 && !nothing ? QStringLiteral("-") : QString();
  text += by.prefix + whole;
  if (!decimals.isEmpty()) text += u'.' + decimals;
  return text + by.suffix;
}

QString editableNumber(double value, QString format) {
  if (!format.isEmpty()) {
    const QString shown = formatNumber(value, format.remove(u','));
    bool isNumber = false;
    if (shown.toDouble(&isNumber) == value && isNumber) return shown;
  }
  return floatText(value);
}

QString formatDateTime(qint64 milliseconds, const QString& format) {
  const QDateTime local = toDateTime(milliseconds);
  return local.toString(format.isEmpty() ? QStringLiteral("yyyy-MM-dd HH:mm:ss") : format);
}

}  // namespace goodsbook
