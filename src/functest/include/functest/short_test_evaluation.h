// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/configuration.h"
#include "core/session.h"
#include "functest/short_test_data.h"
#include "functest/short_test_mode.h"
#include "functest/short_test_ranges.h"

namespace morvane {

// A cell of the evaluation view as it is shown: its text and whether it is painted pure red
// (255, 0, 0). A cell that is not red keeps its designed colour (black).
struct Cell {
  std::string text;
  bool red = false;
  bool operator==(const Cell&) const = default;
};

inline constexpr const char* kPass = "Pass";
inline constexpr const char* kFail = "Fail";
inline constexpr const char* kNotMeasured = "n.m.";
inline constexpr const char* kOverallPassed = "Passed";
inline constexpr const char* kAllPacketsCollected = "All 8 Science data packets were collected.";

// The view's tab captions, left to right.
inline constexpr std::array<const char*, 8> kShortTestTabs = {
    "Sensors", "Valves", "Injector V", "Heaters", "L-Reactors", "S-Reactors", "L-Valves", "Summary"};

// Column headings of each tab, as designed.
inline constexpr std::array<const char*, 3> kSensorHeadings = {"Sensor", "Readings", "Test Result"};
inline constexpr std::array<const char*, 4> kValveHeadings = {"Valve", "28V Current (mA)", "5V Current (mA)",
                                                              "Test Result"};
inline constexpr std::array<const char*, 4> kInjectorValveHeadings = {"Injector Valve", "28V Current (mA)",
                                                                      "5V Current (mA)", "Test Result"};
// The heater, reactor and L-valve tabs: the item heading of each, then the shared headings.
inline constexpr std::array<const char*, 4> kHeatedItemHeadings = {"Heater", "Large Reactor", "Small Reactor",
                                                                   "L-Valve"};
inline constexpr std::array<const char*, 7> kHeatedColumnHeadings = {
    "28V Current (mA)", "5V Current (mA)", "Initial", "Final", "Increase", "Test Result", "Temperatures (   C)"};
inline constexpr const char* kRailsHeading = "Voltages and RF";
inline constexpr const char* kRailsSubheading = "Voltage supply rails";
inline constexpr std::array<const char*, 2> kSubsystemHeadings = {"Sub-system", "Test result"};
inline constexpr const char* kOverallCaption = "Test Result   -  ";
inline constexpr const char* kDesignedModeTitle = "Cruise Phase Mode";
inline constexpr const char* kExtendedModeTitle = "Extended AFT";

// A row of the "Sensors" tab: a reading at the start of the test and the same reading at its end,
// both within pair 3 of the row's limit record (rows 1-10 use records 1-10).
struct SensorRow {
  std::string name;
  std::string unit;      // the designed unit column
  int initial_index = 0;  // reading numbers, 1..232
  int final_index = 0;
  double initial_value = 0;
  double final_value = 0;
  Cell initial;
  Cell final;
  Cell result;
  int record = 0;
  LimitPair limits;
};

// A row of the valve, injector valve, heater, reactor and L-valve tabs. The rises are in mA
// (28 V and 5 V supply current while the item is on, less the mean of the currents before and
// after) and degrees C (final less initial temperature).
struct ItemRow {
  std::string name;
  Cell rise_28v;  // "n.m." for the reactors, whose currents are not measured
  Cell rise_5v;
  Cell initial;   // temperatures; empty for valves and injector valves
  Cell final;
  Cell increase;
  Cell result;
  double Rise_5V = 0;
  double Rise_28V = 0;
  double Temp_Rise = 0;
  int record = 0;
  RangeRecord limits;                // the whole record, as read
  std::array<bool, 3> checked{};      // the pairs checked: 5 V rise, 28 V rise, temperature rise
};

// A row of the summary's supply rails and RF frequency, checked against pair 3 of records 32-36.
struct RailRow {
  std::string name;
  std::string unit;
  double measured = 0;
  Cell value;
  Cell result;
  int record = 0;
  LimitPair limits;
};

struct SubsystemRow {
  std::string name;
  Cell result;
  bool operator==(const SubsystemRow&) const = default;
};

// Everything the evaluation view shows for one test, with the values and limits behind it.
struct ShortTestEvaluation {
  TestMode mode = TestMode::CruisePhase;
  std::string start_label;  // "Test started at Lander time 1234 seconds"
  std::string mode_title;   // "Cruise Phase Mode" or "Extended AFT"
  std::string ranges_path;  // the limit file used

  TestPackets packets;
  TestReadings readings;  // as converted: pressure channels hold their altered voltages
  std::array<double, kTestReadings + 1> Eng_Value{};
  std::array<std::string, kTestReadings + 1> Eng_Unit{};
  double Reference_Temperature = 0;  // degrees C, from the AD590 readings
  double Cold_Junction = 0;          // its N-type thermocouple voltage, the table's x unit

  std::vector<SensorRow> sensors;          // "Sensors", 10 rows
  std::vector<ItemRow> valves;             // "Valves", 12
  std::vector<ItemRow> injector_valves;    // "Injector V", 3
  std::vector<ItemRow> heaters;            // "Heaters", 6
  std::vector<ItemRow> large_reactors;     // "L-Reactors", 5
  std::vector<ItemRow> small_reactors;     // "S-Reactors", 5
  std::vector<ItemRow> l_valves;           // "L-Valves", 5
  std::vector<RailRow> rails;              // "Summary": 5V/28V voltage and current, RF frequency
  std::vector<SubsystemRow> subsystems;    // "Summary": 8 sub-systems
  Cell overall;                             // "Passed" or red "Fail"
  Cell packet_message;                      // which packets were missing, red when any

  // The RF frequency reading as shown: "0.00" kHz, or "n.m." when no event gave it.
  const std::string& rf_frequency_text() const { return rails.at(4).value.text; }
  bool passed() const { return overall.text == kOverallPassed; }
};

// The names of the three injector valves (their rows carry no designed names).
inline constexpr std::array<const char*, 3> kInjectorValveNames = {"Injector 1", "Injector 2", "Injector 3"};

// Opens the evaluation of the test starting at the session's Current_Science_Index in its
// Test_Mode: collects the packets, reads the limit file of the file type and mode below
// Egse_Path, reads the readings and evaluates them. An unknown mode is "Invalid procedure call
// or argument"; a missing or short limit file a RuntimeError naming it.
ShortTestEvaluation open_short_test(const Session& session);

// Converts the readings and fills every tab: the drivers of both modes. Pure: no file is read.
ShortTestEvaluation evaluate_short_test(const Configuration& config, TestMode mode, const TestPackets& packets,
                                          const TestReadings& readings, const TestRanges& ranges);

// "Test started at Lander time " + t + " seconds".
std::string start_label_text(int32_t start_time);

// The packet message for the missing packet numbers (1..8, ascending): the designed "All 8
// Science data packets were collected." when none is missing.
std::string missing_packet_message(const std::vector<int>& missing);

}  // namespace morvane
