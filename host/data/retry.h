#pragma once

#include <chrono>
#include <random>
#include <thread>

#include "host/data/errors.h"

namespace goodsbook {

// Runs a whole transaction again when the server chose it as the victim of a dead-lock: nothing of it stayed,
// and the other one is through soon. Waits a moment, of another length each time, so that the same two do not
// meet again.
template <typename Work>
void retried(Work&& work) {
  constexpr int deadlockVictim = 1205;
  constexpr int attempts = 5;
  constexpr int waitMilliseconds = 40;
  for (int attempt = 1;; ++attempt) {
    try {
      work();
      return;
    } catch (const EDatabaseError& error) {
      if (error.number != deadlockVictim || attempt == attempts) throw;
      thread_local std::minstd_rand random{std::random_device{}()};
      std::uniform_int_distribution<int> wait(0, waitMilliseconds * attempt);
      std::this_thread::sleep_for(std::chrono::milliseconds(wait(random)));
    }
  }
}

}  // namespace goodsbook
