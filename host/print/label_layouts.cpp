#include "host/print/label_layouts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString suffix = u"*.label"_s;
const QString shippedFolder = u":/labels"_s;

// Nothing for bytes in another encoding: some editors write GBK or UTF-16 unless told.
std::optional<QString> textOf(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder(bytes);
  if (decoder.hasError() || text.contains(QChar::Null)) return {};
  return text;
}

LabelLayoutFile read(const QString& path, bool shipped) {
  LabelLayoutFile read;
  read.path = path;
  read.shipped = shipped;
  read.name = QFileInfo(path).fileName();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    read.error =
        QCoreApplication::translate("Labels", "标签样式 %1 不能读取：%2").arg(path, file.errorString());
    return read;
  }
  try {
    const std::optional<QString> text = textOf(file.readAll());
    if (!text) {
      read.error =
          QCoreApplication::translate("Labels", "标签样式 %1 不是 UTF-8 编码：请用 UTF-8 保存。").arg(path);
      return read;
    }
    read.layout = readLabelLayout(*text, shipped ? read.name : path);
    read.name = read.layout.name;
  } catch (const std::runtime_error& error) {
    read.error = QString::fromUtf8(error.what());
  }
  return read;
}

}  // namespace

std::vector<LabelLayoutFile> labelLayouts(const QString& programDir) {
  const QDir own(programDir);
  const QStringList ownNames = own.entryList({suffix}, QDir::Files, QDir::Name);
  std::vector<LabelLayoutFile> all;
  for (const QString& name : QDir(shippedFolder).entryList({suffix}, QDir::Files, QDir::Name)) {
    if (!ownNames.contains(name)) all.push_back(read(shippedFolder + u'/' + name, true));
  }
  for (const QString& name : ownNames) all.push_back(read(own.filePath(name), false));
  return all;
}

QString copyLabelLayout(const LabelLayoutFile& layout, const QString& programDir) {
  const QDir folder(programDir);
  const QFileInfo from(layout.path);
  QString name = from.fileName();
  for (int number = 2; folder.exists(name); ++number) {
    name = from.completeBaseName() + u'-' + QString::number(number) + u".label"_s;
  }
  const QString path = folder.filePath(name);
  QFile file(layout.path);
  if (!file.copy(path)) {
    throw std::runtime_error(QCoreApplication::translate("Labels", "标签样式不能复制到 %1：%2")
                                 .arg(path, file.errorString())
                                 .toStdString());
  }
  QFile::setPermissions(path, QFile::permissions(path) | QFile::WriteOwner);  // what is shipped is read-only
  return path;
}

}  // namespace goodsbook
