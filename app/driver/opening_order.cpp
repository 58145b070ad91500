#include "app/driver/opening_order.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QVariant>

#include "host/forms/Base.h"

namespace goodsbook {
namespace {

constexpr const char* place = "goodsbook.driver.opened";

}  // namespace

void OpeningOrder::watch() {
  static QPointer<OpeningOrder> theOne;
  if (!theOne) theOne = new OpeningOrder(qApp);
}

OpeningOrder::OpeningOrder(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
}

qulonglong OpeningOrder::placeOf(const QWidget& window) {
  return window.property(place).toULongLong();
}

bool OpeningOrder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show || event->spontaneous()) return false;
  auto* window = qobject_cast<QWidget*>(watched);
  if (!qobject_cast<TFrm_Base*>(window) && !qobject_cast<QDialog*>(window)) return false;
  if (window->isWindow() || placeOf(*window) == 0) window->setProperty(place, ++last_);
  return false;
}

}  // namespace goodsbook
