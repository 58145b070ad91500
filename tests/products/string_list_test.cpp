// Lists of texts, written as one text and read back.
#include "products/string_list.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Written {
  const char* sentence;
  QStringList texts;
  QString text;
};

void PrintTo(const Written& written, std::ostream* out) {
  *out << written.sentence;
}

class StringLists : public testing::TestWithParam<Written> {};

TEST_P(StringLists, AreWrittenAndReadBack) {
  TMyStringList list;
  list.append(GetParam().texts);
  EXPECT_EQ(list.DelimitedText().toStdString(), GetParam().text.toStdString());
  TMyStringList read;
  read.append(u"before"_s);
  read.SetDelimitedText(GetParam().text);
  EXPECT_EQ(QStringList(read), GetParam().texts);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StringLists,
    testing::Values(Written{"plain texts stand as they are", {u"条码"_s, u"品名"_s}, u"条码,品名"_s},
                    Written{"no text", {}, u""_s}, Written{"one empty text is not none", {u""_s}, u"\"\""_s},
                    Written{"empty texts keep their places", {u""_s, u"a"_s, u""_s}, u",a,"_s},
                    Written{"a delimiter is quoted", {u"a,b"_s, u"c"_s}, u"\"a,b\",c"_s},
                    Written{"quotes are doubled", {u"说\"不\""_s}, u"\"说\"\"不\"\"\""_s},
                    Written{"nothing but a quote", {u"\""_s}, u"\"\"\"\""_s},
                    Written{"blanks belong to the text", {u" a b "_s, u" "_s}, u" a b , "_s},
                    Written{"line ends are quoted", {u"a\nb"_s, u"c"_s}, u"\"a\nb\",c"_s}));

TEST(StringList, OtherSignsCanDelimitAndQuote) {
  TMyStringList list;
  list.Delimiter = u';';
  list.QuoteChar = u'\'';
  list.SetDelimitedText(u"a,b;'c;d';'it''s'"_s);
  EXPECT_EQ(QStringList(list), (QStringList{u"a,b"_s, u"c;d"_s, u"it's"_s}));
  EXPECT_EQ(list.DelimitedText(), u"a,b;'c;d';'it''s'"_s);
}

TEST(StringList, TakesWhatOthersWriteLoosely) {
  TMyStringList list;
  list.SetDelimitedText(u"\"a\"b,c\"d\",\"open,end"_s);
  EXPECT_EQ(QStringList(list), (QStringList{u"ab"_s, u"c\"d\""_s, u"open,end"_s}));
}

}  // namespace
}  // namespace goodsbook
