#pragma once

#include <span>
#include <string_view>

namespace goodsbook::sample {

struct UnitName {
  std::string_view code;
  std::string_view name;
};

// The units of measure that every shop starts with, in the order of their codes from "01".
std::span<const UnitName> unitNames();
std::string_view unitName(std::string_view code);

}  // namespace goodsbook::sample
