#include "host/data/record_file.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <cstdio>
#include <stdexcept>

#include "tests/host/data/sample_rows.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using test::column;
using test::loadUnits;
using test::MemoryRow;
using test::null;

constexpr char savedFile[] = "GOODSBOOK_TEST_SAVED";

class RecordFileTest : public ::testing::Test {
 protected:
  QString path() const { return folder_.filePath(u"KRTZ"_s); }

  QByteArray bytes() const {
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  void overwrite(const QByteArray& with) const {
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(with);
  }

  // Loading must fail with a text and leave the set alone.
  void expectRefused(const QString& what) const {
    RecordSet rows;
    loadUnits(rows, {"X"});
    try {
      rows.loadFromFile(path());
      ADD_FAILURE() << "was loaded: " << what.toStdString();
    } catch (const std::runtime_error& error) {
      EXPECT_TRUE(QString::fromUtf8(error.what()).contains(what)) << error.what();
    }
    EXPECT_EQ(column(rows, u"dw_id"_s), u"X"_s);
  }

  QTemporaryDir folder_;
};

TEST_F(RecordFileTest, BringsBackFieldsRowsAndEdits) {
  RecordSet rows;
  rows.declareFields(
      {{u"dw_id"_s, FieldType::Text, 2, u"单位"_s, {}}, {u"abase"_s, FieldType::Float, 0, {}, u"0.00"_s}});
  rows.beginLoad(test::unitColumns());
  rows.appendLoaded(test::unitRow("A", std::string("甲"), 1));
  rows.appendLoaded(MemoryRow({null, null, null, null, null, null, null}));
  rows.appendLoaded(test::unitRow("C", null, -3));
  rows.endLoad();
  rows.setSort(u"dw_id"_s, true);
  rows.append();
  rows.setValue(u"dw_id"_s, u"新"_s);
  rows.setValue(u"abase"_s, u"0.50"_s);
  rows.post();
  rows.first();
  rows.setValue(u"n"_s, 5);
  rows.post();
  rows.saveToFile(path());

  RecordSet read;
  read.loadFromFile(path());
  EXPECT_FALSE(read.hasChanges());
  EXPECT_EQ(column(read, u"dw_id"_s), u"A  C 新"_s);
  EXPECT_EQ(column(read, u"n"_s), u"1  5 "_s);
  EXPECT_EQ(column(read, u"abase"_s), u"1.50  -2.50 0.50"_s);
  EXPECT_EQ(read.value(u"pict"_s), QVariant(QByteArray("\x01\x00", 2)));
  EXPECT_EQ(read.value(u"bdate"_s), rows.valueAt(1, 5));
  EXPECT_EQ(read.field(0).label, u"单位"_s);
  EXPECT_EQ(read.field(0).size, 2);
  EXPECT_EQ(read.currentRow(), 0);
}

TEST_F(RecordFileTest, ANewRowThatIsNotPostedStaysOut) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  rows.append();
  rows.setValue(u"dw_id"_s, u"B"_s);
  rows.saveToFile(path());
  EXPECT_EQ(rows.state(), RecordSet::State::Insert);
  RecordSet read;
  read.loadFromFile(path());
  EXPECT_EQ(column(read, u"dw_id"_s), u"A"_s);
}

TEST_F(RecordFileTest, EmptySetsCanBeKept) {
  RecordSet rows;
  rows.create({{u"tm"_s, FieldType::Text, 30, {}, {}}});
  rows.saveToFile(path());
  RecordSet read;
  read.loadFromFile(path());
  EXPECT_TRUE(read.isOpen());
  EXPECT_TRUE(read.isEmpty());
  EXPECT_TRUE(read.hasField(u"TM"_s));
}

TEST_F(RecordFileTest, EveryCutAndEveryTurnedByteIsRefused) {
  RecordSet rows;
  loadUnits(rows, {"A", "B"});
  rows.saveToFile(path());
  const QByteArray whole = bytes();
  EXPECT_TRUE(whole.startsWith("GBRS"));
  for (qsizetype length = 0; length < whole.size(); length += 7) {
    overwrite(whole.left(length));
    expectRefused(u"文件已损坏"_s);
  }
  for (qsizetype at = 8; at < whole.size(); at += 5) {
    QByteArray turned = whole;
    turned[at] = static_cast<char>(turned[at] ^ 0x40);
    overwrite(turned);
    expectRefused(u"文件已损坏"_s);
  }
  overwrite(whole + "more");
  expectRefused(u"文件已损坏"_s);
}

TEST_F(RecordFileTest, FilesOfANewerVersionAreRefused) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  rows.saveToFile(path());
  QByteArray newer = bytes();
  newer[4] = 2;
  overwrite(newer);
  expectRefused(u"更新版本"_s);
}

TEST_F(RecordFileTest, AMissingFileIsRefused) {
  expectRefused(u"无法读取文件"_s);
}

TEST_F(RecordFileTest, TheOldFileStandsUntilTheNewOneIsWhole) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  rows.saveToFile(path());
  const QByteArray before = bytes();
  // What holds the old file open keeps seeing it whole: the new one takes its place, nothing is written into
  // it.
  QFile old(path());
  ASSERT_TRUE(old.open(QIODevice::ReadOnly));
  loadUnits(rows, {"A", "B", "C"});
  rows.saveToFile(path());
  EXPECT_EQ(old.readAll(), before);
  EXPECT_NE(bytes(), before);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(RecordFileTest, AFolderThatIsMissingIsTold) {
  RecordSet rows;
  loadUnits(rows, {"A"});
  EXPECT_THROW(rows.saveToFile(folder_.filePath(u"none/KRTZ"_s)), std::runtime_error);
}

// The program of the test below that is killed; does nothing when it is not told a file.
TEST(RecordFile, DISABLED_SaveForEver) {
  const QString path = qEnvironmentVariable(savedFile);
  if (path.isEmpty()) return;
  RecordSet rows;
  loadUnits(rows, std::vector<std::string>(5000, "A"));
  for (;;) {
    rows.saveToFile(path);
    std::puts("saved");
    std::fflush(stdout);
  }
}

TEST_F(RecordFileTest, AProgramKilledWhileItSavesLeavesAWholeFile) {
  for (int round = 0; round < 3; ++round) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(savedFile), path());
    program.setProcessEnvironment(environment);
    program.start(
        QCoreApplication::applicationFilePath(),
        {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=RecordFile.DISABLED_SaveForEver"_s});
    QByteArray told;
    while (told.count("saved") <= round) {
      ASSERT_TRUE(program.waitForReadyRead(60'000));
      told += program.readAllStandardOutput();
    }
    program.kill();
    ASSERT_TRUE(program.waitForFinished(60'000));
    RecordSet rows;
    rows.loadFromFile(path());
    EXPECT_EQ(rows.rowCount(), 5000);
  }
}

}  // namespace
}  // namespace goodsbook
