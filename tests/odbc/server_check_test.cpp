#include <QElapsedTimer>
#include <QTcpServer>

#include "host/data/errors.h"
#include "schema/schema.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// What is wrong with a server, in plain words: with the real drivers.
namespace goodsbook::test {
namespace {

int closedPort() {
  QTcpServer probe;
  probe.listen(QHostAddress::LocalHost);
  return probe.serverPort();
}

ServerCheck check(const QString& address, const ServerLogin& login = {u"sa"_s, u"verysecret"_s}) {
  return checkServer(ServerAddress::parse(address), login, {.connectSeconds = 5});
}

class ServerCheckTest : public ServerTest {
 protected:
  void TearDown() override {
    server().psql(u"drop schema if exists sys cascade"_s);
    ServerTest::TearDown();
  }
  ServerCheck checkWith(const QString& word, const QString& value, ServerLogin login = server().login()) {
    ServerAddress address = server().address();
    if (word == "Database"_L1) address = address.withDatabase(value);
    return checkServer(address, login);
  }
};

TEST(ServerCheckBare, AMissingDriverIsNamed) {
  const ServerCheck checked = check(u"Driver=Nobody's Driver;Server=127.0.0.1;Database=shop"_s);
  EXPECT_EQ(checked.problem, ServerProblem::DriverMissing);
  EXPECT_TRUE(checked.text.contains(u"没有安装 ODBC 驱动程序“Nobody's Driver”"_s))
      << checked.text.toStdString();
}

TEST(ServerCheckBare, AnUnknownHostIsNamed) {
  for (const auto* driver : {u"FreeTDS", u"PostgreSQL Unicode"}) {
    const ServerCheck checked =
        check(u"Driver=%1;Server=nobody.invalid;Port=1433;Database=shop"_s.arg(QString::fromUtf16(driver)));
    EXPECT_EQ(checked.problem, ServerProblem::HostUnknown) << checked.text.toStdString();
    EXPECT_TRUE(checked.text.contains(u"找不到服务器“nobody.invalid”"_s)) << checked.text.toStdString();
  }
}

TEST(ServerCheckBare, AClosedPortIsNamed) {
  for (const auto* driver : {u"FreeTDS", u"PostgreSQL Unicode"}) {
    const int port = closedPort();
    const ServerCheck checked = check(
        u"Driver=%1;Server=127.0.0.1;Port=%2;Database=shop"_s.arg(QString::fromUtf16(driver)).arg(port));
    EXPECT_EQ(checked.problem, ServerProblem::PortClosed) << checked.text.toStdString();
    EXPECT_TRUE(checked.text.contains(QString::number(port))) << checked.text.toStdString();
    EXPECT_FALSE(checked.text.contains(u"verysecret"_s)) << checked.text.toStdString();
  }
}

// A port that is open, with nobody behind it.
struct SilentServer : QTcpServer {
  SilentServer() { listen(QHostAddress::LocalHost); }
  ServerAddress address(const QString& driver) const {
    return ServerAddress::parse(u"%1;Server=127.0.0.1;Port=%2;Database=shop"_s.arg(driver).arg(serverPort()));
  }
};

TEST(ServerCheckBare, AServerThatIsSilentIsToldSoInTime) {
  for (const auto* driver : {u"Driver=FreeTDS", u"Driver=PostgreSQL Unicode"}) {
    const SilentServer silent;
    QElapsedTimer clock;
    clock.start();
    const ServerCheck checked = checkServer(silent.address(QString::fromUtf16(driver)),
                                            {u"sa"_s, u"secret"_s}, {.connectSeconds = 2});
    EXPECT_EQ(checked.problem, ServerProblem::Silent) << checked.text.toStdString();
    EXPECT_TRUE(checked.text.contains(u"在 2 秒内没有回答"_s)) << checked.text.toStdString();
    EXPECT_LT(clock.elapsed(), 5'000);
  }
}

TEST(ServerCheckBare, ADriverThatDoesNotComeBackIsNotWaitedFor) {
  const SilentServer silent;
  QElapsedTimer clock;
  clock.start();
  // It tries one version after the other, each as long as it may take to log in, and again.
  const ServerCheck checked = checkServer(silent.address(u"Driver=FreeTDS;TDS_Version=auto"_s),
                                          {u"sa"_s, u"secret"_s}, {.connectSeconds = 1});
  EXPECT_EQ(checked.problem, ServerProblem::Silent) << checked.text.toStdString();
  EXPECT_TRUE(checked.text.contains(u"没有回答"_s)) << checked.text.toStdString();
  EXPECT_LT(clock.elapsed(), 8'000);
}

TEST(ServerCheckBare, WaitingForAServerIsGivenUpAtOnce) {
  class Impatient : public ServerAttendant {
   public:
    bool goesOn() override { return ++calls_ < 10; }

   private:
    int calls_ = 0;
  };
  const SilentServer silent;
  QElapsedTimer clock;
  clock.start();
  const AttendantMaker attend = [](const QString&, bool mayGiveUp) {
    EXPECT_TRUE(mayGiveUp);
    return std::make_unique<Impatient>();
  };
  EXPECT_THROW(checkServer(silent.address(u"Driver=FreeTDS"_s), {u"sa"_s, u"secret"_s}, {.attend = attend}),
               EAbort);
  EXPECT_LT(clock.elapsed(), 2'000);
}

TEST_F(ServerCheckTest, ARefusedLogInIsTold) {
  for (const ServerLogin& login :
       {ServerLogin{u"shop"_s, u"wrong-secret"_s}, ServerLogin{u"nobody"_s, u"x"_s}}) {
    const ServerCheck checked = checkServer(server().address(), login);
    EXPECT_EQ(checked.problem, ServerProblem::LoginRefused) << checked.text.toStdString();
    EXPECT_TRUE(checked.text.contains(login.user)) << checked.text.toStdString();
    EXPECT_FALSE(checked.text.contains(u"wrong-secret"_s)) << checked.text.toStdString();
  }
}

TEST_F(ServerCheckTest, AMissingDatabaseIsTold) {
  const ServerCheck checked = checkWith(u"Database"_s, u"nowhere"_s);
  EXPECT_EQ(checked.problem, ServerProblem::DatabaseMissing) << checked.text.toStdString();
  EXPECT_TRUE(checked.text.contains(u"nowhere"_s)) << checked.text.toStdString();
}

TEST_F(ServerCheckTest, AMissingSchemaIsTold) {
  EXPECT_EQ(checkServer(server().address(), server().login()).problem, ServerProblem::SchemaMissing);
}

TEST_F(ServerCheckTest, AnOlderAndANewerSchemaAreTold) {
  run(u"create table SYS_VERSION (VERSION int not null); insert into SYS_VERSION values (1)"_s);
  const ServerCheck older = checkServer(server().address(), server().login());
  EXPECT_EQ(older.problem, ServerProblem::SchemaOlder);
  EXPECT_TRUE(older.text.contains(u"schema --from 1"_s)) << older.text.toStdString();
  run(u"update SYS_VERSION set VERSION=999"_s);
  EXPECT_EQ(checkServer(server().address(), server().login()).problem, ServerProblem::SchemaNewer);
  run(u"update SYS_VERSION set VERSION=%1"_s.arg(schema::version()));
  const ServerCheck right = checkServer(server().address(), server().login());
  EXPECT_EQ(right.problem, ServerProblem::None);
  EXPECT_EQ(right.text, u"连接成功：shop @ 127.0.0.1"_s);
}

// This driver takes no braces round a database's name; what needs them is compared as text elsewhere.
TEST_F(ServerCheckTest, ADatabaseWithAChineseNameIsFound) {
  const QString name = u"商店 一-'号'"_s;
  server().psql(u"create database \"%1\""_s.arg(name));
  const ServerAddress address = ServerAddress::parse(server().address().withDatabase(name).text());
  const auto shop = openServerDatabase(address, server().login());
  EXPECT_EQ(texts(runSql(*shop, u"select current_database()::varchar(60)"_s, Database::Permission::Screens)),
            (Rows{{name}}));
}

// What a server of the SQL Server class says of its databases.
QString saysOfItself(const QString& collation, bool snapshots) {
  return u"create schema if not exists sys; create or replace function db_id() returns int language sql as 'select 7';"
         "create or replace view sys.databases as select 7 as database_id, '%1'::varchar(60) as collation_name, "
         "%2 as is_read_committed_snapshot_on"_s.arg(collation)
             .arg(snapshots ? 1 : 0);
}

TEST_F(ServerCheckTest, ReadersThatWaitForWritersAreToldAsAdvice) {
  run(u"create table SYS_VERSION (VERSION int not null); insert into SYS_VERSION values (%1)"_s.arg(
      schema::version()));
  EXPECT_EQ(checkServer(server().address(), server().login()).advice, QString());
  server().psql(saysOfItself(u"Chinese_PRC_CI_AS"_s, false));
  const ServerCheck waiting = checkServer(server().address(), server().login());
  EXPECT_EQ(waiting.problem, ServerProblem::None);
  EXPECT_TRUE(waiting.advice.contains(u"read_committed_snapshot on"_s)) << waiting.advice.toStdString();
  server().psql(saysOfItself(u"Chinese_PRC_CI_AS"_s, true));
  EXPECT_EQ(checkServer(server().address(), server().login()).advice, QString());
}

TEST_F(ServerCheckTest, ACollationThatTellsCapitalsFromSmallLettersIsTold) {
  for (const auto* unfit : {u"Chinese_PRC_CS_AS", u"Latin1_General_BIN2", u"Chinese_PRC_BIN"}) {
    server().psql(u"drop schema if exists sys cascade"_s);
    server().psql(saysOfItself(QString::fromUtf16(unfit), true));
    const ServerCheck checked = checkServer(server().address(), server().login());
    EXPECT_EQ(checked.problem, ServerProblem::CollationUnfit) << checked.text.toStdString();
    EXPECT_TRUE(checked.text.contains(QString::fromUtf16(unfit))) << checked.text.toStdString();
  }
  server().psql(u"drop schema sys cascade"_s);
  server().psql(saysOfItself(u"Latin1_General_100_CI_AS_SC_UTF8"_s, true));
  EXPECT_EQ(checkServer(server().address(), server().login()).problem, ServerProblem::SchemaMissing);
}

}  // namespace
}  // namespace goodsbook::test
