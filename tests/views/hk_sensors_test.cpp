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

TEST(HkSensors, VoltagesScaleWithTheExponent) {
  EXPECT_DOUBLE_EQ(hk_voltage(0, 0), 0);
  EXPECT_DOUBLE_EQ(hk_voltage(1, 0), 10.0 / 32768);  // the upper bound of raw 0
  EXPECT_DOUBLE_EQ(hk_voltage(-128, 8), -10);
  EXPECT_DOUBLE_EQ(hk_voltage(3, 6), 3 * 64 * 10.0 / 32768);
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

TEST_F(HkDecodeTest, AnEntryOutsideTheListOrAShortTableIsOutOfRange) {
  load({hk_packet(2)});
  EXPECT_EQ(testing::thrown([&] { decode_hk_sensors(session, 2); }).number, 9);
  session.config.Sensor_Table.resize(20);  // no sensor 28
  EXPECT_NE(testing::thrown([&] { decode_hk_sensors(session, 1); }).number, 0);
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

TEST(HkSensorLine, ValuesAreRightAlignedAndTheDegreeSignIsRaised) {
  Configuration config;
  config.Sensor_Table.resize(2);
  config.sensor(1) = Sensor_Record{"Reactor 1", 0, 0, 0, "oC", 0, 0, 0, 241.6, 247.4};
  config.sensor(2) = Sensor_Record{"Nanotip I", 0, 0, 0, "uA", 0, 0, 0, 3.78, 3.81};
  Drawing drawing;
  xPrint_Line(config, 3, 0, 1, 0, drawing);
  xPrint_Line(config, 12, 1, 2, 2, drawing);
  const Drawing expected = {
      {"Reactor 1", 100, 600, kBlue, Anchor::Left},    {"242", 1800, 600, kBlue, Anchor::Right},
      {"  +/-  ", 0, 600, kBlue, Anchor::Follow},      {"6", 0, 600, kBlue, Anchor::Follow},
      {"  ", 0, 600, kBlue, Anchor::Follow},           {"o", 0, 560, kBlue, Anchor::Follow},
      {"C", 0, 600, kBlue, Anchor::Follow},            {"Nanotip I", 3300, 2400, kBlue, Anchor::Left},
      {"3.78", 5000, 2400, kBlue, Anchor::Right},      {"  +/-  ", 0, 2400, kBlue, Anchor::Follow},
      {"0.03", 0, 2400, kBlue, Anchor::Follow},        {"  ", 0, 2400, kBlue, Anchor::Follow},
      {"uA", 0, 2400, kBlue, Anchor::Follow},
  };
  EXPECT_EQ(drawing, expected);
  EXPECT_NE(testing::thrown([&] { xPrint_Line(config, 1, 0, 3, 0, drawing); }).number, 0);
}

TEST_F(HkDecodeTest, TheSensorPageListsEveryGroupInOrder) {
  load({hk_packet(2)});
  decode_hk_sensors(session, 1);
  const Sensor_Layout page = draw_sensor_page(session.config);
  ASSERT_EQ(page.lines.size(), 36u);
  const std::tuple<size_t, int, int, int, const char*> lines[] = {  // line, row, column, sensor, group
      {0, 1, 0, 1, "Reactors"},         {9, 10, 0, 27, "Reactors"},         {11, 12, 0, 20, "Reactors"},
      {12, 15, 0, 11, "Vessin Valves"}, {21, 26, 0, 21, "Heaters"},         {22, 1, 1, 28, ""},
      {23, 4, 1, 22, "Pressure Sensors"}, {28, 12, 1, 31, "Ion trap"},      {30, 14, 1, 36, "Ion trap"},
      {33, 19, 1, 32, "Supply rails"},  {35, 23, 1, 29, "Docking Station Position"}};
  for (const auto& [at, row, column, sensor, group] : lines) {
    const Sensor_Line& line = page.lines[at];
    EXPECT_EQ(std::tuple(line.row, line.column, line.sensor, line.group), std::tuple(row, column, sensor, group)) << at;
  }
  EXPECT_EQ(page.lines[12].value_text.find('.'), page.lines[12].value_text.size() - 2);  // one decimal
  const std::tuple<const char*, int, int> headings[] = {
      {"Reactors", 0, 0},         {"Vessin Valves", 0, 2800}, {"Heaters", 0, 4200},     {"Pressure Sensors", 3200, 600},
      {"Ion trap", 3200, 2200}, {"Supply rails", 3200, 3200}, {"Docking Station Position", 3200, 4400}};
  for (const auto& [text, x, y] : headings) EXPECT_EQ(testing::text_at(page.drawing, x, y), text);
  for (const auto& item : page.drawing) EXPECT_EQ(item.colour, kBlue);
}

TEST_F(HkDecodeTest, APointOnTheSensorPageFindsTheLineUnderIt) {
  load({hk_packet(2)});
  decode_hk_sensors(session, 1);
  const Sensor_Layout page = draw_sensor_page(session.config);
  // Line 22 is the board temperature at row 1 of the second column, line 35 the docking station.
  EXPECT_EQ(sensor_line_box(page.lines[22]), (Twips_Box{3200, 200, 3200, 200}));
  const std::tuple<int, int, int> points[] = {{100, 200, 0},  {3199, 399, 0},  {3200, 200, 22}, {6399, 4699, 35},
                                              {4000, 4650, 35}, {100, 0, -1},  {3300, 600, -1}, {100, 2800, -1},
                                              {-1, 300, -1},  {6400, 300, -1}};
  for (const auto& [x, y, line] : points) EXPECT_EQ(sensor_line_at(page.lines, x, y), line) << x << ", " << y;
  for (size_t i = 0; i < page.lines.size(); ++i) {
    const Twips_Box box = sensor_line_box(page.lines[i]);
    EXPECT_EQ(sensor_line_at(page.lines, box.x + box.width / 2, box.y + box.height / 2), static_cast<int>(i));
  }
}

}  // namespace
}  // namespace morvane
