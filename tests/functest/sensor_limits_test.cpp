// SPDX-License-Identifier: MIT
#include "functest/sensor_limits.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "short_test_files.h"

namespace morvane {
namespace {

TEST(SensorLimits, EachLimitedSensorTakesPairThreeOfItsRecord) {
  auto records = testing::uniform_limits(-1, 1);
  for (int r = 1; r <= TestRanges::kRecords; ++r) {
    records[static_cast<size_t>(r - 1)].pairs[2] = LimitPair{-static_cast<double>(r), static_cast<double>(r)};
  }
  const TestRanges ranges{"crafted", records};
  // The AD590 (28) and the swapped pair 33/34 are where a table slip would show.
  const std::pair<int, int> mapped[] = {{22, 1}, {28, 6}, {36, 10}, {34, 33}, {33, 34}, {35, 35}};
  for (const auto& [sensor, record] : mapped) {
    EXPECT_EQ(limit_record_of_sensor(sensor), record) << "sensor " << sensor;
    EXPECT_EQ(sensor_limits(ranges, sensor), (LimitPair{-static_cast<double>(record), static_cast<double>(record)}))
        << "sensor " << sensor;
  }
  for (const int sensor : {0, 21, 27, 37}) {
    EXPECT_EQ(limit_record_of_sensor(sensor), 0) << "sensor " << sensor;
    EXPECT_FALSE(sensor_limits(ranges, sensor)) << "sensor " << sensor;
  }
}

TEST(SensorLimits, AMissingLimitFileIsNoLimitsButABrokenOneIsAnError) {
  testing::TempDir dir;
  EXPECT_FALSE(read_test_ranges_if_present(dir.root(), FileFormat::QM, TestMode::EAFT));

  auto records = testing::uniform_limits(-1, 1);
  records[5].pairs[2] = LimitPair{15, 35};
  testing::write_limit_file(dir.root(), "QM", "EAFT", testing::limit_file_text(records));
  const auto ranges = read_test_ranges_if_present(dir.root(), FileFormat::QM, TestMode::EAFT);
  ASSERT_TRUE(ranges);
  EXPECT_EQ(sensor_limits(*ranges, 28), (LimitPair{15, 35}));
  EXPECT_FALSE(read_test_ranges_if_present(dir.root(), FileFormat::QM, TestMode::CruisePhase));

  testing::write_limit_file(dir.root(), "CSS", "EAFT", "\"Item 1\", 1, 2\r\n");
  EXPECT_THROW(read_test_ranges_if_present(dir.root(), FileFormat::CSS, TestMode::EAFT), RuntimeError);
}

}  // namespace
}  // namespace morvane
