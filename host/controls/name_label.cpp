#include "host/controls/name_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace goodsbook {

NameLabel::NameLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

QString NameLabel::shownText() const {
  return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void NameLabel::paintEvent(QPaintEvent* event) {
  (void)event;
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                        shownText(), foregroundRole());
}

bool NameLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || shownText() == text()) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
  return true;
}

}  // namespace goodsbook
