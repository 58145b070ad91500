// Workbooks of a few megabytes that unpack to gigabytes: real archives, in which one packed block repeats.
#include <gtest/gtest.h>
#include <zlib.h>

#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "host/sheet/sheet_reader.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Part {
  QByteArray name, begin;
  QByteArray block = {};
  int times = 0;
  QByteArray end = {};
  quint32 toldSize = 0;  // what the archive says; 0: the truth
};

class Deflater {
 public:
  Deflater() { EXPECT_EQ(deflateInit2(&stream_, 9, Z_DEFLATED, -15, 9, Z_DEFAULT_STRATEGY), Z_OK); }
  ~Deflater() { deflateEnd(&stream_); }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  // Behind a full flush the packed bytes stand for themselves and can be repeated.
  QByteArray packed(QByteArray plain, int flush = Z_FULL_FLUSH) {
    QByteArray result(static_cast<qsizetype>(compressBound(static_cast<uLong>(plain.size()))) + 64, '\0');
    stream_.next_in = reinterpret_cast<Bytef*>(plain.data());
    stream_.avail_in = static_cast<uInt>(plain.size());
    stream_.next_out = reinterpret_cast<Bytef*>(result.data());
    stream_.avail_out = static_cast<uInt>(result.size());
    deflate(&stream_, flush);
    result.chop(static_cast<qsizetype>(stream_.avail_out));
    return result;
  }

 private:
  z_stream stream_{};
};

uLong checksum(uLong before, const QByteArray& plain, int times = 1) {
  const uLong one =
      crc32(0, reinterpret_cast<const Bytef*>(plain.constData()), static_cast<uInt>(plain.size()));
  for (int i = 0; i < times; ++i) before = crc32_combine(before, one, plain.size());
  return before;
}

void writeArchive(const QString& path, const std::vector<Part>& parts) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  QDataStream out(&file);
  out.setByteOrder(QDataStream::LittleEndian);
  QByteArray list;
  QDataStream listed(&list, QIODevice::WriteOnly);
  listed.setByteOrder(QDataStream::LittleEndian);
  for (const Part& part : parts) {
    Deflater deflater;
    const QByteArray begin = deflater.packed(part.begin);
    const QByteArray block = part.times > 0 ? deflater.packed(part.block) : QByteArray();
    const QByteArray end = deflater.packed(part.end, Z_FINISH);
    const auto crc =
        static_cast<quint32>(checksum(checksum(checksum(0, part.begin), part.block, part.times), part.end));
    const auto packed = static_cast<quint32>(begin.size() + block.size() * part.times + end.size());
    const auto size =
        static_cast<quint32>(part.begin.size() + part.block.size() * part.times + part.end.size());
    const auto place = static_cast<quint32>(file.pos());
    const auto describe = [&](QDataStream& to) {
      to << quint16(20) << quint16(0) << quint16(8) << quint32(0) << crc << packed
         << (part.toldSize > 0 ? part.toldSize : size) << static_cast<quint16>(part.name.size())
         << quint16(0);
    };
    out << quint32(0x04034b50);
    describe(out);
    file.write(part.name + begin);
    for (int i = 0; i < part.times; ++i) file.write(block);
    file.write(end);
    listed << quint32(0x02014b50) << quint16(20);
    describe(listed);
    listed << quint16(0) << quint16(0) << quint16(0) << quint32(0) << place;
    listed.writeRawData(part.name.constData(), static_cast<int>(part.name.size()));
  }
  const auto place = static_cast<quint32>(file.pos());
  file.write(list);
  const auto count = static_cast<quint16>(parts.size());
  out << quint32(0x06054b50) << quint16(0) << quint16(0) << count << count
      << static_cast<quint32>(list.size()) << place << quint16(0);
}

