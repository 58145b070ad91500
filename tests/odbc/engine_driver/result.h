#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "engine/row.h"

namespace goodsbook::engine_driver {

// Null, Bit/Integer/DateTime, Float, Text, Blob.
using Cell = std::variant<std::monostate, std::int64_t, double, std::u16string, std::vector<std::byte>>;

// One of the answers of a batch, in the order in which a server sends them.
struct Result {
  enum class Kind : std::uint8_t { Count, Rows, Message, Error };
  Kind kind = Kind::Count;
  std::int64_t count = -1;                      // of Count: rows written
  engine::Diagnostic message{};                 // of Message and Error
  std::vector<engine::Column> columns{};        // of Rows
  std::vector<Cell> cells{};                    // of Rows, row after row
  std::optional<engine::Diagnostic> failure{};  // of Rows: what was met behind the last of them

  std::size_t rowCount() const { return columns.empty() ? 0 : cells.size() / columns.size(); }
  const Cell& at(std::size_t row, std::size_t column) const { return cells[row * columns.size() + column]; }
};

}  // namespace goodsbook::engine_driver
