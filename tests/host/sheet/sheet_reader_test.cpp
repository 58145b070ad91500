#include "host/sheet/sheet_reader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

QString fixture(const QString& name) {
  return QStringLiteral(GOODSBOOK_SOURCE_DIR) + u"/tests/host/sheet/fixtures/"_s + name;
}

// The rows as lines, cells separated by "|".
std::string shown(const QString& path, int columns = 5) {
  const auto book = openSheets(path, {.columns = columns});
  const auto rows = book->rows(0);
  QStringList lines;
  SheetRow row;
  while (rows->next(row))
    lines << QString::number(row.number) + u": "_s +
                 QStringList(row.cells.begin(), row.cells.end()).join(u'|');
  return lines.join(u'\n').toStdString();
}

std::string refusal(const QString& path) {
  try {
    shown(path);
  } catch (const SheetError& error) {
    return error.text.toStdString();
  }
  return {};
}

class SheetReader : public testing::Test {
 protected:
  QString write(const QString& name, const QByteArray& bytes) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
  static QByteArray bytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder;
};

// Header cells are merged, row 5 is hidden, row 6 is formulas, row 10 is empty.
const char* const shownRows =
    "1: 商品资料||规格|零售价|会员价\n"
    "2: 6901234567892|矿泉水|500ml|2.50|2\n"
    "3: 0012345678905|农夫's 果汁|1L<大>&\"瓶\"|1,234.50|¥1,234.50\n"
    "4: 0069012345678|单位 两 个|0.13|1.01|-3.46\n"
    "5: 6900000000001|藏起来的行|2026-11-20|10.00|0.1\n"
    "6: 6901234567893|合计|2026年1月5日|5.00|0.33\n"
    "7: 123456789012345||13:05|12.5%|1.23E+04\n"
    "8: TRUE?|TRUE|0.3|0.001|20\n"
    "9: 5|文本格式的数|#DIV/0!|1000000|-0.5\n"
    "11: 6909999999999|空行之后|||";

TEST_F(SheetReader, CellsOfAnXlsxAreReadAsShown) {
  std::string rows = shown(fixture(u"shown.xlsx"_s));
  if (const auto empty = rows.find("10: ||||\n"); empty != std::string::npos) rows.erase(empty, 9);
  EXPECT_EQ(rows, shownRows);
}

TEST_F(SheetReader, CellsOfAnXlsAreReadAsShown) {
  EXPECT_EQ(shown(fixture(u"shown.xls"_s)), shownRows);
}

TEST_F(SheetReader, OtherFormatsGoThroughLibreOffice) {
  if (QStandardPaths::findExecutable(u"soffice"_s).isEmpty()) GTEST_SKIP() << "LibreOffice is not installed";
  std::string rows = shown(fixture(u"shown.ods"_s));
  if (const auto empty = rows.find("10: ||||\n"); empty != std::string::npos) rows.erase(empty, 9);
  EXPECT_EQ(rows, shownRows);
}

TEST_F(SheetReader, WithoutLibreOfficeTheUserHearsWhatIsNeeded) {
  const QByteArray before = qgetenv("PATH");
  qputenv("PATH", folder.path().toUtf8());
  const std::string told = refusal(fixture(u"shown.ods"_s));
  qputenv("PATH", before);
  EXPECT_NE(told.find("需要安装 LibreOffice"), std::string::npos) << told;
}

TEST_F(SheetReader, SheetsHaveNames) {
  EXPECT_EQ(openSheets(fixture(u"shown.xlsx"_s))->sheets(), QStringList{u"商品"_s});
  EXPECT_EQ(openSheets(fixture(u"shown.xls"_s))->sheets(), QStringList{u"商品"_s});
}

TEST_F(SheetReader, OfAThousandColumnsTheWantedOnesAreRead) {
  const std::string xlsx = shown(fixture(u"thousand.xlsx"_s), 3);
  EXPECT_EQ(xlsx, "1: 列0|列1|列2\n2: 6900000000000|1|2\n3: 6900000000001|1|2");
  const std::string xls = shown(fixture(u"thousand.xls"_s), 3);
  EXPECT_EQ(xls, xlsx);
  EXPECT_NE(shown(fixture(u"thousand.xlsx"_s), 1000).find("|999\n"), std::string::npos);
}

