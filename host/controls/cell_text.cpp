#include "host/controls/cell_text.h"

#include <QPainter>
#include <QStyle>

namespace goodsbook {

QStaticText CellText::laidOut(const QString& text) {
  if (const QStaticText* known = kept_.object(text)) return *known;
  QStaticText fresh(text);
  fresh.setTextFormat(Qt::PlainText);
  fresh.setPerformanceHint(QStaticText::AggressiveCaching);
  fresh.prepare({}, font_);
  kept_.insert(text, new QStaticText(fresh));
  return fresh;
}

void CellText::draw(QPainter& painter, const QRect& room, Qt::Alignment alignment, const QString& text) {
  if (text.isEmpty() || room.width() <= 0) return;
  if (painter.font() != font_) {
    kept_.clear();
    font_ = painter.font();
  }
  QStaticText shown = laidOut(text);
  if (shown.size().width() > room.width()) {
    shown = laidOut(painter.fontMetrics().elidedText(text, Qt::ElideRight, room.width()));
  }
  const QSize size = shown.size().toSize();
  const QRect place = QStyle::alignedRect(painter.layoutDirection(), alignment, size, room);
  painter.drawStaticText(place.topLeft(), shown);
}

}  // namespace goodsbook
