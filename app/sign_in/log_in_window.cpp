#include "app/sign_in/log_in_window.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QToolButton>

#include "app/settings.h"
#include "app/sign_in/server_dialog.h"
#include "app/sign_in/users.h"
#include "app/start.h"
#include "host/data/errors.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
constexpr int rememberedDatabases = 8;

// An address has words that only a driver reads, and the telling ones behind them.
QString labelOf(const QString& database) {
  try {
    if (ServerAddress::isAddress(database)) return ServerAddress::parse(database).displayName();
  } catch (const EDatabaseError&) {
    return database;  // the settings file was written by hand
  }
  return database;
}

QString givenUp() {
  return LogInWindow::tr("已取消，没有连接到服务器");
}
}  // namespace

LogInWindow::LogInWindow(QString programDir, DesktopMaker makeDesktop, QWidget* parent)
    : QDialog(parent),
      programDir_(std::move(programDir)),
      makeDesktop_(std::move(makeDesktop)),
      serverLogin_(serverLoginFromEnvironment()),
      database_(new QComboBox(this)),
      user_(new QComboBox(this)),
      password_(new QLineEdit(this)),
      problem_(new QLabel(this)),
      ok_(new QPushButton(tr("登录"), this)) {
  setWindowTitle(tr("登录 - 商品账本"));
  build();
  const QStringList known = programSettings(programDir_)->value("LogIn/databases"_L1).toStringList();
  for (auto database = known.crbegin(); database != known.crend(); ++database) listed(*database);
  if (known.isEmpty()) listed(defaultDatabase(programDir_));
  database_->setCurrentIndex(0);
  database_->setToolTip(chosen());
  connect(database_, &QComboBox::activated, this, [this] { chooseDatabase(chosen()); });
  connect(database_, &QComboBox::currentIndexChanged, this, [this] { database_->setToolTip(chosen()); });
  connect(ok_, &QPushButton::clicked, this, &LogInWindow::logIn);
  connect(user_, &QComboBox::activated, this, [this] { password_->setFocus(); });
}

LogInWindow::~LogInWindow() = default;

void LogInWindow::build() {
  database_->setObjectName(u"Database"_s);
  user_->setObjectName(u"User"_s);
  password_->setObjectName(u"Password"_s);
  problem_->setObjectName(u"Problem"_s);
  ok_->setObjectName(u"btn_ok"_s);
  password_->setEchoMode(QLineEdit::Password);
  problem_->setWordWrap(true);
  problem_->setStyleSheet(u"color: #c0392b"_s);
  problem_->hide();
  ok_->setDefault(true);
  database_->setMinimumContentsLength(36);
  database_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);

  auto* choose = new QToolButton(this);
  choose->setObjectName(u"Browse"_s);
  choose->setText(tr("选择…"));
  choose->setToolTip(tr("选择另一个数据库文件，或输入新文件名建立一个新的"));
  connect(choose, &QToolButton::clicked, this, &LogInWindow::browse);
  auto* server = new QToolButton(this);
  server->setObjectName(u"Server"_s);
  server->setText(tr("服务器…"));
  server->setToolTip(tr("使用数据库服务器上的数据库"));
  connect(server, &QToolButton::clicked, this, &LogInWindow::chooseServer);
  auto* databaseRow = new QHBoxLayout;
  databaseRow->addWidget(database_, 1);
  databaseRow->addWidget(choose);
  databaseRow->addWidget(server);

  auto* cancel = new QPushButton(tr("退出"), this);
  cancel->setObjectName(u"btn_Cancel"_s);
  cancel->setAutoDefault(false);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(ok_);
  buttons->addWidget(cancel);

  auto* picture = new QLabel(this);
  picture->setPixmap(QIcon(u":/goodsbook.svg"_s).pixmap(72, 72));
  auto* title = new QLabel(tr("商品账本"), this);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.7);
  title->setFont(large);

  auto* form = new QFormLayout;
  form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  auto* databaseLabel = new QLabel(tr("数据库(&D)"), this);
  databaseLabel->setBuddy(database_);
  form->addRow(databaseLabel, databaseRow);
  form->addRow(tr("用户(&U)"), user_);
  form->addRow(tr("密码(&P)"), password_);

  auto* head = new QHBoxLayout;
  head->addWidget(picture);
  head->addSpacing(12);
  head->addWidget(title, 1);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(24, 20, 24, 20);
  all->setSpacing(14);
  all->addLayout(head);
  all->addLayout(form);
  all->addWidget(problem_);
  all->addLayout(buttons);
}

int LogInWindow::listed(const QString& database) {
  const int known = database_->findData(database);
  if (known >= 0) return known;
  database_->insertItem(0, labelOf(database), database);
  database_->setItemData(0, database, Qt::ToolTipRole);
  return 0;
}

