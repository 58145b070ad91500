#include "app/driver/table.h"

#include <QHash>

namespace goodsbook {

Handler findHandler(const QString& name) {
  static const QHash<QString, Handler> handlers = [] {
    QHash<QString, Handler> all;
    for (const auto group : {openCommands(), windowCommands(), elementCommands(), actionCommands(),
                             gridCommands(), treeCommands(), desktopCommands(), databaseCommands()}) {
      for (const Command& command : group) all.insert(QLatin1StringView(command.name), command.handler);
    }
    return all;
  }();
  return handlers.value(name, nullptr);
}

}  // namespace goodsbook
