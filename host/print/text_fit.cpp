#include "host/print/text_fit.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace goodsbook {

// What is measured is drawn: shaping a text is what costs time here.
FittedText::FittedText(const QString& text, QSize room, QFont font, int largest, int least) {
  for (int size = std::max(largest, 1);; size = std::max(least, size - std::max(1, size / 16))) {
    font.setPixelSize(size);
    const QFontMetrics metrics(font);
    // A line of Chinese fills its square; the font's own spacing is made for screens.
    lineHeight_ = size * 9 / 8;
    ascent_ = metrics.ascent() - std::max(0, metrics.height() - lineHeight_) / 2;
    layOut(text, font, room.width());
    const int fits = std::max(1, room.height() / lineHeight_);
    const bool tooMany = layout_->lineCount() > fits;
    const bool tooHigh = lineHeight_ > room.height();
    if (!tooMany && !tooHigh && widest_ <= room.width()) return;
    if (size > least) continue;
    isCut_ = tooMany || tooHigh || widest_ > room.width();
    if (tooMany) layOut(cut(text, font, room.width(), fits), font, room.width());
    return;
  }
}

FittedText::~FittedText() = default;

void FittedText::layOut(const QString& text, const QFont& font, int width) {
  layout_ = std::make_unique<QTextLayout>(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout_->setTextOption(option);
  widest_ = 0;
  layout_->beginLayout();
  for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
    line.setLineWidth(width);
    widest_ = std::max(widest_, line.naturalTextWidth());
  }
  layout_->endLayout();
}

// The first lines as they are, and the last one with "…".
QString FittedText::cut(const QString& text, const QFont& font, int width, int lines) const {
  const int from = layout_->lineAt(lines - 1).textStart();
  return text.left(from) + QFontMetrics(font).elidedText(text.mid(from), Qt::ElideRight, width - 1);
}

int FittedText::height() const {
  return lineHeight_ * layout_->lineCount();
}

void FittedText::draw(QPainter& painter, const QRect& place, Qt::Alignment alignment) const {
  double base = place.top() + std::max(0, (place.height() - height()) / 2) + ascent_;
  for (int index = 0; index < layout_->lineCount(); ++index) {
    const QTextLine line = layout_->lineAt(index);
    const double room = place.width() - std::ceil(line.naturalTextWidth());
    const double before = (alignment & Qt::AlignRight)     ? room
                          : (alignment & Qt::AlignHCenter) ? std::floor(room / 2)
                                                           : 0;
    line.draw(&painter, QPointF(place.left() + before, base - line.ascent()) - line.position());
    base += lineHeight_;
  }
}

}  // namespace goodsbook
