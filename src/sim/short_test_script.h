// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace morvane::sim {

// A load the instrument switches during a test.
struct Load {
  enum class Kind { Heater, Valve, Injector };
  Kind kind = Kind::Heater;
  int number = 0;  // heaters by their thermocouple sensor, valves 1..16, injectors 1..3
};

// One step of a short form test's sequence: take a reading of a channel (channel 0: a slot with
// no measurement, while a valve switches), switch a load, or dwell.
struct TestStep {
  enum class Kind { Read, SwitchOn, SwitchOff, Wait };
  Kind kind = Kind::Read;
  int channel = 0;
  Load load;
  int seconds = 0;
};

// Seconds between two readings.
inline constexpr int kReadingInterval = 2;

// The sequence of a test in mode "Cruise Phase" or "EAFT": exactly 232 readings, placed where the
// evaluation looks for each item's samples (see the comments in the source).
std::vector<TestStep> test_script(std::string_view mode);

}  // namespace morvane::sim
