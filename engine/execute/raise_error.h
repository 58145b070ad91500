#pragma once

#include <span>
#include <string>
#include <string_view>

#include "engine/runtime/value.h"

namespace goodsbook::engine {

// The text of RAISERROR: %s, %d, %i, %u, %x, %X, %o with flags and widths, %% for a percent sign. Throws 2786
// for an argument of the wrong kind.
std::string formatMessage(std::string_view format, std::span<const Value> arguments);

}  // namespace goodsbook::engine
