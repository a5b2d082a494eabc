// SPDX-License-Identifier: MIT
// The housekeeping window's header, sensor page, register page, and a page as the tool prints it.
#include "decoders/housekeeping_presenter.h"

#include "decoder_fixture.h"
#include "decoders/drawing_text.h"
#include "decoders/hk_mode.h"
#include "decoders/hk_registers.h"
#include "decoders/hk_sensors.h"

namespace morvane::testing {
namespace {

class HousekeepingViewTest : public DecoderTest {};

TEST_F(HousekeepingViewTest, HeaderLabelsDescribeTheShownPacket) {
  load({hk_packet(1, {{18, 16}, {20, 0}, {21, 7}}, {}, 11, 500), hk_packet(2, {{18, 11}}, {}, 12, 600)});
  HousekeepingPresenter state;
  session.Current_HK_Index = 2;
  const std::optional<SensorPage> page = state.Form_Load(session);
  ASSERT_TRUE(page);
  const auto& header = page->header;
  EXPECT_EQ(std::tie(header.packet_type, header.packet_number, header.mode, header.line, page->more_visible),
            std::tuple("Packet type -  Complete ", "2", "11  -  Calibration", "0", true));
  const ScrollSetting scroll = HousekeepingPresenter::Form_Load_scroll(session);
  EXPECT_EQ(std::tuple(scroll.maximum, scroll.value), std::tuple(2, 2));

  const SensorPage concise = state.VScroll1_Change(session, 1);
  EXPECT_EQ(std::tie(concise.header.packet_type, concise.header.mode, concise.header.line, concise.more_visible,
                     session.Current_HK_Index),
            std::tuple("Packet type -  Concise  ", "16  -  Additional Science", "7", false, 1));
}

// The records hold the packet the page shows last, the conversion's units in place of the
// table's: the export's unit heading and the trend read them.
TEST_F(HousekeepingViewTest, TheShownPacketStaysInTheSensorRecords) {
  load({hk_packet(2, sensor_bytes({{29, 70}, {22, 0x20}})), hk_packet(1, sensor_bytes({{29, 10}, {22, 0x10}}))});
  session.config.sensor(29).Sensor_Unit = "millimetres";
  HousekeepingPresenter state;
  state.VScroll1_Change(session, 1);
  const SensorPage page = state.VScroll1_Change(session, 2);  // what fills the records is hk_decode's test
  EXPECT_DOUBLE_EQ(state.Cold_Junction_Term, page.decoded.cold_junction_term);
  EXPECT_EQ(std::tuple(session.config.sensor(29).Raw_Reading, session.config.sensor(22).Raw_Reading),
            std::tuple(10, 16));
  EXPECT_EQ(std::tie(session.config.sensor(22).Value_Upper, session.config.sensor(29).Sensor_Unit),
            std::tuple(page.decoded.sensor(22).value_upper, "mm"));
}

TEST(HkMode, EveryModeHasItsName) {
  // The names are not the telecommand names: no blank before "(HTO)".
  const std::pair<int, const char*> cases[] = {
      {0, "Standby"}, {12, "Ice Core Analysis(HTO)"}, {16, "Additional Science"}, {17, "Unknown"}, {255, "Safe"}};
  for (const auto& [mode, name] : cases) EXPECT_EQ(mode_name(mode), name) << mode;
}

TEST(HkMode, TheLineHighByteIsClampedExceptAt128WhichOverflows) {
  const std::tuple<int, int, int> cases[] = {
      {0, 5, 5}, {1, 2, 258}, {127, 255, 32767}, {129, 0, 127 * 256}, {255, 1, 127 * 256 + 1}};
  for (const auto& [high, low, line] : cases) EXPECT_EQ(line_number(high, low), line) << high << " " << low;
  const testing::Thrown overflow = testing::thrown([] { line_number(128, 0); });
  EXPECT_EQ(overflow.number, 6);
  EXPECT_EQ(overflow.message, "Overflow: the line number's high byte is 128; Error number 6");
}

TEST(HkSensorLine, DecimalsSetTheValueAndStepTexts) {
  Configuration config;
  config.Sensor_Table.resize(3);

  DecodedHousekeeping decoded;
  decoded.sensors.resize(3);
  decoded.sensors[0] = DecodedSensor{0, 0, 0, -3.14159, -3.0, "V"};
  const std::tuple<int, const char*, const char*> cases[] = {
      {0, "-3", "0"}, {1, "-3.1", "0.1"}, {2, "-3.14", "0.14"}, {3, "-3.142", "0.142"}, {4, "-3.14159", "0.14159"},
      {-1, "-3.14159", "0.14159"}};
  for (const auto& [decimals, value, step] : cases) {
    Drawing drawing;
    const SensorLine line = xPrint_Line(config, decoded, 1, 0, 1, decimals, drawing);
    EXPECT_EQ(std::tie(line.value_text, line.step_text), std::tuple(value, step)) << decimals;
  }
}



// The page shows the decoded packet it is given, whatever the records hold, under the table's names.
TEST_F(HousekeepingViewTest, LinesShowTheDecodedPacketUnderTheTablesNames) {
  load({testing::hk_packet(2, testing::sensor_bytes({{29, 70}, {22, 0x20}}))});
  const DecodedHousekeeping decoded = decode_housekeeping(session.config, session.HK_Sensor_Data, 1);
  session.config.sensor(29).Sensor_Unit = "millimetres";
  session.config.sensor(29).Value = 99;
  const SensorLayout page = draw_sensor_page(session.config, decoded);
  ASSERT_EQ(page.lines.size(), 36u);
  const SensorLine& docking = page.lines.back();
  EXPECT_EQ(std::tie(docking.group, docking.name, docking.value_text, docking.unit),
            std::tuple("Docking Station Position", "Docking Stn", "14.22", "mm"));
  const SensorLine& pressure = page.lines[23];
  EXPECT_EQ(std::tie(pressure.sensor, pressure.value_text, pressure.unit), std::tuple(22, "0.50", "bar"));

  Configuration short_table = session.config;
  short_table.Sensor_Table.resize(30);
  EXPECT_EQ(testing::thrown([&] { draw_sensor_page(short_table, decoded); }).number, 9);
}

TEST(HkRegisters, BinaryTextsAreSixteenBitsBit15First) {
  EXPECT_EQ(std::tuple(binary_text(0xA001), binary_text(0xFFFF)),
            std::tuple("1 0 1 0 0 0 0 0 0 0 0 0 0 0 0 1 ", "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 "));

}

std::array<int32_t, 16> words(std::initializer_list<std::pair<int, int32_t>> set) {
  std::array<int32_t, 16> w{};
  for (const auto& [i, value] : set) w[static_cast<size_t>(i - 1)] = value;
  return w;
}

// The critical-functions row takes Ds Up, Ds Dn and HT from the valve word's bits 6-4 and only
// SMA2 and SMA1 from its own word.
TEST(HkRegisters, CriticalFunctionsMixTheValveWordAndTheirOwn) {
  const std::pair<std::array<int32_t, 16>, std::array<const char*, 5>> cases[] = {
      {words({{2, 0x0040}}), {" En", "  - ", "  - ", "  - ", "  - "}},
      {words({{2, 0x0030}}), {"  - ", " En", " En", "  - ", "  - "}},
      {words({{3, 0x0070}}), {"  - ", "  - ", "  - ", "  - ", "  - "}},
      {words({{3, 0x0002}}), {"  - ", "  - ", "  - ", " En", "  - "}},
      {words({{2, 0x0003}, {3, 0x0001}}), {"  - ", "  - ", "  - ", "  - ", " En"}},
  };
  for (const auto& [w, states] : cases) {
    const Drawing page = draw_register_page(w);
    for (int i = 1; i <= 5; ++i) {
      EXPECT_EQ(text_at(page, 1000 * i - 400, 1600), states[static_cast<size_t>(i - 1)]) << i << " " << w[1];
    }
  }
  // The header shows the critical functions word, whichever of its bits the row ignores.
  EXPECT_EQ(text_at(draw_register_page(words({{3, 0x0070}})), 0, 1200), "Critical functions enable register    0070");
}

TEST(DrawingText, TextsGoToTheirNearestCells) {
  const Drawing drawing = {
      {"Name", 100, 200, kBlue, Anchor::Left},  {"42", 1000, 200, kBlue, Anchor::Right},
      {" +/- ", 0, 200, kBlue, Anchor::Follow}, {"o", 0, 160, kBlue, Anchor::Follow},
      {"C", 0, 200, kBlue, Anchor::Follow},     {"Heading", 0, 0, kBlue, Anchor::Left},
  };
  EXPECT_EQ(drawing_as_text(drawing, 100, 200), "Heading\n Name   42 +/- oC\n");
}

}  // namespace
}  // namespace morvane::testing