TEST_F(SheetReader, ACellOf32767CharactersIsReadWhole) {
  for (const QString& name : {u"long.xlsx"_s, u"long.xls"_s}) {
    const auto book = openSheets(fixture(name), {.columns = 2});
    const auto rows = book->rows(0);
    SheetRow row;
    ASSERT_TRUE(rows->next(row) && rows->next(row));
    EXPECT_EQ(row.cells[1], QString(32767, u'长')) << name.toStdString();
  }
}

TEST_F(SheetReader, AnEmptySheetHasNoRows) {
  EXPECT_EQ(shown(fixture(u"empty.xlsx"_s)), "");
  EXPECT_EQ(shown(fixture(u"empty.xls"_s)), "");
}

TEST_F(SheetReader, WhatIsNoSheetIsRefused) {
  EXPECT_NE(refusal(fixture(u"picture.xls"_s)).find("不是电子表格文件"), std::string::npos);
  EXPECT_NE(refusal(write(u"letter.xlsx"_s, "Dear customer")).find("不是电子表格文件"), std::string::npos);
  EXPECT_NE(refusal(write(u"letter.xls"_s, "Dear customer")).find("不是电子表格文件"), std::string::npos);
  EXPECT_NE(refusal(folder.path()).find("不是电子表格文件"), std::string::npos);
  EXPECT_NE(refusal(write(u"nul.csv"_s, QByteArray("a,b\n") + QByteArray(5000, 'x') + QByteArray(1, '\0')))
                .find("不是电子表格文件"),
            std::string::npos);
}

TEST_F(SheetReader, AFileWithoutBytesIsEmpty) {
  EXPECT_NE(refusal(write(u"none.xlsx"_s, {})).find("是空的"), std::string::npos);
}

TEST_F(SheetReader, AMissingFileIsToldByName) {
  EXPECT_NE(refusal(folder.filePath(u"no.xls"_s)).find("no.xls 打不开"), std::string::npos);
}

TEST_F(SheetReader, ALockedFileIsToldAsSuch) {
  EXPECT_NE(refusal(fixture(u"locked.ods"_s)).find("密码"), std::string::npos);
  EXPECT_NE(refusal(fixture(u"locked.xls"_s)).find("密码"), std::string::npos);
  // A locked .xlsx is a file in a file with its contents under this name.
  QByteArray book = bytesOf(fixture(u"shown.xls"_s));
  const auto utf16 = [](const QString& name) {
    return QByteArray(reinterpret_cast<const char*>(name.utf16()), name.size() * 2);
  };
  const qsizetype entry = book.indexOf(utf16(u"Workbook"_s));
  ASSERT_GT(entry, 0);
  const QByteArray name = utf16(u"EncryptedPackage"_s);
  book.replace(entry, name.size(), name);
  book[entry + 64] = static_cast<char>(name.size() + 2);
  EXPECT_NE(refusal(write(u"locked.xlsx"_s, book)).find("密码"), std::string::npos);
}

TEST_F(SheetReader, AFileThatIsCutOffIsDamagedWhereverTheCutIs) {
  for (const QString& name : {u"shown.xlsx"_s, u"shown.xls"_s, u"long.xls"_s, u"thousand.xlsx"_s}) {
    const QByteArray whole = bytesOf(fixture(name));
    for (int part = 1; part < 16; ++part) {
      const QString path = write(name, whole.left(whole.size() * part / 16));
      EXPECT_NE(refusal(path).find("不完整或已损坏"), std::string::npos)
          << name.toStdString() << part << refusal(path);
    }
  }
}

TEST_F(SheetReader, AFileWithSpoiltBytesIsReadOrRefused) {
  for (const QString& name : {u"shown.xlsx"_s, u"shown.xls"_s}) {
    const QByteArray whole = bytesOf(fixture(name));
    for (qsizetype at = 0; at < whole.size(); at += 37) {
      QByteArray spoilt = whole;
      spoilt[at] = static_cast<char>(spoilt.at(at) ^ 0x5A);
      EXPECT_NO_THROW(refusal(write(name, spoilt)));
    }
  }
}

TEST_F(SheetReader, AZipBombIsRefusedBeforeItGoesOff) {
  EXPECT_NE(refusal(fixture(u"bomb.xlsx"_s)).find("展开后过大"), std::string::npos);
}

