#pragma once

#include <utility>

#include "engine/error.h"
#include "host/data/errors.h"

namespace goodsbook {

// Runs what calls the engine; what it throws leaves as the host's own error.
template <typename Action>
decltype(auto) asDatabaseErrors(Action&& action) {
  try {
    return std::forward<Action>(action)();
  } catch (const engine::SqlError& error) {
    const auto& told = error.diagnostic();
    throw EDatabaseError(told.number, told.severity, told.state, told.line,
                         QString::fromStdString(told.text));
  }
}

}  // namespace goodsbook
