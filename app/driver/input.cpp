#include "app/driver/input.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QPointer>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabWidget>
#include <QtTest/QTest>

#include "app/driver/command.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

void sendKey(QWidget* target, Qt::Key key, const QString& text, Qt::KeyboardModifiers modifiers) {
  if (key == Qt::Key_Tab && (modifiers & Qt::ShiftModifier)) key = Qt::Key_Backtab;  // as keyboards send it
  const QPointer<QWidget> alive = target;
  QTest::sendKeyEvent(QTest::Press, target, key, text, modifiers);
  if (alive) QTest::sendKeyEvent(QTest::Release, target, key, text, modifiers);
}

// The key and the text of one typed character.
void typeCharacter(QWidget* target, char32_t character) {
  if (character == U'\n') {
    // Enter alone goes on to the next field; with Shift it is a new line in every box of several lines.
    sendKey(target, Qt::Key_Return, u"\r"_s, Qt::ShiftModifier);
    return;
  }
  const QString text = QString::fromUcs4(&character, 1);
  const QChar upper = text.at(0).toUpper();
  const bool shifted = text.at(0).isUpper();
  const bool hasKey = upper.unicode() >= 0x20 && upper.unicode() < 0x7f;
  sendKey(target, hasKey ? Qt::Key(upper.unicode()) : Qt::Key_unknown, text,
          shifted ? Qt::ShiftModifier : Qt::NoModifier);
}

// The text that a key gives without an input method; empty for keys that only do something.
QString textOfKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return u"\r"_s;
    case Qt::Key_Tab:
      return u"\t"_s;
    case Qt::Key_Escape:
      return u"\x1b"_s;
    case Qt::Key_Backspace:
      return u"\b"_s;
    case Qt::Key_Delete:
      return u"\x7f"_s;
    default:
      break;
  }
  if (key >= 0x80) return {};
  const QChar character = QChar(static_cast<char16_t>(key));
  return QString(modifiers & Qt::ShiftModifier ? character : character.toLower());
}

template <class Box>
QPoint boxPoint(const Box& box, QStyle::SubElement part) {
  QStyleOptionButton option;
  option.initFrom(&box);
  option.text = box.text();
  return box.style()->subElementRect(part, &option, &box).center();
}

// Where a click takes effect: boxes and labels can be much wider than what answers.
QPoint effectivePoint(const QWidget& element) {
  if (const auto* box = qobject_cast<const QCheckBox*>(&element))
    return boxPoint(*box, QStyle::SE_CheckBoxIndicator);
  if (const auto* box = qobject_cast<const QRadioButton*>(&element)) {
    return boxPoint(*box, QStyle::SE_RadioButtonIndicator);
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&element); group && group->isCheckable()) {
    QStyleOptionGroupBox option;
    option.initFrom(group);
    option.text = group->title();
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel;
    return group->style()
        ->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, group)
        .center();
  }
  if (const auto* label = qobject_cast<const QLabel*>(&element)) {
    const QSize shown = label->sizeHint().boundedTo(label->contentsRect().size());
    return QStyle::alignedRect(label->layoutDirection(), label->alignment(), shown, label->contentsRect())
        .center();
  }
  return element.rect().center();
}

void scrollIntoView(QWidget& element) {
  for (QWidget* parent = element.parentWidget(); parent; parent = parent->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&element);
  }
}

// An element on a page behind another tab: a user turns to that page first.
void bringPageUp(const QWidget& element) {
  for (const QWidget* page = &element; page && !page->isWindow(); page = page->parentWidget()) {
    auto* tabs =
        page->parentWidget() ? qobject_cast<QTabWidget*>(page->parentWidget()->parentWidget()) : nullptr;
    const int index = tabs ? tabs->indexOf(page) : -1;
    if (index >= 0 && tabs->isTabEnabled(index)) tabs->setCurrentIndex(index);
  }
}

}  // namespace

void activate(QWidget& window) {
  QWidget* top = window.window();
  if (QApplication::activeWindow() == top || top->windowType() == Qt::Popup) return;
  top->raise();
  top->activateWindow();
  QApplication::setActiveWindow(top);
}

void requireUsable(const QWidget& element) {
  bringPageUp(element);
  if (!element.isVisible()) throw CommandError(DriverTexts::tr("元素 %1 不可见").arg(element.objectName()));
  if (!element.isEnabled()) throw CommandError(DriverTexts::tr("元素 %1 不可用").arg(element.objectName()));
}

void giveFocus(QWidget& element) {
  activate(element);
  scrollIntoView(element);
  if (!hasFocus(element)) element.setFocus(Qt::TabFocusReason);
}

bool hasFocus(const QWidget& element) {
  const QWidget* focused = QApplication::focusWidget();
  return focused && (focused == &element || focused == element.focusProxy() || element.isAncestorOf(focused));
}

void typeOver(QWidget& element, const QString& text) {
  const QPointer<QWidget> target = &element;
  sendKey(target, Qt::Key_A, {}, Qt::ControlModifier);
  if (text.isEmpty() && target)
    sendKey(target, Qt::Key_Delete, textOfKey(Qt::Key_Delete, {}), Qt::NoModifier);
  for (const char32_t character : text.toUcs4()) {
    if (!target) return;
    typeCharacter(target, character);
  }
}

void pressKeys(QWidget& window, const QKeySequence& keys) {
  for (int i = 0; i < keys.count(); ++i) {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* target =
        popup ? (popup->focusWidget() ? popup->focusWidget() : popup) : QApplication::focusWidget();
    if (!target) target = &window;
    const QKeyCombination combination = keys[i];
    sendKey(target, combination.key(), textOfKey(combination.key(), combination.keyboardModifiers()),
            combination.keyboardModifiers());
  }
}

void clickAt(QWidget& element, const QPoint& position, bool twice) {
  activate(element);
  if (twice) {
    QTest::mouseDClick(&element, Qt::LeftButton, Qt::NoModifier, position);
  } else {
    QTest::mouseClick(&element, Qt::LeftButton, Qt::NoModifier, position);
  }
}

void click(QWidget& element, bool twice) {
  scrollIntoView(element);
  clickAt(element, effectivePoint(element), twice);
}

}  // namespace goodsbook
