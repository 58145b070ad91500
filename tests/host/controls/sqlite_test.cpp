#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>

#include "host/controls/TASQLite3.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class BarcodeLibrary : public testing::Test {
 protected:
  void SetUp() override {
    sqlite3* file = nullptr;
    ASSERT_EQ(sqlite3_open(path().toUtf8().constData(), &file), SQLITE_OK);
    ASSERT_EQ(
        sqlite3_exec(file,
                     "create table C (C_NO2 text, C_NO text, C_NAME text, C_GG text, C_DW text, C_CD text);"
                     "insert into C values ('45B354A87CB','6901234567892','矿泉水','500ml','瓶','杭州');"
                     "insert into C values ('45B354A87CB','6901234567892','纯净水',null,'瓶','');",
                     nullptr, nullptr, nullptr),
        SQLITE_OK);
    sqlite3_close(file);
    database_.Database = path();
  }
  QString path() const { return folder_.filePath(u"MOXELZBC"_s); }

  QTemporaryDir folder_;
  TASQLite3DB database_;
};

TEST_F(BarcodeLibrary, ReadsRowByRowByFieldName) {
  database_.Open();
  TASQLite3Query query(database_);
  query.Open(u"select count(*) AS COUNT from C"_s);
  EXPECT_EQ(query.FieldByName(u"count"_s), u"2"_s);
  query.Close();
  query.Open(u"select * from C where c_no2='45B354A87CB'"_s);
  ASSERT_FALSE(query.Eof());
  EXPECT_EQ(query.FieldByName(u"c_NAME"_s), u"矿泉水"_s);
  query.Next();
  EXPECT_EQ(query.FieldByName(u"C_GG"_s), QString());
  query.Next();
  EXPECT_TRUE(query.Eof());
  EXPECT_EQ(query.FieldByName(u"C_GG"_s), QString());
  EXPECT_THROW(query.FieldByName(u"nothing"_s), std::invalid_argument);
}

TEST_F(BarcodeLibrary, IsNeverWritten) {
  database_.Open();
  TASQLite3Query query(database_);
  EXPECT_THROW(query.Open(u"delete from C returning C_NO"_s), EDatabaseError);
  EXPECT_THROW(query.Open(u"delete from C"_s), EDatabaseError);
  query.Open(u"select count(*) AS COUNT from C"_s);
  EXPECT_EQ(query.FieldByName(u"COUNT"_s), u"2"_s);
}

TEST_F(BarcodeLibrary, WrongStatementsAreErrors) {
  database_.Open();
  TASQLite3Query query(database_);
  EXPECT_THROW(query.Open(u"select nothing from C"_s), EDatabaseError);
  EXPECT_THROW(query.Open(QString()), EDatabaseError);
  EXPECT_TRUE(query.Eof());
}

TEST_F(BarcodeLibrary, MissingAndDamagedFilesAreErrors) {
  TASQLite3DB missing;
  missing.Database = folder_.filePath(u"none"_s);
  EXPECT_THROW(missing.Open(), EDatabaseError);
  EXPECT_FALSE(QFile::exists(missing.Database));
  QFile file(path());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray(4096, 'x'));
  file.close();
  EXPECT_THROW(database_.Open(), EDatabaseError);
  EXPECT_FALSE(database_.Connected());
}

}  // namespace
}  // namespace goodsbook
