#include "schema/schema.h"

#include <cassert>

#include "engine/syntax/batches.h"
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

std::vector<ScriptBatch> batches(std::string_view script) {
  std::vector<ScriptBatch> result;
  for (const engine::BatchText& batch : engine::splitBatches(script))
    result.push_back({batch.text, batch.line});
  return result;
}

}  // namespace goodsbook::schema
