#include "app/real_desktop.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include "host/saved_path.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {
struct Texts {
  Q_DECLARE_TR_FUNCTIONS(RealDesktop)
};
}  // namespace

char RealDesktop::message(QWidget* parent, const QString& text, int kind, const QString& caption) {
  QMessageBox box(parent);
  box.setText(text);
  box.setTextFormat(Qt::PlainText);
  if (kind == 2) {
    box.setIcon(QMessageBox::Question);
    box.setWindowTitle(caption.isEmpty() ? Texts::tr("询问") : caption);
    const auto* yes = box.addButton(Texts::tr("是(&Y)"), QMessageBox::YesRole);
    QPushButton* no = box.addButton(Texts::tr("否(&N)"), QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    box.exec();
    return box.clickedButton() == yes ? 'y' : 'n';
  }
  box.setIcon(kind == 5 ? QMessageBox::Warning : QMessageBox::Information);
  box.setWindowTitle(caption.isEmpty() ? (kind == 5 ? Texts::tr("警告") : Texts::tr("提示")) : caption);
  box.setDefaultButton(box.addButton(Texts::tr("确定"), QMessageBox::AcceptRole));
  box.exec();
  return 'y';
}

QString RealDesktop::openFile(QWidget* parent, const QString& title, const QString& filter) {
  const QString path = QFileDialog::getOpenFileName(parent, title, folder_, filter);
  if (!path.isEmpty()) folder_ = QFileInfo(path).path();
  return path;
}

QString RealDesktop::saveFile(QWidget* parent, const QString& title, const QString& suggested,
                              const QString& filter) {
  QString start =
      QFileInfo(suggested).isAbsolute() || folder_.isEmpty() ? suggested : QDir(folder_).filePath(suggested);
  for (QString chosen;;) {
    const QString named = QFileDialog::getSaveFileName(parent, title, start, filter, &chosen);
    if (named.isEmpty()) return {};
    folder_ = QFileInfo(named).path();
    const QString path = withSuffix(named, filter, chosen);
    // The dialog, the system's own as well, asks about the name as it was typed and not about the completed
    // one.
    if (path == named || !QFileInfo::exists(path)) return path;
    if (message(parent, Texts::tr("文件已存在：%1\n要覆盖它吗？").arg(QDir::toNativeSeparators(path)), 2,
                {}) == 'y')
      return path;
    start = path;
  }
}

void RealDesktop::openUrl(const QString& url) {
  QDesktopServices::openUrl(QUrl::fromUserInput(url));
}

}  // namespace goodsbook
