// SPDX-License-Identifier: MIT
#include "views/hk_sensors.h"

#include <gtest/gtest.h>

#include "core/conversion.h"
#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::hk_packet;
using testing::sensor_bytes;

TEST(HkSensors, SignRulesDependOnTheSensor) {
  const std::tuple<int, uint8_t, int32_t> cases[] = {
      {1, 0x7F, 127},  {1, 0x80, -128}, {1, 0xFF, -1},   {22, 0xC0, -64}, {30, 0x90, -112},
      {28, 0xFF, 255}, {29, 0x80, 128}, {33, 0xD2, 210}, {33, 0xD3, -45}, {32, 0x80, 128},
      {36, 0xFF, -1},  {37, 0x80, -128},
  };
  for (const auto& [sensor, byte, raw] : cases) {
    EXPECT_EQ(hk_signed_reading(sensor, byte), raw) << sensor << " " << int{byte};
  }
}

class HkDecodeTest : public testing::DecoderTest {};

TEST_F(HkDecodeTest, ThermocouplesAreShiftedByTheBoardTemperature) {
  // Sensor 28 byte 153, exponent 6: 2.98828125 V, 25.828125 degrees C. Thermocouples reading 0
  // then show the board temperature; the other channels are not shifted.
  load({hk_packet(2, sensor_bytes({{28, 153}, {27, 0}, {1, 0}, {33, 0xD3}}))});
  const double term = decode_hk_sensors(session, 1);
  const Configuration& c = session.config;
  EXPECT_DOUBLE_EQ(c.sensor(28).Value, 2.98828125 * 100 - 273);
  EXPECT_DOUBLE_EQ(term, c.NType.NType_Reverse_Lookup(25.828125) / 1e6);
  for (int s : {1, 27}) {
    EXPECT_DOUBLE_EQ(c.sensor(s).Voltage, term * 100) << s;
    EXPECT_DOUBLE_EQ(c.sensor(s).Voltage_Upper, 64 * 10.0 / 32768 + term * 100) << s;
    EXPECT_NEAR(c.sensor(s).Value, 25.828125, 0.01) << s;
    EXPECT_EQ(c.sensor(s).Sensor_Unit, "oC");
  }
  EXPECT_EQ(c.sensor(33).Raw_Reading, -45);
  EXPECT_DOUBLE_EQ(c.sensor(33).Voltage, -45 * 128 * 10.0 / 32768);  // no shift
  EXPECT_DOUBLE_EQ(c.sensor(33).Value, c.sensor(33).Voltage * 10);
}

TEST_F(HkDecodeTest, PressureRecordsKeepTheOverwrittenVoltages) {
  load({hk_packet(2, sensor_bytes({{22, 80}, {26, 0xF0}}))});
  decode_hk_sensors(session, 1);
  const Sensor_Record& p1 = session.config.sensor(22);
  const double volts = 80 * 256 * 10.0 / 32768;  // exponent 8
  EXPECT_EQ(p1.Raw_Reading, 80);
  EXPECT_DOUBLE_EQ(p1.Voltage, volts * 10 - 5);
  EXPECT_DOUBLE_EQ(p1.Voltage_Upper, (81 * 256 * 10.0 / 32768) * 10 - 5);
  EXPECT_DOUBLE_EQ(p1.Value, (volts * 10 - 5) / 40);
  EXPECT_EQ(p1.Sensor_Unit, "bar");
  const Sensor_Record& p5 = session.config.sensor(26);
  EXPECT_EQ(p5.Raw_Reading, -16);
  EXPECT_DOUBLE_EQ(p5.Value, p5.Voltage * 1000 / 40);
  EXPECT_EQ(p5.Sensor_Unit, "mbar");
}

TEST(HkSensorLine, DecimalsSetTheValueAndStepTexts) {
  Configuration config;
  config.Sensor_Table.resize(3);
  config.sensor(1) = Sensor_Record{"Supply", 0, 0, 0, "V", 0, 0, 0, -3.14159, -3.0};
  const std::tuple<int, const char*, const char*> cases[] = {
      {0, "-3", "0"}, {1, "-3.1", "0.1"}, {2, "-3.14", "0.14"}, {3, "-3.142", "0.142"}, {4, "-3.14159", "0.14159"},
      {-1, "-3.14159", "0.14159"}};
  for (const auto& [decimals, value, step] : cases) {
    Drawing drawing;
    const Sensor_Line line = xPrint_Line(config, 1, 0, 1, decimals, drawing);
    EXPECT_EQ(line.value_text, value) << decimals;
    EXPECT_EQ(line.step_text, step) << decimals;
  }
}

}  // namespace
}  // namespace morvane
