#include "host/print/label_preview.h"

#include <QPainter>

namespace goodsbook {

LabelPreview::LabelPreview(QWidget* parent) : QWidget(parent) {
  setMinimumSize(300, 320);
}

void LabelPreview::show(const LabelJob& job, int page) {
  job_ = job;
  page_ = page;
  text_.clear();
  update();
}

void LabelPreview::showText(const QString& text) {
  text_ = text;
  update();
}

void LabelPreview::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(QPalette::Mid));
  if (!text_.isEmpty() || !job_.row) {
    painter.fillRect(rect(), palette().base());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect().adjusted(12, 12, -12, -12), Qt::AlignCenter | Qt::TextWordWrap, text_);
    return;
  }
  constexpr int frame = 8;
  const QSizeF dots = job_.pageDots();
  const QSizeF room = size() - QSize(2 * frame, 2 * frame);
  // A label is not shown larger than three times its size.
  const double most = 3.0 * logicalDpiX() / job_.printer.dpi;
  const double scale = std::min({room.width() / dots.width(), room.height() / dots.height(), most});
  const QPointF corner((width() - dots.width() * scale) / 2, (height() - dots.height() * scale) / 2);
  painter.fillRect(QRectF(corner, dots * scale), Qt::white);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  painter.translate(corner);
  painter.scale(scale, scale);
  painter.setClipRect(QRectF(QPointF(), dots));
  LabelPainter labels(job_.layout, job_.printer);
  LabelWarnings ignored;
  paintLabelPage(painter, labels, job_, page_, ignored);
  painter.setPen(QPen(QColor(0xb0, 0xb0, 0xb0), 0, Qt::DotLine));
  painter.setBrush(Qt::NoBrush);
  for (int place = 0; place < job_.layout.perSheet(); ++place) {
    painter.drawRect(job_.printer.dots(QRectF(job_.layout.corner(place), job_.layout.label)));
  }
}

}  // namespace goodsbook
