// Keys of the offline barcode library, building it from a table, and reading it.
#include "host/barcodes/barcode_library.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <stdexcept>

#include "host/barcodes/library_builder.h"
#include "host/barcodes/offline_key.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct KeyCase {
  const char* name;
  QString barcode, key;
};

class OfflineKey : public ::testing::TestWithParam<KeyCase> {};

TEST_P(OfflineKey, OfABarcode) {
  EXPECT_EQ(offlineKey(GetParam().barcode).toStdString(), GetParam().key.toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    , OfflineKey,
    ::testing::Values(KeyCase{"ThirteenDigits", u"6901234567892"_s, u"45B354A87CB"_s},
                      KeyCase{"LeadingZerosBehindThePrefixStay", u"6920000012345"_s, u"98C6B9A8F20"_s},
                      KeyCase{"EightDigits", u"69012340"_s, u"28A87CB"_s},
                      KeyCase{"AShortRestWithAZeroIsPadded", u"69012305"_s, u"989685A87CB"_s},
                      KeyCase{"SevenCharactersAreEnough", u"6901231"_s, u"1A87CB"_s},
                      KeyCase{"SixCharactersHaveNoKey", u"690123"_s, QString()},
                      KeyCase{"LettersOfAShortTextHaveNoKey", u"ABC"_s, QString()},
                      KeyCase{"LettersAreNoNumber", u"ABC1234567"_s, u"ZZZZ"_s},
                      KeyCase{"LettersInTheRestAreNoNumber", u"690123A"_s, u"ZZZZ"_s},
                      KeyCase{"BlanksAreNoNumber", u" 6901234567892"_s, u"ZZZZ"_s},
                      KeyCase{"WhatFollowsThirteenIsIgnored", u"6901234567892XYZ"_s, u"45B354A87CB"_s},
                      KeyCase{"APrefixOfZerosIsEmpty", u"0000001"_s, u"1"_s}),
    [](const auto& row) { return std::string(row.param.name); });

class LibraryBuilder : public ::testing::Test {
 protected:
  QString path(const QString& name) const { return folder_.filePath(name); }
  QString library() const { return BarcodeLibrary::fileIn(folder_.path()); }
  LibraryBuildResult build(const QByteArray& table) {
    QFile file(path(u"table.csv"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(table);
    file.close();
    return buildBarcodeLibrary(file.fileName(), library(), events_);
  }
  std::vector<KnownBarcode> find(const QString& barcode) {
    BarcodeLibrary reader(library());
    reader.open();
    return reader.find(barcode);
  }
  qint64 count() {
    BarcodeLibrary reader(library());
    reader.open();
    return reader.count();
  }
  // Builds a table that has one good line beside `line`, as line 2, and gives what is said about that.
  std::string faultOf(const QByteArray& line) {
    faults_.clear();
    build("6901234567892,可乐\n" + line + "\n");
    return faults_.join(u"; "_s).toStdString();
  }

  QStringList faults_;
  std::vector<qint64> reports_;
  LibraryBuildEvents events_{
      .progress = [this](qint64 lines, int) { reports_.push_back(lines); },
      .wrongLine = [this](qint64 line,
                          const QString& fault) { faults_ << QString::number(line) + u' ' + fault; }};

 private:
  QTemporaryDir folder_;
};

TEST_F(LibraryBuilder, WhatIsBuiltIsFound) {
  const LibraryBuildResult result = build(
      "\xEF\xBB\xBF条码,品名,规格,单位,产地\r\n6901234567892,可乐,330ml,听,上海\r\n\r\n"
      "\"6920000012345\",\"雪碧,\"\"大\"\"\",1L,瓶,\r\n6901234567892,可口可乐\r\n");
  EXPECT_EQ(faults_, QStringList());
  EXPECT_EQ(result.written, 3);
  EXPECT_EQ(result.wrong, 0);
  EXPECT_EQ(count(), 3);
  const auto cola = find(u"6901234567892"_s);
  ASSERT_EQ(cola.size(), 2U);
  EXPECT_EQ(cola[0].barcode + cola[0].name + cola[0].specification + cola[0].unit + cola[0].origin,
            u"6901234567892可乐330ml听上海"_s);
  EXPECT_EQ(cola[1].name + cola[1].specification, u"可口可乐"_s);
  const auto sprite = find(u"6920000012345"_s);
  ASSERT_EQ(sprite.size(), 1U);
  EXPECT_EQ(sprite[0].name, u"雪碧,\"大\""_s);
  EXPECT_TRUE(find(u"6901234567890"_s).empty());
  EXPECT_TRUE(find(u"6901"_s).empty());
}

TEST_F(LibraryBuilder, TablesInGb18030AreRead) {
  QStringEncoder encoder("GB18030");
  const QByteArray table = encoder.encode(u"6901234567892,可乐,330ml,听,上海\n"_s);
  build(table);
  ASSERT_EQ(find(u"6901234567892"_s).size(), 1U);
  EXPECT_EQ(find(u"6901234567892"_s)[0].name, u"可乐"_s);
}

TEST_F(LibraryBuilder, WrongLinesAreToldByNumberAndLeftOut) {
  EXPECT_EQ(faultOf("690123,可乐"), "2 条码应为 7 至 13 位数字：690123");
  EXPECT_EQ(faultOf("69012345678921,可乐"), "2 条码应为 7 至 13 位数字：69012345678921");
  EXPECT_EQ(faultOf("6.90E+12,可乐"), "2 条码应为 7 至 13 位数字：6.90E+12");
  EXPECT_EQ(faultOf("6901234567892"), "2 没有品名");
  EXPECT_EQ(faultOf("6901234567892, ,330ml"), "2 没有品名");
  EXPECT_EQ(faultOf("6901234567892,可乐,1234567890123456789012"),
            "2 规格超过 20 个字：1234567890123456789012");
  EXPECT_EQ(faultOf("6901234567892,可乐,,听听听听听听听"), "2 单位超过 6 个字：听听听听听听听");
  EXPECT_EQ(faultOf("6901234567892,\"可乐"), "2 引号没有结束");
  EXPECT_EQ(faultOf("6901234567892,可乐,,,,多"), "2 多出一列：多");
  EXPECT_EQ(faultOf("6901234567892,可乐,,,,,"), "");
  EXPECT_EQ(faultOf(QByteArray("6901234567892,a\0b", 17)), "2 有不能显示的字符");
  EXPECT_EQ(faultOf("6901234567892," + QByteArray(100'000, 'x')), "2 一行太长");
  EXPECT_EQ(count(), 1);
}

TEST_F(LibraryBuilder, ABuildThatFailsLeavesTheOldLibrary) {
  build("6901234567892,可乐\n");
  EXPECT_THROW(build("条码,品名\n1,x\n"), std::runtime_error);
  EXPECT_THROW(build("\xFF\xFE"
                     "6"),
               std::runtime_error);
  EXPECT_THROW(build({}), std::runtime_error);
  EXPECT_THROW(buildBarcodeLibrary(path(u"missing.csv"_s), library(), events_), std::runtime_error);
  events_.wrongLine = [](qint64, const QString&) { throw std::runtime_error("stopped"); };
  EXPECT_THROW(build("6920000012345,雪碧\n1,x\n"), std::runtime_error);
  EXPECT_EQ(count(), 1);
  EXPECT_EQ(find(u"6901234567892"_s).size(), 1U);
  EXPECT_FALSE(QFile::exists(library() + u".new"_s));
}

TEST_F(LibraryBuilder, WhatAKilledBuildLeftIsReplaced) {
  QFile left(library() + u".new"_s);
  ASSERT_TRUE(left.open(QIODevice::WriteOnly));
  left.write("half a library");
  left.close();
  build("6901234567892,可乐\n");
  EXPECT_EQ(count(), 1);
}

TEST_F(LibraryBuilder, AReaderKeepsTheLibraryThatItOpened) {
  build("6901234567892,可乐\n");
  BarcodeLibrary reader(library());
  reader.open();
  build("6920000012345,雪碧\n6920000054321,芬达\n");
  EXPECT_EQ(reader.count(), 1);
  EXPECT_EQ(count(), 2);
}

TEST_F(LibraryBuilder, ProgressIsToldEveryHundredThousandLines) {
  QByteArray table;
  for (int i = 0; i < 200'000; ++i) table += QByteArray::number(6900000000000 + i) + ",x\n";
  build(table);
  EXPECT_EQ(reports_, (std::vector<qint64>{100'000, 200'000}));
  EXPECT_EQ(count(), 200'000);
}

TEST_F(LibraryBuilder, TheFolderIsMadeWhenItIsMissing) {
  QFile file(path(u"table.csv"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("6901234567892,可乐\n");
  file.close();
  const QString elsewhere = BarcodeLibrary::fileIn(path(u"a/b"_s));
  buildBarcodeLibrary(file.fileName(), elsewhere, events_);
  EXPECT_TRUE(BarcodeLibrary(elsewhere).exists());
}

TEST_F(LibraryBuilder, AMissingLibraryCannotBeOpened) {
  BarcodeLibrary reader(library());
  EXPECT_FALSE(reader.exists());
  EXPECT_THROW(reader.open(), EDatabaseError);
}

}  // namespace
}  // namespace goodsbook
