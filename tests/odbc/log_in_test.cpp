#include <QComboBox>
#include <QDirIterator>
#include <QLabel>
#include <QPushButton>

#include "app/driver/drive_desktop.h"
#include "app/sign_in/log_in_window.h"
#include "app/sign_in/server_dialog.h"
#include "host/U_glo.h"
#include "host/data/errors.h"
#include "host/session.h"
#include "schema/schema.h"
#include "tests/odbc/server_world.h"

using namespace Qt::StringLiterals;

// Logging in to a server's database by the window.
namespace goodsbook::test {
namespace {

class ServerLogInTest : public ServerTest {
 protected:
  void SetUp() override {
    ServerTest::SetUp();
    server().psql(
        u"create table SYS_VERSION (VERSION int not null); insert into SYS_VERSION values (%1);"
        "create table SYS_USER (USER_ID varchar(10), USER_NAME varchar(10), T int); "
        "insert into SYS_USER values ('ADMIN','系统管理员',1);"
        "create table SYS_PASSWORD (USER_ID varchar(10), HASH varchar(200));"
        "create table SYS_SETTING (NAME varchar(50), VALUE varchar(200)); "
        "insert into SYS_SETTING values ('G_CoName','样例商店'),('G_ckid','01'),('G_CkName','总仓')"_s.arg(
            schema::version()));
  }
  void TearDown() override {
    qunsetenv("GOODSBOOK_SERVER_USER");
    qunsetenv("GOODSBOOK_SERVER_PASSWORD");
    resetGlobals();
    ServerTest::TearDown();
  }
  static void logInAs(const ServerLogin& login) {
    qputenv("GOODSBOOK_SERVER_USER", login.user.toUtf8());
    qputenv("GOODSBOOK_SERVER_PASSWORD", login.password.toUtf8());
  }
  LogInWindow window() const {
    return LogInWindow(folder_.path(), [] { return std::make_unique<DriveDesktop>(); });
  }
  // All that stands in the program's folder.
  QByteArray kept() const {
    QByteArray all;
    for (QDirIterator files(folder_.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
         files.hasNext();) {
      QFile file(files.next());
      if (file.open(QIODevice::ReadOnly)) all += file.readAll();
    }
    return all;
  }

  QTemporaryDir folder_;
};

TEST_F(ServerLogInTest, TheServerAndItsUserAreRememberedAndThePasswordIsNot) {
  logInAs(server().login());
  LogInWindow logIn = window();
  logIn.chooseDatabase(server().address().text());
  EXPECT_EQ(logIn.findChild<QComboBox*>(u"User"_s)->count(), 1);
  logIn.findChild<QPushButton*>(u"btn_ok"_s)->click();
  EXPECT_EQ(logIn.result(), QDialog::Accepted)
      << logIn.findChild<QLabel*>(u"Problem"_s)->text().toStdString();
  const auto session = logIn.takeSession();
  ASSERT_TRUE(session);
  const QByteArray all = kept();
  EXPECT_TRUE(all.contains("PostgreSQL Unicode")) << all.toStdString();
  EXPECT_TRUE(all.contains("serverUser=" + server().login().user.toUtf8())) << all.toStdString();
  EXPECT_FALSE(all.contains("geheim")) << all.toStdString();
  EXPECT_FALSE(all.contains(server().login().password.toUtf8().toBase64())) << all.toStdString();
}

TEST_F(ServerLogInTest, AWrongPasswordIsToldWithoutRepeatingIt) {
  logInAs({server().login().user, u"wrong-secret"_s});
  LogInWindow logIn = window();
  logIn.chooseDatabase(server().address().text());
  const QString told = logIn.findChild<QLabel*>(u"Problem"_s)->text();
  EXPECT_TRUE(told.contains(u"拒绝"_s)) << told.toStdString();
  EXPECT_FALSE(told.contains(u"wrong-secret"_s)) << told.toStdString();
  EXPECT_FALSE(kept().contains("wrong-secret"));
}

TEST_F(ServerLogInTest, TheSystemsAccountNeedsNoUser) {
  LogInWindow logIn = window();
  logIn.chooseDatabase(server().address().text() + u";Trusted_Connection=yes"_s);
  const QString told = logIn.findChild<QLabel*>(u"Problem"_s)->text();
  EXPECT_TRUE(told.contains(u"系统帐户"_s)) << told.toStdString();  // it was tried; this server has none
}

TEST_F(ServerLogInTest, TheDialogOffersTheSystemsAccount) {
  ServerDialog dialog(
      ServerAddress::parse(u"Driver=FreeTDS;Server=a;Port=1;Database=b;Trusted_Connection=Yes"_s), {});
  EXPECT_TRUE(dialog.address().usesSystemAccount());
  EXPECT_EQ(dialog.address().text(), u"Driver=FreeTDS;Server=a;Port=1;Database=b;Trusted_Connection=yes"_s);
}

}  // namespace
}  // namespace goodsbook::test
