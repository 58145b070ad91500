#include "host/controls/link_label.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace goodsbook {

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setLink(true);
}

void LinkLabel::setLink(bool on) {
  link_ = on;
  setCursor(on ? Qt::PointingHandCursor : Qt::ArrowCursor);
  setFocusPolicy(on ? Qt::TabFocus : Qt::NoFocus);
  setForegroundRole(on ? QPalette::Link : QPalette::WindowText);
}

void LinkLabel::mouseReleaseEvent(QMouseEvent* event) {
  QLabel::mouseReleaseEvent(event);
  if (link_ && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
    Q_EMIT clicked();
}

void LinkLabel::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (link_ && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)) {
    Q_EMIT clicked();
  } else {
    QLabel::keyPressEvent(event);
  }
}

}  // namespace goodsbook
