#include "schema/schema.h"

#include <cassert>

#include "schema/texts.h"

namespace goodsbook::schema {

int version() {
  return static_cast<int>(upgradeTexts.size()) + 1;
}

std::string_view script() {
  return scriptText;
}

std::string_view upgradeStep(int from) {
  assert(from >= 1 && from < version());
  return upgradeTexts[static_cast<std::size_t>(from - 1)];
}

}  // namespace goodsbook::schema
