// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

namespace morvane::sim {

// The simulated instrument's sensors: what Sensors.txt says of each of the 36.
struct SensorDesign {
  std::string_view name;
  int32_t byte_offset;     // the sensor's byte in a housekeeping packet
  int16_t channel_id;      // how auxiliary and event packets name it
  int32_t scale_exponent;  // the byte is worth 2^n ADC counts
  std::string_view unit;
};

// Sensor s is kSensors[s - 1]. Housekeeping packets carry sensor s at byte 21 + s.
extern const std::array<SensorDesign, 36> kSensors;

// The sensor number that auxiliary packets mean by a channel ID (the last sensor with that ID,
// as the workstation looks it up); 0 for a channel no sensor has.
int sensor_of_channel(int channel);

// Pressure sensor k (sensor 21 + k): reading at atmosphere and at vacuum.
struct PressureDesign {
  int16_t sensor_number;
  double atmosphere;
  double vacuum;
};
extern const std::array<PressureDesign, 5> kPressureSensors;

// The N-type table written to N-Type.txt: (microvolts, degrees C) from the published ITS-90
// reference values, every 20 degrees from -100 to 1300 and closer below, where the curve bends.
extern const std::array<std::pair<double, double>, 95> kNTypePoints;

}  // namespace morvane::sim
