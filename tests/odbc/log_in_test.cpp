#include <QApplication>
#include <QComboBox>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>
#include <QTimer>
#include <functional>

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

TEST_F(ServerLogInTest, AServerIsShownByItsNameWithTheWholeAddressBehindIt) {
  logInAs(server().login());
  const QString address = server().address().text();
  LogInWindow first = window();
  first.chooseDatabase(address);
  first.findChild<QPushButton*>(u"btn_ok"_s)->click();
  ASSERT_EQ(first.result(), QDialog::Accepted);
  resetGlobals();
  first.takeSession().reset();
  const LogInWindow next = window();
  const auto* database = next.findChild<QComboBox*>(u"Database"_s);
  EXPECT_EQ(database->currentText(), u"shop @ 127.0.0.1"_s);
  EXPECT_EQ(database->currentData().toString(), address);
  EXPECT_EQ(database->toolTip(), address);
  EXPECT_EQ(database->itemData(0, Qt::ToolTipRole).toString(), address);
  EXPECT_EQ(database->count(), 1);
}

TEST_F(ServerLogInTest, ARefusedServerLeavesNoUsersOfTheOneBefore) {
  logInAs(server().login());
  LogInWindow logIn = window();
  logIn.chooseDatabase(server().address().text());
  const auto* users = logIn.findChild<QComboBox*>(u"User"_s);
  ASSERT_EQ(users->count(), 1);
  logIn.findChild<QLineEdit*>(u"Password"_s)->setText(u"typed"_s);
  logIn.chooseDatabase(server().address().withDatabase(u"nowhere"_s).text());
  EXPECT_EQ(users->count(), 0);
  EXPECT_FALSE(users->isEnabled());
  EXPECT_EQ(logIn.findChild<QLineEdit*>(u"Password"_s)->text(), QString());
}

// Cancels the box that stands while a server is waited for, which what is typed does not.
class Canceller : public QTimer {
 public:
  Canceller() {
    callOnTimeout(this, [this] {
      auto* box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
      if (!box || box->objectName() != "ServerWait"_L1) return;
      ++clicks;
      if (onClick) onClick();
      for (const Qt::Key typed : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Enter}) QTest::keyClick(box, typed);
      EXPECT_FALSE(box->wasCanceled());
      if (byKey) {
        QTest::keyClick(box, Qt::Key_Escape);
      } else {
        box->findChild<QPushButton*>()->click();
      }
    });
    start(10);
  }
  int clicks = 0;
  bool byKey = false;
  std::function<void()> onClick;
};

TEST_F(ServerLogInTest, TheWindowStandsBeforeASilentServerIsAskedAndWaitingForItIsCancelled) {
  logInAs({u"sa"_s, u"secret"_s});
  QTcpServer silent;
  ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
  LogInWindow logIn = window();
  Canceller canceller;
  canceller.onClick = [&] { EXPECT_TRUE(logIn.isVisible()); };
  QElapsedTimer clock;
  clock.start();
  logIn.begin(u"Driver=FreeTDS;Server=127.0.0.1;Port=%1;Database=shop"_s.arg(silent.serverPort()));
  EXPECT_EQ(canceller.clicks, 1);
  EXPECT_LT(clock.elapsed(), 3'000);
  EXPECT_TRUE(logIn.findChild<QLabel*>(u"Problem"_s)->text().contains(u"已取消"_s));
  EXPECT_FALSE(logIn.findChild<QPushButton*>(u"btn_ok"_s)->isEnabled());
  EXPECT_FALSE(QApplication::overrideCursor());
}

TEST_F(ServerLogInTest, TheTestOfAConnectionIsCancelled) {
  QTcpServer silent;
  ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
  ServerDialog dialog(ServerAddress::parse(u"Driver=FreeTDS;Server=127.0.0.1;Port=%1;Database=shop"_s.arg(
                          silent.serverPort())),
                      {u"sa"_s, u"secret"_s});
  dialog.show();
  Canceller canceller;
  canceller.byKey = true;
  dialog.findChild<QPushButton*>(u"btn_test"_s)->click();
  EXPECT_EQ(canceller.clicks, 1);
  EXPECT_TRUE(dialog.findChild<QLabel*>(u"TestResult"_s)->text().contains(u"已取消"_s));
}

TEST_F(ServerLogInTest, TheDialogOffersTheSystemsAccount) {
  ServerDialog dialog(
      ServerAddress::parse(u"Driver=FreeTDS;Server=a;Port=1;Database=b;Trusted_Connection=Yes"_s), {});
  EXPECT_TRUE(dialog.address().usesSystemAccount());
  EXPECT_EQ(dialog.address().text(), u"Driver=FreeTDS;Server=a;Port=1;Database=b;Trusted_Connection=yes"_s);
}

}  // namespace
}  // namespace goodsbook::test
