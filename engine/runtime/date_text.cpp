// Date-times from and to text.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "engine/runtime/date_time.h"
#include "engine/runtime/failure.h"

namespace goodsbook::engine {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

class DateReader {
 public:
  explicit DateReader(std::string_view text) : whole_(text), rest_(text) {}

  std::int64_t read() {
    skipBlanks();
    const std::size_t digits = digitRun();
    if (digits == 0) failSyntax();
    if (digits < rest_.size() && rest_[digits] == ':') {
      readTime();
    } else {
      readDate(digits);
      const bool separated =
          !rest_.empty() && (rest_.front() == ' ' || rest_.front() == 'T' || rest_.front() == 't');
      if (separated) {
        rest_.remove_prefix(1);
        skipBlanks();
        if (!rest_.empty()) readTime();
      }
    }
    skipBlanks();
    if (!rest_.empty()) failSyntax();
    return finish();
  }

 private:
  [[noreturn]] void failSyntax() const {
    fail(241, concat("从字符串转换日期和/或时间时，转换失败: “", whole_, "”。"));
  }
  [[noreturn]] void failRange() const {
    fail(242, concat("从 varchar 数据类型到 datetime 数据类型的转换产生一个超出范围的值: “", whole_, "”。"));
  }

  void skipBlanks() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t')) rest_.remove_prefix(1);
  }
  std::size_t digitRun() const {
    std::size_t count = 0;
    while (count < rest_.size() && isDigit(rest_[count])) ++count;
    return count;
  }
  int number(std::size_t least, std::size_t most) {
    const std::size_t count = digitRun();
    if (count < least || count > most) failSyntax();
    int value = 0;
    std::from_chars(rest_.data(), rest_.data() + count, value);
    rest_.remove_prefix(count);
    return value;
  }
  bool take(char c) {
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void readDate(std::size_t digits) {
    if (digits == 8 || digits == 6) {  // yyyymmdd, yymmdd
      int value = number(digits, digits);
      time_.day = value % 100;
      value /= 100;
      time_.month = value % 100;
      time_.year = value / 100;
      if (digits == 6) time_.year += time_.year < 50 ? 2000 : 1900;
      return;
    }
    time_.year = number(4, 4);
    if (rest_.empty()) {  // a year alone
      time_.month = time_.day = 1;
      return;
    }
    const char separator = rest_.front();
    if (separator != '-' && separator != '/' && separator != '.') failSyntax();
    take(separator);
    time_.month = number(1, 2);
    if (!take(separator)) failSyntax();
    time_.day = number(1, 2);
  }

  void readTime() {
    time_.hour = number(1, 2);
    if (!take(':')) failSyntax();
    time_.minute = number(1, 2);
    if (take(':')) {
      time_.second = number(1, 2);
      if (take('.') || take(':')) readFraction();
    }
    skipBlanks();
    readHalfOfDay();
  }

  void readFraction() {
    const std::size_t count = digitRun();
    if (count == 0 || count > 3) failSyntax();
    time_.millisecond = number(1, 3);
    for (std::size_t digit = count; digit < 3; ++digit) time_.millisecond *= 10;
  }

  void readHalfOfDay() {
    if (rest_.size() < 2 || (rest_[1] | 0x20) != 'm') return;
    const char half = static_cast<char>(rest_[0] | 0x20);
    if ((half != 'a' && half != 'p') || time_.hour < 1 || time_.hour > 12) return;
    time_.hour = time_.hour % 12 + (half == 'p' ? 12 : 0);
    rest_.remove_prefix(2);
  }

  std::int64_t finish() const {
    static constexpr std::array<int, 12> longest{31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = time_.year % 4 == 0 && (time_.year % 100 != 0 || time_.year % 400 == 0);
    if (time_.year < 1753 || time_.month < 1 || time_.month > 12 || time_.day < 1) failRange();
    if (time_.day > longest[static_cast<std::size_t>(time_.month - 1)]) failRange();
    if (time_.month == 2 && time_.day == 29 && !leap) failRange();
    if (time_.hour > 23 || time_.minute > 59 || time_.second > 59) failRange();
    const std::int64_t value = roundDateTime(fromCivil(time_));
    if (!inDateRange(value)) failRange();
    return value;
  }

  std::string_view whole_;
  std::string_view rest_;
  CivilTime time_;
};

constexpr std::array<const char*, 12> monthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

}  // namespace

std::int64_t parseDateTime(std::string_view text) {
  if (text.find_first_not_of(' ') == std::string_view::npos) return 0;
  return DateReader(text).read();
}

bool isReadableStyle(int style) {
  static constexpr std::array<int, 15> readable{-1,  0,  100, 2,  102, 11, 111, 12,
                                                112, 20, 120, 21, 121, 23, 126};
  return std::find(readable.begin(), readable.end(), style) != readable.end();
}

std::string formatDateTime(std::int64_t milliseconds, int style) {
  const CivilTime t = civilTime(milliseconds);
  const char* month = monthNames[static_cast<std::size_t>(t.month - 1)];
  const int shortYear = t.year % 100;
  const int hour12 = t.hour % 12 == 0 ? 12 : t.hour % 12;
  const char* half = t.hour < 12 ? "AM" : "PM";
  std::array<char, 64> text{};
  const auto print = [&](const char* format, auto... parts) {
    std::snprintf(text.data(), text.size(), format, parts...);
    return std::string(text.data());
  };
  switch (style) {
    case 0:
    case 100:
      return print("%s %2d %04d %2d:%02d%s", month, t.day, t.year, hour12, t.minute, half);
    case 9:
    case 109:
      return print("%s %2d %04d %2d:%02d:%02d:%03d%s", month, t.day, t.year, hour12, t.minute, t.second,
                   t.millisecond, half);
    case 1:
      return print("%02d/%02d/%02d", t.month, t.day, shortYear);
    case 101:
      return print("%02d/%02d/%04d", t.month, t.day, t.year);
    case 2:
      return print("%02d.%02d.%02d", shortYear, t.month, t.day);
    case 102:
      return print("%04d.%02d.%02d", t.year, t.month, t.day);
    case 3:
      return print("%02d/%02d/%02d", t.day, t.month, shortYear);
    case 103:
      return print("%02d/%02d/%04d", t.day, t.month, t.year);
    case 4:
      return print("%02d.%02d.%02d", t.day, t.month, shortYear);
    case 104:
      return print("%02d.%02d.%04d", t.day, t.month, t.year);
    case 5:
      return print("%02d-%02d-%02d", t.day, t.month, shortYear);
    case 105:
      return print("%02d-%02d-%04d", t.day, t.month, t.year);
    case 6:
      return print("%02d %s %02d", t.day, month, shortYear);
    case 106:
      return print("%02d %s %04d", t.day, month, t.year);
    case 7:
      return print("%s %02d, %02d", month, t.day, shortYear);
    case 107:
      return print("%s %02d, %04d", month, t.day, t.year);
    case 8:
    case 24:
    case 108:
      return print("%02d:%02d:%02d", t.hour, t.minute, t.second);
    case 10:
      return print("%02d-%02d-%02d", t.month, t.day, shortYear);
    case 110:
      return print("%02d-%02d-%04d", t.month, t.day, t.year);
    case 11:
      return print("%02d/%02d/%02d", shortYear, t.month, t.day);
    case 111:
      return print("%04d/%02d/%02d", t.year, t.month, t.day);
    case 12:
      return print("%02d%02d%02d", shortYear, t.month, t.day);
    case 112:
      return print("%04d%02d%02d", t.year, t.month, t.day);
    case 13:
    case 113:
      return print("%02d %s %04d %02d:%02d:%02d:%03d", t.day, month, t.year, t.hour, t.minute, t.second,
                   t.millisecond);
    case 14:
    case 114:
      return print("%02d:%02d:%02d:%03d", t.hour, t.minute, t.second, t.millisecond);
    case 20:
    case 120:
      return print("%04d-%02d-%02d %02d:%02d:%02d", t.year, t.month, t.day, t.hour, t.minute, t.second);
    case 21:
    case 25:
    case 121:
      return print("%04d-%02d-%02d %02d:%02d:%02d.%03d", t.year, t.month, t.day, t.hour, t.minute, t.second,
                   t.millisecond);
    case 23:
      return print("%04d-%02d-%02d", t.year, t.month, t.day);
    case 126:
      return t.millisecond == 0
                 ? print("%04d-%02d-%02dT%02d:%02d:%02d", t.year, t.month, t.day, t.hour, t.minute, t.second)
                 : print("%04d-%02d-%02dT%02d:%02d:%02d.%03d", t.year, t.month, t.day, t.hour, t.minute,
                         t.second, t.millisecond);
    default:
      fail(281, concat("将 datetime 转换为字符串时，", std::to_string(style), " 不是有效的样式号。"));
  }
}

}  // namespace goodsbook::engine
