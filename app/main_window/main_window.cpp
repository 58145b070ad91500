#include "app/main_window/main_window.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QScreen>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/main_window/navigation_pane.h"
#include "app/master_data.h"
#include "app/modules.h"
#include "app/settings.h"
#include "app/sign_in/password_dialog.h"
#include "app/starting_set.h"
#include "host/U_function.h"
#include "host/U_glo.h"
#include "host/session.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

QWidget* startPage() {
  auto* page = new QWidget;
  auto* picture = new QLabel;
  picture->setPixmap(QIcon(u":/goodsbook.svg"_s).pixmap(96, 96));
  picture->setAlignment(Qt::AlignCenter);
  auto* text =
      new QLabel(MainWindow::tr("从左边选择一个功能，或按 Ctrl+K 输入编号、名称、拼音首字母后回车。"));
  text->setAlignment(Qt::AlignCenter);
  text->setWordWrap(true);
  auto* layout = new QVBoxLayout(page);
  layout->addStretch(2);
  layout->addWidget(picture);
  layout->addSpacing(12);
  layout->addWidget(text);
  layout->addStretch(3);
  return page;
}

// To what had the focus in the page, or took it when it was shown.
void focusInto(QWidget* page) {
  QWidget* inside = page->focusWidget();
  (inside ? inside : page)->setFocus();
}

}  // namespace

MainWindow::MainWindow(Session& session, MasterData& masterData)
    : session_(session),
      masterData_(masterData),
      users_(session.database()),
      centre_(new QStackedWidget(this)),
      tabs_(new QTabWidget(this)) {
  setWindowTitle(G_CoName.isEmpty() ? tr("商品账本") : tr("%1 - 商品账本").arg(G_CoName));
  setObjectName(u"MainWindow"_s);
  buildPanes();
  buildMenus();
  buildStatusLine();
  restorePlace();
  tabsChanged();
}

MainWindow::~MainWindow() {
  // Screens tell their frame that they go: they have to go while it is there.
  for (TFrm_Base* screen : screens()) delete screen;
}

void MainWindow::buildPanes() {
  tabs_->setObjectName(u"Tabs"_s);
  tabs_->setDocumentMode(true);
  tabs_->setTabsClosable(true);
  tabs_->setMovable(true);
  tabs_->setUsesScrollButtons(true);
  connect(tabs_, &QTabWidget::tabCloseRequested, this, &MainWindow::closeTab);
  connect(tabs_, &QTabWidget::currentChanged, this, &MainWindow::tabsChanged);
  centre_->addWidget(startPage());
  centre_->addWidget(tabs_);
  setCentralWidget(centre_);

  navigation_ = new NavigationPane(
      [this](int module) { return users_.callRecord(G_UserId, module).has_value(); }, this);
  connect(navigation_, &NavigationPane::chosen, this, &MainWindow::openModule);
  pane_ = new QDockWidget(tr("功能"), this);
  pane_->setObjectName(u"Navigation"_s);
  pane_->setWidget(navigation_);
  pane_->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
  pane_->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
  addDockWidget(Qt::LeftDockWidgetArea, pane_);
}

void MainWindow::buildStatusLine() {
  const QString user = G_UserName.isEmpty() ? G_UserId : u"%1 %2"_s.arg(G_UserId, G_UserName);
  const std::pair<QString, QString> parts[] = {{tr("单位：%1"), G_CoName},
                                               {tr("用户：%1"), user},
                                               {tr("仓库：%1"), G_CkName.isEmpty() ? G_ckid : G_CkName},
                                               {tr("数据库：%1"), session_.database().displayName()}};
  for (const auto& [form, value] : parts) {
    if (value.isEmpty()) continue;
    auto* label = new QLabel(form.arg(value), this);
    label->setContentsMargins(6, 0, 12, 0);
    statusBar()->addWidget(label);
  }
}

void MainWindow::open() {
  show();
  guarded(nullptr, [this] { PasswordDialog::askOnFirstStart(session_.database(), this); });
  if (G_UserId == "ADMIN"_L1) guarded(nullptr, [this] { offerStartingSetOnFirstStart(session_.database()); });
}

void MainWindow::openModule(int module, bool inNewTab) {
  if (!inNewTab) {
    for (TFrm_Base* screen : screens()) {
      if (screen->Tag != module) continue;
      tabs_->setCurrentWidget(screen);
      focusInto(screen);
      return;
    }
  }
  guarded(this, [&] {
    const auto record = users_.callRecord(G_UserId, module);
    if (!record) {
      DISPINFO(tr("您没有使用此功能的权限!"), 5);
    } else if (!masterData_.load()) {
      DISPINFO(masterData_.error(), 5);
    } else {
      masterData_.open(*record, this);
    }
  });
}

std::vector<TFrm_Base*> MainWindow::screens() const {
  std::vector<TFrm_Base*> open;
  for (int i = 0; i < tabs_->count(); ++i) {
    if (auto* screen = qobject_cast<TFrm_Base*>(tabs_->widget(i))) open.push_back(screen);
  }
  return open;
}

void MainWindow::place(TFrm_Base* screen) {
  screen->setWindowFlags(Qt::Widget);
  const QString caption = screen->windowTitle().trimmed();
  const Module* module = findModule(screen->Tag);
  const int index = tabs_->addTab(screen, module ? QIcon::fromTheme(module->icon) : QIcon(), caption);
  tabs_->setTabToolTip(index, tr("%1 %2（Ctrl+W 关闭）").arg(screen->Tag).arg(caption));
  tabs_->setCurrentIndex(index);
  screen->show();
  focusInto(screen);
}

void MainWindow::remove(TFrm_Base* screen) {
  const int index = tabs_->indexOf(screen);
  if (index >= 0) tabs_->removeTab(index);
  tabsChanged();
  if (QWidget* next = tabs_->currentWidget()) focusInto(next);
}

void MainWindow::goToTab(int step) {
  const int count = tabs_->count();
  if (count > 0) tabs_->setCurrentIndex((tabs_->currentIndex() + step + count) % count);
}

// In front, so that the screen may ask its user and closes as a window that shows.
bool MainWindow::closeScreen(QWidget* screen) {
  tabs_->setCurrentWidget(screen);
  return screen->close();
}

void MainWindow::closeTab(int index) {
  if (QWidget* page = tabs_->widget(index)) closeScreen(page);
}

bool MainWindow::closeAllTabs() {
  for (TFrm_Base* screen : screens()) {
    if (!closeScreen(screen)) return false;
  }
  return true;
}

void MainWindow::tabsChanged() {
  centre_->setCurrentIndex(tabs_->count() > 0 ? 1 : 0);
}

void MainWindow::restorePlace() {
  const auto settings = programSettings(session_.programDir());
  resize(QSize(1180, 760).boundedTo(screen()->availableSize()));
  restoreGeometry(settings->value("MainWindow/geometry"_L1).toByteArray());
  restoreState(settings->value("MainWindow/panes"_L1).toByteArray());
}

void MainWindow::keepPlace() {
  const auto settings = programSettings(session_.programDir());
  settings->setValue("MainWindow/geometry"_L1, saveGeometry());
  settings->setValue("MainWindow/panes"_L1, saveState());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  keepPlace();
  if (closeAllTabs()) {
    QMainWindow::closeEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace goodsbook
