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

}  // namespace
}  // namespace morvane
