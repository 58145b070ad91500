#include "engine/runtime/date_time.h"

#include <array>
#include <chrono>
#include <ctime>
#include <utility>

#include "engine/runtime/failure.h"
#include "engine/syntax/names.h"

namespace goodsbook::engine {
namespace {

constexpr std::chrono::sys_days epoch{std::chrono::year{1900} / 1 / 1};

std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
  return a / b - ((a % b != 0 && (a < 0) != (b < 0)) ? 1 : 0);
}

std::int64_t dayOf(std::int64_t milliseconds) {
  return floorDivide(milliseconds, millisecondsPerDay);
}

int daysInMonth(int year, int month) {
  const auto last =
      std::chrono::year{year} / std::chrono::month(static_cast<unsigned>(month)) / std::chrono::last;
  return static_cast<int>(static_cast<unsigned>(last.day()));
}

std::int64_t monthsOf(std::int64_t milliseconds) {
  const CivilTime time = civilTime(milliseconds);
  return std::int64_t{time.year} * 12 + time.month - 1;
}

std::int64_t addMonths(std::int64_t count, std::int64_t milliseconds) {
  CivilTime time = civilTime(milliseconds);
  const std::int64_t months = std::int64_t{time.year} * 12 + time.month - 1 + count;
  const std::int64_t year = floorDivide(months, 12);
  if (year < 1753 || year > 9999) return -1 - millisecondsPerDay * 100'000;
  time.year = static_cast<int>(year);
  time.month = static_cast<int>(months - year * 12) + 1;
  time.day = std::min(time.day, daysInMonth(time.year, time.month));
  return fromCivil(time);
}

std::int64_t unitOf(DatePart part) {
  switch (part) {
    case DatePart::Week:
      return 7 * millisecondsPerDay;
    case DatePart::Hour:
      return 3'600'000;
    case DatePart::Minute:
      return 60'000;
    case DatePart::Second:
      return 1000;
    case DatePart::Millisecond:
      return 1;
    default:
      return millisecondsPerDay;
  }
}

}  // namespace

std::optional<DatePart> datePartOf(std::string_view word) {
  using enum DatePart;
  static constexpr std::array<std::pair<std::string_view, DatePart>, 31> parts{{
      {"year", Year},       {"yy", Year},
      {"yyyy", Year},       {"quarter", Quarter},
      {"qq", Quarter},      {"q", Quarter},
      {"month", Month},     {"mm", Month},
      {"m", Month},         {"dayofyear", DayOfYear},
      {"dy", DayOfYear},    {"y", DayOfYear},
      {"day", Day},         {"dd", Day},
      {"d", Day},           {"week", Week},
      {"wk", Week},         {"ww", Week},
      {"weekday", Weekday}, {"dw", Weekday},
      {"w", Weekday},       {"hour", Hour},
      {"hh", Hour},         {"minute", Minute},
      {"mi", Minute},       {"n", Minute},
      {"second", Second},   {"ss", Second},
      {"s", Second},        {"millisecond", Millisecond},
      {"ms", Millisecond},
  }};
  for (const auto& [name, part] : parts)
    if (sameName(name, word)) return part;
  return std::nullopt;
}

bool inDateRange(std::int64_t milliseconds) {
  static const std::int64_t first = fromCivil({.year = 1753});
  static const std::int64_t end = fromCivil({.year = 10000});
  return milliseconds >= first && milliseconds < end;
}

std::int64_t roundDateTime(std::int64_t milliseconds) {
  const std::int64_t second = floorDivide(milliseconds, 1000);
  const std::int64_t ticks = ((milliseconds - second * 1000) * 3 + 5) / 10;  // of 1/300 second
  return second * 1000 + (ticks * 20 + 3) / 6;
}

CivilTime civilTime(std::int64_t milliseconds) {
  const std::int64_t day = dayOf(milliseconds);
  const std::chrono::year_month_day date{epoch + std::chrono::days{day}};
  const int rest = static_cast<int>(milliseconds - day * millisecondsPerDay);
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<int>(static_cast<unsigned>(date.month())),
          .day = static_cast<int>(static_cast<unsigned>(date.day())),
          .hour = rest / 3'600'000,
          .minute = rest / 60'000 % 60,
          .second = rest / 1000 % 60,
          .millisecond = rest % 1000};
}

