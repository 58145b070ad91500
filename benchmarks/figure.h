#pragma once

#include <functional>
#include <string>

namespace goodsbook::benchmarks {

// One line of the table: what we need for a piece of work beside the floor, the same work in plain C++ on the
// SQLite C interface (or another bare minimum), both taken in this run.
struct Figure {
  std::string name;
  std::string unit;  // "ms", "MB"
  double ours = 0;
  double floor = 0;   // 0: the figure stands alone and the target holds for `ours`
  double target = 0;  // most that the ratio (or `ours`) may be
};

// Prints name, ours, floor, ratio, target and "ok" or "over", separated by tabs. True when the target holds.
bool print(const Figure& figure);

// Milliseconds of one call.
double milliseconds(const std::function<void()>& work);

struct Pair {
  double ours = 0, floor = 0;
};

// Runs both in turn, `rounds` times after a warm-up, and gives the round whose ratio is the median: the
// machine's speed drifts, so that only times taken side by side compare.
Pair sideBySide(int rounds, const std::function<void()>& ours, const std::function<void()>& floor);

}  // namespace goodsbook::benchmarks
