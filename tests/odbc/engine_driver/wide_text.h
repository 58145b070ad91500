#pragma once

#include <string>
#include <string_view>

namespace goodsbook::engine_driver {

std::u16string toUtf16(std::string_view utf8);
std::string toUtf8(std::u16string_view utf16);

}  // namespace goodsbook::engine_driver
