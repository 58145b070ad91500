#include "tests/odbc/engine_driver/cable.h"

#include <fstream>
#include <iterator>
#include <utility>

#include "engine/runtime/failure.h"

namespace goodsbook::engine_driver {

Cable::Cable(std::filesystem::path folder) : folder_(std::move(folder)) {}

bool Cable::isCut() const {
  std::error_code ignored;
  return std::filesystem::exists(folder_ / "cut", ignored);
}

void Cable::requireWhole() const {
  constexpr int broken = 10054, fatal = 20;
  if (isCut()) engine::fail(broken, "连接断开", fatal);
}

void Cable::mayBreakBeforeCommit() const {
  breaksWhere("cut-before-commit");
}

void Cable::mayBreakAfterCommit() const {
  breaksWhere("cut-after-commit");
}

void Cable::breaksWhere(const char* file) const {
  std::ifstream wanted(folder_ / file);
  if (!wanted) return;
  const std::string text{std::istreambuf_iterator<char>(wanted), {}};
  if (said_.find(text) == std::string::npos) return;
  std::filesystem::rename(folder_ / file, folder_ / "cut");
  requireWhole();
}

}  // namespace goodsbook::engine_driver
