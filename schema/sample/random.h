#pragma once

#include <cstdint>
#include <span>

namespace goodsbook::sample {

// The same numbers with every compiler and library, which the standard's distributions do not promise.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }
  int below(int limit) { return static_cast<int>(next() % static_cast<std::uint64_t>(limit)); }
  int between(int low, int high) { return low + below(high - low + 1); }
  bool oneIn(int n) { return below(n) == 0; }

  template <typename Table>
  const auto& pick(const Table& table) {
    return table[static_cast<std::size_t>(below(static_cast<int>(std::size(table))))];
  }

 private:
  std::uint64_t state_;
};

}  // namespace goodsbook::sample
