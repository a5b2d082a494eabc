// SPDX-License-Identifier: MIT
#include "decoders/hk_sensors.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

TEST(HkSensorLine, DecimalsSetTheValueAndStepTexts) {
  Configuration config;
  config.Sensor_Table.resize(3);
  config.sensor(1).Sensor_Name = "Supply";
  DecodedHousekeeping decoded;
  decoded.sensors.resize(3);
  decoded.sensors[0] = DecodedSensor{0, 0, 0, -3.14159, -3.0, "V"};
  const std::tuple<int, const char*, const char*> cases[] = {
      {0, "-3", "0"}, {1, "-3.1", "0.1"}, {2, "-3.14", "0.14"}, {3, "-3.142", "0.142"}, {4, "-3.14159", "0.14159"},
      {-1, "-3.14159", "0.14159"}};
  for (const auto& [decimals, value, step] : cases) {
    Drawing drawing;
    const SensorLine line = xPrint_Line(config, decoded, 1, 0, 1, decimals, drawing);
    EXPECT_EQ(line.value_text, value) << decimals;
    EXPECT_EQ(line.step_text, step) << decimals;
  }
}

class HkSensorPage : public testing::DecoderTest {};

// The page shows the decoded packet it is given, whatever the records hold, under the table's names.
TEST_F(HkSensorPage, LinesShowTheDecodedPacketUnderTheTablesNames) {
  load({testing::hk_packet(2, testing::sensor_bytes({{29, 70}, {22, 0x20}}))});
  const DecodedHousekeeping decoded = decode_housekeeping(session.config, session.HK_Sensor_Data, 1);
  session.config.sensor(29).Sensor_Unit = "millimetres";
  session.config.sensor(29).Value = 99;
  const SensorLayout page = draw_sensor_page(session.config, decoded);
  ASSERT_EQ(page.lines.size(), 36u);
  const SensorLine& docking = page.lines.back();
  EXPECT_EQ(docking.group, "Docking Station Position");
  EXPECT_EQ(docking.name, "Docking Stn");
  EXPECT_EQ(docking.value_text, "14.22");
  EXPECT_EQ(docking.unit, "mm");
  const SensorLine& pressure = page.lines[23];
  EXPECT_EQ(pressure.sensor, 22);
  EXPECT_EQ(pressure.value_text, "0.50");
  EXPECT_EQ(pressure.unit, "bar");

  Configuration short_table = session.config;
  short_table.Sensor_Table.resize(30);
  EXPECT_EQ(testing::thrown([&] { draw_sensor_page(short_table, decoded); }).number, 9);
}

}  // namespace
}  // namespace morvane
