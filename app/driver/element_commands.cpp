#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QJsonArray>
#include <QKeySequence>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTextEdit>
#include <memory>
#include <optional>

#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/driver/input.h"
#include "app/driver/table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

bool takesText(const QWidget& element) {
  return qobject_cast<const QLineEdit*>(&element) || qobject_cast<const QPlainTextEdit*>(&element) ||
         qobject_cast<const QTextEdit*>(&element) || qobject_cast<const QComboBox*>(&element) ||
         qobject_cast<const QAbstractSpinBox*>(&element);
}

QWidget& usableElement(Driver& driver, const Arguments& arguments) {
  QWidget& element = findElement(driver.addressing().reachable(), arguments.text("element"));
  requireUsable(element);
  return element;
}

// What to say about an element that is gone by the time of the answer: its window was closed and destroyed.
QString textIfAlive(const QPointer<QWidget>& element) {
  return element ? textOf(*element) : QString();
}

Step listElements(Driver& driver, const Arguments&) {
  return {.actions = {}, .answer = [&driver] {
            const QWidget& window = driver.addressing().addressed();
            QJsonArray elements;
            for (const QWidget* element : namedElements(window))
              elements.append(describeElement(*element, window));
            return QJsonObject{{u"elements"_s, elements}};
          }};
}

Step get(Driver& driver, const Arguments& arguments) {
  return {.actions = {}, .answer = [&driver, name = arguments.text("element")] {
            const QWidget& window = driver.addressing().addressed();
            return describeElement(findElement(window, name), window);
          }};
}

Step focus(Driver& driver, const Arguments& arguments) {
  QWidget& element = usableElement(driver, arguments);
  if (element.focusPolicy() == Qt::NoFocus && !element.focusProxy()) {
    throw CommandError(DriverTexts::tr("元素 %1 不接受焦点").arg(element.objectName()));
  }
  return {.actions = {[target = QPointer(&element)] {
            if (target) giveFocus(*target);
          }},
          .answer = [&driver] {
            return QJsonObject{{u"focused"_s, focusedElement(driver.addressing().addressed())}};
          }};
}

Step type(Driver& driver, const Arguments& arguments) {
  QWidget& element = usableElement(driver, arguments);
  const QString text = arguments.text("text");
  if (!takesText(element))
    throw CommandError(DriverTexts::tr("元素 %1 不接受文本").arg(element.objectName()));
  if (element.property("readOnly").toBool()) {
    throw CommandError(DriverTexts::tr("元素 %1 只读").arg(element.objectName()));
  }
  auto typed = std::make_shared<bool>(false);
  const QPointer target = &element;
  return {.actions = {[target] {
                        if (target) giveFocus(*target);
                      },
                      [target, text, typed] {
                        if (!target || !hasFocus(*target)) return;
                        *typed = true;
                        typeOver(*target, text);
                      }},
          .answer = [target, typed, name = element.objectName()] {
            if (!*typed) throw CommandError(DriverTexts::tr("元素 %1 没有得到焦点").arg(name));
            return QJsonObject{{u"text"_s, textIfAlive(target)}};
          }};
}

// A box or option that can be switched; nothing for any other element.
std::optional<bool> switchedOn(const QWidget& element) {
  const auto* button = qobject_cast<const QAbstractButton*>(&element);
  if (button && button->isCheckable()) return button->isChecked();
  const auto* group = qobject_cast<const QGroupBox*>(&element);
  if (group && group->isCheckable()) return group->isChecked();
  return std::nullopt;
}

Step check(Driver& driver, const Arguments& arguments) {
  QWidget& element = usableElement(driver, arguments);
  const bool on = arguments.flag("on");
  const std::optional<bool> before = switchedOn(element);
  if (!before) throw CommandError(DriverTexts::tr("元素 %1 不是选择框").arg(element.objectName()));
  if (*before == on) return {};
  const QPointer target = &element;
  return {.actions = {[target] {
            if (target) click(*target, false);
          }},
          .answer = [target, on] {
            // The field that the click left may have kept the focus, or the screen has set it back.
            if (target && switchedOn(*target) != on)
              throw CommandError(DriverTexts::tr("元素 %1 没有改变").arg(target->objectName()));
            return QJsonObject();
          }};
}

Step clickElement(Driver& driver, const Arguments& arguments) {
  return {.actions = {[target = QPointer(&usableElement(driver, arguments)),
                       twice = arguments.flag("double", false)] {
            if (target) click(*target, twice);
          }}};
}

Step press(Driver& driver, const Arguments& arguments) {
  const QString text = arguments.text("keys");
  const QKeySequence keys(text, QKeySequence::PortableText);
  bool known = keys.count() > 0;
  for (int i = 0; i < keys.count(); ++i) known = known && keys[i].key() != Qt::Key_unknown;
  if (!known) throw CommandError(DriverTexts::tr("没有按键 %1").arg(text));
  const QPointer window = &driver.addressing().reachable();
  return {.actions = {[window, keys] {
            if (!window) return;
            activate(*window);
            pressKeys(*window, keys);
          }}};
}

constexpr Command commands[] = {
    {"elements", listElements}, {"get", get},    {"focus", focus}, {"type", type}, {"check", check},
    {"click", clickElement},    {"press", press}};

}  // namespace

std::span<const Command> elementCommands() {
  return commands;
}

}  // namespace goodsbook
