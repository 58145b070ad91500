#include <QActionGroup>
#include <QApplication>
#include <QDockWidget>
#include <QMenuBar>
#include <QSettings>
#include <QTabWidget>

#include "app/appearance.h"
#include "app/main_window/about_box.h"
#include "app/main_window/main_window.h"
#include "app/main_window/navigation_pane.h"
#include "app/modules.h"
#include "app/settings.h"
#include "app/sign_in/password_dialog.h"
#include "app/starting_set.h"
#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

// The menus of the main window and what they do.
namespace goodsbook {

void MainWindow::buildMenus() {
  QMenu* system = menuBar()->addMenu(tr("系统(&S)"));
  system->addAction(QIcon::fromTheme(u"edit-find"_s), tr("查找功能(&K)"), QKeySequence(u"Ctrl+K"_s), this,
                    [this] {
                      pane_->show();
                      navigation_->startSearch();
                    });
  system->addAction(tr("修改密码(&P)…"), this, &MainWindow::changePassword);
  if (G_UserId == "ADMIN"_L1) {
    QAction* start = system->addAction(tr("建立常用资料(&B)…"), this, [this] {
      guarded(nullptr, [this] { offerStartingSet(session_.database()); });
    });
    start->setObjectName(u"StartingSet"_s);
    connect(system, &QMenu::aboutToShow, this, [this, start] {
      guarded(nullptr, [&] { start->setEnabled(!missingStartingParts(session_.database()).empty()); });
    });
  }
  buildColourMenu(system->addMenu(tr("颜色(&C)")));
  system->addSeparator();
  system->addAction(QIcon::fromTheme(u"application-exit"_s), tr("退出(&X)"), QKeySequence(u"Ctrl+Q"_s), this,
                    &QWidget::close);

  for (const ModuleGroup& group : moduleGroups()) {
    QMenu* menu = menuBar()->addMenu(group.caption);
    for (const Module& module : group.modules) {
      QAction* open = menu->addAction(QIcon::fromTheme(module.icon), module.caption, this,
                                      [this, number = module.number] { openModule(number); });
      open->setObjectName(u"Module%1"_s.arg(module.number));
      open->setEnabled(users_.callRecord(G_UserId, module.number).has_value());
    }
  }

  buildWindowMenu(menuBar()->addMenu(tr("窗口(&W)")));

  QMenu* help = menuBar()->addMenu(tr("帮助(&H)"));
  help->addAction(QIcon::fromTheme(u"help-contents"_s), tr("帮助(&H)"), QKeySequence(u"F1"_s), this,
                  &MainWindow::showHelp);
  help->addAction(QIcon::fromTheme(u"help-about"_s), tr("关于商品账本(&A)"), this, &MainWindow::showAbout);
}

void MainWindow::buildWindowMenu(QMenu* menu) {
  QAction* pane = pane_->toggleViewAction();
  pane->setText(tr("功能栏(&N)"));
  menu->addAction(pane);
  menu->addSeparator();
  menu->addAction(tr("下一个(&N)"), QKeySequence(u"Ctrl+Tab"_s), this, [this] { goToTab(1); });
  menu->addAction(tr("上一个(&B)"), QKeySequence(u"Ctrl+Shift+Tab"_s), this, [this] { goToTab(-1); });
  menu->addAction(tr("关闭(&C)"), QKeySequence(u"Ctrl+W"_s), this,
                  [this] { closeTab(tabs_->currentIndex()); });
  menu->addAction(tr("全部关闭(&L)"), this, &MainWindow::closeAllTabs);
  menu->addSeparator();
  connect(menu, &QMenu::aboutToShow, this, [this, menu] { listWindows(menu); });
}

void MainWindow::listWindows(QMenu* menu) {
  const QList<QAction*> present = menu->actions();
  for (QAction* action : present) {
    if (action->data().isValid()) delete action;
  }
  for (int i = 0; i < tabs_->count(); ++i) {
    QWidget* page = tabs_->widget(i);
    QAction* entry = menu->addAction(u"&%1 %2"_s.arg(i + 1).arg(tabs_->tabText(i)), this,
                                     [this, page] { tabs_->setCurrentWidget(page); });
    entry->setData(i);
    entry->setCheckable(true);
    entry->setChecked(i == tabs_->currentIndex());
  }
}

void MainWindow::buildColourMenu(QMenu* menu) {
  const std::pair<QString, QString> schemes[] = {
      {u""_s, tr("跟随系统")}, {u"light"_s, tr("浅色")}, {u"dark"_s, tr("深色")}};
  const QString present = programSettings(session_.programDir())->value("Appearance/colours"_L1).toString();
  auto* group = new QActionGroup(menu);
  for (const auto& [scheme, caption] : schemes) {
    QAction* choice = menu->addAction(caption, this, [this, value = scheme] {
      programSettings(session_.programDir())->setValue("Appearance/colours"_L1, value);
      setColours(value);
    });
    choice->setCheckable(true);
    choice->setChecked(scheme == present);
    group->addAction(choice);
  }
}

void MainWindow::showHelp() {
  if (auto* screen = qobject_cast<TFrm_Base*>(tabs_->currentWidget())) {
    guarded(screen, [screen] { screen->Help(); });
    return;
  }
  plainBox(tr("Ctrl+K　查找功能：编号、名称、拼音首字母\n"
              "回车　打开；Ctrl+回车　在新标签中打开\n"
              "Ctrl+Tab、Ctrl+Shift+Tab　换到下一个、上一个标签\n"
              "Ctrl+W　关闭标签\n"
              "F1　当前窗口的帮助"),
           tr("帮助"));
}

void MainWindow::showAbout() {
  AboutBox(session_.database().displayName(), this).exec();
}

void MainWindow::changePassword() {
  PasswordDialog(session_.database(), G_UserId, tr("用户 %1 的新密码。留空则取消密码。").arg(G_UserId),
                 tr("取消"), this)
      .exec();
}

}  // namespace goodsbook
