// A program that is killed in the middle of an import: what was imported is whole, and the next run does the
// rest.
#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include "host/data/database.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int patience = 60'000;
constexpr int rowsInFile = 1500;

class KilledImport : public testing::Test {
 protected:
  KilledImport() {
    QFile file(folder_.filePath(u"goods.csv"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a,b,c,d,e\n");
    for (int i = 0; i < rowsInFile; ++i) file.write("69" + QByteArray::number(i) + ",水,1,2,2\n");
  }

  void start(QProcess& program) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    program.setProcessEnvironment(environment);
    program.start(
        QStringLiteral(GOODSBOOK_PROGRAM),
        {u"drive"_s, u"--database"_s, folder_.filePath(u"shop.db"_s), u"--program-dir"_s, folder_.path()});
    for (const QByteArray& line :
         {QByteArray(
              "{\"cmd\":\"sql\",\"text\":\"if not exists (select * from D1004) begin insert into D1004 "
              "(CLASS_ID,CLASS_NAME,OID) values ('01','x','Z'); insert into D1003 (dw_id,dw_name) values "
              "('01','y') end\"}"),
          QByteArray("{\"cmd\":\"open\",\"module\":101}"),
          QByteArray("{\"cmd\":\"action\",\"name\":\"Act_imp\"}"),
          QByteArray("{\"cmd\":\"pickfile\",\"path\":\"" + folder_.filePath(u"goods.csv"_s).toUtf8() + "\"}"),
          QByteArray("{\"cmd\":\"click\",\"element\":\"Edt_path.button\"}"),
          QByteArray("{\"cmd\":\"click\",\"element\":\"btn_ref\"}"),
          QByteArray("{\"cmd\":\"type\",\"element\":\"CLASS_ID\",\"text\":\"01\"}"),
          QByteArray("{\"cmd\":\"type\",\"element\":\"dw_id\",\"text\":\"01\"}")}) {
      const QJsonObject reply = send(program, line);
      EXPECT_TRUE(reply["ok"_L1].toBool())
          << line.toStdString() << reply["error"_L1].toString().toStdString();
    }
  }
  static QJsonObject send(QProcess& program, const QByteArray& line) {
    program.write(line + '\n');
    while (!program.canReadLine()) {
      if (!program.waitForReadyRead(patience)) return {};
    }
    return QJsonDocument::fromJson(program.readLine()).object();
  }
  int count(const QString& select) {
    const auto database = openEmbeddedDatabase(folder_.filePath(u"shop.db"_s), {.create = false});
    return runSql(*database, select, Database::Permission::Screens).sets.at(0).rows.at(0).at(0)->toInt();
  }
  int products() { return count(u"select count(*) from D1801"_s); }
  int wholeProducts() {
    return count(u"select count(*) from D1801 d,D1801DW w where d.WL_ID=w.WL_ID and w.T=1"_s);
  }

  QTemporaryDir folder_;
};

// The second value falls into the time in which the log is brought to the disk.
class KilledAfter : public KilledImport, public testing::WithParamInterface<int> {};

TEST_P(KilledAfter, LeavesWholeProductsAndTheNextRunDoesTheRest) {
  const QByteArray ok = "{\"cmd\":\"click\",\"element\":\"btn_ok\"}";
  int seen = 0;
  {
    QProcess program;
    start(program);
    program.write(ok + '\n');
    ASSERT_TRUE(program.waitForBytesWritten(patience));
    while ((seen = products()) < GetParam()) QThread::yieldCurrentThread();
    program.kill();
    ASSERT_TRUE(program.waitForFinished(patience));
  }
  const int before = products();
  EXPECT_GE(before, seen);
  EXPECT_EQ(wholeProducts(), before);
  QProcess program;
  start(program);
  send(program, ok);
  const QJsonObject end = send(program, "{\"cmd\":\"get\",\"element\":\"lab_result\"}");
  EXPECT_EQ(end["text"_L1].toString(),
            u"读取 %1 行，导入 %2，已存在 %3，失败 0"_s.arg(rowsInFile).arg(rowsInFile - before).arg(before));
  program.closeWriteChannel();
  EXPECT_TRUE(program.waitForFinished(patience));
  EXPECT_EQ(wholeProducts(), rowsInFile);
}

INSTANTIATE_TEST_SUITE_P(SomeRows, KilledAfter, testing::Values(50, 1130));

}  // namespace
}  // namespace goodsbook
