#include "host/data/odbc/loose_work.h"

#include <atomic>

namespace goodsbook {
namespace {

// Lives as long as the last thread: it has no destructor to run.
std::atomic<int> goingOn = 0;

}  // namespace

LooseWork::LooseWork() {
  ++goingOn;
}

LooseWork::~LooseWork() {
  --goingOn;
}

bool looseWorkEnds(std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds betweenLooks{5};
  const auto end = std::chrono::steady_clock::now() + patience;
  while (goingOn > 0 && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(betweenLooks);
  return goingOn == 0;
}

}  // namespace goodsbook
