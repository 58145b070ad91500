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

std::string upgradeScript(int from) {
  if (from >= version()) return {};
  // An error ends the transaction, not the script: from then on the server reads the batches and does none.
  const std::string guard =
      "if @@error <> 0 or @@trancount = 0\nbegin\n  if @@trancount > 0 rollback transaction\n  set noexec "
      "on\nend\ngo\n";
  std::string text = "set xact_abort on\ngo\n";
  for (int step = from; step < version(); ++step) {
    const std::string number = std::to_string(step);
    text +=
        "begin transaction\ngo\nif not exists (select * from SYS_VERSION with (updlock) where VERSION = " +
        number + ")\nbegin\n  raiserror(N'数据库的版本不是 " + number +
        "，没有升级', 16, 1)\n  rollback transaction\nend\ngo\n" + guard;
    for (const ScriptBatch& batch : batches(upgradeStep(step))) {
      text += batch.text;
      if (!batch.text.ends_with('\n')) text += '\n';
      text += "go\n" + guard;
    }
    text += "commit transaction\ngo\n";
  }
  return text + "set noexec off\ngo\n";
}

std::vector<ScriptBatch> batches(std::string_view script) {
  std::vector<ScriptBatch> result;
  for (const engine::BatchText& batch : engine::splitBatches(script))
    result.push_back({batch.text, batch.line});
  return result;
}

}  // namespace goodsbook::schema
