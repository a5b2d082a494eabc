// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "core/file_format.h"
#include "functest/short_test_mode.h"
#include "functest/short_test_ranges.h"

namespace morvane {

// The limit record a housekeeping sensor's value is judged by: the record the short form tests
// check the same sensor's readings against, always with pair 3 (a plain value).
//   sensor rows, records 1-10: pressure gauges 22-26 -> 1-5, AD590 temperature 28 -> 6,
//     docking station 29 -> 7, nanotip current 30 -> 8, detector voltage 31 -> 9,
//     RF calibration 36 -> 10;
//   supply rails, records 32-35: 5 V voltage 32 -> 32, 5 V current 34 -> 33,
//     28 V voltage 33 -> 34, 28 V current 35 -> 35.
// Returns 0 for every other sensor: the thermocouples' records limit temperature rises during a
// test, not values.
int limit_record_of_sensor(int sensor);

// The limit pair a sensor's values are held to in a limit file, or nothing for a sensor without
// a record.
std::optional<LimitPair> sensor_limits(const TestRanges& ranges, int sensor);

// The limit file of a file type and mode below the base folder, or nothing when there is no
// such file. A file that is there but cannot be read is the error read_test_ranges gives.
std::optional<TestRanges> read_test_ranges_if_present(const std::string& egse_path, FileFormat type, TestMode mode);

}  // namespace morvane