std::int64_t fromCivil(const CivilTime& time) {
  const std::chrono::year_month_day date{std::chrono::year{time.year},
                                         std::chrono::month(static_cast<unsigned>(time.month)),
                                         std::chrono::day(static_cast<unsigned>(time.day))};
  const std::int64_t day = (std::chrono::sys_days{date} - epoch).count();
  return day * millisecondsPerDay + time.hour * std::int64_t{3'600'000} + time.minute * std::int64_t{60'000} +
         time.second * std::int64_t{1000} + time.millisecond;
}

std::int64_t addDateParts(DatePart part, std::int64_t count, std::int64_t milliseconds) {
  // Nothing that counts more than ten thousand years stays in the range, so the products below cannot
  // overflow.
  std::int64_t result = 0;
  const std::int64_t unit = unitOf(part);
  const std::int64_t limit = 10'000 * 366 * (millisecondsPerDay / unit + 1);
  const bool sane = count > -limit && count < limit;
  if (sane && part == DatePart::Year)
    result = addMonths(count * 12, milliseconds);
  else if (sane && part == DatePart::Quarter)
    result = addMonths(count * 3, milliseconds);
  else if (sane && part == DatePart::Month)
    result = addMonths(count, milliseconds);
  else if (sane)
    result = roundDateTime(milliseconds + count * unit);
  if (!sane || !inDateRange(result)) fail(517, "日期相加的结果超出了 datetime 的范围。");
  return result;
}

std::int64_t differenceInParts(DatePart part, std::int64_t from, std::int64_t to) {
  switch (part) {
    case DatePart::Year:
      return civilTime(to).year - civilTime(from).year;
    case DatePart::Quarter:
      return floorDivide(monthsOf(to), 3) - floorDivide(monthsOf(from), 3);
    case DatePart::Month:
      return monthsOf(to) - monthsOf(from);
    case DatePart::Week:  // weeks begin on Sunday; 1900-01-01 was a Monday
      return floorDivide(dayOf(to) + 1, 7) - floorDivide(dayOf(from) + 1, 7);
    default:
      return floorDivide(to, unitOf(part)) - floorDivide(from, unitOf(part));
  }
}

int datePartValue(DatePart part, std::int64_t milliseconds) {
  const CivilTime time = civilTime(milliseconds);
  const auto dayOfYear = [&] {
    return static_cast<int>(dayOf(milliseconds) - dayOf(fromCivil({.year = time.year}))) + 1;
  };
  const auto weekday = [](std::int64_t day) { return static_cast<int>((day + 1) % 7 + 7) % 7 + 1; };
  switch (part) {
    case DatePart::Year:
      return time.year;
    case DatePart::Quarter:
      return (time.month - 1) / 3 + 1;
    case DatePart::Month:
      return time.month;
    case DatePart::DayOfYear:
      return dayOfYear();
    case DatePart::Day:
      return time.day;
    case DatePart::Week:
      return (dayOfYear() + weekday(dayOf(fromCivil({.year = time.year}))) - 2) / 7 + 1;
    case DatePart::Weekday:
      return weekday(dayOf(milliseconds));
    case DatePart::Hour:
      return time.hour;
    case DatePart::Minute:
      return time.minute;
    case DatePart::Second:
      return time.second;
    case DatePart::Millisecond:
      return time.millisecond;
  }
  return 0;
}

std::int64_t localNow() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  const auto part =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
  std::tm local{};
  localtime_r(&seconds, &local);
  return roundDateTime(fromCivil({.year = local.tm_year + 1900,
                                  .month = local.tm_mon + 1,
                                  .day = local.tm_mday,
                                  .hour = local.tm_hour,
                                  .minute = local.tm_min,
                                  .second = std::min(local.tm_sec, 59),
                                  .millisecond = static_cast<int>(part)}));
}

}  // namespace goodsbook::engine
