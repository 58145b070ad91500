#pragma once

#include <QByteArray>
#include <QLabel>
#include <QPixmap>

namespace goodsbook {

// Pictures of products: kept as JPEG, no larger than a screen needs.
namespace picture {

// Reads a JPEG or PNG file, scales it down to at most 1024 pixels a side and gives it as JPEG.
// std::runtime_error with a Chinese text for a file that cannot be read or is no picture.
QByteArray fromFile(const QString& path);

// Writes the JPEG as it is, whole or not at all. std::runtime_error with a Chinese text.
void toFile(const QByteArray& jpeg, const QString& path);

// A null image for bytes that are no picture.
QImage decode(const QByteArray& bytes);

}  // namespace picture

// Shows a picture, fitted into its place and never enlarged.
class PictureLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PictureLabel(QWidget* parent = nullptr);
  void setPicture(const QByteArray& bytes);
  void setEmptyText(const QString& text) { emptyText_ = text; }
  const QByteArray& bytes() const { return bytes_; }
  QSize sizeHint() const override { return {180, 180}; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fit();

  QByteArray bytes_;
  QPixmap whole_;
  QString emptyText_;
};

}  // namespace goodsbook
