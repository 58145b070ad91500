#include "app/main_window/about_box.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace goodsbook {

AboutBox::AboutBox(const QString& database, QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("关于商品账本"));
  auto* picture = new QLabel(this);
  picture->setPixmap(QIcon(u":/goodsbook.svg"_s).pixmap(64, 64));
  picture->setAlignment(Qt::AlignTop);
  auto* text = new QLabel(this);
  text->setObjectName(u"Text"_s);
  text->setTextFormat(Qt::PlainText);
  text->setText(
      tr("商品账本 %1\n零售批发店的基本资料：商品、单位、仓库、往来单位、账户。\n\n数据库：%2\nQt %3")
          .arg(QCoreApplication::applicationVersion(), database, QString::fromLatin1(qVersion())));
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QDialogButtonBox(this);
  QPushButton* close = buttons->addButton(tr("关闭"), QDialogButtonBox::AcceptRole);
  close->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  auto* row = new QHBoxLayout;
  row->setSpacing(16);
  row->addWidget(picture);
  row->addWidget(text, 1);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(20, 16, 20, 16);
  all->addLayout(row);
  all->addWidget(buttons);
}

}  // namespace goodsbook
