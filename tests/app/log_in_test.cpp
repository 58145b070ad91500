#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include "app/driver/drive_desktop.h"
#include "app/sign_in/log_in_window.h"
#include "app/sign_in/password_dialog.h"
#include "app/sign_in/users.h"
#include "app/start.h"
#include "host/U_glo.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

void onGui(const std::function<void()>& work) {
  QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
}

class LogIn : public ::testing::Test {
 protected:
  QString file() const { return folder_.filePath(u"test.db"_s); }
  std::unique_ptr<LogInWindow> window() const {
    return std::make_unique<LogInWindow>(folder_.path(), [] { return std::make_unique<DriveDesktop>(); });
  }
  void setPassword(const QString& password) const {
    const auto session = openSession(file(), folder_.path(), std::make_unique<DriveDesktop>());
    Users(session->database()).setPassword(u"ADMIN"_s, password);
  }
  static void logIn(LogInWindow& window, const QString& password) {
    window.findChild<QLineEdit*>(u"Password"_s)->setText(password);
    window.findChild<QPushButton*>(u"btn_ok"_s)->click();
  }
  static QString problem(const LogInWindow& window) {
    const auto* label = window.findChild<QLabel*>(u"Problem"_s);
    return label->isHidden() ? QString() : label->text();
  }

  QTemporaryDir folder_;
};

TEST_F(LogIn, ListsTheUsersOfTheChosenDatabase) {
  onGui([this] {
    const auto logIn = window();
    logIn->chooseDatabase(file());
    const auto* users = logIn->findChild<QComboBox*>(u"User"_s);
    ASSERT_EQ(users->count(), 1);
    EXPECT_EQ(users->currentData().toString(), u"ADMIN"_s);
  });
}

TEST_F(LogIn, TheRightPasswordOpensTheSession) {
  onGui([this] {
    setPassword(u"secret"_s);
    const auto shown = window();
    shown->chooseDatabase(file());
    EXPECT_FALSE(shown->trySigningIn()) << "a password is needed";
    logIn(*shown, u"secret"_s);
    EXPECT_EQ(shown->result(), QDialog::Accepted);
    EXPECT_EQ(G_UserId, u"ADMIN"_s);
    EXPECT_NE(shown->takeSession(), nullptr);
  });
}

TEST_F(LogIn, AWrongPasswordIsSaidAndTheWindowStays) {
  onGui([this] {
    setPassword(u"secret"_s);
    const auto shown = window();
    shown->chooseDatabase(file());
    logIn(*shown, u"wrong"_s);
    EXPECT_NE(shown->result(), QDialog::Accepted);
    EXPECT_TRUE(problem(*shown).contains(u"ADMIN"_s));
  });
}

TEST_F(LogIn, WithoutAPasswordItNeedNotBeShown) {
  onGui([this] {
    const auto shown = window();
    shown->chooseDatabase(file());
    EXPECT_TRUE(shown->trySigningIn());
  });
}

TEST_F(LogIn, AFileThatIsNoDatabaseIsSaid) {
  onGui([this] {
    QFile junk(file());
    ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
    junk.write(QByteArray(8192, 'x'));
    junk.close();
    const auto shown = window();
    shown->chooseDatabase(file());
    EXPECT_TRUE(problem(*shown).contains(file()));
    EXPECT_FALSE(shown->findChild<QPushButton*>(u"btn_ok"_s)->isEnabled());
  });
}

TEST_F(LogIn, RemembersTheLastDatabase) {
  onGui([this] {
    const auto first = window();
    first->chooseDatabase(file());
    ASSERT_TRUE(first->trySigningIn());
    first->takeSession().reset();
    EXPECT_EQ(window()->findChild<QComboBox*>(u"Database"_s)->itemText(0), file());
  });
}

TEST_F(LogIn, TheFirstStartAsksForAPasswordOnce) {
  onGui([this] {
    const auto session = openSession(file(), folder_.path(), std::make_unique<DriveDesktop>());
    EXPECT_TRUE(PasswordDialog::isFirstStart(session->database()));
    PasswordDialog dialog(session->database(), u"ADMIN"_s, {}, {});
    dialog.findChild<QLineEdit*>(u"Wanted"_s)->setText(u"new"_s);
    dialog.findChild<QLineEdit*>(u"Again"_s)->setText(u"other"_s);
    dialog.findChild<QPushButton*>(u"btn_ok"_s)->click();
    EXPECT_FALSE(dialog.findChild<QLabel*>(u"Problem"_s)->isHidden());
    dialog.findChild<QLineEdit*>(u"Again"_s)->setText(u"new"_s);
    dialog.findChild<QPushButton*>(u"btn_ok"_s)->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_TRUE(Users(session->database()).isPassword(u"ADMIN"_s, u"new"_s));
    EXPECT_FALSE(PasswordDialog::isFirstStart(session->database()));
  });
}

}  // namespace
}  // namespace goodsbook
