// SPDX-License-Identifier: MIT
#include "decoders/hk_decode.h"

#include <cmath>

#include "core/conversion.h"
#include "core/error.h"

namespace morvane {

namespace {
constexpr int kBoardSensor = 28;  // the cold junction's temperature
}  // namespace

int32_t hk_signed_reading(int sensor, uint8_t byte) {
  const int32_t raw = byte;
  if (sensor == 28 || sensor == 29) return raw;
  if (sensor >= 32 && sensor <= 36) return raw > 210 ? raw - 256 : raw;
  return raw > 127 ? raw - 256 : raw;
}

double hk_voltage(int32_t raw, int32_t scale_exponent) {
  return std::ldexp(static_cast<double>(raw), scale_exponent) * 10 / 32768;
}

double cold_junction_term(const Configuration& config, double celsius) {
  return config.NType.NType_Reverse_Lookup(celsius) / 1000000;
}

SensorValue hk_reading_value(const Configuration& config, int sensor, int32_t raw, double cold_junction) {
  const SensorRecord& record = config.sensor(sensor);
  SensorValue result;
  result.raw = raw;
  result.voltage = hk_voltage(raw, record.Scale_Exponent);
  if (is_thermocouple(sensor)) result.voltage += cold_junction * 100;
  result.unit = record.Sensor_Unit;
  Convert_Sensor(config, sensor, result.voltage, result.value, result.unit);
  return result;
}

SensorValue hk_byte_value(const Configuration& config, int sensor, uint8_t byte, double cold_junction) {
  return hk_reading_value(config, sensor, hk_signed_reading(sensor, byte), cold_junction);
}

double board_cold_junction_term(const Configuration& config, uint8_t board_byte) {
  return cold_junction_term(config, hk_byte_value(config, kBoardSensor, board_byte, 0).value);
}

const DecodedSensor& DecodedHousekeeping::sensor(int s) const {
  if (s < 1 || static_cast<size_t>(s) > sensors.size()) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "sensor " + std::to_string(s) + " of a table of " + std::to_string(sensors.size()));
  }
  return sensors[static_cast<size_t>(s - 1)];
}

DecodedHousekeeping decode_housekeeping(const Configuration& config, const HKSensorTable& bytes, int32_t index) {
  const int count = config.Sensor_Count();
  std::vector<uint8_t> row(static_cast<size_t>(count));
  for (int s = 1; s <= count; ++s) row[static_cast<size_t>(s - 1)] = bytes.at(s, index);
  config.sensor(kBoardSensor);  // a table without the board temperature is out of range

  DecodedHousekeeping decoded;
  decoded.index = index;
  decoded.cold_junction_term = board_cold_junction_term(config, row[kBoardSensor - 1]);
  decoded.sensors.resize(static_cast<size_t>(count));
  for (int s = 1; s <= count; ++s) {
    const SensorValue reading = hk_byte_value(config, s, row[static_cast<size_t>(s - 1)], decoded.cold_junction_term);
    SensorValue upper = hk_reading_value(config, s, reading.raw + 1, decoded.cold_junction_term);
    DecodedSensor& sensor = decoded.sensors[static_cast<size_t>(s - 1)];
    sensor.raw = reading.raw;
    sensor.voltage = reading.voltage;
    sensor.voltage_upper = upper.voltage;
    sensor.value = reading.value;
    sensor.value_upper = upper.value;
    sensor.unit = std::move(upper.unit);
  }
  return decoded;
}

void keep_in_sensor_records(Configuration& config, const DecodedHousekeeping& decoded) {
  for (int s = 1; s <= static_cast<int>(decoded.sensors.size()); ++s) {
    const DecodedSensor& sensor = decoded.sensor(s);
    SensorRecord& record = config.sensor(s);
    record.Raw_Reading = sensor.raw;
    record.Voltage = sensor.voltage;
    record.Voltage_Upper = sensor.voltage_upper;
    record.Value = sensor.value;
    record.Value_Upper = sensor.value_upper;
    record.Sensor_Unit = sensor.unit;
  }
}

void keep_in_sensor_records(Configuration& config, int sensor, const SensorValue& exported) {
  SensorRecord& record = config.sensor(sensor);
  record.Raw_Reading = exported.raw;
  record.Voltage = exported.voltage;
  record.Value = exported.value;
  record.Sensor_Unit = exported.unit;
}

}  // namespace morvane
