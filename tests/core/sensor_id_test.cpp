// SPDX-License-Identifier: MIT
#include "core/sensor_id.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

Configuration sensors_with_ids(std::initializer_list<int16_t> ids) {
  Configuration config;
  for (int16_t id : ids) config.Sensor_Table.push_back(SensorRecord{"s", 0, id, 0, "", 0, 0, 0, 0, 0});
  return config;
}

TEST(SensorId, TheLastMatchingSensorWinsAndAnIdOfNoSensorGivesZero) {
  const Configuration config = sensors_with_ids({10, 20, 10, -1});
  EXPECT_EQ(Get_Sensor_ID(config, 10), 3);
  EXPECT_EQ(Get_Sensor_ID(config, 20), 2);
  EXPECT_EQ(Get_Sensor_ID(config, 11), 0);
  EXPECT_EQ(Get_Sensor_ID(config, 65535), 0);  // words are never negative
  EXPECT_EQ(Get_Sensor_ID(config, -1), 4);
}

}  // namespace
}  // namespace morvane
