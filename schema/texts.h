#pragma once

#include <string_view>
#include <vector>

// The compiled-in SQL files; the definitions are made by the build.
namespace goodsbook::schema {

extern const std::string_view scriptText;
extern const std::vector<std::string_view> upgradeTexts;  // [0] leads from version 1 to 2

}  // namespace goodsbook::schema
