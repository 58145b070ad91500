#pragma once

#include <QPoint>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace goodsbook {

// Where a window of `size` drops below the part `part` of `anchor`: above it when there is no room below, and
// always on the screen.
inline QPoint dropPlace(const QWidget& anchor, QSize size, QRect part) {
  const QPoint below = anchor.mapToGlobal(part.bottomLeft() + QPoint(0, 1));
  const QRect room = anchor.screen()->availableGeometry();
  QPoint place = below;
  if (below.y() + size.height() > room.bottom() + 1) {
    const int above = anchor.mapToGlobal(part.topLeft()).y() - size.height();
    place.setY(above >= room.top() ? above : room.bottom() + 1 - size.height());
  }
  place.setX(std::max(room.left(), std::min(place.x(), room.right() + 1 - size.width())));
  place.setY(std::max(room.top(), place.y()));
  return place;
}

inline QPoint dropPlace(const QWidget& anchor, QSize size) {
  return dropPlace(anchor, size, anchor.rect());
}

}  // namespace goodsbook
