// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace morvane::sim {

// A small seeded generator (splitmix64). The noise uses no library mathematics, so a seed gives
// the same numbers on every platform and with every compiler.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}

  uint64_t next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
  }
  // 0 <= u < 1.
  double uniform() { return static_cast<double>(next() >> 11) * 0x1.0p-53; }
  // 0 .. n - 1.
  int below(int n) { return static_cast<int>(next() % static_cast<uint64_t>(n)); }
  bool chance(double probability) { return uniform() < probability; }
  // Bell-shaped noise of standard deviation sigma (a sum of four uniforms, bounded at 3.5 sigma).
  double noise(double sigma) {
    const double sum = uniform() + uniform() + uniform() + uniform() - 2.0;
    return sum * 1.7320508075688772 * sigma;
  }

 private:
  uint64_t state_;
};

// An independent stream for one purpose, so that adding draws to one part of the simulation
// does not shift every number of another.
inline uint64_t stream_seed(uint64_t seed, uint64_t purpose) {
  Random mix(seed ^ (purpose * 0xD1B54A32D192ED03ULL));
  return mix.next();
}

}  // namespace morvane::sim
