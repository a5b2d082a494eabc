// SPDX-License-Identifier: MIT
#include "functest/sensor_limits.h"

#include <filesystem>

namespace morvane {

namespace {

constexpr int kValuePair = 3;

}  // namespace

int limit_record_of_sensor(int sensor) {
  if (sensor >= 22 && sensor <= 26) return sensor - 21;  // pressure gauges 1-5
  switch (sensor) {
    case 28:
      return 6;  // AD590 temperature
    case 29:
      return 7;  // docking station
    case 30:
      return 8;  // nanotip current
    case 31:
      return 9;  // detector voltage
    case 36:
      return 10;  // RF calibration
    case 32:
      return 32;  // 5 V voltage
    case 34:
      return 33;  // 5 V current
    case 33:
      return 34;  // 28 V voltage
    case 35:
      return 35;  // 28 V current
    default:
      return 0;
  }
}

std::optional<LimitPair> sensor_limits(const TestRanges& ranges, int sensor) {
  const int record = limit_record_of_sensor(sensor);
  if (record == 0) return std::nullopt;
  return ranges.record(record).pair(kValuePair);
}

std::optional<TestRanges> read_test_ranges_if_present(const std::string& egse_path, FileFormat type, TestMode mode) {
  const std::string path = test_ranges_path(egse_path, type, mode);
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  return read_test_ranges(path);
}

}  // namespace morvane
