// Dates and times under a number format, and the formats that have a number instead of a text.

#include <QDate>
#include <array>
#include <cmath>

#include "host/sheet/decimal_digits.h"
#include "host/sheet/number_format.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr double behindLastDay = 2'958'466;  // 10000-01-01
constexpr qint64 msPerDay = 86'400'000;

QString padded(qint64 number, int digits) {
  return QString::number(number).rightJustified(digits, u'0');
}

QDate dayOf(qint64 serial, bool since1904) {
  if (since1904) return QDate(1904, 1, 1).addDays(serial);
  // The calendar of sheets has a 29 February 1900, as its first program had.
  return QDate(1899, 12, 30).addDays(serial < 60 ? serial + 1 : serial);
}

constexpr std::array months = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};
constexpr std::array days = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

QString chineseMonth(int month) {
  const QString ones = u"一二三四五六七八九十"_s;
  return (month > 10 ? u"十"_s + ones.at(month - 11) : QString(ones.at(month - 1))) + u'月';
}

QString monthText(int month, int count, bool chinese) {
  if (count <= 2) return padded(month, count);
  if (chinese) return count == 3 ? QString::number(month) + u'月' : chineseMonth(month);
  const QString name = QString::fromLatin1(months[static_cast<std::size_t>(month - 1)]);
  return count == 3 ? name.left(3) : count == 5 ? name.left(1) : name;
}

QString chineseDay(int weekday, bool isShort) {
  return (isShort ? u"周"_s : u"星期"_s) + u"一二三四五六日"_s.at(weekday - 1);
}

QString dayText(const QDate& day, int count, bool chinese) {
  if (count <= 2) return padded(day.day(), count);
  if (chinese) return chineseDay(day.dayOfWeek(), count == 3);
  const QString name = QString::fromLatin1(days[static_cast<std::size_t>(day.dayOfWeek() - 1)]);
  return count == 3 ? name.left(3) : name;
}

QString halfDayText(const QString& words, int hour) {
  return words.section(u'/', hour < 12 ? 0 : 1, hour < 12 ? 0 : 1);
}

}  // namespace

// Null for a value that is no date.
QString NumberFormat::moment(const Section& section, double value, bool since1904) {
  if (value < 0 || value >= behindLastDay) return {};
  int fraction = 0;
  for (const Token& token : section.tokens) {
    if (token.part == Part::SecondFraction) fraction = std::min(token.count, 3);
  }
  const double unit = std::pow(10.0, 3 - fraction);
  const auto ms = static_cast<qint64>(std::llround(value * msPerDay / unit) * std::llround(unit));
  const QDate day = dayOf(ms / msPerDay, since1904);
  const qint64 inDay = ms % msPerDay;
  const int hour = static_cast<int>(inDay / 3'600'000);
  const bool halves = section.has(Part::HalfDay);
  QString shown;
  for (const Token& token : section.tokens) {
    switch (token.part) {
      case Part::Year:
        shown += token.count <= 2 ? padded(day.year() % 100, 2) : padded(day.year(), 4);
        break;
      case Part::Month:
        shown += monthText(day.month(), token.count, section.chinese);
        break;
      case Part::Day:
        shown += dayText(day, token.count, section.chinese);
        break;
      case Part::ChineseWeekday:
        shown += chineseDay(day.dayOfWeek(), token.count <= 3);
        break;
      case Part::Hour:
        shown += padded(halves ? (hour + 11) % 12 + 1 : hour, token.count);
        break;
      case Part::Minute:
        shown += padded(inDay / 60'000 % 60, token.count);
        break;
      case Part::Second:
        shown += padded(inDay / 1000 % 60, token.count);
        break;
      case Part::SecondFraction:
        shown += u'.' + padded(inDay % 1000, 3).left(fraction).leftJustified(token.count, u'0');
        break;
      case Part::HalfDay:
        shown += halfDayText(token.text, hour);
        break;
      case Part::Elapsed: {
        const qint64 length = token.text == "h"_L1 ? 3'600'000 : token.text == "m"_L1 ? 60'000 : 1000;
        shown += padded(ms / length, token.count);
        break;
      }
      case Part::Literal:
        shown += token.text;
        break;
      case Part::Digit:
        shown += u'0';
        break;
      case Part::Point:
        shown += u'.';
        break;
      default:
        break;
    }
  }
  return shown.isNull() ? u""_s : shown;
}

QString builtinNumberFormat(int number) {
  switch (number) {
    case 1:
      return u"0"_s;
    case 2:
      return u"0.00"_s;
    case 3:
      return u"#,##0"_s;
    case 4:
      return u"#,##0.00"_s;
    case 5:
    case 6:
      return u"\"¥\"#,##0;\"¥\"\\-#,##0"_s;
    case 7:
    case 8:
      return u"\"¥\"#,##0.00;\"¥\"\\-#,##0.00"_s;
    case 9:
      return u"0%"_s;
    case 10:
      return u"0.00%"_s;
    case 11:
      return u"0.00E+00"_s;
    case 12:
      return u"# ?/?"_s;
    case 13:
      return u"# ?\?/??"_s;
    case 14:
      return u"yyyy/m/d"_s;
    case 15:
      return u"d-mmm-yy"_s;
    case 16:
      return u"d-mmm"_s;
    case 17:
      return u"mmm-yy"_s;
    case 18:
      return u"h:mm AM/PM"_s;
    case 19:
      return u"h:mm:ss AM/PM"_s;
    case 20:
      return u"h:mm"_s;
    case 21:
      return u"h:mm:ss"_s;
    case 22:
      return u"yyyy/m/d h:mm"_s;
    case 27:
    case 36:
    case 50:
    case 52:
    case 57:
      return u"yyyy\"年\"m\"月\""_s;
    case 28:
    case 29:
    case 51:
    case 53:
    case 54:
    case 58:
      return u"m\"月\"d\"日\""_s;
    case 30:
      return u"m-d-yy"_s;
    case 31:
      return u"yyyy\"年\"m\"月\"d\"日\""_s;
    case 32:
      return u"h\"时\"mm\"分\""_s;
    case 33:
      return u"h\"时\"mm\"分\"ss\"秒\""_s;
    case 34:
    case 55:
      return u"上午/下午h\"时\"mm\"分\""_s;
    case 35:
    case 56:
      return u"上午/下午h\"时\"mm\"分\"ss\"秒\""_s;
    case 37:
    case 38:
      return u"#,##0;\\-#,##0"_s;
    case 39:
    case 40:
      return u"#,##0.00;\\-#,##0.00"_s;
    case 41:
      return u"_ * #,##0_ ;_ * \\-#,##0_ ;_ * \"-\"_ ;_ @_ "_s;
    case 42:
      return u"_ \"¥\"* #,##0_ ;_ \"¥\"* \\-#,##0_ ;_ \"¥\"* \"-\"_ ;_ @_ "_s;
    case 43:
      return u"_ * #,##0.00_ ;_ * \\-#,##0.00_ ;_ * \"-\"??_ ;_ @_ "_s;
    case 44:
      return u"_ \"¥\"* #,##0.00_ ;_ \"¥\"* \\-#,##0.00_ ;_ \"¥\"* \"-\"??_ ;_ @_ "_s;
    case 45:
      return u"mm:ss"_s;
    case 46:
      return u"[h]:mm:ss"_s;
    case 47:
      return u"mm:ss.0"_s;
    case 48:
      return u"##0.0E+0"_s;
    case 49:
      return u"@"_s;
    default:
      return {};
  }
}

}  // namespace goodsbook
