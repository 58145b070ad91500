#include "app/driver/elements.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTreeView>

#include "app/driver/driver.h"
#include "host/controls/TDBGridEh.h"
#include "host/data/record_set.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// Whether `object` is a part of `window` itself, not of another window that `window` owns.
bool belongsTo(const QObject& object, const QWidget& window) {
  for (const QObject* parent = object.parent(); parent; parent = parent->parent()) {
    if (parent == &window) return true;
    const auto* widget = qobject_cast<const QWidget*>(parent);
    if (widget && widget->isWindow() && !qobject_cast<const QMenu*>(widget)) return false;
  }
  return false;
}

bool isNamed(const QObject& object) {
  const QString name = object.objectName();
  return !name.isEmpty() && !name.startsWith("qt_"_L1);
}

template <class Kind>
std::vector<Kind*> partsOf(const QWidget& window) {
  std::vector<Kind*> parts;
  const QList<Kind*> children = window.findChildren<Kind*>();
  for (Kind* child : children) {
    if (isNamed(*child) && belongsTo(*child, window)) parts.push_back(child);
  }
  return parts;
}

// The one of `parts` with this name: as written, else the only one that differs in case alone.
template <class Kind>
Kind* named(const std::vector<Kind*>& parts, const QString& name) {
  Kind* alike = nullptr;
  int alikes = 0;
  for (Kind* part : parts) {
    if (part->objectName() == name) return part;
    if (part->objectName().compare(name, Qt::CaseInsensitive) != 0) continue;
    alike = part;
    ++alikes;
  }
  return alikes == 1 ? alike : nullptr;
}

[[noreturn]] void noElement(const QString& name) {
  throw CommandError(DriverTexts::tr("没有元素 %1").arg(name));
}

// Captions as the eye sees them: "&" marks a key and is not shown.
QString withoutMnemonics(const QString& caption) {
  QString shown;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&' && i + 1 < caption.size()) ++i;
    shown += caption[i];
  }
  return shown;
}

QString titleOf(const QWidget& element, const QWidget& window) {
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    if (label->buddy() == &element) return withoutMnemonics(label->text());
  }
  if (const QWidget* parent = element.parentWidget()) {
    if (const auto* form = qobject_cast<const QFormLayout*>(parent->layout())) {
      const auto* label = qobject_cast<const QLabel*>(form->labelForField(const_cast<QWidget*>(&element)));
      if (label) return withoutMnemonics(label->text());
    }
  }
  if (!element.accessibleName().isEmpty()) return element.accessibleName();
  return element.toolTip();
}

bool isReadOnly(const QWidget& element) {
  if (const auto* grid = qobject_cast<const TDBGridEh*>(&element)) return grid->isReadOnly();
  return element.property("readOnly").toBool();
}

QJsonValue maximumLength(const QWidget& element) {
  constexpr int unlimited = 32767;  // of a line edit that was given no limit
  for (const char* property : {"typingLimit", "maxLength"}) {
    const QVariant limit = element.property(property);
    if (limit.isValid() && limit.toInt() > 0 && limit.toInt() < unlimited) return limit.toInt();
  }
  return QJsonValue::Null;
}

// Elements of a window that is not on screen count as visible when they will be shown with it.
bool isShown(const QWidget& element, const QWidget& window) {
  return window.isVisible() ? element.isVisible() : element.isVisibleTo(&window);
}

}  // namespace

QString classNameOf(const QObject& object) {
  const QString name = QString::fromLatin1(object.metaObject()->className());
  return name.mid(name.lastIndexOf(u':') + 1);
}

std::vector<QWidget*> namedElements(const QWidget& window) {
  std::vector<QWidget*> elements = partsOf<QWidget>(window);
  std::erase_if(elements, [](const QWidget* element) { return element->isWindow(); });
  return elements;
}

QWidget& findElement(const QWidget& window, const QString& name) {
  QWidget* element = named(namedElements(window), name);
  if (!element) noElement(name);
  return *element;
}

