#include "host/data/numbering.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>
#include <set>
#include <thread>

#include "host/data/U_dataop.h"
#include "host/data/errors.h"
#include "tests/host/data/test_session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr char sharedFile[] = "GOODSBOOK_TEST_NUMBERS";

class NumberingTest : public ::testing::Test {
 protected:
  void addProducts(const QStringList& codes) {
    for (const QString& code : codes)
      shop_.run(u"insert into D1801(WL_ID,WL_NAME,CLASS_ID) values('%1','','')"_s.arg(code));
  }

  test::TestSession shop_;
};

TEST_F(NumberingTest, SerialsCountUpByModulePrefixAndLength) {
  EXPECT_EQ(GetNOID(u"101"_s, {}, 4), u"0001"_s);
  EXPECT_EQ(GetNOID(u"101"_s, {}, 4), u"0002"_s);
  EXPECT_EQ(GetNOID(u"101"_s, u"饮"_s, 4), u"饮0001"_s);
  EXPECT_EQ(GetNOID(u"101"_s, {}, 6), u"000001"_s);
  EXPECT_EQ(GetNOID(u"113"_s, {}, 4), u"0001"_s);
  EXPECT_EQ(GetNOID(u"101"_s, {}, 4), u"0003"_s);
}

TEST_F(NumberingTest, CodesThatUsersTypedAreSkipped) {
  addProducts({u"A001"_s, u"a002"_s, u"A004"_s, u"A0030"_s, u"A00X"_s, u"B003"_s});
  EXPECT_EQ(GetNOID(u"101"_s, u"A"_s, 3), u"A003"_s);
  EXPECT_EQ(GetNOID(u"101"_s, u"A"_s, 3), u"A005"_s);
}

TEST_F(NumberingTest, UnitsThatADeletedProductLeftKeepItsCodeTaken) {
  addProducts({u"A001"_s, u"A004"_s});
  for (const char16_t* code : {u"A001", u"A002", u"A003", u"A003"})
    shop_.run(u"insert into D1801DW(T,WL_ID) values(1,'%1')"_s.arg(QStringView(code)));
  EXPECT_EQ(GetNOID(u"101"_s, u"A"_s, 3), u"A005"_s);
}

TEST_F(NumberingTest, ManyTakenCodesAreSkippedAtOnce) {
  QString batch;
  for (int i = 1; i <= 1234; ++i)
    batch += u"insert into D1102(KH_GYS_ID) values('%1');"_s.arg(i, 5, 10, QChar(u'0'));
  shop_.run(batch);
  EXPECT_EQ(GetNOID(u"113"_s, {}, 5), u"01235"_s);
}

TEST_F(NumberingTest, WhereAllNumbersAreUsedItSaysSo) {
  addProducts({u"Z1"_s, u"Z2"_s, u"Z3"_s, u"Z4"_s, u"Z5"_s, u"Z6"_s, u"Z7"_s, u"Z8"_s});
  EXPECT_EQ(GetNOID(u"101"_s, u"Z"_s, 1), u"Z9"_s);
  EXPECT_THROW(GetNOID(u"101"_s, u"Z"_s, 1), EDatabaseError);
  EXPECT_FALSE(shop_.database().inTransaction());
}

TEST_F(NumberingTest, LengthZeroIsTheMonthAndASerialThatNeverStartsAgain) {
  EXPECT_EQ(GetNOID(u"113"_s, {}, 0), u"2611000001"_s);
  EXPECT_EQ(GetNOID(u"113"_s, {}, 0), u"2611000002"_s);
  shop_.desktop().setNow(QDateTime(QDate(2027, 1, 5), QTime(8, 0)));
  EXPECT_EQ(GetNOID(u"113"_s, {}, 0), u"2701000003"_s);
  EXPECT_EQ(GetNOID(u"114"_s, {}, 0), u"2701000001"_s);
}

TEST_F(NumberingTest, DrawsAreRecorded) {
  GetNOID(u"101"_s, u"A"_s, 4);
  const auto sent = shop_.session().takeStatements();
  ASSERT_EQ(sent.size(), 1U);
  EXPECT_EQ(sent[0].op, u"GetNOID"_s);
  EXPECT_EQ(sent[0].module, u"101"_s);
  EXPECT_EQ(sent[0].key, u"A"_s);
  EXPECT_EQ(sent[0].result, u"A0001"_s);
}

std::vector<QString> draw(const QString& file, int count) {
  const auto database = openEmbeddedDatabase(file, {.create = false, .busyTimeoutMs = 60'000, .clock = {}});
  std::vector<QString> numbers;
  numbers.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) numbers.push_back(drawNumber(*database, u"101"_s, {}, 6, QDateTime()));
  return numbers;
}

// The other program of the test below; does nothing when it is not told a file.
TEST(Numbering, DISABLED_DrawForAnotherProgram) {
  const QString file = qEnvironmentVariable(sharedFile);
  if (file.isEmpty()) return;
  for (const QString& number : draw(file, 250)) std::puts(("drawn " + number.toStdString()).c_str());
}

TEST_F(NumberingTest, TwoThreadsAndTwoProgramsNeverDrawTheSame) {
  constexpr int each = 250;
  QProcess programs[2];
  for (auto& program : programs) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QString::fromLatin1(sharedFile), shop_.file());
    program.setProcessEnvironment(environment);
    program.start(
        QCoreApplication::applicationFilePath(),
        {u"--gtest_also_run_disabled_tests"_s, u"--gtest_filter=Numbering.DISABLED_DrawForAnotherProgram"_s});
  }
  std::vector<QString> drawn[2];
  {
    std::thread one([&] { drawn[0] = draw(shop_.file(), each); });
    std::thread other([&] { drawn[1] = draw(shop_.file(), each); });
    one.join();
    other.join();
  }
  std::set<QString> all;
  for (const auto& numbers : drawn) all.insert(numbers.begin(), numbers.end());
  for (auto& program : programs) {
    ASSERT_TRUE(program.waitForFinished(60'000));
    ASSERT_EQ(program.exitCode(), 0);
    for (const QByteArray& line : program.readAllStandardOutput().split('\n')) {
      if (line.startsWith("drawn ")) all.insert(QString::fromUtf8(line.mid(6)));
    }
  }
  EXPECT_EQ(all.size(), 4U * each);
  EXPECT_EQ(*all.begin(), u"000001"_s);
  EXPECT_EQ(*all.rbegin(), u"001000"_s);
}

}  // namespace
}  // namespace goodsbook
