// SPDX-License-Identifier: MIT
// The "Summary" tab: the supply rails and the RF frequency, one line per sub-system rolled up
// from the other tabs' result cells, the overall verdict and the missing packets.
#include <string>
#include <vector>

#include "result_routines.h"

namespace morvane {

std::string missing_packet_message(const std::vector<int>& missing) {
  if (missing.empty()) return kAllPacketsCollected;
  if (missing.size() == 1) {
    return "There was 1 missing science data packet (pkt no. " + std::to_string(missing.front()) + ")";
  }
  std::string text = "There were " + std::to_string(missing.size()) + " missing science data packets (pkt nos. ";
  for (size_t i = 0; i < missing.size(); ++i) {
    if (i > 0) text += i + 1 == missing.size() ? " and " : ", ";
    text += std::to_string(missing[i]);
  }
  return text + ")";
}

namespace result_routines {

namespace {

double eng(const ShortTestEvaluation& test, int k) { return test.Eng_Value[static_cast<size_t>(k)]; }

RailRow rail_row(const char* name, const char* unit, double value, const TestRanges& ranges, int record) {
  RailRow row;
  row.name = name;
  row.unit = unit;
  row.measured = value;
  row.value = value_cell(value, "0.00");
  row.record = record;
  row.limits = ranges.record(record).pair(3);
  row.result = result_cell(row.limits.holds(value));
  return row;
}

// The roll-up goes by the cells' captions, so anything but "Pass" counts as a failure.
template <typename Rows>
bool all_pass(const Rows& rows) {
  for (const auto& row : rows) {
    if (row.result.text != kPass) return false;
  }
  return true;
}

}  // namespace

void Display_Summary_Results(ShortTestEvaluation& test, const TestRanges& ranges, int offset) {
  test.rails.clear();
  test.rails.push_back(rail_row("5V Voltage", "V", (eng(test, 11 + offset) + eng(test, 11)) / 2, ranges, 32));
  test.rails.push_back(
      rail_row("5V Current", "mA", (eng(test, 17) + eng(test, 13) + eng(test, 21) + eng(test, 25)) / 4, ranges, 33));
  test.rails.push_back(rail_row("28V Voltage", "V", (eng(test, 12 + offset) + eng(test, 12)) / 2, ranges, 34));
  test.rails.push_back(
      rail_row("28V Current", "mA", (eng(test, 18) + eng(test, 14) + eng(test, 22) + eng(test, 26)) / 4, ranges, 35));
  RailRow rf = rail_row("RF Frequency", "kHz", test.readings.RF_Frequency, ranges, 36);
  if (!test.readings.RF_Found) {
    rf.value = Cell{kNotMeasured, false};
    rf.result = result_cell(false);
  }
  test.rails.push_back(rf);

  // Heaters, reactors and L-valves share one column of result cells in the view, split by index.
  const std::pair<const char*, bool> subsystems[8] = {
      {"Sensors", all_pass(test.sensors)},
      {"Valves", all_pass(test.valves)},
      {"Injector Valves", all_pass(test.injector_valves)},
      {"Heaters", all_pass(test.heaters)},
      {"Large Reactors", all_pass(test.large_reactors)},
      {"Small Reactors", all_pass(test.small_reactors)},
      {"L-Valves", all_pass(test.l_valves)},
      {"Voltages and RF", all_pass(test.rails)},
  };
  test.subsystems.clear();
  for (const auto& [name, pass] : subsystems) test.subsystems.push_back(SubsystemRow{name, result_cell(pass)});

  test.overall = all_pass(test.subsystems) ? Cell{kOverallPassed, false} : Cell{kFail, true};

  std::vector<int> missing;
  for (int n = 1; n <= kTestPackets; ++n) {
    if (!test.packets.Packet_Found(n)) missing.push_back(n);
  }
  test.packet_message = Cell{missing_packet_message(missing), !missing.empty()};
}

}  // namespace result_routines

}  // namespace morvane
