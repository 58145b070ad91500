#pragma once

#include <sql.h>
#include <sqlext.h>

#include <span>
#include <string_view>
#include <vector>

namespace goodsbook {

// Writes UTF-16 as UTF-8 to the front of `buffer`, which only ever grows, and gives what was written. A half
// of a pair without its other half becomes U+FFFD.
std::string_view toUtf8(std::span<const SQLWCHAR> wide, std::vector<char>& buffer);

}  // namespace goodsbook
