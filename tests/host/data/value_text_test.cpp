#include "host/data/value_text.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/host/data/memory_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::MemoryRow;
using test::null;
using test::num;
using test::txt;

TEST(ValueText, FloatsAreAsShortAsReadsBack) {
  EXPECT_EQ(floatText(3.5), u"3.5"_s);
  EXPECT_EQ(floatText(3), u"3"_s);
  EXPECT_EQ(floatText(0.1), u"0.1"_s);
  EXPECT_EQ(floatText(-0.0), u"0"_s);
  EXPECT_EQ(floatText(1000000), u"1000000"_s);
  EXPECT_EQ(floatText(123456789012.25), u"123456789012.25"_s);
  EXPECT_EQ(floatText(0.000001), u"0.000001"_s);
  EXPECT_EQ(floatText(1e-9), u"1e-09"_s);
  EXPECT_EQ(floatText(1e20), u"1e+20"_s);
  for (const double value : {1.0 / 3, 2.675, 0.1 + 0.2, std::numeric_limits<double>::max(), 5e-324}) {
    EXPECT_EQ(floatText(value).toDouble(), value);
  }
}

TEST(ValueText, DateTimesShowMillisecondsOnlyWhereThereAreAny) {
  const qint64 day = fromDateTime(QDateTime(QDate(2026, 11, 20), QTime(10, 11, 12)));
  EXPECT_EQ(dateTimeText(day), u"2026-11-20 10:11:12"_s);
  EXPECT_EQ(dateTimeText(day + 347), u"2026-11-20 10:11:12.347"_s);
  EXPECT_EQ(dateTimeText(0), u"1900-01-01 00:00:00"_s);
  EXPECT_EQ(dateTimeText(-1), u"1899-12-31 23:59:59.999"_s);
  EXPECT_EQ(fromDateTime(toDateTime(day + 347)), day + 347);
}

TEST(ValueText, ValuesReadAsScriptsExpectThem) {
  const MemoryRow row({num(1), num(-7), 2.50, num(0), txt("公斤"), std::string("\x00\xAB", 2), null});
  EXPECT_EQ(valueText(row, 0, engine::Type::Bit), u"1"_s);
  EXPECT_EQ(valueText(row, 1, engine::Type::Integer), u"-7"_s);
  EXPECT_EQ(valueText(row, 2, engine::Type::Float), u"2.5"_s);
  EXPECT_EQ(valueText(row, 3, engine::Type::DateTime), u"1900-01-01 00:00:00"_s);
  EXPECT_EQ(valueText(row, 4, engine::Type::Text), u"公斤"_s);
  EXPECT_EQ(valueText(row, 5, engine::Type::Blob), u"0x00AB"_s);
  EXPECT_EQ(valueText(row, 6, engine::Type::Text), std::nullopt);
}

}  // namespace
}  // namespace goodsbook
