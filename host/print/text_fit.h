#pragma once

#include <QFont>
#include <QSize>
#include <QStringList>
#include <vector>

#include "host/export.h"

namespace goodsbook {

// A text laid into a place.
struct FittedText {
  QFont font;
  QStringList lines;
  std::vector<int> widths;  // of the lines, in pixels
  int lineHeight = 0;       // from one base line to the next
  int ascent = 0;
  bool isCut = false;  // there is no room for all of it: too many lines, of which the last ends in "…", or
                       // letters larger than the room
};

// Lays a text into `room` in the largest letters from `largest` down to `least` pixels in which it fits, in
// as many lines as there is room for. What does not fit in the smallest is cut.
GOODSBOOKHOST_EXPORT FittedText fitText(const QString& text, QSize room, QFont font, int largest, int least);

}  // namespace goodsbook
