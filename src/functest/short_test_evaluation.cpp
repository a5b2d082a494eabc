// SPDX-License-Identifier: MIT
#include "functest/short_test_evaluation.h"

#include "core/conversion.h"
#include "result_routines.h"

namespace morvane {

namespace {

constexpr int kAd590Sensor = 28;
constexpr int kAd590Reading = 6;

// The instrument's reference temperature: the mean of the AD590 readings at the start and the
// end of the test, or the one that is there, or 0 degrees C when neither is.
void set_reference_temperature(const Configuration& config, ShortTestEvaluation& test) {
  TestReadings& r = test.readings;
  bool present[2] = {false, false};
  const int readings[2] = {kAd590Reading, kAd590Reading + final_offset(test.mode)};
  for (int i = 0; i < 2; ++i) {
    const auto k = static_cast<size_t>(readings[i]);
    if (r.Sensor_ID[k] != kAd590Sensor) continue;
    Convert_Sensor(config, kAd590Sensor, r.Voltage[k], test.Eng_Value[k], test.Eng_Unit[k]);
    present[i] = true;
  }
  const double initial = test.Eng_Value[static_cast<size_t>(readings[0])];
  const double final = test.Eng_Value[static_cast<size_t>(readings[1])];
  if (present[0] && present[1]) {
    test.Reference_Temperature = (final + initial) / 2;
  } else if (present[0]) {
    test.Reference_Temperature = initial;
  } else if (present[1]) {
    test.Reference_Temperature = final;
  } else {
    test.Reference_Temperature = 0;
  }
}

// Every reading to its engineering value. Thermocouples get the cold junction added to a copy of
// their voltage; other channels are converted in place, so a pressure channel's voltage is left
// altered as the conversion leaves it.
void convert_readings(const Configuration& config, ShortTestEvaluation& test) {
  set_reference_temperature(config, test);
  test.Cold_Junction = config.NType.NType_Reverse_Lookup(test.Reference_Temperature);
  TestReadings& r = test.readings;
  for (size_t k = 1; k <= kTestReadings; ++k) {
    const int sensor = r.Sensor_ID[k];
    if (is_thermocouple(sensor)) {
      double voltage = test.Cold_Junction / 10000 + r.Voltage[k];
      Convert_Sensor(config, sensor, voltage, test.Eng_Value[k], test.Eng_Unit[k]);
    } else {
      Convert_Sensor(config, sensor, r.Voltage[k], test.Eng_Value[k], test.Eng_Unit[k]);
    }
  }
}

}  // namespace

std::string start_label_text(int32_t start_time) {
  return "Test started at Lander time " + std::to_string(start_time) + " seconds";
}

namespace {

// The drivers of the two modes: the same conversion, then the result routines in the view's
// order; they differ in the final samples and the L-valve routine.
void Display_Cruise_Results(const Configuration& config, ShortTestEvaluation& test, const TestRanges& ranges) {
  using namespace result_routines;
  convert_readings(config, test);
  Display_Cruise_Sensor_Results(test, ranges);
  Display_Valve_Results(test, ranges);
  Display_InjectorValve_Results(test, ranges);
  Display_Heater_Results(test, ranges);
  Display_Large_Reactor_Results(test, ranges);
  Display_Small_Reactor_Results(test, ranges);
  Display_Cruise_L_Valve_Results(test, ranges);
  Display_Cruise_Summary_Results(test, ranges);
}

void Display_Limited_Cruise_Results(const Configuration& config, ShortTestEvaluation& test,
                                    const TestRanges& ranges) {
  using namespace result_routines;
  test.mode_title = kExtendedModeTitle;
  convert_readings(config, test);
  Display_Limited_Cruise_Sensor_Results(test, ranges);
  Display_Valve_Results(test, ranges);
  Display_InjectorValve_Results(test, ranges);
  Display_Heater_Results(test, ranges);
  Display_Large_Reactor_Results(test, ranges);
  Display_Small_Reactor_Results(test, ranges);
  Display_Limited_Cruise_L_Valve_Results(test, ranges);
  Display_Limited_Cruise_Summary_Results(test, ranges);
}

}  // namespace

ShortTestEvaluation evaluate_short_test(const Configuration& config, TestMode mode, const TestPackets& packets,
                                          const TestReadings& readings, const TestRanges& ranges) {
  ShortTestEvaluation test;
  test.mode = mode;
  test.start_label = start_label_text(packets.Start_Time);
  test.mode_title = kDesignedModeTitle;
  test.ranges_path = ranges.path;
  test.packets = packets;
  test.readings = readings;
  if (mode == TestMode::EAFT) {
    Display_Limited_Cruise_Results(config, test, ranges);
  } else {
    Display_Cruise_Results(config, test, ranges);
  }
  return test;
}

ShortTestEvaluation open_short_test(const Session& session) {
  const TestMode mode = parse_test_mode(session.Test_Mode);
  const TestPackets packets = collect_test_packets(session.catalogue, session.Current_Science_Index);
  const TestRanges ranges = read_test_ranges(test_ranges_path(session.config.Egse_Path, session.File_Type, mode));
  const TestReadings readings = Load_Test_Data(session, packets);
  return evaluate_short_test(session.config, mode, packets, readings, ranges);
}

}  // namespace morvane
