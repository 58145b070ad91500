#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include "schema/schema.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

struct Answer {
  int status = -1;
  std::string output, errors;
};

Answer goodsbook(const QStringList& arguments, const QByteArray& input = {}) {
  QProcess process;
  process.start(QStringLiteral(GOODSBOOK_PROGRAM), arguments);
  process.write(input);
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished(60'000));
  return {process.exitCode(), process.readAllStandardOutput().toStdString(),
          process.readAllStandardError().toStdString()};
}

QJsonObject parsed(const Answer& answer) {
  return QJsonDocument::fromJson(QByteArray::fromStdString(answer.output)).object();
}

class ConsoleCommands : public ::testing::Test {
 protected:
  QString file(const QString& name = u"shop.db"_s) const { return folder_.filePath(name); }
  Answer sql(const QString& text, const QStringList& options = {}) const {
    return goodsbook(QStringList{u"sql"_s, u"--database"_s, file()} + options + QStringList{text});
  }
  void makeShop(const QString& products = u"0"_s) const {
    const Answer made = goodsbook({u"init"_s, u"--database"_s, file(), u"--sample"_s, products});
    ASSERT_EQ(made.status, 0) << made.errors;
  }

 private:
  QTemporaryDir folder_;
};

TEST_F(ConsoleCommands, SqlPrintsSetsWithHeadersAndCountsInTheirOrder) {
  makeShop();
  const Answer answer =
      sql(u"update D1001 set hb_hl=1.5; select hb_id,hb_name,hb_bw,hb_hl,hb_note+'\tx' as t from D1001"_s
          u"; select addr_GL from D1002 where 1=2"_s);
  EXPECT_EQ(answer.errors, "");
  EXPECT_EQ(answer.status, 0);
  EXPECT_EQ(answer.output,
            "1 行受影响\n\nhb_id\thb_name\thb_bw\thb_hl\tt\n01\t人民币\t1\t1.5\t本位币\\tx\n\naddr_GL\n");
}

TEST_F(ConsoleCommands, SqlReadsBatchesFromStandardInputAndTellsTheLineOfTheWholeText) {
  makeShop();
  const Answer answer = goodsbook(
      {u"sql"_s, u"--database"_s, file()},
      "update D1001 set hb_hl=2\ngo\n\nselect 1 as a\nselect * from NoTable\ngo\nupdate D1001 set hb_hl=3\n");
  EXPECT_EQ(answer.status, 1);
  EXPECT_TRUE(answer.errors.starts_with("消息 208，级别 16，状态 1，行 5：")) << answer.errors;
  EXPECT_NE(answer.errors.find("NoTable"), std::string::npos);
  EXPECT_EQ(sql(u"select hb_hl from D1001"_s).output, "hb_hl\n2\n");
}

TEST_F(ConsoleCommands, SqlAnswersJson) {
  makeShop();
  const QJsonObject good = parsed(sql(u"select hb_id,hb_note,null as n from D1001"_s, {u"--json"_s}));
  EXPECT_EQ(
      good,
      (QJsonObject{
          {u"ok"_s, true},
          {u"sets"_s, QJsonArray{QJsonObject{
                          {u"columns"_s, QJsonArray{u"hb_id"_s, u"hb_note"_s, u"n"_s}},
                          {u"rows"_s, QJsonArray{QJsonArray{u"01"_s, u"本位币"_s, QJsonValue::Null}}}}}}}));
  const Answer refused = sql(u"select"_s, {u"--json"_s});
  const QJsonObject bad = parsed(refused);
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(bad[u"ok"_s], QJsonValue(false));
  EXPECT_EQ(bad[u"number"_s].toInt(), 102);
  EXPECT_EQ(bad[u"line"_s].toInt(), 1);
  EXPECT_FALSE(bad[u"error"_s].toString().isEmpty());
}

TEST_F(ConsoleCommands, SqlMayDefineTables) {
  makeShop();
  EXPECT_EQ(sql(u"create table T (a int)"_s).status, 0);
}

TEST_F(ConsoleCommands, SqlMakesAFileOnlyWhenAsked) {
  EXPECT_EQ(sql(u"select 1 as a"_s).status, 1);
  EXPECT_FALSE(QFile::exists(file()));
  EXPECT_EQ(sql(u"select USER_ID from SYS_USER"_s, {u"--create"_s}).output, "USER_ID\nADMIN\n");
}

TEST_F(ConsoleCommands, SqlWithoutADatabaseExplainsItself) {
  const Answer answer = goodsbook({u"sql"_s, u"select 1"_s});
  EXPECT_EQ(answer.status, 2);
  EXPECT_NE(answer.errors.find("--database"), std::string::npos);
}

TEST_F(ConsoleCommands, SchemaPrintsTheScriptAndItsUpgrades) {
  EXPECT_EQ(goodsbook({u"schema"_s}).output, std::string(schema::script()) + '\n');
  EXPECT_EQ(goodsbook({u"schema"_s, u"--from"_s, u"1"_s}).output, schema::upgradeScript(1) + '\n');
  EXPECT_EQ(goodsbook({u"schema"_s, u"--from"_s, QString::number(schema::version())}).output, "");
  EXPECT_EQ(goodsbook({u"schema"_s, u"--from"_s, u"99"_s}).status, 2);
}

TEST_F(ConsoleCommands, SchemaPrintsTheRoleThatAServerNeeds) {
  const std::string script = goodsbook({u"schema"_s, u"--role"_s}).output;
  EXPECT_NE(script.find("grant execute on object::dbo.SYS_DW to goodsbook_user"), std::string::npos);
}

TEST_F(ConsoleCommands, ServersAreNotGivenSecretsOnTheCommandLine) {
  const Answer answer =
      goodsbook({u"sql"_s, u"--server"_s, u"Driver=FreeTDS;Server=a;UID=sa;PWD=geheim"_s, u"select 1"_s});
  EXPECT_EQ(answer.status, 1);
  EXPECT_NE(answer.errors.find("GOODSBOOK_SERVER_PASSWORD"), std::string::npos) << answer.errors;
  EXPECT_EQ(answer.errors.find("geheim"), std::string::npos) << answer.errors;
}

TEST_F(ConsoleCommands, AMissingServerIsNamed) {
  const Answer answer = goodsbook(
      {u"sql"_s, u"--server"_s, u"Driver=FreeTDS;Server=nobody.invalid;Database=shop"_s, u"select 1"_s});
  EXPECT_EQ(answer.status, 1);
  EXPECT_NE(answer.errors.find("nobody.invalid"), std::string::npos) << answer.errors;
}

TEST_F(ConsoleCommands, EveryCommandOnADatabaseTakesAServer) {
  const QString nobody = u"Driver=FreeTDS;Server=nobody.invalid;Database=shop"_s;
  const QString secret = nobody + u";PWD=geheim"_s;
  const std::vector<QStringList> commands = {
      {u"sql"_s, u"select 1"_s, u"--server"_s},
      {u"init"_s, u"--server"_s},
      {u"drive"_s, u"--program-dir"_s, file(u"program"_s), u"--server"_s},
      {u"tour"_s, u"--out"_s, file(u"pictures"_s), u"--server"_s},
      {u"copy"_s, u"--to"_s, file(u"new.db"_s), u"--from-server"_s},
      {u"copy"_s, u"--from"_s, file(u"new.db"_s), u"--to-server"_s}};
  for (const QStringList& command : commands) {
    SCOPED_TRACE(command.join(u' ').toStdString());
    const Answer refused = goodsbook(command + QStringList(secret));
    EXPECT_NE(refused.status, 0);
    EXPECT_NE(refused.errors.find("GOODSBOOK_SERVER_PASSWORD"), std::string::npos) << refused.errors;
    EXPECT_EQ(refused.errors.find("geheim"), std::string::npos) << refused.errors;
    if (command.contains(u"--to-server"_s)) continue;  // the file is looked at first
    const Answer answer = goodsbook(command + QStringList(nobody));
    EXPECT_NE(answer.status, 0);
    EXPECT_NE(answer.errors.find("nobody.invalid"), std::string::npos) << answer.errors;
  }
}

TEST_F(ConsoleCommands, CopyMakesAnotherFileAndReplacesNone) {
  makeShop();
  const QString other = file() + u".copy"_s;
  EXPECT_EQ(goodsbook({u"copy"_s, u"--from"_s, file(), u"--to"_s, file()}).status, 1);
  EXPECT_EQ(goodsbook({u"copy"_s, u"--from"_s, file()}).status, 2);
  const Answer copied = goodsbook({u"copy"_s, u"--from"_s, file(), u"--to"_s, other});
  EXPECT_EQ(copied.status, 0) << copied.errors;
  EXPECT_NE(copied.output.find("SYS_USER\t1"), std::string::npos) << copied.output;
  EXPECT_TRUE(QFile::exists(other));
}

TEST_F(ConsoleCommands, InitMakesAShopWithPictures) {
  makeShop(u"100"_s);
  EXPECT_EQ(sql(u"select count(*) as n from D1801"_s).output, "n\n100\n");
  EXPECT_EQ(sql(u"select PYM from D1003 where dw_id='01'"_s).output, "PYM\nP\n");
  const std::string picture = sql(u"select pict from D1801 where WL_ID='000001'"_s).output;
  EXPECT_TRUE(picture.starts_with("pict\n0xFFD8FF")) << picture.substr(0, 40);
  EXPECT_FALSE(QFile::exists(file() + u".new"_s));
}

TEST_F(ConsoleCommands, InitReplacesAFileOnlyWhenForced) {
  makeShop();
  ASSERT_EQ(sql(u"update D1001 set hb_name='X'"_s).status, 0);
  const Answer refused = goodsbook({u"init"_s, u"--database"_s, file(), u"--sample"_s, u"0"_s});
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.errors.find("文件已存在"), std::string::npos);
  EXPECT_EQ(sql(u"select hb_name from D1001"_s).output, "hb_name\nX\n");
  EXPECT_EQ(goodsbook({u"init"_s, u"--database"_s, file(), u"--sample"_s, u"0"_s, u"--force"_s}).status, 0);
  EXPECT_EQ(sql(u"select hb_name from D1001"_s).output, "hb_name\n人民币\n");
}

