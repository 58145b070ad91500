#include "host/sheet/number_format.h"

#include <gtest/gtest.h>

#include <QString>
#include <vector>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Shown {
  const char* sentence;
  const char* format;
  double value;
  const char* text;
};

void PrintTo(const Shown& shown, std::ostream* out) {
  *out << shown.sentence;
}

class NumberFormats : public testing::TestWithParam<Shown> {};

TEST_P(NumberFormats, ShowNumbersAsASpreadsheetDoes) {
  const Shown& shown = GetParam();
  EXPECT_EQ(NumberFormat(QString::fromUtf8(shown.format)).number(shown.value).toStdString(), shown.text);
}

INSTANTIATE_TEST_SUITE_P(
    Table, NumberFormats,
    testing::Values(
        Shown{"a barcode without a format is shown in full", "", 6901234567892, "6901234567892"},
        Shown{"so is a code of fifteen digits", "General", 123456789012345, "123456789012345"},
        Shown{"and one of eighteen, of which fifteen are kept", "General", 123456789012345678.0,
              "123456789012346000"},
        Shown{"a negative whole number keeps its sign", "General", -5, "-5"},
        Shown{"zero is zero", "General", 0, "0"},
        Shown{"a fraction has up to ten digits", "General", 1.0 / 3, "0.333333333"},
        Shown{"what arithmetic left behind is not shown", "General", 0.1 + 0.2, "0.3"},
        Shown{"a number just below a whole one is that", "General", 19.999999999999996, "20"},
        Shown{"a tiny number has an exponent", "General", 0.00001234, "1.234E-05"},
        Shown{"a huge number has an exponent", "General", 1e30, "1E+30"},
        Shown{"0 rounds half up", "0", 2.5, "3"}, Shown{"0 rounds half away from zero", "0", -2.5, "-3"},
        Shown{"0.00 rounds the decimal digits, not the binary ones", "0.00", 1.005, "1.01"},
        Shown{"0.00 fills up", "0.00", 3, "3.00"}, Shown{"rounding carries", "0.00", 9.999, "10.00"},
        Shown{"# shows no zeros", "#.##", 0.5, ".5"},
        Shown{"thousands are grouped", "#,##0.00", 1234567.891, "1,234,567.89"},
        Shown{"small numbers are not grouped", "#,##0", 999, "999"},
        Shown{"leading zeros are filled in", "0000000000000", 69012345678, "0069012345678"},
        Shown{"groups reach into filled zeros", "000,000", 1234, "001,234"},
        Shown{"signs between digits stay", "000-0000", 1234567, "123-4567"},
        Shown{"a comma at the end divides by a thousand", "0.0,", 12345, "12.3"},
        Shown{"per cent", "0.0%", 0.125, "12.5%"}, Shown{"an exponent", "0.00E+00", 12345, "1.23E+04"},
        Shown{"an exponent below one", "0.00E+00", 0.00012, "1.20E-04"},
        Shown{"an exponent of threes", "##0.0E+0", 12345, "12.3E+3"},
        Shown{"a currency sign", "\"¥\"#,##0.00", 1234.5, "¥1,234.50"},
        Shown{"a currency in brackets", "[$¥-804]#,##0.00", 12.5, "¥12.50"},
        Shown{"negative numbers have a section of their own", "0.00;(0.00)", -1.5, "(1.50)"},
        Shown{"zero has one", "0.00;-0.00;\"-\"", 0, "-"},
        Shown{"colours are not shown", "[Red]0.0", 1.25, "1.3"},
        Shown{"a condition picks the section", "[>=100]\"大\";\"小\"", 150, "大"},
        Shown{"and the other one", "[>=100]\"大\";\"小\"", 50, "小"},
        Shown{"an empty section hides", ";;", 5, ""},
        Shown{"accounting leaves room", "_ * #,##0.00_ ", 12.5, " 12.50 "},
        Shown{"a half", "# ?/?", 0.5, " 1/2"}, Shown{"one and a half", "# ?/?", 1.5, "1 1/2"},
        Shown{"a negative fraction", "# ?/?", -1.5, "-1 1/2"},
        Shown{"a whole number leaves the fraction's room empty", "# ?/?", 2, "2    "},
        Shown{"zero has a digit", "# ?/?", 0, "0    "},
        Shown{"the nearest fraction of one digit", "# ?/?", 3.14159265, "3 1/7"},
        Shown{"of two digits", "# ?\?/??", 3.14159265, "3 14/99"},
        Shown{"two digits where one is too few", "# ?\?/??", 0.31, " 22/71"},
        Shown{"a short one in a wide room", "# ?\?/??", 0.5, "  1/2 "},
        Shown{"of three", "# ??\?/???", 3.14159265, "3  16/113"},
        Shown{"a fraction next to one is one", "# ?/?", 0.99, "1    "},
        Shown{"quarters", "# ?/4", 2.75, "2 3/4"}, Shown{"quarters are not reduced", "# ?/4", 0.5, " 2/4"},
        Shown{"hundredths", "# ?\?/100", 1.25, "1 25/100"},
        Shown{"without a whole number", "?/?", 1.5, "3/2"},
        Shown{"a whole number without its own place", "?/?", 2, "2/1"},
        Shown{"words around a fraction", "0 ?/?\"箱\"", 0.5, "0 1/2箱"},
        Shown{"a stroke in a word makes no fraction", "0\"元/瓶\"", 5, "5元/瓶"},
        Shown{"nor does one without a denominator", "0/", 5, "5/"},
        Shown{"a number under the text format is shown in full", "@", 6901234567892, "6901234567892"},
        Shown{"a date", "yyyy-mm-dd", 46346, "2026-11-20"},
        Shown{"a Chinese date", "yyyy\"年\"m\"月\"d\"日\"", 46346, "2026年11月20日"},
        Shown{"signs without quotes", "yyyy年m月d日", 46346, "2026年11月20日"},
        Shown{"the day that never was", "yyyy/m/d", 59, "1900/2/28"},
        Shown{"behind it", "yyyy/m/d", 61, "1900/3/1"}, Shown{"month names", "d-mmm-yy", 46346, "20-Nov-26"},
        Shown{"Chinese weekdays", "aaaa", 46346, "星期五"},
        Shown{"weekdays by language", "[$-804]dddd", 46346, "星期五"},
        Shown{"English weekdays", "ddd", 46346, "Fri"},
        Shown{"a time", "h:mm:ss", 0.5 + 5.0 / 1440, "12:05:00"},
        Shown{"m behind h is minutes", "hh:mm", 0.25, "06:00"},
        Shown{"m before s is minutes", "mm:ss", 65.0 / 86400, "01:05"},
        Shown{"hours in all", "[h]:mm", 1.5, "36:00"}, Shown{"half days", "h:mm AM/PM", 0.75, "6:00 PM"},
        Shown{"Chinese half days", "上午/下午h\"时\"mm\"分\"", 0.75, "下午6时00分"},
        Shown{"parts of a second", "mm:ss.0", 1.25 / 86400, "00:01.3"},
        Shown{"midnight carries into the next day", "yyyy-mm-dd hh:mm:ss", 46346 - 1e-9,
              "2026-11-20 00:00:00"},
        Shown{"a negative date is a number", "yyyy-mm-dd", -1, "-1"},
        Shown{"a date behind the calendar is a number", "yyyy-mm-dd", 3000000, "3000000"},
        Shown{"a quote that is never closed ends with the format", "0\"元", 5, "5元"}));

TEST(NumberFormat, TextsHaveASectionToo) {
  EXPECT_EQ(NumberFormat(u"0.00"_s).text(u"面议"_s), u"面议"_s);
  EXPECT_EQ(NumberFormat(u"0;-0;0;\"<\"@\">\""_s).text(u"面议"_s), u"<面议>"_s);
  EXPECT_EQ(NumberFormat(u";;;"_s).text(u"面议"_s), u""_s);
}

TEST(NumberFormat, TheCalendarCanBeginIn1904) {
  EXPECT_EQ(NumberFormat(u"yyyy-mm-dd"_s).number(44884, true), u"2026-11-20"_s);
}

TEST(NumberFormat, EveryNumberedFormatCanBeRead) {
  for (int number = 0; number < 60; ++number) {
    EXPECT_FALSE(NumberFormat(builtinNumberFormat(number)).number(46346.5).isEmpty()) << number;
  }
}

}  // namespace
}  // namespace goodsbook
