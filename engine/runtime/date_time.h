#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Date-times are milliseconds since 1900-01-01 00:00:00, kept in the steps of a server: .000, .003, .007.
namespace goodsbook::engine {

inline constexpr std::int64_t millisecondsPerDay = 86'400'000;

struct CivilTime {
  int year = 1900;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

// The parts that DATEADD, DATEDIFF and DATEPART know.
enum class DatePart : std::uint8_t {
  Year,
  Quarter,
  Month,
  DayOfYear,
  Day,
  Week,
  Weekday,
  Hour,
  Minute,
  Second,
  Millisecond
};
std::optional<DatePart> datePartOf(std::string_view word);

// Whether a date-time lies in the years 1753 to 9999.
bool inDateRange(std::int64_t milliseconds);

std::int64_t roundDateTime(std::int64_t milliseconds);
CivilTime civilTime(std::int64_t milliseconds);
std::int64_t fromCivil(const CivilTime& time);

// Reads year-month-day texts of all forms ('-', '/', '.', none) with or without a time, or a time alone;
// blank is 1900-01-01. Throws 241 for what is no date and 242 for a date that does not exist.
std::int64_t parseDateTime(std::string_view text);

// Whether CONVERT to datetime may be told this style: those that put the year first, or none.
bool isReadableStyle(int style);

// The text of CONVERT in a style; throws 281 for a style that is not known.
std::string formatDateTime(std::int64_t milliseconds, int style);

// Throws 517 when the result leaves the range of years.
std::int64_t addDateParts(DatePart part, std::int64_t count, std::int64_t milliseconds);
// How many boundaries of that part lie between the two.
std::int64_t differenceInParts(DatePart part, std::int64_t from, std::int64_t to);
int datePartValue(DatePart part, std::int64_t milliseconds);

// The system's local clock.
std::int64_t localNow();

}  // namespace goodsbook::engine
