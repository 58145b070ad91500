#include <gtest/gtest.h>

#include <limits>

#include "engine/error.h"
#include "engine/runtime/convert.h"
#include "engine/runtime/date_time.h"
#include "engine/runtime/number_text.h"

namespace goodsbook::engine {
namespace {

struct Conversions {
  const char* name;
  Value value;
  SqlType from;
  SqlType to;
  Value result;
  int error = 0;
  bool cut = false;
};

void PrintTo(const Conversions& row, std::ostream* out) {
  *out << row.name;
}

constexpr SqlType text{Kind::Text};
constexpr SqlType varchar3{Kind::Text, 3};
constexpr SqlType wholeType{Kind::Int};
constexpr SqlType floatType{Kind::Float};
constexpr SqlType bitType{Kind::Bit};
constexpr SqlType dateType{Kind::DateTime};
constexpr SqlType moneyType{Kind::Money};
constexpr SqlType decimal2{Kind::Decimal, 9, 2};

Value of(const char* value) {
  return std::string(value);
}
Value of(std::int64_t value) {
  return value;
}
Value of(double value) {
  return value;
}

class ConversionTest : public testing::TestWithParam<Conversions> {};

TEST_P(ConversionTest, GivesOrRefuses) {
  const Conversions& row = GetParam();
  try {
    const Value result = convertValue(row.value, row.from, row.to, {.cut = row.cut, .target = "D1.c"});
    EXPECT_EQ(row.error, 0) << "no error";
    EXPECT_EQ(result, row.result);
  } catch (const SqlError& error) {
    EXPECT_EQ(error.diagnostic().number, row.error) << error.what();
    EXPECT_FALSE(error.diagnostic().text.empty());
  }
}

const Conversions rows[] = {
    {"NULL stays NULL", {}, text, wholeType, {}},
    {"digits are a whole number", of("12"), text, wholeType, of(12L)},
    {"blanks and a sign around digits do not count", of(" +007 "), text, wholeType, of(7L)},
    {"an empty text is 0", of(""), text, wholeType, of(0L)},
    {"blanks are 0", of("   "), text, floatType, of(0.0)},
    {"an empty text is false", of(""), text, bitType, of(0L)},
    {"an empty text is no money", of(""), text, moneyType, of(0.0)},
    {"an empty text is no decimal", of(""), text, decimal2, {}, 8114},
    {"an empty text is the first day of 1900", of(""), text, dateType, of(0L)},
    {"a point is not for whole numbers", of("1.0"), text, wholeType, {}, 245},
    {"letters are no whole number", of("1a"), text, wholeType, {}, 245},
    {"a text beyond int overflows", of("2147483648"), text, wholeType, {}, 248},
    {"the smallest int is one", of("-2147483648"), text, wholeType, of(-2147483648L)},
    {"a text beyond 64 bits overflows", of("99999999999999999999"), text, wholeType, {}, 248},
    {"a text beyond smallint overflows", of("40000"), text, {Kind::SmallInt}, {}, 244},
    {"tinyint has no sign", of("-1"), text, {Kind::TinyInt}, {}, 244},
    {"a sign, zeros and a point are fine for float", of("+007.50"), text, floatType, of(7.5)},
    {"an exponent is fine for float", of("-1e2"), text, floatType, of(-100.0)},
    {"an exponent is nothing for decimals", of("1e2"), text, decimal2, {}, 8114},
    {"a comma is not", of("1,234.5"), text, floatType, {}, 8114},
    {"a point alone is no number", of("."), text, floatType, {}, 8114},
    {"hex is no number", of("0x10"), text, floatType, {}, 8114},
    {"inf is no number", of("inf"), text, floatType, {}, 8114},
    {"nan is no number", of("nan"), text, floatType, {}, 8114},
    {"true is a bit", of("TRUE"), text, bitType, of(1L)},
    {"false is a bit", of(" false "), text, bitType, of(0L)},
    {"yes is no bit", of("yes"), text, bitType, {}, 245},
    {"any number but 0 is 1", of("-5"), text, bitType, of(1L)},
    {"a fraction is a true bit", of(0.5), floatType, bitType, of(1L)},
    {"fractions are cut towards zero", of(-2.9), floatType, wholeType, of(-2L)},
    {"a number beyond int overflows", of(3e9), floatType, wholeType, {}, 8115},
    {"a number beyond 64 bits overflows", of(1e30), floatType, {Kind::BigInt}, {}, 8115},
    {"256 is no tinyint", of(256L), wholeType, {Kind::TinyInt}, {}, 8115},
    {"a decimal is rounded half away from zero", of(1.005), floatType, decimal2, of(1.01)},
    {"and so is a negative one", of(-2.345), floatType, decimal2, of(-2.35)},
    {"a decimal has no more digits than declared", of(12345678.0), floatType, decimal2, {}, 8115},
    {"money has four digits", of("1.23456"), text, moneyType, of(1.2346)},
    {"whole numbers are their digits", of(-3L), wholeType, text, of("-3")},
    {"a float is its shortest text", of(3.5), floatType, text, of("3.5")},
    {"a decimal shows its scale", of(1.5), decimal2, text, of("1.50")},
    {"a text of its width fits", of("abc"), text, varchar3, of("abc")},
    {"characters count, not bytes", of("中文字"), text, varchar3, of("中文字")},
    {"blanks behind the width are cut in silence", of("abc  "), text, varchar3, of("abc")},
    {"anything else behind it is refused", of("abcd"), text, varchar3, {}, 2628},
    {"a blank before more text is, too", of("abc d"), text, varchar3, {}, 2628},
    {"CAST cuts", of("中文字符"), text, varchar3, of("中文字"), 0, true},
    {"a number is never cut to other digits", of(1234L), wholeType, varchar3, {}, 8115},
    {"CAST of a whole number that does not fit is a star", of(1234L), wholeType, varchar3, of("*"), 0, true},
    {"days make a date-time", of(1.5), floatType, dateType, of(129'600'000L)},
    {"a number before 1753 is no date-time", of(-60000L), wholeType, dateType, {}, 8115},
};

INSTANTIATE_TEST_SUITE_P(Rows, ConversionTest, testing::ValuesIn(rows));

struct Dates {
  const char* written;
  const char* read;  // in style 121, or null
  int error = 0;
};

void PrintTo(const Dates& row, std::ostream* out) {
  *out << row.written;
}

class DateTextTest : public testing::TestWithParam<Dates> {};

TEST_P(DateTextTest, IsReadOrRefused) {
  const Dates& row = GetParam();
  try {
    const std::int64_t value = parseDateTime(row.written);
    ASSERT_NE(row.read, nullptr) << formatDateTime(value, 121);
    EXPECT_EQ(formatDateTime(value, 121), row.read);
  } catch (const SqlError& error) {
    EXPECT_EQ(error.diagnostic().number, row.error) << error.what();
  }
}

const Dates dates[] = {
    {"2026-11-20", "2026-11-20 00:00:00.000"},
    {"20261120", "2026-11-20 00:00:00.000"},
    {"261120", "2026-11-20 00:00:00.000"},
    {"2026/1/2", "2026-01-02 00:00:00.000"},
    {"2026.01.02", "2026-01-02 00:00:00.000"},
    {"2026-11-20 10:11:12 ", "2026-11-20 10:11:12.000"},
    {"2026-11-20T10:11:12", "2026-11-20 10:11:12.000"},
    {"2026-11-20 9:05", "2026-11-20 09:05:00.000"},
    {"2026-11-20 9:05PM", "2026-11-20 21:05:00.000"},
    {"2026-11-20 12:05 am", "2026-11-20 00:05:00.000"},
    {"10:11:12", "1900-01-01 10:11:12.000"},
    {"2026-11-20 10:11:12.345", "2026-11-20 10:11:12.347"},
    {"2026-11-20 10:11:12.001", "2026-11-20 10:11:12.000"},
    {"2026-11-20 10:11:12.002", "2026-11-20 10:11:12.003"},
    {"2026-12-31 23:59:59.999", "2027-01-01 00:00:00.000"},
    {"2026-11-20 10:11:12.5", "2026-11-20 10:11:12.500"},
    {"2024-02-29", "2024-02-29 00:00:00.000"},
    {"2026-02-29", nullptr, 242},
    {"2026-13-40", nullptr, 242},
    {"1752-12-31", nullptr, 242},
    {"2026-11-20 24:00", nullptr, 242},
    {"9999-12-31 23:59:59.999", nullptr, 242},
    {"abc", nullptr, 241},
    {"2026-11", nullptr, 241},
    {"2026-11-20x", nullptr, 241},
    {"2026-11-20 10:11:12.1234", nullptr, 241},
    {"明天", nullptr, 241},
};

INSTANTIATE_TEST_SUITE_P(Rows, DateTextTest, testing::ValuesIn(dates));

TEST(DateTime, EveryMillisecondBecomesAStepOfAServer) {
  for (std::int64_t ms = -2000; ms <= 2000; ++ms) {
    const std::int64_t rounded = roundDateTime(ms);
    EXPECT_LE(std::abs(rounded - ms), 2) << ms;
    const std::int64_t digit = ((rounded % 10) + 10) % 10;
    EXPECT_TRUE(digit == 0 || digit == 3 || digit == 7) << ms << " became " << rounded;
    EXPECT_EQ(roundDateTime(rounded), rounded) << ms;
  }
}

TEST(DateTime, CivilTimeGoesThereAndBack) {
  for (std::int64_t day = -53690; day < 2958463; day += 97) {
    const std::int64_t ms = day * millisecondsPerDay + 12'345'670;
    EXPECT_EQ(fromCivil(civilTime(ms)), ms);
  }
}

TEST(NumberText, TheShortestTextReadsBackAsTheSameNumber) {
  for (const double value : {0.1, 3.5, 1e15, 123456789.125, 1e-7, 5e-324, std::numeric_limits<double>::max(),
                             -0.25, 1.0 / 3, 1e16, 99999999999999990.0}) {
    const auto read = readNumber(shortestText(value), true);
    ASSERT_TRUE(read) << shortestText(value);
    EXPECT_EQ(*read, value) << shortestText(value);
  }
  EXPECT_EQ(shortestText(100), "100");
  EXPECT_EQ(shortestText(-0.0), "0");
}

TEST(NumberText, RoundingGoesHalfAwayFromZero) {
  EXPECT_EQ(roundDecimal(2.5, 0), 3);
  EXPECT_EQ(roundDecimal(-2.5, 0), -3);
  EXPECT_EQ(roundDecimal(1.005, 2), 1.01);
  EXPECT_EQ(roundDecimal(2.675, 2), 2.68);
  EXPECT_EQ(roundDecimal(1234, -2), 1200);
  EXPECT_EQ(roundDecimal(1250, -2), 1300);
  EXPECT_EQ(roundDecimal(49, -2), 0);
  EXPECT_EQ(roundDecimal(50, -2), 100);
  EXPECT_EQ(roundDecimal(999.995, 2), 1000);
  EXPECT_EQ(roundDecimal(1e300, 2), 1e300);
  EXPECT_EQ(truncateDecimal(2.99, 1), 2.9);
  EXPECT_EQ(truncateDecimal(-2.99, 0), -2);
}

}  // namespace
}  // namespace goodsbook::engine
