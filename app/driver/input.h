#pragma once

#include <QPoint>
#include <QString>

class QKeySequence;
class QWidget;

namespace goodsbook {

// Real key and mouse events, as a user's hands make them.

// Brings the window to the front, so that its element has the keyboard again.
void activate(QWidget& window);

// Makes sure that the user can work with the element now: shown, on the page of its tabs that is in front,
// and enabled. CommandError when not.
void requireUsable(const QWidget& element);

// Puts the focus into the element, scrolling it into view. The checks of the field that is left may take it
// back.
void giveFocus(QWidget& element);
bool hasFocus(const QWidget& element);

// Selects everything in the element that has the focus and types over it; an empty text deletes.
void typeOver(QWidget& element, const QString& text);

// Presses the keys one after another, each on what has the focus then; on `window` itself when nothing has.
void pressKeys(QWidget& window, const QKeySequence& keys);

void clickAt(QWidget& element, const QPoint& position, bool twice);
void click(QWidget& element, bool twice);  // where it answers to a click

}  // namespace goodsbook
