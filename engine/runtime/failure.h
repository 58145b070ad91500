#pragma once

#include <string>
#include <string_view>

#include "engine/error.h"

namespace goodsbook::engine {

// Throws the server's error of that number. The line is filled in by who runs the statement.
[[noreturn]] void fail(int number, std::string text, int severity = 16);

// Refuses what exists in T-SQL but not here, by its name.
[[noreturn]] void failUnsupported(std::string_view what);

// Joins pieces into one text.
template <typename... Pieces>
std::string concat(const Pieces&... pieces) {
  std::string text;
  (text.append(std::string_view(pieces)), ...);
  return text;
}

}  // namespace goodsbook::engine
