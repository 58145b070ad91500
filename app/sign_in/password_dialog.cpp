#include "app/sign_in/password_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/sign_in/users.h"
#include "host/data/errors.h"
#include "host/data/sql_sets.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

PasswordDialog::PasswordDialog(Database& database, QString user, const QString& reason, const QString& later,
                               QWidget* parent)
    : QDialog(parent),
      database_(database),
      user_(std::move(user)),
      wanted_(new QLineEdit(this)),
      again_(new QLineEdit(this)),
      problem_(new QLabel(this)) {
  setWindowTitle(tr("密码"));
  setMinimumWidth(340);
  auto* form = new QFormLayout;
  if (Users(database_).hasPassword(user_)) {
    present_ = new QLineEdit(this);
    present_->setObjectName(u"Present"_s);
    present_->setEchoMode(QLineEdit::Password);
    form->addRow(tr("现在的密码"), present_);
  }
  wanted_->setObjectName(u"Wanted"_s);
  again_->setObjectName(u"Again"_s);
  problem_->setObjectName(u"Problem"_s);
  wanted_->setEchoMode(QLineEdit::Password);
  again_->setEchoMode(QLineEdit::Password);
  form->addRow(tr("新密码"), wanted_);
  form->addRow(tr("再输一次"), again_);
  problem_->setStyleSheet(u"color: #c0392b"_s);
  problem_->hide();

  auto* text = new QLabel(reason, this);
  text->setWordWrap(true);
  text->setHidden(reason.isEmpty());
  auto* ok = new QPushButton(tr("确定"), this);
  ok->setObjectName(u"btn_ok"_s);
  ok->setDefault(true);
  auto* cancel = new QPushButton(later, this);
  cancel->setObjectName(u"btn_Cancel"_s);
  cancel->setAutoDefault(false);
  connect(ok, &QPushButton::clicked, this, &PasswordDialog::save);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(20, 16, 20, 16);
  all->setSpacing(12);
  all->addWidget(text);
  all->addLayout(form);
  all->addWidget(problem_);
  all->addLayout(buttons);
}

void PasswordDialog::save() {
  const Users users(database_);
  QString problem;
  if (present_ && !users.isPassword(user_, present_->text())) {
    problem = tr("现在的密码不对!");
  } else if (wanted_->text() != again_->text()) {
    problem = tr("两次输入的新密码不一样!");
  }
  if (problem.isEmpty()) {
    try {
      Users(database_).setPassword(user_, wanted_->text());
      accept();
      return;
    } catch (const EDatabaseError& error) {
      problem = error.text;
    }
  }
  problem_->setText(problem);
  problem_->show();
}

bool PasswordDialog::isFirstStart(Database& database) {
  const SqlSets answer = runSql(database,
                                u"select count(*) from SYS_PASSWORD; select count(*) from SYS_USER; "
                                "select count(*) from SYS_SETTING where NAME='PASSWORD_ASKED'"_s,
                                Database::Permission::Screens);
  const auto count = [&](std::size_t set) {
    return answer.sets.at(set).rows.at(0).at(0).value_or(QString());
  };
  return count(0) == "0"_L1 && count(1) == "1"_L1 && count(2) == "0"_L1;
}

void PasswordDialog::askOnFirstStart(Database& database, QWidget* parent) {
  if (!isFirstStart(database)) return;
  PasswordDialog dialog(
      database, u"ADMIN"_s,
      tr("这是第一次使用这个数据库。请给系统管理员设一个密码，以后登录时使用；也可以以后在“系统”菜单里设定。"),
      tr("以后再说"), parent);
  dialog.exec();
  runSql(database, u"insert into SYS_SETTING (NAME, VALUE) values ('PASSWORD_ASKED','1')"_s,
         Database::Permission::Owner);
}

}  // namespace goodsbook
