// SPDX-License-Identifier: MIT
#include "views/housekeeping_view.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::hk_packet;

class HousekeepingViewTest : public testing::DecoderTest {};

TEST_F(HousekeepingViewTest, HeaderLabelsDescribeTheShownPacket) {
  load({hk_packet(1, {{18, 16}, {20, 0}, {21, 7}}, {}, 11, 500), hk_packet(2, {{18, 11}}, {}, 12, 600)});
  HousekeepingState state;
  session.Current_HK_Index = 2;
  const std::optional<Sensor_Page> page = state.Form_Load(session);
  ASSERT_TRUE(page);
  EXPECT_EQ(page->header.packet_type, "Packet type -  Complete ");
  EXPECT_EQ(page->header.packet_number, "2");
  EXPECT_EQ(page->header.sequence, "12");
  EXPECT_EQ(page->header.lander_time, "600");
  EXPECT_EQ(page->header.packet_count, "2");
  EXPECT_EQ(page->header.mode, "11  -  Calibration");
  EXPECT_EQ(page->header.line, "0");
  EXPECT_TRUE(page->more_visible);
  const Scroll_Setting scroll = HousekeepingState::Form_Load_scroll(session);
  EXPECT_EQ(scroll.maximum, 2);
  EXPECT_EQ(scroll.value, 2);

  const Sensor_Page concise = state.VScroll1_Change(session, 1);
  EXPECT_EQ(concise.header.packet_type, "Packet type -  Concise  ");
  EXPECT_EQ(concise.header.mode, "16  -  Additional Science");
  EXPECT_EQ(concise.header.line, "7");
  EXPECT_FALSE(concise.more_visible);
  EXPECT_EQ(session.Current_HK_Index, 1);
}

TEST_F(HousekeepingViewTest, TheButtonSwitchesPagesAndAScrollReturnsToTheSensors) {
  load({hk_packet(2, {}, {{66, 0x8000}}), hk_packet(2)});
  HousekeepingState state;
  state.Form_Load(session);
  EXPECT_EQ(std::string(state.button_caption()), "More...");

  auto shown = state.Command1_Click(session);
  ASSERT_TRUE(std::holds_alternative<Register_Page>(shown));
  EXPECT_EQ(std::get<Register_Page>(shown).Register_Words[1], 0x8000);
  EXPECT_TRUE(state.Showing_Registers);
  EXPECT_EQ(std::string(state.button_caption()), "Sensors");

  shown = state.Command1_Click(session);
  ASSERT_TRUE(std::holds_alternative<Sensor_Page>(shown));
  EXPECT_EQ(std::string(state.button_caption()), "More...");

  state.Command1_Click(session);
  const Sensor_Page page = state.VScroll1_Change(session, 2);
  EXPECT_FALSE(state.Showing_Registers);
  EXPECT_EQ(std::string(state.button_caption()), "More...");
  EXPECT_EQ(page.header.packet_number, "2");
}

TEST_F(HousekeepingViewTest, TheRecordsHoldTheShownPacket) {
  load({hk_packet(2, testing::sensor_bytes({{30, 10}})), hk_packet(2, testing::sensor_bytes({{30, 20}}))});
  HousekeepingState state;
  state.VScroll1_Change(session, 2);
  EXPECT_EQ(session.config.sensor(30).Raw_Reading, 20);
  state.VScroll1_Change(session, 1);
  EXPECT_EQ(session.config.sensor(30).Raw_Reading, 10);
  EXPECT_DOUBLE_EQ(session.config.sensor(30).Value, 10 * 10.0 / 32768 * 100);  // exponent 0, uA = V x 100
}

TEST_F(HousekeepingViewTest, WithoutHousekeepingPacketsNothingIsDrawn) {
  load({testing::aux_packet({})});
  HousekeepingState state;
  EXPECT_FALSE(state.Form_Load(session));
  const Scroll_Setting scroll = HousekeepingState::Form_Load_scroll(session);
  EXPECT_EQ(scroll.maximum, 1);
  EXPECT_EQ(scroll.value, 1);
}

TEST_F(HousekeepingViewTest, RealtimeUpdatesMoveTheBar) {
  load({hk_packet(2), hk_packet(2), hk_packet(1)});
  session.Current_HK_Index = 2;
  EXPECT_EQ(HousekeepingState::UpdateRealtime(session).value, 3);
  EXPECT_EQ(HousekeepingState::UpdateRealtime(session).maximum, 3);
  EXPECT_EQ(HousekeepingState::Update(session).value, 2);
}

}  // namespace
}  // namespace morvane
