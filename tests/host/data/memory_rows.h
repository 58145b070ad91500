#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "engine/row.h"

namespace goodsbook::test {

// A row as a database hands it out, made of plain values.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

class MemoryRow : public engine::Row {
 public:
  explicit MemoryRow(std::vector<Value> values) : values_(std::move(values)) {}
  bool isNull(int column) const override { return at(column).index() == 0; }
  std::int64_t integer(int column) const override {
    return isNull(column) ? 0 : std::get<std::int64_t>(at(column));
  }
  double real(int column) const override { return isNull(column) ? 0 : std::get<double>(at(column)); }
  std::string_view text(int column) const override {
    return isNull(column) ? std::string_view() : std::get<std::string>(at(column));
  }
  std::span<const std::byte> blob(int column) const override {
    const auto bytes = text(column);
    return std::as_bytes(std::span(bytes.data(), bytes.size()));
  }

 private:
  const Value& at(int column) const { return values_[static_cast<std::size_t>(column)]; }

  std::vector<Value> values_;
};

inline Value num(std::int64_t value) {
  return value;
}
inline Value txt(std::string value) {
  return value;
}
constexpr std::monostate null{};

}  // namespace goodsbook::test