QString LogInWindow::chosen() const {
  return database_->currentData().toString();
}

void LogInWindow::chooseDatabase(const QString& database) {
  database_->setCurrentIndex(listed(database));
  session_.reset();
  user_->clear();
  password_->clear();
  problem_->hide();
  try {
    if (ServerAddress::isAddress(database) && serverLogin_.user.isEmpty() &&
        !ServerAddress::parse(database).usesSystemAccount()) {
      throw StartError(tr("请点“服务器…”输入服务器的用户和密码"));
    }
    session_ = openSession(database, programDir_, makeDesktop_(), serverLogin_);
    listUsers();
  } catch (const StartError& error) {
    showProblem(error.text());
  } catch (const EDatabaseError& error) {
    session_.reset();
    showProblem(error.text);
  } catch (const EAbort&) {
    session_.reset();
    showProblem(givenUp());
  }
  user_->setEnabled(session_ != nullptr);
  password_->setEnabled(session_ != nullptr);
  ok_->setEnabled(session_ != nullptr);
}

void LogInWindow::begin(const QString& database) {
  if (ServerAddress::isAddress(database)) {
    show();
    QCoreApplication::processEvents();
  }
  chooseDatabase(database);
}

void LogInWindow::listUsers() {
  for (const User& user : Users(session_->database()).active())
    user_->addItem(user.id + u"  "_s + user.name, user.id);
  chooseUser(programSettings(programDir_)->value("LogIn/user"_L1, u"ADMIN"_s).toString());
  password_->setFocus();
}

void LogInWindow::chooseUser(const QString& id) {
  const int index = user_->findData(id.toUpper(), Qt::UserRole, Qt::MatchFixedString);
  if (index >= 0) user_->setCurrentIndex(index);
}

void LogInWindow::browse() {
  // Naming a file that does not exist makes a new database; an existing one is opened, never overwritten.
  const QString path = QFileDialog::getSaveFileName(this, tr("数据库文件"), QFileInfo(chosen()).path(),
                                                    tr("数据库 (*.db);;所有文件 (*)"), nullptr,
                                                    QFileDialog::DontConfirmOverwrite);
  if (!path.isEmpty()) chooseDatabase(path);
}

void LogInWindow::chooseServer() {
  const auto settings = programSettings(programDir_);
  ServerAddress known;
  try {
    if (ServerAddress::isAddress(chosen())) known = ServerAddress::parse(chosen());
  } catch (const EDatabaseError&) {
    known = {};  // the settings file was written by hand
  }
  ServerLogin login = serverLogin_;
  if (login.user.isEmpty()) login.user = settings->value("LogIn/serverUser"_L1).toString();
  ServerDialog dialog(known, login, this);
  if (dialog.exec() != QDialog::Accepted) return;
  serverLogin_ = dialog.login();
  try {
    chooseDatabase(dialog.address().text());
  } catch (const EDatabaseError& error) {
    showProblem(error.text);
  }
}

bool LogInWindow::trySigningIn() {
  if (!session_ || user_->currentIndex() < 0) return false;
  try {
    if (Users(session_->database()).hasPassword(user_->currentData().toString())) return false;
  } catch (const EDatabaseError& error) {
    showProblem(error.text);
    return false;
  } catch (const EAbort&) {
    showProblem(givenUp());
    return false;
  }
  logIn();
  return result() == Accepted;
}

void LogInWindow::logIn() {
  if (!session_) return;
  try {
    signIn(*session_, user_->currentData().toString(), password_->text());
    takeFirstWarehouse(*session_);
    remember();
    accept();
  } catch (const StartError& error) {
    showProblem(error.text());
    password_->setFocus();
    password_->selectAll();
  } catch (const EDatabaseError& error) {
    showProblem(error.text);
  } catch (const EAbort&) {
    showProblem(givenUp());
  }
}

void LogInWindow::showProblem(const QString& text) {
  problem_->setText(text);
  problem_->show();
}

void LogInWindow::remember() {
  const auto settings = programSettings(programDir_);
  QStringList databases = settings->value("LogIn/databases"_L1).toStringList();
  databases.removeAll(chosen());
  databases.prepend(chosen());
  settings->setValue("LogIn/databases"_L1, QStringList(databases.mid(0, rememberedDatabases)));
  // Never its password.
  if (ServerAddress::isAddress(chosen()) && !serverLogin_.user.isEmpty()) {
    settings->setValue("LogIn/serverUser"_L1, serverLogin_.user);
  }
  settings->setValue("LogIn/user"_L1, user_->currentData().toString());
}

std::unique_ptr<Session> LogInWindow::takeSession() {
  return std::move(session_);
}

}  // namespace goodsbook
