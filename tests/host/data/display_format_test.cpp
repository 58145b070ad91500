#include "host/data/display_format.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Formatted {
  double value;
  const char* format;
  const char* expected;
};

TEST(DisplayFormat, NumbersFollowTheirFormat) {
  const std::vector<Formatted> cases = {
      {3, "0.00", "3.00"},
      {2.675, "0.00", "2.68"},
      {-2.675, "0.00", "-2.68"},
      {0.005, "0.00", "0.01"},
      {999.995, "0.00", "1000.00"},
      {-0.001, "0.00", "0.00"},
      {0.1, "0.000000", "0.100000"},
      {1234567.891, "#,##0.00", "1,234,567.89"},
      {-1234.5, "#,##0.00", "-1,234.50"},
      {999.999, "#,##0.00", "1,000.00"},
      {12, "#,##0.00", "12.00"},
      {1.5, "0.##", "1.5"},
      {2, "0.##", "2"},
      {0.5, "#.0", ".5"},
      {7, "000", "007"},
      {2.5, "0", "3"},
      {12.5, "¥0.00元", "¥12.50元"},
      {1e20, "0", "100000000000000000000"},
  };
  for (const auto& formatted : cases) {
    EXPECT_EQ(formatNumber(formatted.value, QString::fromUtf8(formatted.format)),
              QString::fromUtf8(formatted.expected))
        << formatted.value << " by " << formatted.format;
  }
}

TEST(DisplayFormat, DateTimesFollowTheirFormat) {
  constexpr qint64 tenPast = 600'000;
  EXPECT_EQ(formatDateTime(tenPast, {}), u"1900-01-01 00:10:00"_s);
  EXPECT_EQ(formatDateTime(tenPast, u"yyyy-MM-dd"_s), u"1900-01-01"_s);
}

TEST(DisplayFormat, TellsItsDecimals) {
  EXPECT_EQ(decimalsOf(QStringLiteral("0.00")), 2);
  EXPECT_EQ(decimalsOf(QStringLiteral("#,##0.00")), 2);
  EXPECT_EQ(decimalsOf(QStringLiteral("0.##")), 2);
  EXPECT_EQ(decimalsOf(QStringLiteral("0")), 0);
  EXPECT_EQ(decimalsOf(QString()), 0);
}

}  // namespace
}  // namespace goodsbook
