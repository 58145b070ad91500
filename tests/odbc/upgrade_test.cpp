#include <QFile>

#include "app/driver/test_server.h"
#include "host/data/errors.h"
#include "schema/schema.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// The steps that bring a server's database up to date.
namespace goodsbook::test {
namespace {

class NoSink : public engine::ResultSink {
 public:
  void beginSet(std::span<const engine::Column>) override {}
  void row(const engine::Row&) override {}
};

// As a tool for scripts does it: in no transaction but the script's own, and an error ends nothing but its
// batch. Gives the number of errors.
int runAll(Database& database, const std::string& script) {
  int errors = 0;
  NoSink sink;
  for (const schema::ScriptBatch& batch : schema::batches(script)) {
    try {
      database.query(QString::fromUtf8(batch.text.data(), static_cast<qsizetype>(batch.text.size())), sink);
    } catch (const EDatabaseError&) {
      ++errors;
    }
  }
  return errors;
}

QString one(Database& database, const QString& select) {
  return runSql(database, select, Database::Permission::Owner)
      .sets.at(0)
      .rows.at(0)
      .at(0)
      .value_or(u"NULL"_s);
}

TEST(ServerUpgrade, AStepThatFailsLeavesNothingAndTheStepsBehindItAreNotDone) {
  if (!TestServer::isGiven()) GTEST_SKIP() << "T-SQL only: GOODSBOOK_TEST_SERVER names no server";
  QFile file(QStringLiteral(GOODSBOOK_SOURCE_DIR "/tests/schema/version_1.sql"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  TestServer& server = TestServer::shared();
  server.makeTables(file.readAll().toStdString());
  const QString costs = u"select count(*) from sys.columns where name='R_COST'"_s;
  const QString version = u"select VERSION from SYS_VERSION"_s;
  {
    const auto database = server.open({});
    runSql(*database, u"create index IX_SYS_AUDIT_KEY on SYS_AUDIT (KEY_VALUE)"_s,
           Database::Permission::Owner);
    EXPECT_GT(runAll(*database, schema::upgradeScript(1)), 0);
  }
  const auto database = server.open({});
  EXPECT_EQ(one(*database, version), u"1"_s);
  EXPECT_EQ(one(*database, costs), u"0"_s);
  runSql(*database, u"drop index IX_SYS_AUDIT_KEY on SYS_AUDIT"_s, Database::Permission::Owner);
  EXPECT_EQ(runAll(*database, schema::upgradeScript(1)), 0);
  EXPECT_EQ(one(*database, version), QString::number(schema::version()));
  EXPECT_EQ(one(*database, costs), u"1"_s);
  EXPECT_GT(runAll(*database, schema::upgradeScript(1)), 0) << "a second time";
}

}  // namespace
}  // namespace goodsbook::test
