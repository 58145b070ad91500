#pragma once

#include <QCoreApplication>
#include <QJsonObject>
#include <functional>
#include <vector>

#include "app/driver/arguments.h"

namespace goodsbook {

class Driver;

struct DriverTexts {
  Q_DECLARE_TR_FUNCTIONS(Driver)
};

// What a command does. Its handler looks everything up first and throws CommandError before anything has
// changed; the actions then run one after another from the event loop, with the program idle in between, and
// the answer is asked for when it is idle again. An action that opens a modal dialog has not returned by
// then; actions behind it are left out.
struct Step {
  std::vector<std::function<void()>> actions = {};
  int delayMs = 0;                           // the program runs this long behind the last action
  std::function<QJsonObject()> answer = {};  // the fields of the reply besides `ok`; may throw CommandError
};

using Handler = Step (*)(Driver&, const Arguments&);

// One command of a group, by its name.
struct Command {
  const char* name;
  Handler handler;
};

}  // namespace goodsbook
