// SPDX-License-Identifier: MIT
#include "decoders/housekeeping_presenter.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::hk_packet;
using testing::sensor_bytes;

class HousekeepingViewTest : public testing::DecoderTest {};

TEST_F(HousekeepingViewTest, HeaderLabelsDescribeTheShownPacket) {
  load({hk_packet(1, {{18, 16}, {20, 0}, {21, 7}}, {}, 11, 500), hk_packet(2, {{18, 11}}, {}, 12, 600)});
  HousekeepingPresenter state;
  session.Current_HK_Index = 2;
  const std::optional<SensorPage> page = state.Form_Load(session);
  ASSERT_TRUE(page);
  EXPECT_EQ(page->header.packet_type, "Packet type -  Complete ");
  EXPECT_EQ(page->header.packet_number, "2");
  EXPECT_EQ(page->header.mode, "11  -  Calibration");
  EXPECT_EQ(page->header.line, "0");
  EXPECT_TRUE(page->more_visible);
  const ScrollSetting scroll = HousekeepingPresenter::Form_Load_scroll(session);
  EXPECT_EQ(scroll.maximum, 2);
  EXPECT_EQ(scroll.value, 2);

  const SensorPage concise = state.VScroll1_Change(session, 1);
  EXPECT_EQ(concise.header.packet_type, "Packet type -  Concise  ");
  EXPECT_EQ(concise.header.mode, "16  -  Additional Science");
  EXPECT_EQ(concise.header.line, "7");
  EXPECT_FALSE(concise.more_visible);
  EXPECT_EQ(session.Current_HK_Index, 1);
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
  EXPECT_EQ(session.config.sensor(29).Raw_Reading, 10);
  EXPECT_EQ(session.config.sensor(22).Raw_Reading, 16);
  EXPECT_EQ(session.config.sensor(22).Value_Upper, page.decoded.sensor(22).value_upper);
  EXPECT_EQ(session.config.sensor(29).Sensor_Unit, "mm");
}

}  // namespace
}  // namespace morvane
