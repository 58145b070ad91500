// Which code a text gets.
#include "host/print/bar_code.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Case {
  const char* sentence;
  QString text;
  BarCode::Kind kind;
  int modules;
  const char* problem;
};

TEST(BarCodes, AreChosenByTheText) {
  using Kind = BarCode::Kind;
  const Case cases[] = {
      {"thirteen digits with a right check digit", u"6901234567892"_s, Kind::Ean13, 95, ""},
      {"thirteen digits with a wrong one", u"6901234567893"_s, Kind::Code128, 123,
       "条码 6901234567893 的校验位应为 2，已按 Code 128 打印"},
      {"a check digit of zero", u"6921316000000"_s, Kind::Ean13, 95, ""},
      {"eight digits with a right one", u"96385074"_s, Kind::Ean8, 67, ""},
      {"eight digits with a wrong one", u"96385075"_s, Kind::Code128, 79,
       "条码 96385075 的校验位应为 4，已按 Code 128 打印"},
      {"twelve digits with a right one", u"036000291452"_s, Kind::UpcA, 95, ""},
      {"twelve digits with a wrong one", u"036000291453"_s, Kind::Code128, 101,
       "条码 036000291453 的校验位应为 2，已按 Code 128 打印"},
      {"digits of another length", u"1234567"_s, Kind::Code128, 90, ""},
      {"letters", u"AB-12"_s, Kind::Code128, 90, ""},
      {"letters as long as a number", u"69012345678AB"_s, Kind::Code128, 134, ""},
      {"nothing", {}, Kind::None, 0, "没有条码"},
      {"blanks", u"  "_s, Kind::None, 0, "没有条码"},
      {"Chinese", u"苹果"_s, Kind::None, 0, "条码“苹果”含有条码不能表示的字符"},
      {"a line break", u"1\n2"_s, Kind::None, 0, "条码“1\n2”含有条码不能表示的字符"},
  };
  for (const Case& each : cases) {
    const BarCode code = barCodeOf(each.text);
    EXPECT_EQ(code.kind, each.kind) << each.sentence;
    EXPECT_EQ(code.modules, each.modules) << each.sentence;
    EXPECT_EQ(code.problem.toStdString(), each.problem) << each.sentence;
  }
}

TEST(BarCodes, HaveTheQuietZonesOfTheirKind) {
  const auto quiet = [](const QString& text) {
    const BarCode code = barCodeOf(text);
    return std::pair(code.quietBefore, code.quietBehind);
  };
  EXPECT_EQ(quiet(u"6901234567892"_s), std::pair(11, 7));
  EXPECT_EQ(quiet(u"96385074"_s), std::pair(7, 7));
  EXPECT_EQ(quiet(u"036000291452"_s), std::pair(9, 9));
  EXPECT_EQ(quiet(u"A1"_s), std::pair(10, 10));
}

TEST(BarCodes, CheckDigitsAreCounted) {
  EXPECT_EQ(checkDigitOf(u"690123456789"), u'2');
  EXPECT_EQ(checkDigitOf(u"9638507"), u'4');
  EXPECT_EQ(checkDigitOf(u"03600029145"), u'2');
}

TEST(BarCodes, ATextThatIsTooLongIsTold) {
  const BarCode code = barCodeOf(QString(u"A"_s).repeated(200));
  EXPECT_TRUE(code.isEmpty());
  EXPECT_TRUE(code.problem.endsWith(u"太长，不能打印"_s)) << code.problem.toStdString();
}

}  // namespace
}  // namespace goodsbook