QString textOf(const QWidget& element) {
  if (const auto* edit = qobject_cast<const QLineEdit*>(&element)) return edit->text();
  if (const auto* label = qobject_cast<const QLabel*>(&element)) {
    return label->buddy() ? withoutMnemonics(label->text()) : label->text();
  }
  if (const auto* button = qobject_cast<const QAbstractButton*>(&element))
    return withoutMnemonics(button->text());
  if (const auto* memo = qobject_cast<const QPlainTextEdit*>(&element)) return memo->toPlainText();
  if (const auto* memo = qobject_cast<const QTextEdit*>(&element)) return memo->toPlainText();
  if (const auto* combo = qobject_cast<const QComboBox*>(&element)) return combo->currentText();
  if (const auto* box = qobject_cast<const QGroupBox*>(&element)) return withoutMnemonics(box->title());
  for (const char* property : {"text", "caption", "title"}) {
    const QVariant text = element.property(property);
    if (text.isValid()) return text.toString();
  }
  return element.windowTitle();
}

QJsonObject describeElement(const QWidget& element, const QWidget& window) {
  QJsonValue checked = QJsonValue::Null;
  if (const auto* button = qobject_cast<const QAbstractButton*>(&element); button && button->isCheckable()) {
    checked = button->isChecked();
  } else if (const auto* box = qobject_cast<const QGroupBox*>(&element); box && box->isCheckable()) {
    checked = box->isChecked();
  }
  return {{u"name"_s, element.objectName()},
          {u"class"_s, classNameOf(element)},
          {u"text"_s, textOf(element)},
          {u"checked"_s, checked},
          {u"enabled"_s, element.isEnabled()},
          {u"visible"_s, isShown(element, window)},
          {u"readonly"_s, isReadOnly(element)},
          {u"focused"_s, focusedElement(window) == element.objectName()},
          {u"maxlength"_s, maximumLength(element)},
          {u"title"_s, titleOf(element, window)}};
}

std::vector<QAction*> namedActions(const QWidget& window) {
  return partsOf<QAction>(window);
}

QAction& findAction(const QWidget& window, const QString& name) {
  QAction* action = named(namedActions(window), name);
  if (!action) throw CommandError(DriverTexts::tr("没有操作 %1").arg(name));
  return *action;
}

Rows findRows(const Driver& driver, const QWidget& window, const QString& name) {
  const std::vector<TDBGridEh*> grids = partsOf<TDBGridEh>(window);
  if (TDBGridEh* grid = named(grids, name)) {
    if (!grid->recordSet()) throw CommandError(DriverTexts::tr("表格 %1 没有数据").arg(name));
    return {grid->recordSet(), grid};
  }
  RecordSet* set = named(partsOf<RecordSet>(window), name);
  if (!set) set = driver.kept(name);
  if (!set && named(namedElements(window), name)) {
    throw CommandError(DriverTexts::tr("元素 %1 不是表格").arg(name));
  }
  if (!set) noElement(name);
  for (TDBGridEh* grid : grids) {
    if (grid->recordSet() == set) return {set, grid};
  }
  return {set, nullptr};
}

TDBGridEh& findGrid(const QWidget& window, const QString& name) {
  auto* grid = qobject_cast<TDBGridEh*>(&findElement(window, name));
  if (!grid) throw CommandError(DriverTexts::tr("元素 %1 不是表格").arg(name));
  return *grid;
}

QTreeView& findTree(const QWidget& window, const QString& name) {
  if (!name.isEmpty()) {
    auto* tree = qobject_cast<QTreeView*>(&findElement(window, name));
    if (!tree) throw CommandError(DriverTexts::tr("元素 %1 不是树").arg(name));
    return *tree;
  }
  const std::vector<QTreeView*> trees = partsOf<QTreeView>(window);
  if (trees.empty()) throw CommandError(DriverTexts::tr("窗口 %1 没有树").arg(classNameOf(window)));
  return *trees.front();
}

QString focusedElement(const QWidget& window) {
  for (const QWidget* widget = QApplication::focusWidget(); widget && widget != &window;
       widget = widget->parentWidget()) {
    if (isNamed(*widget)) return belongsTo(*widget, window) ? widget->objectName() : QString();
    if (widget->isWindow()) break;
  }
  return {};
}

}  // namespace goodsbook