class SheetBomb : public testing::Test {
 protected:
  // A workbook of one sheet; `sheet` and `strings` are its parts of these names.
  QString book(Part sheet, Part strings) {
    const QString path = folder_.filePath(u"bomb.xlsx"_s);
    sheet.name = "xl/worksheets/sheet1.xml";
    strings.name = "xl/sharedStrings.xml";
    writeArchive(path, {{.name = "xl/workbook.xml",
                         .begin = "<workbook><sheets><sheet name=\"A\" r:id=\"r1\" "
                                  "xmlns:r=\"r\"/></sheets></workbook>"},
                        {.name = "xl/_rels/workbook.xml.rels",
                         .begin = "<Relationships><Relationship Id=\"r1\" Type=\"x/worksheet\" "
                                  "Target=\"worksheets/sheet1.xml\"/></Relationships>"},
                        sheet,
                        strings});
    return path;
  }
  // What reading it ends with, and how often it got so far as to let events through.
  std::string refusal(const QString& path) {
    pauses_ = 0;
    try {
      const auto opened = openSheets(path, {.columns = 2, .pause = [this] { ++pauses_; }});
      const auto rows = opened->rows(0);
      SheetRow row;
      while (rows->next(row)) cells_ = row.cells;
    } catch (const SheetError& error) {
      return error.text.toStdString();
    }
    return {};
  }

  QTemporaryDir folder_;
  int pauses_ = 0;
  std::vector<QString> cells_;
};

const Part smallSheet{
    .name = {},
    .begin = "<worksheet><sheetData><row r=\"1\"><c t=\"s\"><v>1</v></c></row></sheetData></worksheet>"};
const Part smallStrings{.name = {}, .begin = "<sst><si><t>A</t></si><si><t>B</t></si></sst>"};

Part longCell(int megabytes) {
  return {.name = {},
          .begin = "<worksheet><sheetData><row r=\"1\"><c t=\"inlineStr\"><is><t>",
          .block = QByteArray(1 << 20, 'x'),
          .times = megabytes,
          .end = "</t></is></c></row></sheetData></worksheet>"};
}

Part manyStrings(int megabytes, const QByteArray& one) {
  return {.name = {},
          .begin = "<sst>",
          .block = one.repeated((1 << 20) / one.size()),
          .times = megabytes,
          .end = "</sst>"};
}

TEST_F(SheetBomb, TheArchivesOfTheseTestsAreWorkbooks) {
  EXPECT_EQ(refusal(book(smallSheet, smallStrings)), "");
  EXPECT_EQ(cells_, (std::vector<QString>{u"B"_s, QString()}));
}

TEST_F(SheetBomb, AWorkbookWithManyTextsIsRead) {
  EXPECT_EQ(refusal(book(smallSheet, manyStrings(4, "<si><t>C</t></si>"))), "");
  EXPECT_GT(pauses_, 0);
}

TEST_F(SheetBomb, ACellOfGigabytesIsTooBig) {
  EXPECT_NE(refusal(book(longCell(3072), smallStrings)).find("展开后过大"), std::string::npos);
}

TEST_F(SheetBomb, ACellOfMegabytesIsTooBig) {
  EXPECT_NE(refusal(book(longCell(20), smallStrings)).find("展开后过大"), std::string::npos);
}

TEST_F(SheetBomb, TextsThatPackTooWellAreRefusedBeforeTheyAreRead) {
  for (const int megabytes : {700, 100}) {
    const QString path = book(smallSheet, manyStrings(megabytes, "<si><t>商品</t></si>"));
    EXPECT_NE(refusal(path).find("展开后过大"), std::string::npos) << megabytes;
    EXPECT_EQ(pauses_, 0) << megabytes;
  }
}

TEST_F(SheetBomb, WhatIsLargerThanTheArchiveSaysIsDamagedThere) {
  Part strings = manyStrings(700, "<si><t>A</t></si>");
  strings.toldSize = 1 << 20;
  EXPECT_NE(refusal(book(smallSheet, strings)).find("不完整或已损坏"), std::string::npos);
  EXPECT_LT(pauses_, 500) << "a megabyte has fewer than a million pieces";
}

}  // namespace
}  // namespace goodsbook
