#include "benchmarks/figure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace goodsbook::benchmarks {

bool print(const Figure& figure) {
  const bool alone = figure.floor <= 0;
  const double measure = alone ? figure.ours : figure.ours / figure.floor;
  const bool holds = measure <= figure.target;
  char floor[32] = "-", ratio[32] = "-", target[32];
  if (!alone) {
    std::snprintf(floor, sizeof floor, "%.4g %s", figure.floor, figure.unit.c_str());
    std::snprintf(ratio, sizeof ratio, "%.2f", measure);
    std::snprintf(target, sizeof target, "%.2f", figure.target);
  } else {
    std::snprintf(target, sizeof target, "%.4g %s", figure.target, figure.unit.c_str());
  }
  std::printf("%s\t%.4g %s\t%s\t%s\t%s\t%s\n", figure.name.c_str(), figure.ours, figure.unit.c_str(), floor,
              ratio, target, holds ? "ok" : "over");
  std::fflush(stdout);
  return holds;
}

double milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

Pair sideBySide(int rounds, const std::function<void()>& ours, const std::function<void()>& floor) {
  floor();
  ours();
  std::vector<Pair> pairs;
  for (int round = 0; round < rounds; ++round) {
    Pair pair;
    pair.floor = milliseconds(floor);
    pair.ours = milliseconds(ours);
    pairs.push_back(pair);
  }
  auto middle = pairs.begin() + rounds / 2;
  std::nth_element(pairs.begin(), middle, pairs.end(),
                   [](const Pair& a, const Pair& b) { return a.ours * b.floor < b.ours * a.floor; });
  return *middle;
}

}  // namespace goodsbook::benchmarks
