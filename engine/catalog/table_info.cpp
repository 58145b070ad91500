#include "engine/catalog/table_info.h"

#include <algorithm>

#include "engine/syntax/names.h"

namespace goodsbook::engine {

std::optional<std::size_t> TableInfo::find(std::string_view column) const {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (sameName(columns[i].name, column)) return i;
  return std::nullopt;
}

bool TableInfo::isInKey(std::size_t column) const {
  return std::any_of(keys.begin(), keys.end(), [&](const KeyInfo& key) {
    return std::find(key.columns.begin(), key.columns.end(), column) != key.columns.end();
  });
}

}  // namespace goodsbook::engine
