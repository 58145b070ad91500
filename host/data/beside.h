#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <utility>

namespace goodsbook {

// Does what takes long in a thread of its own, on a connection of its own, and calls `pause` every few
// milliseconds until it is through; what `work` throws is thrown here. `pause` must not throw.
template <typename Work>
void runBeside(Work&& work, const std::function<void()>& pause) {
  auto done = std::async(std::launch::async, std::forward<Work>(work));
  constexpr std::chrono::milliseconds betweenPauses{20};
  while (done.wait_for(betweenPauses) != std::future_status::ready) pause();
  done.get();
}

}  // namespace goodsbook
