// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/catalogue.h"
#include "core/configuration.h"

namespace morvane {

// A housekeeping sensor byte as a signed reading. Sensors 28 and 29 are unsigned (0..255);
// sensors 32-36 go negative only above 210 (211..255 are -45..-1, so 128..210 stay positive:
// deliberate); every other sensor is a two's complement byte.
int32_t hk_signed_reading(int sensor, uint8_t byte);

// The reading in volts: raw x 2^n x 10 / 32768, with n the sensor's scale exponent. The upper
// bound of the ADC step is hk_voltage(raw + 1, n).
double hk_voltage(int32_t raw, int32_t scale_exponent);

// The cold-junction term of a packet whose sensor 28 (the board temperature) converts to
// celsius: the N-type voltage of that temperature in microvolts / 1e6.
double cold_junction_term(const Configuration& config, double celsius);

// One signed reading of a sensor converted as the sensor page converts it: its voltage, the
// cold-junction term x 100 added for the thermocouple channels (pass 0 for none), then the
// conversion, which sets the unit (a sensor beyond 36 keeps the table's unit and the value 0).
// Every housekeeping value of the program, page, export, trend or archive, comes from here.
struct SensorValue {
  int32_t raw = 0;
  double voltage = 0;  // as converted: a pressure channel's holds voltage x 10 - C2
  double value = 0;
  std::string unit;
};
SensorValue hk_reading_value(const Configuration& config, int sensor, int32_t raw, double cold_junction);
// The same for a sensor byte, after the sign rule.
SensorValue hk_byte_value(const Configuration& config, int sensor, uint8_t byte, double cold_junction);

// The cold-junction term of a packet whose board temperature (sensor 28) byte is this: its
// value, then cold_junction_term. A table without sensor 28 is "Subscript out of range".
double board_cold_junction_term(const Configuration& config, uint8_t board_byte);

// One sensor of a decoded housekeeping packet. The upper bounds are those of the top edge of
// the ADC step (the reading + 1), converted the same way.
struct DecodedSensor {
  int32_t raw = 0;
  double voltage = 0;        // as converted: a pressure channel's holds voltage x 10 - C2
  double voltage_upper = 0;  // likewise
  double value = 0;
  double value_upper = 0;
  std::string unit;
};

// Every sensor of one housekeeping packet, decoded.
struct DecodedHousekeeping {
  int32_t index = 0;  // the entry of the housekeeping list
  double cold_junction_term = 0;
  std::vector<DecodedSensor> sensors;  // sensor s is sensors[s - 1]

  // 1-based; outside the table is "Subscript out of range", as the configuration says it.
  const DecodedSensor& sensor(int s) const;
};

// Decodes sensors 1..Sensor_Count of housekeeping entry `index`: the board temperature's
// cold-junction term first, then every sensor's reading and its upper bound (thermocouples
// shifted by the term). An entry outside the table, a table without sensor 28 or a failing
// conversion is a RuntimeError; the configuration is only read.
DecodedHousekeeping decode_housekeeping(const Configuration& config, const HKSensorTable& bytes, int32_t index);

// The sensor records have always held the last decoded packet: the unit the conversion gives
// replaces the table's (the export headings, the trend and the archive's sensor list show it),
// and the raw reading, voltages and values stand beside it. The sensor page keeps all of them,
// as it did when it decoded into the records; the export keeps, for each of its columns, the
// raw reading, voltage, value and unit of the last row written.
void keep_in_sensor_records(Configuration& config, const DecodedHousekeeping& decoded);
void keep_in_sensor_records(Configuration& config, int sensor, const SensorValue& exported);

}  // namespace morvane