TEST_F(ConsoleCommands, InitRefusesNumbersThatAreNone) {
  for (const QString& number : {u"-1"_s, u"many"_s, u"1000001"_s}) {
    EXPECT_EQ(goodsbook({u"init"_s, u"--database"_s, file(), u"--sample"_s, number}).status, 2)
        << number.toStdString();
    EXPECT_FALSE(QFile::exists(file()));
  }
}

TEST_F(ConsoleCommands, ABarcodeLibraryIsBuiltAndLooked) {
  QFile table(file(u"table.csv"_s));
  ASSERT_TRUE(table.open(QIODevice::WriteOnly));
  table.write("条码,品名,规格,单位,产地\n6901234567892,可乐,330ml,听,上海\n123,雪碧\n");
  table.close();
  const QString folder = file(u"program"_s);
  const auto library = [&](const QString& what, const QString& of) {
    return goodsbook({u"barcode-library"_s, what, of, u"--program-dir"_s, folder});
  };
  EXPECT_EQ(library(u"look"_s, u"6901234567892"_s).status, 1);
  const Answer built = library(u"build"_s, table.fileName());
  EXPECT_EQ(built.status, 0);
  EXPECT_EQ(built.errors, "第 3 行：条码应为 7 至 13 位数字：123\n");
  EXPECT_NE(built.output.find("写入 1 条，错误 1 行"), std::string::npos) << built.output;
  const Answer found = library(u"look"_s, u"6901234567892"_s);
  EXPECT_EQ(found.status, 0);
  EXPECT_EQ(found.output, "6901234567892\t可乐\t330ml\t听\t上海\n");
  const Answer unknown = library(u"look"_s, u"6901234567899"_s);
  EXPECT_EQ(unknown.status, 1);
  EXPECT_NE(unknown.errors.find("6901234567899"), std::string::npos);
  EXPECT_EQ(library(u"build"_s, file(u"missing.csv"_s)).status, 1);
  EXPECT_EQ(library(u"look"_s, u"6901234567892"_s).status, 0);
  EXPECT_EQ(library(u"burn"_s, u"x"_s).status, 2);
  EXPECT_EQ(goodsbook({u"barcode-library"_s, u"build"_s}).status, 2);
}

}  // namespace
}  // namespace goodsbook
