#include "host/Zpy.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <set>
#include <thread>
#include <vector>

#include "host/zpy_words.h"

namespace goodsbook {
namespace {

std::string initials(const char* text) {
  return Zpy::GetPY(QString::fromUtf8(text)).toStdString();
}

struct Case {
  const char* name;
  const char* text;
  const char* initials;
};

class Initials : public testing::TestWithParam<Case> {};

TEST_P(Initials, OfTheText) {
  EXPECT_EQ(initials(GetParam().text), GetParam().initials) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Zpy, Initials,
    testing::Values(
        Case{"nothing gives nothing", "", ""}, Case{"a unit", "公斤", "GJ"},
        Case{"a product", "康师傅红烧牛肉面", "KSFHSNRM"},
        Case{"letters become upper case, digits stay", "abc农夫山泉550ml", "ABCNFSQ550ML"},
        Case{"full-width letters and digits become half-width", "ＡＢｃ１２３", "ABC123"},
        Case{"signs and blanks are dropped", " 可乐（大）-2.5L*6/箱、①℃ ", "KLD25L6X"},
        Case{"accented Latin letters lose their accents", "café", "CAFE"},
        Case{"Greek and kana are dropped", "维生素α のり", "WSS"},
        Case{"characters beyond the basic plane are dropped", "\xF0\xA0\xAE\xB7野家\xF0\x9F\x8D\x8E", "YJ"},
        Case{"the ideographic zero has a reading", "二〇二六", "ELEL"},
        Case{"traditional characters have readings", "電視機", "DSJ"}, Case{"bank", "中国工商银行", "ZGGSYH"},
        Case{"walking street keeps xing", "步行街", "BXJ"}, Case{"luggage", "行李箱", "XLX"},
        Case{"Chongqing", "重庆火锅底料", "CQHGDL"}, Case{"weight", "重量", "ZL"},
        Case{"the Great Wall", "长城干红", "CCGH"}, Case{"Changsha", "长沙", "CS"},
        Case{"long sleeves", "男士长袖衬衫", "NSCXCS"}, Case{"shop manager", "店长", "DZ"},
        Case{"accountant", "会计", "KJ"}, Case{"meeting", "会议桌", "HYZ"}, Case{"music", "音乐盒", "YYH"},
        Case{"instruments", "乐器", "YQ"}, Case{"cola", "可口可乐", "KKKL"}, Case{"Chengdu", "成都", "CD"},
        Case{"Chaoyang", "朝阳", "CY"}, Case{"Xiamen", "厦门", "XM"}, Case{"tall building", "大厦", "DS"},
        Case{"Bengbu", "蚌埠", "BB"}, Case{"cheap", "便宜", "PY"}, Case{"convenience store", "便利店", "BLD"},
        Case{"seasoning", "调料", "TL"}, Case{"air conditioner", "空调", "KT"},
        Case{"transfer between warehouses", "调拨仓", "DBC"}, Case{"ginseng", "长白山人参", "CBSRS"},
        Case{"ginseng and antler", "参茸", "SR"}, Case{"taking part", "参加", "CJ"},
        Case{"tomato", "番茄酱", "FQJ"}, Case{"cigar", "雪茄", "XJ"},
        Case{"donkey-hide gelatine", "东阿阿胶", "DEEJ"}, Case{"key", "钥匙扣", "YSK"},
        Case{"spoon", "汤匙", "TC"}, Case{"curry and coffee", "咖喱咖啡", "GLKF"},
        Case{"the longer of two words wins", "荨麻疹荨麻", "XMZQM"}, Case{"a surname", "曾国强", "ZGQ"},
        Case{"once", "曾经", "CJ"}, Case{"a double surname", "长孙无忌", "ZSWJ"}));

// Initials of a text read character by character, without words of two and more.
std::string oneByOne(std::u16string_view text) {
  std::string all;
  for (const char16_t character : text) all += Zpy::GetPY(QString(QChar(character))).toStdString();
  return all;
}

TEST(ZpyWords, EveryRowChangesSomethingAndStandsOnce) {
  std::set<std::u16string_view> seen;
  std::vector<std::string> idle;
  for (const Zpy::Word& word : Zpy::words) {
    const QString text = QString::fromUtf16(word.text.data(), static_cast<qsizetype>(word.text.size()));
    EXPECT_TRUE(seen.insert(word.text).second) << text.toStdString();
    EXPECT_EQ(word.text.size(), word.initials.size()) << text.toStdString();
    // A row may also be there to break a shorter one that begins it.
    const bool asBegun =
        (Zpy::GetPY(text.chopped(1)) + Zpy::GetPY(text.last(1))).toStdString() == word.initials;
    if (text.size() > 1 && asBegun && oneByOne(word.text) == word.initials)
      idle.push_back(text.toStdString());
  }
  EXPECT_EQ(idle, std::vector<std::string>{});
}

TEST(Zpy, SeveralThreadsReadTheSame) {
  const QString text = QString::fromUtf8("龙门米醋鹌鹑蛋魔芋爽藕粉羹燕窝");
  std::vector<QString> results(8);
  {
    std::vector<std::jthread> threads;
    for (QString& result : results) {
      threads.emplace_back([&result, text] { result = Zpy::GetPY(text); });
    }
  }
  for (const QString& result : results) EXPECT_EQ(result, QString::fromUtf8("LMMCACDMYSOFGYW"));
}

TEST(Zpy, AMillionNamesTakeSeconds) {
  const QString name = QString::fromUtf8("金龙鱼一级大豆油5L装");
  QElapsedTimer timer;
  timer.start();
  qsizetype letters = 0;
  for (int i = 0; i < 1'000'000; ++i) letters += Zpy::GetPY(name).size();
  EXPECT_EQ(letters, 11'000'000);
  EXPECT_LT(timer.elapsed(), 20'000);
  RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
}

}  // namespace
}  // namespace goodsbook
