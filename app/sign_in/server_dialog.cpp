#include "app/sign_in/server_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "host/controls/window_attendant.h"
#include "host/data/errors.h"
#include "host/data/odbc/connection_text.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

constexpr int testSeconds = 10;  // nothing that a test reads takes longer where all is well

constexpr auto trustedConnection = "Trusted_Connection"_L1;

// Words that have an edit of their own.
bool hasEdit(const QString& key) {
  static const QStringList known = {u"Driver"_s, u"Server"_s, u"Port"_s, u"Database"_s,
                                    QString(trustedConnection)};
  return known.contains(key, Qt::CaseInsensitive);
}

QString otherWords(const ServerAddress& address) {
  auto words = address.words();
  std::erase_if(words, [](const auto& word) { return hasEdit(word.first); });
  return connectionText(words);
}

// The installed driver that most likely leads to a server of this kind.
QString likelyDriver(const QStringList& installed) {
  for (const auto* part : {u"SQL Server", u"FreeTDS"}) {
    for (const QString& driver : installed) {
      if (driver.contains(QString::fromUtf16(part), Qt::CaseInsensitive)) return driver;
    }
  }
  return u"FreeTDS"_s;
}

}  // namespace

ServerDialog::ServerDialog(const ServerAddress& address, const ServerLogin& login, QWidget* parent)
    : QDialog(parent),
      driver_(new QComboBox(this)),
      server_(new QLineEdit(address.server(), this)),
      port_(new QLineEdit(address.port() > 0 ? QString::number(address.port()) : u"1433"_s, this)),
      database_(new QLineEdit(address.database().isEmpty() ? u"goodsbook"_s : address.database(), this)),
      options_(new QLineEdit(otherWords(address), this)),
      systemAccount_(new QCheckBox(tr("使用系统帐户登录(&I)"), this)),
      user_(new QLineEdit(login.user, this)),
      password_(new QLineEdit(login.password, this)),
      result_(new QLabel(this)),
      test_(new QPushButton(tr("测试连接(&T)"), this)),
      ok_(new QPushButton(tr("确定"), this)) {
  setWindowTitle(tr("数据库服务器"));
  const QStringList installed = installedDrivers();
  driver_->setEditable(true);
  driver_->addItems(installed);
  driver_->setCurrentText(address.driver().isEmpty() ? likelyDriver(installed) : address.driver());
  build();
  for (QLineEdit* edit : {server_, port_, database_}) {
    connect(edit, &QLineEdit::textChanged, this, &ServerDialog::updateButtons);
  }
  systemAccount_->setChecked(address.usesSystemAccount());
  connect(systemAccount_, &QCheckBox::toggled, this, &ServerDialog::updateButtons);
  connect(test_, &QPushButton::clicked, this, &ServerDialog::test);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  updateButtons();
  (server_->text().isEmpty() ? server_ : user_->text().isEmpty() ? user_ : password_)->setFocus();
}

void ServerDialog::build() {
  driver_->setObjectName(u"Driver"_s);
  server_->setObjectName(u"Server"_s);
  port_->setObjectName(u"Port"_s);
  database_->setObjectName(u"DatabaseName"_s);
  options_->setObjectName(u"Options"_s);
  systemAccount_->setObjectName(u"SystemAccount"_s);
  systemAccount_->setToolTip(tr("由本机登录的域用户连接服务器，不用服务器的用户和密码"));
  user_->setObjectName(u"ServerUser"_s);
  password_->setObjectName(u"ServerPassword"_s);
  result_->setObjectName(u"TestResult"_s);
  test_->setObjectName(u"btn_test"_s);
  ok_->setObjectName(u"btn_ok"_s);
  port_->setValidator(new QIntValidator(1, 65535, port_));
  password_->setEchoMode(QLineEdit::Password);
  server_->setPlaceholderText(tr("名称或地址，如 192.168.0.5"));
  options_->setPlaceholderText(tr("一般不填，如 TrustServerCertificate=yes"));
  password_->setToolTip(tr("只在本次运行中使用，不保存"));
  result_->setWordWrap(true);
  result_->setMinimumHeight(result_->fontMetrics().lineSpacing() * 2);
  result_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  ok_->setDefault(true);
  server_->setMinimumWidth(320);

  auto* form = new QFormLayout;
  form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  form->addRow(tr("驱动程序(&R)"), driver_);
  form->addRow(tr("服务器(&S)"), server_);
  form->addRow(tr("端口(&O)"), port_);
  form->addRow(tr("数据库(&D)"), database_);
  form->addRow(tr("其他选项(&E)"), options_);
  form->addRow(QString(), systemAccount_);
  form->addRow(tr("服务器用户(&U)"), user_);
  form->addRow(tr("服务器密码(&P)"), password_);

  auto* cancel = new QPushButton(tr("取消"), this);
  cancel->setObjectName(u"btn_Cancel"_s);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  test_->setAutoDefault(false);
  cancel->setAutoDefault(false);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(test_);
  buttons->addStretch(1);
  buttons->addWidget(ok_);
  buttons->addWidget(cancel);

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(24, 20, 24, 20);
  all->setSpacing(14);
  all->addLayout(form);
  all->addWidget(result_);
  all->addLayout(buttons);
}

ServerAddress ServerDialog::address() const {
  std::vector<std::pair<QString, QString>> words = {{u"Driver"_s, driver_->currentText().trimmed()},
                                                    {u"Server"_s, server_->text().trimmed()},
                                                    {u"Port"_s, port_->text()},
                                                    {u"Database"_s, database_->text().trimmed()}};
  if (systemAccount_->isChecked()) words.emplace_back(QString(trustedConnection), u"yes"_s);
  QString text = ServerAddress::of(std::move(words)).text();
  if (!options_->text().trimmed().isEmpty()) text += u';' + options_->text().trimmed();
  return ServerAddress::parse(text);
}

ServerLogin ServerDialog::login() const {
  if (systemAccount_->isChecked()) return {};
  return {user_->text().trimmed(), password_->text()};
}

void ServerDialog::updateButtons() {
  const bool complete = !server_->text().trimmed().isEmpty() && port_->hasAcceptableInput() &&
                        !database_->text().trimmed().isEmpty();
  test_->setEnabled(complete);
  ok_->setEnabled(complete);
  user_->setEnabled(!systemAccount_->isChecked());
  password_->setEnabled(!systemAccount_->isChecked());
}

void ServerDialog::test() {
  result_->clear();
  const ServerOptions impatient{
      .statementSeconds = testSeconds, .saveSeconds = testSeconds, .attend = attendInWindow()};
  try {
    tell(checkServer(address(), login(), impatient));
  } catch (const EDatabaseError& error) {
    tell({ServerProblem::Other, error.text});
  } catch (const EAbort&) {
    tell({ServerProblem::Other, tr("已取消，没有测试完")});
  }
}

void ServerDialog::tell(const ServerCheck& checked) {
  const bool well = checked.problem == ServerProblem::None;
  const bool quiteWell = well && checked.advice.isEmpty();
  result_->setStyleSheet(quiteWell ? u"color: #1e8449"_s : well ? u"color: #9a6700"_s : u"color: #c0392b"_s);
  result_->setText(QStringList{checked.text, checked.advice}.join(u'\n').trimmed());
}

}  // namespace goodsbook
