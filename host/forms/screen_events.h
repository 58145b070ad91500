#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace goodsbook {

class TFrm_Base_Common;

// Watches the application for all screens: which element the focus leaves towards which other one of the same
// screen, and keys before the element with the focus has them. One object for the program, made with the
// first screen.
class ScreenEvents : public QObject {
  Q_OBJECT

 public:
  static void watch();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  explicit ScreenEvents(QObject* parent);
  void focusChanged(QWidget* from, QWidget* to);
  bool previewKey(QWidget* receiver, QKeyEvent* event);
  bool swallowsPress(const QWidget* receiver);

  Qt::FocusReason reason_ = Qt::OtherFocusReason;
  QPointer<QWidget> refusedPress_;  // the press on it moved the focus there, and a check took the focus back
};

// The screen that an element belongs to; null for elements of other windows.
TFrm_Base_Common* screenOf(QWidget* element);

// The button that discards what was typed: nothing is checked on the way to it.
bool isCancel(const QWidget* element);

}  // namespace goodsbook
