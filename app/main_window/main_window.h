#pragma once

#include <QMainWindow>
#include <vector>

#include "app/sign_in/users.h"
#include "host/forms/Base.h"

class QDockWidget;
class QMenu;
class QStackedWidget;
class QTabWidget;

namespace goodsbook {

class MasterData;
class NavigationPane;
class Session;

// The program's window: the modules in a pane at the left, the open screens as tabs, who works where in the
// status line. Place, size and panes are kept in the program's folder.
class MainWindow : public QMainWindow, public ScreenFrame {
  Q_OBJECT

 public:
  // Both must outlive the window. The user is signed in.
  MainWindow(Session& session, MasterData& masterData);
  ~MainWindow() override;

  // Shows the window; on a database's first start the administrator is asked for a password and offered the
  // starting set.
  void open();

  // Opens a module's screen with the user's rights, or goes to the one that is open already. What stands
  // against it is told to the user.
  void openModule(int module, bool inNewTab = false);

  QTabWidget* tabs() const { return tabs_; }
  std::vector<TFrm_Base*> screens() const;  // in the order of the tabs

  void place(TFrm_Base* screen) override;
  void remove(TFrm_Base* screen) override;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void buildPanes();
  void buildMenus();
  void buildWindowMenu(QMenu* menu);
  void buildColourMenu(QMenu* menu);
  void buildStatusLine();
  void listWindows(QMenu* menu);
  void goToTab(int step);
  void closeTab(int index);
  bool closeScreen(QWidget* screen);
  bool closeAllTabs();  // false when one stays open
  void tabsChanged();
  void showHelp();
  void showAbout();
  void changePassword();
  void restorePlace();
  void keepPlace();

  Session& session_;
  MasterData& masterData_;
  Users users_;
  NavigationPane* navigation_ = nullptr;
  QDockWidget* pane_ = nullptr;
  QStackedWidget* centre_;
  QTabWidget* tabs_;
};

}  // namespace goodsbook
