// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace morvane::sim {

// One record of a limit file: a name and three pairs of limits. Which pair of which record an
// evaluated item uses is the evaluation's business; pairs an item does not use are 0, 0.
struct RangeRecord {
  std::string_view name;
  double min1, max1, min2, max2, min3, max3;
};

// The 38 limit records of a test mode ("Cruise Phase" or "EAFT") that the healthy simulated
// instrument meets: records 1-10 sensors, 11-16 heaters, 17-21 large and 22-26 small reactors,
// 27-31 L-valves, 32-36 supply rails and RF frequency, 37 valves, 38 injector valves.
std::array<RangeRecord, 38> test_ranges(std::string_view mode);

// Writes EGSE_info/Test Ranges/<type> <mode> Mode.txt below base for the five file types and both
// modes (the workstation finds "EGSE_Info" in any letter case). A file that cannot be written is
// a RuntimeError naming it.
void write_test_ranges(const std::string& base);

}  // namespace morvane::sim
