#pragma once

#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>

#include "host/export.h"

namespace goodsbook {

// Counts the work that goes on loose.
class GOODSBOOKHOST_EXPORT LooseWork {
 public:
  LooseWork();
  ~LooseWork();
  LooseWork(const LooseWork&) = delete;
  LooseWork& operator=(const LooseWork&) = delete;
};

// Whether all loose work has ended, within that time. Before a program ends that unloads what the work uses.
GOODSBOOKHOST_EXPORT bool looseWorkEnds(std::chrono::milliseconds patience);

// Does in a thread of its own what a driver may never come back from. Nobody has to wait for it, not even the
// future's destructor: `work` owns all that it uses, and has let go of it when the future is ready.
template <typename Work>
auto startLoose(Work&& work) {
  using Result = std::invoke_result_t<std::decay_t<Work>>;
  std::promise<Result> told;
  auto future = told.get_future();
  auto body = [counted = std::make_unique<LooseWork>(),
               own = std::make_unique<std::decay_t<Work>>(std::forward<Work>(work)),
               promise = std::move(told)]() mutable {
    auto telling = std::move(promise);
    const auto run = [&own] {
      const auto mine = std::move(own);
      return (*mine)();
    };
    try {
      if constexpr (std::is_void_v<Result>) {
        run();
        telling.set_value();
      } else {
        telling.set_value(run());
      }
    } catch (...) {
      telling.set_exception(std::current_exception());
    }
  };
  std::thread(std::move(body)).detach();
  return future;
}

}  // namespace goodsbook
