#include <QAction>
#include <QJsonArray>
#include <QPointer>

#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/driver/input.h"
#include "app/driver/table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

// The hint without the shortcut that the tool tip names behind it.
QString hintOf(const QAction& action) {
  const QString tip = action.toolTip();
  const QString shortcut = action.shortcut().toString(QKeySequence::NativeText);
  if (shortcut.isEmpty()) return tip;
  for (const QString& suffix : {u"(%1)"_s.arg(shortcut), u"（%1）"_s.arg(shortcut)}) {
    if (tip.endsWith(suffix)) return tip.chopped(suffix.size()).trimmed();
  }
  return tip;
}

QString captionOf(const QAction& action) {
  QString caption = action.text();
  return caption.remove(u'&');
}

Step trigger(Driver& driver, const Arguments& arguments) {
  QWidget& window = driver.addressing().reachable();
  QAction& action = findAction(window, arguments.text("name"));
  if (!action.isEnabled()) throw CommandError(DriverTexts::tr("操作 %1 不可用").arg(action.objectName()));
  return {.actions = {[window = QPointer(&window), action = QPointer(&action)] {
            if (window) activate(*window);
            if (action) action->trigger();
          }}};
}

Step listActions(Driver& driver, const Arguments&) {
  return {
      .actions = {}, .answer = [&driver] {
        QJsonArray actions;
        for (const QAction* action : namedActions(driver.addressing().addressed())) {
          actions.append(QJsonObject{{u"name"_s, action->objectName()},
                                     {u"caption"_s, captionOf(*action)},
                                     {u"hint"_s, hintOf(*action)},
                                     {u"shortcut"_s, action->shortcut().toString(QKeySequence::PortableText)},
                                     {u"enabled"_s, action->isEnabled()},
                                     {u"visible"_s, action->isVisible()}});
        }
        return QJsonObject{{u"actions"_s, actions}};
      }};
}

constexpr Command commands[] = {{"action", trigger}, {"actions", listActions}};

}  // namespace

std::span<const Command> actionCommands() {
  return commands;
}

}  // namespace goodsbook
