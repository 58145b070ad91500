#include "host/forms/screen_events.h"

#include <QApplication>
#include <QKeyEvent>

#include "host/controls/TDBGridEh.h"
#include "host/forms/Base_common.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

TFrm_Base_Common* screenOf(QWidget* element) {
  for (QWidget* widget = element; widget; widget = widget->parentWidget()) {
    if (auto* screen = qobject_cast<TFrm_Base*>(widget)) return qobject_cast<TFrm_Base_Common*>(screen);
    if (widget->isWindow()) return nullptr;
  }
  return nullptr;
}

bool isCancel(const QWidget* element) {
  return element->objectName() == "btn_Cancel"_L1;
}

void ScreenEvents::watch() {
  static QPointer<ScreenEvents> theOne;
  if (!theOne) theOne = new ScreenEvents(qApp);
}

ScreenEvents::ScreenEvents(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, &ScreenEvents::focusChanged);
}

bool ScreenEvents::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWidgetType()) return false;
  auto* receiver = static_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::FocusIn:
      reason_ = static_cast<QFocusEvent*>(event)->reason();
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      return swallowsPress(receiver);
    case QEvent::KeyPress:
      return previewKey(receiver, static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

bool ScreenEvents::swallowsPress(const QWidget* receiver) {
  const QPointer<QWidget> refused = std::exchange(refusedPress_, nullptr);
  return refused && (refused == receiver || refused->isAncestorOf(receiver));
}

bool ScreenEvents::previewKey(QWidget* receiver, QKeyEvent* event) {
  // A key wanders from the element with the focus up through its parents: it is seen once, at its start.
  const QWidget* focus = receiver->window()->focusWidget();
  if (receiver != focus && (focus || !qobject_cast<TFrm_Base_Common*>(receiver))) return false;
  if (QApplication::activePopupWidget()) return false;
  const QPointer<TFrm_Base_Common> screen = screenOf(receiver);
  if (!screen) return false;
  if (const auto* grid = qobject_cast<const TDBGridEh*>(focus); grid && grid->isSearchKey(*event))
    return false;
  event->ignore();
  guarded(screen, [&] { screen->FormKeyDown(event); });
  if (!screen || event->isAccepted()) return true;
  event->accept();
  return false;
}

void ScreenEvents::focusChanged(QWidget* from, QWidget* to) {
  if (!from || !to) return;
  if (reason_ == Qt::ActiveWindowFocusReason || reason_ == Qt::PopupFocusReason ||
      reason_ == Qt::MenuBarFocusReason) {
    return;
  }
  const bool byMouse = reason_ == Qt::MouseFocusReason;
  TFrm_Base_Common* screen = screenOf(from);
  if (!screen || screenOf(to) != screen) return;
  const QPointer<QWidget> target = to;
  if (screen->focusMoved(from, to) || !byMouse) return;
  // The press that moved the focus is on its way to `to` and must not reach it.
  refusedPress_ = target;
  QMetaObject::invokeMethod(
      this, [this] { refusedPress_ = nullptr; }, Qt::QueuedConnection);
}

}  // namespace goodsbook
