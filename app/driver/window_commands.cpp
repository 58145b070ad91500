#include <QJsonArray>
#include <QPixmap>

#include "app/driver/driver.h"
#include "app/driver/elements.h"
#include "app/driver/table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

Step screens(Driver& driver, const Arguments&) {
  return {.actions = {}, .answer = [&driver] {
            QJsonArray list;
            for (const QWidget* window : driver.addressing().windows())
              list.append(Addressing::describe(*window));
            return QJsonObject{{u"screens"_s, list}};
          }};
}

Step use(Driver& driver, const Arguments& arguments) {
  driver.addressing().use(arguments.integer("id"));
  return {};
}

Step screenshot(Driver& driver, const Arguments& arguments) {
  const auto element = arguments.optionalText("element");
  return {.actions = {}, .answer = [&driver, element, path = arguments.text("path")] {
            QWidget& window = driver.addressing().addressed();
            QWidget& shown = element ? findElement(window, *element) : window;
            if (!shown.grab().save(path, "PNG"))
              throw CommandError(DriverTexts::tr("不能写文件 %1").arg(path));
            return QJsonObject();
          }};
}

constexpr Command commands[] = {{"screens", screens}, {"use", use}, {"screenshot", screenshot}};

}  // namespace

std::span<const Command> windowCommands() {
  return commands;
}

}  // namespace goodsbook