TEST_F(SheetReader, AFileThatAnotherProgramHoldsOpenCanBeRead) {
  const QString path = write(u"held.xlsx"_s, bytesOf(fixture(u"shown.xlsx"_s)));
  QProcess holder;
  holder.start(u"flock"_s, {u"-x"_s, path, u"sh"_s, u"-c"_s, u"echo held; cat"_s});
  ASSERT_TRUE(holder.waitForReadyRead(30'000)) << holder.errorString().toStdString();
  EXPECT_EQ(shown(path).substr(0, 2), "1:");
  holder.closeWriteChannel();
  EXPECT_TRUE(holder.waitForFinished(30'000));
}

TEST_F(SheetReader, TheUserCanGiveUp) {
  int pauses = 0;
  const auto pause = [&] {
    if (++pauses == 2) throw EAbort();
  };
  EXPECT_THROW(
      {
        const auto book = openSheets(fixture(u"thousand.xlsx"_s), {.pause = pause});
        const auto rows = book->rows(0);
        SheetRow row;
        while (rows->next(row)) row.number = 0;
      },
      EAbort);
}

TEST_F(SheetReader, TextsOfRowsComeInTheUsualEncodings) {
  const std::string expected = "1: 条码|品名||||\n2: 69|可乐||||";
  const QString text = u"条码,品名\n69,可乐\n"_s;
  const QByteArray utf16(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
  EXPECT_EQ(shown(write(u"a.csv"_s, text.toUtf8()), 6), expected);
  EXPECT_EQ(shown(write(u"b.csv"_s, "\xEF\xBB\xBF" + text.toUtf8()), 6), expected);
  EXPECT_EQ(shown(write(u"c.csv"_s, "\xCC\xF5\xC2\xEB,\xC6\xB7\xC3\xFB\n69,\xBF\xC9\xC0\xD6\n"), 6),
            expected);
  EXPECT_EQ(shown(write(u"d.csv"_s, "\xFF\xFE" + utf16), 6), expected);
}

TEST_F(SheetReader, TextsOfRowsHaveSeparatorsAndQuotes) {
  EXPECT_EQ(shown(write(u"a.csv"_s, "a;b;c\r\n1;2,5;3\r\n"), 3), "1: a|b|c\n2: 1|2,5|3");
  EXPECT_EQ(shown(write(u"b.csv"_s, "a\tb\n0069\t\"x\"\"y\"\n"), 2), "1: a|b\n2: 0069|x\"y");
  EXPECT_EQ(shown(write(u"c.csv"_s, "a,b\n\"1,2\",\"x\ny\"\n=\"007\",=1+1"), 2),
            "1: a|b\n2: 1,2|x\ny\n3: 007|=1+1");
  EXPECT_EQ(shown(write(u"d.csv"_s, "sep=;\na;b\n"), 2), "1: a|b");
  EXPECT_EQ(shown(write(u"e.xls"_s, "a\tb\n1\t2\n"), 2), "1: a|b\n2: 1|2");
}

TEST_F(SheetReader, AQuoteThatIsNeverClosedIsDamage) {
  EXPECT_NE(refusal(write(u"a.csv"_s, "a,b\n\"" + QByteArray(2 << 20, 'x'))).find("不完整或已损坏"),
            std::string::npos);
}

// LibreOffice wrote the sheets, and what it shows of them as text: format, value, cell. Left out is where it
// goes its own way: halves under a fixed denominator go down there and away from zero here, times are cut
// there and rounded here, and days before March 1900 are counted otherwise.
TEST_F(SheetReader, CellsAreShownAsLibreOfficeShowsThem) {
  const auto lines = [](const QString& name) {
    return QString::fromStdString(shown(fixture(name), 3)).split(u'\n');
  };
  const QStringList recorded = lines(u"displayed.csv"_s);
  EXPECT_EQ(recorded.size(), 578);
  for (const QString& name : {u"displayed.xlsx"_s, u"displayed.xls"_s}) {
    const QStringList ours = lines(name);
    ASSERT_EQ(ours.size(), recorded.size());
    for (qsizetype i = 0; i < ours.size(); ++i) EXPECT_EQ(ours[i].toStdString(), recorded[i].toStdString());
  }
}

}  // namespace
}  // namespace goodsbook
