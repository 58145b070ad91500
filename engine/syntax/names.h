#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace goodsbook::engine {

// Names are the same when they differ in the case of their letters A to Z only.
bool sameName(std::string_view a, std::string_view b) noexcept;

// For maps that are keyed by names.
struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const noexcept;
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept { return sameName(a, b); }
};

}  // namespace goodsbook::engine
