// SPDX-License-Identifier: MIT
#include "sim/short_form_tests.h"

namespace morvane::sim {

const std::vector<ScriptedTest>& scripted_tests() {
  static const std::vector<ScriptedTest> tests = {
      {"Cruise Phase", true, 400, 0, 532.49375, {}, {}, "All 8 Science data packets were collected."},
      {"Cruise Phase",
       false,
       1400,
       3,
       532.49375,
       {{"Sensors", "Detector Voltage"},
        {"Valves", "V 7"},
        {"Valves", "V 8"},
        {"Valves", "V 9"},
        {"Valves", "V 10"},
        {"Valves", "V 11"},
        {"Heaters", "GC heater"}},
       {"Sensors", "Valves", "Heaters"},
       "There was 1 missing science data packet (pkt no. 3)"},
      {"EAFT", true, 2400, 0, 532.49375, {}, {}, "All 8 Science data packets were collected."},
      {"EAFT",
       false,
       3400,
       2,
       503.384375,
       {{"Valves", "V 1"},
        {"Valves", "V 2"},
        {"Valves", "V 3"},
        {"Valves", "V 4"},
        {"Valves", "V 7"},
        {"Small Reactors", "Reactor 9"},
        {"Voltages and RF", "RF Frequency"}},
       {"Valves", "Small Reactors", "Voltages and RF"},
       "There was 1 missing science data packet (pkt no. 2)"},
  };
  return tests;
}

}  // namespace morvane::sim
