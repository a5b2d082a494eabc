// SPDX-License-Identifier: MIT
#include "views/hk_mode.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"
#include "views/housekeeping_view.h"

namespace morvane {
namespace {

using testing::hk_packet;
using testing::Packet;

TEST(HkMode, EveryModeHasItsName) {
  const std::pair<int, const char*> cases[] = {
      {0, "Standby"}, {1, "Ground Test"}, {2, "Post Launch"}, {3, "Cruise Phase"}, {4, "Instrument Checkout"},
      {5, "HTO Conditioning"}, {6, "MTO Conditioning"}, {7, "CASE Conditioning"}, {8, "Survival Evaluation"},
      {9, "Helium Tank Rupture"}, {10, "Dynamic Pre-operations"}, {11, "Calibration"},
      {12, "Ice Core Analysis(HTO)"}, {13, "Atmosphere Analysis"}, {14, "Silicate Analysis"},
      {15, "Ice Core Analysis(MTO)"}, {16, "Additional Science"}, {17, "Unknown"}, {254, "Unknown"}, {255, "Safe"}};
  for (const auto& [mode, name] : cases) EXPECT_EQ(mode_name(mode), name) << mode;
}

TEST(HkMode, TheLineHighByteIsClampedExceptAt128WhichOverflows) {
  EXPECT_EQ(line_number(0, 5), 5);
  EXPECT_EQ(line_number(1, 2), 258);
  EXPECT_EQ(line_number(127, 255), 32767);
  EXPECT_EQ(line_number(129, 0), 127 * 256);
  EXPECT_EQ(line_number(255, 1), 127 * 256 + 1);
  const testing::Thrown overflow = testing::thrown([] { line_number(128, 0); });
  EXPECT_EQ(overflow.number, 6);
  EXPECT_EQ(overflow.message, "Overflow: the line number's high byte is 128; Error number 6");
}

class HkModeTest : public testing::DecoderTest {};

TEST_F(HkModeTest, ByteReverseSwapsTheModeAndLineBytes) {
  Packet packet = hk_packet(2);
  packet.bytes = {{18, 3}, {19, 0xFF}, {20, 0x01}, {21, 0x02}};  // in file order
  load({packet}, /*low_byte_first=*/false);
  Mode_Data mode = Load_Mode_Data(session, 1);
  EXPECT_EQ(mode.Mode_Number, 3);
  EXPECT_EQ(mode.Mode_Name, "Cruise Phase");
  EXPECT_EQ(mode.Line_Number, 0x0102);
  session.Byte_Reverse = true;  // switching the order reads the same catalogue the other way round
  mode = Load_Mode_Data(session, 1);
  EXPECT_EQ(mode.Mode_Number, 255);
  EXPECT_EQ(mode.Mode_Name, "Safe");
  EXPECT_EQ(mode.Line_Number, 0x0201);
}

TEST_F(HkModeTest, AnOverflowingLineIsReportedAndThePageStillShown) {
  load({hk_packet(2, {{18, 5}, {20, 0}, {21, 3}}), hk_packet(2, {{18, 9}, {20, 128}, {21, 0}})});
  HousekeepingState state;
  EXPECT_FALSE(state.VScroll1_Change(session, 1).mode_error);
  const Sensor_Page page = state.VScroll1_Change(session, 2);
  ASSERT_TRUE(page.mode_error);
  EXPECT_EQ(page.mode_error->number(), 6);
  EXPECT_EQ(page.lines.size(), 36u);
  EXPECT_EQ(page.header.packet_number, "2");
  EXPECT_EQ(page.header.mode, "5  -  HTO Conditioning");  // the previous packet's texts stay
  EXPECT_EQ(page.header.line, "3");
}

TEST_F(HkModeTest, AZebFileNeverReadsTheMode) {
  load_zeb({testing::zeb_record({{5, 1844}, {17, 2}, {18, 0x0C00}})});
  Sensor_Page page = HousekeepingState{}.VScroll1_Change(session, 1);
  EXPECT_EQ(page.header.mode, "0  -  ");
  EXPECT_EQ(page.header.line, "0");
  HousekeepingState shown_before;
  shown_before.Mode_Number = 3;
  shown_before.Mode_Name = "Cruise Phase";
  shown_before.Line_Number = 42;
  page = shown_before.VScroll1_Change(session, 1);
  EXPECT_EQ(page.header.mode, "3  -  Cruise Phase");
  EXPECT_EQ(page.header.line, "42");
}

}  // namespace
}  // namespace morvane
