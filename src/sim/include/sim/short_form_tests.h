// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace morvane::sim {

// An item that the evaluation of a test marks "Fail": the summary's name of its sub-system and
// the item's row name ("Valves", "V 7").
struct FailingItem {
  std::string_view sub_system;
  std::string_view item;
};

// A short form functional test that the simulated instrument runs in every cycle of its day
// (the telemetry writer's files repeat a three-hour cycle), and what evaluating it against the
// limit files of the configuration writer shows. Each test is eight auxiliary packets of 29
// readings, sent one after another within 900 s; one RF calibration report falls inside that
// window. The faulty tests break exactly the items listed: an item not listed passes.
struct ScriptedTest {
  std::string_view mode;  // "Cruise Phase" or "EAFT"
  bool healthy = true;
  int32_t start_offset = 0;  // seconds from the start of a cycle to the test's first reading
  int missing_packet = 0;    // 1..8: the packet lost on the way down (its sequence count skipped)
  double rf_frequency = 0;   // kHz, from the calibration report in the test's window
  std::vector<FailingItem> failing_items;
  std::vector<std::string_view> failing_sub_systems;
  std::string_view packet_message;  // the summary's line about the eight packets
};

// The four tests of a cycle in the order they run:
//  1. "Cruise Phase", healthy: every item passes.
//  2. "Cruise Phase", faulty: packet 3 is lost, so valves V 7 to V 11 (whose samples it carries)
//     fail; the GC heater is open-circuit (no current, no warming); the detector high voltage
//     sags to 1.2 kV before the final readings.
//  3. "EAFT", healthy: every item passes.
//  4. "EAFT", faulty: packet 2 is lost, so valves V 1 to V 4 and V 7 fail; Reactor 9's heater is
//     open-circuit; the RF calibration finds 503.38 kHz, below its range.
const std::vector<ScriptedTest>& scripted_tests();

}  // namespace morvane::sim
