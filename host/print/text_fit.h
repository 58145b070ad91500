#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <memory>

#include "host/export.h"

class QPainter;
class QTextLayout;

namespace goodsbook {

// A text laid into a place, ready to be drawn any number of times.
class GOODSBOOKHOST_EXPORT FittedText {
 public:
  // Lays `text` into `room` in the largest letters from `largest` down to `least` pixels in which it fits, in
  // as many lines as there is room for. What does not fit in the smallest is cut.
  FittedText(const QString& text, QSize room, QFont font, int largest, int least);
  ~FittedText();
  Q_DISABLE_COPY_MOVE(FittedText)

  // There is no room for all of it: too many lines, of which the last ends in "…", or letters larger than the
  // room.
  bool isCut() const { return isCut_; }
  int height() const;  // of its lines, in pixels

  // In the middle of the height, to the side that `alignment` tells.
  void draw(QPainter& painter, const QRect& place, Qt::Alignment alignment) const;

 private:
  void layOut(const QString& text, const QFont& font, int width);
  QString cut(const QString& text, const QFont& font, int width, int lines) const;

  std::unique_ptr<QTextLayout> layout_;
  int lineHeight_ = 0;  // from one base line to the next
  int ascent_ = 0;
  double widest_ = 0;  // of the lines
  bool isCut_ = false;
};

}  // namespace goodsbook
