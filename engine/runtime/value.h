#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace goodsbook::engine {

using Bytes = std::vector<std::byte>;

// A value as SQLite keeps it: bits, whole numbers and date-times (milliseconds since 1900-01-01) as integers,
// all other numbers as doubles, texts in UTF-8. The kind of a type tells which alternative its values use.
using Value = std::variant<std::monostate, std::int64_t, double, std::string, Bytes>;

inline bool isNull(const Value& value) {
  return std::holds_alternative<std::monostate>(value);
}

}  // namespace goodsbook::engine
