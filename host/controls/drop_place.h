#pragma once

#include <QPoint>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace goodsbook {

// Where a window of `size` drops below `anchor`: above it when there is no room below, and always on the
// screen.
inline QPoint dropPlace(const QWidget& anchor, QSize size) {
  const QPoint below = anchor.mapToGlobal(QPoint(0, anchor.height()));
  const QRect room = anchor.screen()->availableGeometry();
  QPoint place = below;
  if (below.y() + size.height() > room.bottom() + 1) {
    const int above = anchor.mapToGlobal(QPoint(0, 0)).y() - size.height();
    place.setY(above >= room.top() ? above : room.bottom() + 1 - size.height());
  }
  place.setX(std::max(room.left(), std::min(place.x(), room.right() + 1 - size.width())));
  place.setY(std::max(room.top(), place.y()));
  return place;
}

}  // namespace goodsbook
