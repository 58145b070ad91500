#include "app/main_window/main_window.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QStatusBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest/QTest>

#include "app/driver/drive_desktop.h"
#include "app/driver/driver.h"
#include "app/driver/input.h"
#include "app/driver/screen_test.h"
#include "app/master_data.h"
#include "host/U_glo.h"
#include "host/controls/TDBGridEh.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

// The main window over the test's session; screens that it opens become its tabs and answer to commands.
class MainWindowTest : public ScreenTest {
 protected:
  void showWindow() {
    onGui([this] {
      G_CoName = u"样例商店"_s;
      masterData_ = std::make_unique<MasterData>();
      window_ = std::make_unique<MainWindow>(Session::current(), *masterData_);
      window_->show();
    });
  }
  void TearDown() override {
    onGui([this] { window_.reset(); });
    ScreenTest::TearDown();
  }
  void openModule(int module, bool inNewTab = false) {
    onGui([&] { window_->openModule(module, inNewTab); });
    done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  }
  void pressInWindow(const QString& keys) {
    onGui([&] {
      activate(*window_);
      pressKeys(*window_, QKeySequence(keys));
    });
  }
  QStringList tabs() {
    QStringList captions;
    onGui([&] {
      for (int i = 0; i < window_->tabs()->count(); ++i) captions << window_->tabs()->tabText(i);
    });
    return captions;
  }
  int currentTab() {
    int index = -1;
    onGui([&] { index = window_->tabs()->currentIndex(); });
    return index;
  }

  std::unique_ptr<MasterData> masterData_;
  std::unique_ptr<MainWindow> window_;
};

TEST_F(MainWindowTest, AModuleOpensAsATabAndIsGoneToTheSecondTime) {
  showWindow();
  openModule(103);
  EXPECT_EQ(tabs(), QStringList(u"计量单位资料"_s));
  openModule(125);
  openModule(103);
  EXPECT_EQ(tabs().size(), 2);
  EXPECT_EQ(currentTab(), 0);
  openModule(103, true);
  EXPECT_EQ(tabs().size(), 3);
}

TEST_F(MainWindowTest, AnAdministratorMayBuildTheStartingSetLater) {
  onGui([] { G_UserId = u"ADMIN"_s; });
  showWindow();
  const auto showMenu = [this] {
    bool enabled = false;
    onGui([&] {
      auto* start = window_->findChild<QAction*>(u"StartingSet"_s);
      ASSERT_NE(start, nullptr);
      Q_EMIT qobject_cast<QMenu*>(start->associatedObjects().constFirst())->aboutToShow();
      enabled = start->isEnabled();
    });
    return enabled;
  };
  EXPECT_TRUE(showMenu());
  answer({u"y"_s});
  onGui([this] { window_->findChild<QAction*>(u"StartingSet"_s)->trigger(); });
  EXPECT_NE(sql(u"select count(*) from D6801"_s).at(0).at(0), u"0"_s);
  EXPECT_FALSE(showMenu());
}

TEST_F(MainWindowTest, TheSearchOpensByInitials) {
  showWindow();
  pressInWindow(u"Ctrl+K"_s);
  onGui([this] {
    auto* search = window_->findChild<QLineEdit*>(u"Search"_s);
    EXPECT_TRUE(search->hasFocus());
    typeOver(*search, u"jldw"_s);
  });
  pressInWindow(u"Return"_s);
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_EQ(tabs(), QStringList(u"计量单位资料"_s));
}

TEST_F(MainWindowTest, TheKeyboardIsInTheListThatOpensComesBackOrIsLeft) {
  sql(u"insert into D1003 (dw_id,dw_name) values ('01','瓶');insert into D1003 (dw_id,dw_name) values ('02','箱')"_s);
  showWindow();
  const auto inGrid = [this] {
    bool inside = false;
    onGui([&] { inside = qobject_cast<TDBGridEh*>(window_->focusWidget()) != nullptr; });
    return inside;
  };
  pressInWindow(u"Ctrl+K"_s);
  onGui([this] { typeOver(*window_->findChild<QLineEdit*>(u"Search"_s), u"103"_s); });
  pressInWindow(u"Return"_s);
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_TRUE(inGrid());
  pressInWindow(u"Down"_s);
  EXPECT_EQ(done({{u"cmd"_s, u"rows"_s}, {u"element"_s, u"DBGridEh"_s}})["current"_L1].toInt(), 1);
  openModule(125);
  EXPECT_TRUE(inGrid());
  pressInWindow(u"Ctrl+K"_s);
  EXPECT_FALSE(inGrid());
  openModule(103);
  EXPECT_TRUE(inGrid()) << "back in a tab that is open already";
  pressInWindow(u"Ctrl+W"_s);
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_TRUE(inGrid()) << "in the tab that is left";
}

