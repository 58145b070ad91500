#include "app/sign_in/server_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTemporaryDir>

#include "app/driver/drive_desktop.h"
#include "app/sign_in/log_in_window.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

void onGui(const std::function<void()>& work) {
  QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
}

QLineEdit* edit(QWidget& window, const QString& name) {
  return window.findChild<QLineEdit*>(name);
}

TEST(ServerDialogTest, GivesTheAddressAndKeepsTheSecretsApart) {
  onGui([] {
    const auto known = ServerAddress::parse(u"Driver=FreeTDS;Server=old;Database=shop;TDS_Version=7.4"_s);
    ServerDialog dialog(known, {u"sa"_s, {}});
    EXPECT_EQ(edit(dialog, u"Port"_s)->text(), u"1433"_s);
    edit(dialog, u"Server"_s)->setText(u" 192.168.0.5 "_s);
    edit(dialog, u"Port"_s)->setText(u"1500"_s);
    edit(dialog, u"ServerPassword"_s)->setText(u"geheim"_s);
    EXPECT_EQ(dialog.address().text(),
              u"Driver=FreeTDS;Server=192.168.0.5;Port=1500;Database=shop;TDS_Version=7.4"_s);
    EXPECT_EQ(dialog.login().user, u"sa"_s);
    EXPECT_EQ(dialog.login().password, u"geheim"_s);
  });
}

TEST(ServerDialogTest, CannotBeTestedOrAcceptedWhileSomethingIsMissing) {
  onGui([] {
    ServerDialog dialog({}, {});
    EXPECT_FALSE(dialog.findChild<QPushButton*>(u"btn_ok"_s)->isEnabled());
    edit(dialog, u"Server"_s)->setText(u"shop"_s);
    EXPECT_TRUE(dialog.findChild<QPushButton*>(u"btn_ok"_s)->isEnabled());
    edit(dialog, u"Port"_s)->clear();
    EXPECT_FALSE(dialog.findChild<QPushButton*>(u"btn_test"_s)->isEnabled());
  });
}

TEST(ServerDialogTest, TheTestSaysWhatIsWrong) {
  onGui([] {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    const int closed = probe.serverPort();
    probe.close();
    const auto address =
        ServerAddress::parse(u"Driver=FreeTDS;Server=127.0.0.1;Port=%1;Database=shop"_s.arg(closed));
    ServerDialog dialog(address, {u"sa"_s, u"geheim"_s});
    dialog.findChild<QPushButton*>(u"btn_test"_s)->click();
    const QString told = dialog.findChild<QLabel*>(u"TestResult"_s)->text();
    EXPECT_TRUE(told.startsWith(u"服务器“127.0.0.1”的端口 %1 连不上"_s.arg(closed))) << told.toStdString();
    edit(dialog, u"Options"_s)->setText(u"PWD=geheim"_s);
    dialog.findChild<QPushButton*>(u"btn_test"_s)->click();
    EXPECT_TRUE(dialog.findChild<QLabel*>(u"TestResult"_s)->text().contains(u"不能写用户和密码"_s));
  });
}

TEST(ServerDialogTest, AServerWithoutALogInIsNotTriedByTheWindow) {
  onGui([] {
    const QTemporaryDir folder;
    LogInWindow window(folder.path(), [] { return std::make_unique<DriveDesktop>(); });
    window.chooseDatabase(u"Driver=FreeTDS;Server=nobody.invalid;Database=shop"_s);
    EXPECT_TRUE(window.findChild<QLabel*>(u"Problem"_s)->text().contains(u"服务器…"_s));
    EXPECT_FALSE(window.findChild<QPushButton*>(u"btn_ok"_s)->isEnabled());
    EXPECT_FALSE(window.trySigningIn());
  });
}

}  // namespace
}  // namespace goodsbook
