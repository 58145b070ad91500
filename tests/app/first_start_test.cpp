// From the log-in window to the main window: what a shop is asked when it starts for the first time.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>

#include "app/driver/drive_desktop.h"
#include "app/main_window/main_window.h"
#include "app/master_data.h"
#include "app/sign_in/log_in_window.h"
#include "app/sign_in/users.h"
#include "app/start.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

using Questions = std::vector<QString>;

void onGui(const std::function<void()>& work) {
  QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
}

// The administrator has a password; what the program asks then is about the starting set.
class FirstStart : public ::testing::Test {
 protected:
  void SetUp() override {
    onGui([this] {
      const auto session = openSession(file(), folder_.path(), std::make_unique<DriveDesktop>());
      Users(session->database()).setPassword(u"ADMIN"_s, u"secret"_s);
    });
  }
  void TearDown() override {
    onGui([this] { leave(); });
  }

  // Signs in and starts to work; the next questions are answered with `answers`. What was asked.
  Questions start(const QString& answers = {}) {
    leave();
    {
      LogInWindow window(folder_.path(), [] { return std::make_unique<DriveDesktop>(); });
      window.chooseDatabase(file());
      window.findChild<QLineEdit*>(u"Password"_s)->setText(u"secret"_s);
      window.findChild<QPushButton*>(u"btn_ok"_s)->click();
      session_ = window.takeSession();
    }
    masterData_ = std::make_unique<MasterData>();
    window_ = std::make_unique<MainWindow>(*session_, *masterData_);
    queue(answers);
    window_->open();
    EXPECT_TRUE(window_->isVisible());
    return asked();
  }
  Questions chooseFromMenu(const QString& answers) {
    queue(answers);
    item()->trigger();
    return asked();
  }
  bool menuOffersIt() {
    Q_EMIT qobject_cast<QMenu*>(item()->associatedObjects().constFirst())->aboutToShow();
    return item()->isEnabled();
  }
  // Rows of accounts, currencies, units, delivery methods, payment methods and regions.
  QString counts() {
    QStringList all;
    for (const QString& table : {u"D6801"_s, u"D1001"_s, u"D1003"_s, u"D1011"_s, u"D1012"_s, u"D1002"_s})
      all << *run(u"select count(*) from "_s + table).sets.at(0).rows.at(0).at(0);
    return all.join(u' ');
  }
  SqlSets run(const QString& batch) {
    return runSql(session_->database(), batch, Database::Permission::Owner);
  }

 private:
  QString file() const { return folder_.filePath(u"test.db"_s); }
  DriveDesktop& desktop() { return static_cast<DriveDesktop&>(session_->desktop()); }
  QAction* item() { return window_->findChild<QAction*>(u"StartingSet"_s); }
  void queue(const QString& answers) {
    for (const QChar answer : answers) desktop().queueAnswer(answer.toLatin1());
  }
  Questions asked() {
    Questions texts;
    for (const DriveDesktop::Message& message : desktop().takeMessages()) texts.push_back(message.text);
    EXPECT_EQ(desktop().takeUnexpectedQuestions(), 0);
    EXPECT_EQ(desktop().takeUnused(), QStringList());
    return texts;
  }
  void leave() {
    window_.reset();
    masterData_.reset();
    session_.reset();
  }

  QTemporaryDir folder_;
  std::unique_ptr<Session> session_;
  std::unique_ptr<MasterData> masterData_;
  std::unique_ptr<MainWindow> window_;
};

TEST_F(FirstStart, YesPutsTheStartingSetThereAndIsNotAskedAgain) {
  onGui([this] {
    const Questions asked = start(u"y"_s);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_TRUE(asked[0].startsWith(u"是否建立新店常用的基本资料?"_s));
    EXPECT_TRUE(asked[0].contains(
        u"会计科目（1001 库存现金、1002 银行存款）、本位币人民币、常用计量单位、送货方式、付款方式、"
        "地区“01 本市”。"_s));
    EXPECT_EQ(counts(), u"7 1 20 4 6 1"_s);
    EXPECT_FALSE(menuOffersIt());
    EXPECT_EQ(start(), Questions());
  });
}

TEST_F(FirstStart, NoLeavesTheShopEmptyAndTheMenuOffersItLater) {
  onGui([this] {
    EXPECT_EQ(start(u"n"_s).size(), 1U);
    EXPECT_EQ(counts(), u"0 0 0 0 0 0"_s);
    EXPECT_EQ(start(), Questions()) << "asked once";
    EXPECT_TRUE(menuOffersIt());
    EXPECT_EQ(chooseFromMenu(u"n"_s).size(), 1U);
    EXPECT_EQ(counts(), u"0 0 0 0 0 0"_s);
    EXPECT_EQ(chooseFromMenu(u"y"_s).size(), 1U);
    EXPECT_EQ(counts(), u"7 1 20 4 6 1"_s);
    EXPECT_FALSE(menuOffersIt());
  });
}

TEST_F(FirstStart, WhoDeclinedAndTypedSomeRowsStillGetsTheRest) {
  onGui([this] {
    start(u"n"_s);
    run(u"insert into D1003 (dw_id,dw_name) values ('kg','公斤');insert into D1011 (SEND_ID,SEND_NAME) values ('9','专车')"_s);
    EXPECT_TRUE(menuOffersIt());
    const Questions asked = chooseFromMenu(u"y"_s);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_TRUE(asked[0].contains(u"本位币人民币、付款方式、地区"_s)) << "only what is missing is named";
    EXPECT_EQ(counts(), u"7 1 1 1 6 1"_s);
    EXPECT_FALSE(menuOffersIt());
  });
}

TEST_F(FirstStart, AShopThatLacksOneTableIsOfferedThatOne) {
  onGui([this] {
    start(u"y"_s);
    run(u"delete from D6801;delete from SYS_SETTING where NAME='STARTING_SET_ASKED'"_s);
    const Questions asked = start(u"y"_s);
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_TRUE(asked[0].contains(u"\r\n\r\n会计科目（1001 库存现金、1002 银行存款）。\r\n"_s));
    EXPECT_EQ(counts(), u"7 1 20 4 6 1"_s);
  });
}

}  // namespace
}  // namespace goodsbook
