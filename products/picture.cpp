#include "products/picture.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QSaveFile>
#include <stdexcept>

#include "products/jpeg_proof.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

constexpr int longestSide = 1024;
constexpr int largestPictureMb = 1024;  // decoded
constexpr int jpegQuality = 85;

QString translated(const char* text) {
  return QCoreApplication::translate("picture", text);
}

}  // namespace

namespace picture {

QByteArray fromFile(const QString& path) {
  QFile file(path);
  if (!file.exists()) throw std::runtime_error(translated("找不到图片文件：%1").arg(path).toStdString());
  if (!file.open(QIODevice::ReadOnly)) {
    throw std::runtime_error(
        translated("图片文件不能读取：%1（%2）").arg(path, file.errorString()).toStdString());
  }
  QByteArray content = file.readAll();
  QBuffer source(&content);
  source.open(QIODevice::ReadOnly);
  QImageReader reader(&source);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QByteArray format = reader.format();
  if (format != "jpeg" && format != "png") {
    throw std::runtime_error(translated("该文件不是 JPEG 或 PNG 图片，或已损坏：%1").arg(path).toStdString());
  }
  const QSize size = reader.size();
  if (size.isValid() && (size.width() > longestSide || size.height() > longestSide)) {
    const QSize fitting = size.scaled(longestSide, longestSide, Qt::KeepAspectRatio);
    reader.setScaledSize(fitting.expandedTo({1, 1}));
  }
  // Qt's own limit refuses what a camera may well deliver; this much memory is free for the moment it takes.
  QImageReader::setAllocationLimit(largestPictureMb);
  QImage image = format == "jpeg" && !isWholeJpeg(content) ? QImage() : reader.read();
  if (image.isNull())
    throw std::runtime_error(translated("图片已损坏，不能打开：%1").arg(path).toStdString());
  if (image.hasAlphaChannel()) {
    // JPEG has no transparency: what shines through is paper.
    QImage opaque(image.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter(&opaque).drawImage(0, 0, image);
    image = opaque;
  }
  QByteArray jpeg;
  QBuffer buffer(&jpeg);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "JPEG", jpegQuality)) {
    throw std::runtime_error(translated("图片不能转换为 JPEG：%1").arg(path).toStdString());
  }
  return jpeg;
}

void toFile(const QByteArray& jpeg, const QString& path) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(jpeg) != jpeg.size() || !file.commit()) {
    throw std::runtime_error(translated("图片不能保存到 %1：%2").arg(path, file.errorString()).toStdString());
  }
}

QImage decode(const QByteArray& bytes) {
  return QImage::fromData(bytes);
}

}  // namespace picture

PictureLabel::PictureLabel(QWidget* parent) : QLabel(parent) {
  setAlignment(Qt::AlignCenter);
  setFrameShape(QFrame::StyledPanel);
  setMinimumSize(120, 120);
  setWordWrap(true);
}

void PictureLabel::setPicture(const QByteArray& bytes) {
  bytes_ = bytes;
  whole_ = bytes.isEmpty() ? QPixmap() : QPixmap::fromImage(picture::decode(bytes));
  fit();
}

void PictureLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  fit();
}

void PictureLabel::fit() {
  if (whole_.isNull()) {
    setText(bytes_.isEmpty() ? emptyText_ : tr("图片已损坏"));
    return;
  }
  const QSize room = contentsRect().size() * devicePixelRatioF();
  const bool tooLarge = whole_.width() > room.width() || whole_.height() > room.height();
  QPixmap fitted = tooLarge ? whole_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation) : whole_;
  if (tooLarge) fitted.setDevicePixelRatio(devicePixelRatioF());
  setPixmap(fitted);
}

}  // namespace goodsbook
