// SPDX-License-Identifier: MIT
// The "Sensors" tab: each sensor's first and last sample of the test within its limits.
#include <cmath>

#include "result_routines.h"

namespace morvane::result_routines {

namespace {

struct SensorDesign {
  const char* name;
  const char* unit;
};

constexpr SensorDesign kSensorRows[10] = {
    {"Pressure Gauge 1", "bar"}, {"Pressure Gauge 2", "bar"},  {"Pressure Gauge 3", "bar"},
    {"Pressure Gauge 4", "bar"}, {"Pressure Gauge 5", "bar"},  {"AD590 Temperature", "oC"},
    {"Docking Station", "mm"},   {"Nanotip Current", "uA"},    {"Detector Voltage", "kV"},
    {"RF Calibration", "V"},
};

constexpr int kAd590Row = 6;
// How far the AD590 temperature may drift over a test, degrees C (a drift of exactly this passes).
constexpr double kAd590Drift = 20.0;

}  // namespace

void Display_Sensor_Results(ShortTestEvaluation& test, const TestRanges& ranges, int offset) {
  test.sensors.clear();
  for (int i = 1; i <= 10; ++i) {
    SensorRow row;
    row.name = kSensorRows[i - 1].name;
    row.unit = kSensorRows[i - 1].unit;
    row.initial_index = i;
    row.final_index = i + offset;
    row.initial_value = test.Eng_Value[static_cast<size_t>(row.initial_index)];
    row.final_value = test.Eng_Value[static_cast<size_t>(row.final_index)];
    row.initial = value_cell(row.initial_value, "0.00");
    row.final = value_cell(row.final_value, "0.00");
    row.record = i;
    row.limits = ranges.record(i).pair(3);
    bool pass = row.limits.holds(row.initial_value) && row.limits.holds(row.final_value);
    if (i == kAd590Row && std::abs(row.initial_value - row.final_value) > kAd590Drift) pass = false;
    row.result = result_cell(pass);
    test.sensors.push_back(row);
  }
}

}  // namespace morvane::result_routines
