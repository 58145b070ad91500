#include "app/commands/sample_pictures.h"

#include <QBuffer>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>

namespace goodsbook {

std::string samplePicture(int index, std::string_view text) {
  constexpr int side = 240;
  constexpr int margin = 24;
  constexpr int hueStep = 47;  // neighbours differ clearly
  constexpr int quality = 80;
  const int hue = index * hueStep % 360;
  const QRect area(0, 0, side, side);
  const QRect card = area.adjusted(margin, margin, -margin, -margin);

  QImage image(area.size(), QImage::Format_RGB32);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient ground(area.topLeft(), area.bottomRight());
  ground.setColorAt(0, QColor::fromHsv(hue, 60, 250));
  ground.setColorAt(1, QColor::fromHsv(hue, 140, 215));
  painter.fillRect(area, ground);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(255, 255, 255, 215));
  painter.drawRoundedRect(card, 14, 14);
  QFont font;
  font.setPixelSize(26);
  painter.setFont(font);
  painter.setPen(QColor::fromHsv(hue, 200, 110));
  painter.drawText(card.adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWrapAnywhere,
                   QString::fromUtf8(text));
  painter.end();

  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "JPG", quality);
  return bytes.toStdString();
}

}  // namespace goodsbook
