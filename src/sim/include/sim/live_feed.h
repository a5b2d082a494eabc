// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace morvane::sim {

struct LiveOptions {
  double rate = 2.0;   // frames a second
  int64_t frames = 0;  // stop after this many; 0: until stopped
  uint64_t seed = 1;
  double half_written_chance = 1.0 / 25;  // frames written in two parts with a pause between
};

// Starts the file at path afresh and appends CSS frames to it as a ground station writes its log
// while a test runs: options.rate frames a second, each with one write, except that now and then a
// frame goes out in two writes with a pause between, so that a reader may find it half-written.
// Runs until stop is set or options.frames are written; the frame in hand is always finished, so
// the file ends on a whole frame. A file that cannot be written is a RuntimeError naming it.
// Returns the frames written.
int64_t run_live_feed(const std::string& path, const LiveOptions& options, const std::atomic<bool>& stop);

}  // namespace morvane::sim