TEST_F(MainWindowTest, ADoubleClickInThePaneLeadsIntoTheList) {
  showWindow();
  onGui([this] {
    activate(*window_);
    auto* tree = window_->findChild<QTreeWidget*>();
    QTreeWidgetItem* item = tree->topLevelItem(0)->child(0);
    const QPoint place = tree->visualItemRect(item).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  });
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_EQ(tabs().size(), 1);
  onGui([this] { EXPECT_NE(qobject_cast<TDBGridEh*>(window_->focusWidget()), nullptr); });
}

TEST_F(MainWindowTest, KeysGoThroughTheTabsAndCloseThem) {
  showWindow();
  openModule(103);
  openModule(125);
  pressInWindow(u"Ctrl+Tab"_s);
  EXPECT_EQ(currentTab(), 0);
  pressInWindow(u"Ctrl+Shift+Tab"_s);
  EXPECT_EQ(currentTab(), 1);
  pressInWindow(u"Ctrl+W"_s);
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_EQ(tabs(), QStringList(u"计量单位资料"_s));
  pressInWindow(u"Ctrl+W"_s);
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_EQ(tabs(), QStringList());
  EXPECT_EQ(frontClass(), u""_s) << "a closed screen is gone";
}

TEST_F(MainWindowTest, AModuleThatIsNotBuiltSaysItsNumber) {
  showWindow();
  openModule(105);
  EXPECT_EQ(messages(), std::vector<QString>{u"模块未制作105"_s});
  EXPECT_EQ(tabs(), QStringList());
}

TEST_F(MainWindowTest, WithoutTheRightAModuleStaysClosed) {
  sql(u"insert into SYS_USER (USER_ID, USER_NAME, T) values ('U1',N'店员',1);"
      "insert into SYS_RIGHT (USER_ID, MODULE, R_ADD) values ('U1','103',0)"_s);
  onGui([] { G_UserId = u"U1"_s; });
  showWindow();
  openModule(125);
  EXPECT_EQ(messages(), std::vector<QString>{u"您没有使用此功能的权限!"_s});
  EXPECT_EQ(tabs(), QStringList());
  openModule(103);
  ASSERT_EQ(tabs().size(), 1);
  EXPECT_TRUE(refused({{u"cmd"_s, u"action"_s}, {u"name"_s, u"Act_Add"_s}}).contains(u"Act_Add"_s));
  onGui([this] {
    const auto* modules = window_->findChild<QTreeWidget*>(u"Modules"_s);
    for (const QTreeWidgetItem* item :
         modules->findItems(u"货币基本资料"_s, Qt::MatchExactly | Qt::MatchRecursive)) {
      EXPECT_TRUE(item->isDisabled());
    }
  });
}

TEST_F(MainWindowTest, SizeAndPaneAreRememberedInTheProgramsFolder) {
  showWindow();
  onGui([this] {
    window_->resize(903, 611);
    window_->findChild<QWidget*>(u"Navigation"_s)->hide();
    window_->close();
    window_.reset();
  });
  showWindow();
  onGui([this] {
    EXPECT_EQ(window_->size(), QSize(903, 611));
    EXPECT_TRUE(window_->findChild<QWidget*>(u"Navigation"_s)->isHidden());
  });
}

TEST_F(MainWindowTest, ClosingTheWindowClosesAllItsTabs) {
  showWindow();
  openModule(103);
  openModule(124);
  openModule(125);
  onGui([this] { EXPECT_TRUE(window_->close()); });
  done({{u"cmd"_s, u"wait"_s}, {u"ms"_s, 0}});
  EXPECT_EQ(tabs(), QStringList());
  EXPECT_EQ(frontClass(), u""_s);
}

TEST_F(MainWindowTest, TheStatusLineSaysWhoWorksWhere) {
  onGui([] { G_CkName = u"总仓"_s; });
  showWindow();
  onGui([this] {
    QStringList texts;
    for (const QLabel* label : window_->statusBar()->findChildren<QLabel*>()) texts << label->text();
    const QString database = onServer() ? Session::current().database().displayName() : u"test.db"_s;
    EXPECT_EQ(texts.join(u'|'), u"单位：样例商店|用户：ADMIN 系统管理员|仓库：总仓|数据库："_s + database);
  });
}

TEST_F(MainWindowTest, APlugInThatCannotBeLoadedIsShownAndNotThrown) {
  onGui([this] {
    MasterData broken(folder());
    EXPECT_FALSE(broken.load());
    EXPECT_TRUE(broken.error().contains(folder()));
    MainWindow window(Session::current(), broken);
    window.openModule(103);
  });
  const std::vector<QString> shown = messages();
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_TRUE(shown[0].contains(u"libmasterdata"_s));
}

}  // namespace
}  // namespace goodsbook
