#pragma once

#include <string_view>

// How texts compare: without regard to case, width and trailing blanks.
namespace goodsbook::engine {

inline constexpr const char* collationName = "GOODSBOOK";

// Negative, zero or positive.
int compareTexts(std::string_view a, std::string_view b) noexcept;

}  // namespace goodsbook::engine
