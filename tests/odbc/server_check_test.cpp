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

}  // namespace
}  // namespace goodsbook::test
