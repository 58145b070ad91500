#include <QJsonArray>

#include "app/driver/drive_desktop.h"
#include "app/driver/driver.h"
#include "app/driver/table.h"

using namespace Qt::StringLiterals;

namespace goodsbook {

namespace {

Step answer(Driver& driver, const Arguments& arguments) {
  const QStringList answers = arguments.texts("answers");
  for (const QString& text : answers) {
    if (text != "y"_L1 && text != "n"_L1)
      throw CommandError(DriverTexts::tr("没有答案 %1，只有 y 或 n").arg(text));
  }
  return {.actions = {[&driver, answers] {
            for (const QString& text : answers) driver.desktop().queueAnswer(text.at(0).toLatin1());
          }}};
}

Step pickFile(Driver& driver, const Arguments& arguments) {
  return {.actions = {[&driver, path = arguments.text("path")] { driver.desktop().queueFile(path); }}};
}

Step printTo(Driver& driver, const Arguments& arguments) {
  return {.actions = {[&driver, path = arguments.text("path")] { driver.desktop().setPrintTarget(path); }}};
}

Step messages(Driver& driver, const Arguments&) {
  return {.actions = {}, .answer = [&driver] {
            QJsonArray list;
            for (const DriveDesktop::Message& message : driver.desktop().takeMessages()) {
              list.append(QJsonObject{{u"text"_s, message.text},
                                      {u"kind"_s, message.kind},
                                      {u"caption"_s, message.caption},
                                      {u"answer"_s, message.answer}});
            }
            return QJsonObject{{u"messages"_s, list}};
          }};
}

Step opened(Driver& driver, const Arguments&) {
  return {.actions = {}, .answer = [&driver] {
            return QJsonObject{{u"urls"_s, QJsonArray::fromStringList(driver.desktop().takeUrls())}};
          }};
}

Step wait(Driver&, const Arguments& arguments) {
  constexpr int longest = 10'000;
  const int ms = arguments.integer("ms");
  if (ms < 0 || ms > longest) throw CommandError(DriverTexts::tr("ms 应在 0 到 %1 之间").arg(longest));
  return {.actions = {}, .delayMs = ms};
}

constexpr Command commands[] = {{"answer", answer},     {"pickfile", pickFile}, {"printto", printTo},
                                {"messages", messages}, {"opened", opened},     {"wait", wait}};

}  // namespace

std::span<const Command> desktopCommands() {
  return commands;
}

}  // namespace goodsbook
