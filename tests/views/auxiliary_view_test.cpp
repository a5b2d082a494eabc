// SPDX-License-Identifier: MIT
#include "views/auxiliary_view.h"

#include <gtest/gtest.h>

#include "core/number_text.h"
#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::Aux_Test_Reading;
using testing::text_at;
using testing::thrown;

TEST(AuxiliaryDecoding, AdcWordsAreSignedTenVoltCounts) {
  const std::tuple<int32_t, double, const char*> cases[] = {
      {0x8000, -10.0, "-10.00000"}, {0x7FFF, 32767 * 10.0 / 32768, "9.99969"}, {0xFFFF, -10.0 / 32768, "-0.00031"},
      {0, 0, "0.00000"}};
  for (const auto& [word, volts, text] : cases) {
    EXPECT_DOUBLE_EQ(ADC_Voltage(word), volts) << word;
    EXPECT_EQ(format_pattern(ADC_Voltage(word), "0.00000"), text) << word;
  }
}

class AuxiliaryTest : public testing::DecoderTest {
 protected:
  Aux_Page show(int32_t number) {
    state.Form_Load(session);
    return state.VScroll1_Change(session, number);
  }
  AuxiliaryState state;
};

TEST_F(AuxiliaryTest, ReadingsCarryTimeChannelAndWord) {
  load({aux_packet({{0, 1000, 101, 0x1234}, {0x8000, 5, 23, 0x8000}, {1, 2, 28, 0}})});
  const Aux_Page page = show(1);
  ASSERT_EQ(state.Channel_Count(), 3);
  EXPECT_EQ(state.readings[0].Reading_Time, 1000);
  EXPECT_EQ(state.readings[0].Channel_ID, 101);
  EXPECT_EQ(state.readings[0].Reading_Word, 0x1234);
  EXPECT_EQ(state.readings[1].Reading_Time, -65531);  // a high word above 32767 counts as -1
  EXPECT_EQ(state.readings[2].Reading_Time, 65538);
  EXPECT_EQ(page.channel_count, "3");
  ASSERT_EQ(page.table.rows.size(), 3u);
  EXPECT_EQ(page.table.rows[1].name, "Pressure 1");
  EXPECT_EQ(page.table.rows[1].adc_voltage_text, "-10.00000");
  EXPECT_EQ(page.table.rows[2].value_text, "-273.00");  // board temperature: V x 100 - 273
}

TEST_F(AuxiliaryTest, ThermocouplesAreCorrectedByTheAd590Temperature) {
  // Word 0 on reactor 1 (channel 101) shows the junction temperature itself; pressure 1
  // (channel 23) is never corrected; the printed ADC voltage is the uncorrected one.
  load({aux_packet({{0, 1, 101, 0}, {0, 1, 23, 0x2000}})});
  EXPECT_EQ(show(1).table.rows[0].value_text, "0.00");
  session.config.AD590_EMF = session.config.NType.NType_Reverse_Lookup(25);
  const Aux_Page page = state.VScroll1_Change(session, 1);  // the setting is read at every redraw
  EXPECT_NEAR(page.table.rows[0].value, 25, 0.01);
  EXPECT_EQ(page.table.rows[0].value_text, "25.00");
  EXPECT_EQ(page.table.rows[0].adc_voltage_text, "0.00000");
  EXPECT_EQ(page.table.rows[0].unit, "oC");
  EXPECT_DOUBLE_EQ(page.table.rows[1].value, (2.5 * 10 - 5) / 40);
}

TEST_F(AuxiliaryTest, TheLastSensorWithTheChannelIdNamesTheReading) {
  session.config.sensor(31).Channel_ID = 64;  // the nanotip's ID too
  load({aux_packet({{0, 1, 64, 0x1000}})});
  const Aux_Row row = show(1).table.rows[0];
  EXPECT_EQ(row.sensor, 31);
  EXPECT_EQ(row.name, "Detector HV");
  EXPECT_EQ(row.unit, "kV");
}

TEST_F(AuxiliaryTest, AChannelIdOfNoSensorEndsTheTableWithAnError) {
  load({aux_packet({{0, 1, 101, 0}, {0, 2, 999, 0}, {0, 3, 102, 0}}, 8)});
  state.Form_Load(session);
  const Aux_Page page = state.Update_Auxiliary_Packet_Info(session);
  ASSERT_TRUE(page.table.error);
  EXPECT_EQ(page.table.error->number(), 9);
  EXPECT_PRED2(testing::contains, page.table.error->detail(), "reading 2: channel ID 999");
  ASSERT_EQ(page.table.rows.size(), 1u);  // the rows before it stay
  EXPECT_EQ(text_at(page.table.drawing, 0, 420), "Reactor 1");
  EXPECT_EQ(text_at(page.table.drawing, 0, 640), "(nothing)");
  EXPECT_EQ(page.sequence, "8");  // and so do the labels
  EXPECT_EQ(page.channel_count, "3");
}

TEST_F(AuxiliaryTest, AtMost29ReadingsFit) {
  const std::vector<Aux_Test_Reading> full(29, Aux_Test_Reading{0, 1, 28, 0});
  const std::vector<Aux_Test_Reading> over(30, Aux_Test_Reading{0, 1, 28, 0});
  load({aux_packet(full), aux_packet(over), aux_packet({}, 5, 2000, 40000)});
  EXPECT_EQ(show(1).table.rows.size(), 29u);
  EXPECT_EQ(thrown([&] { state.VScroll1_Change(session, 2); }).number, 9);
  EXPECT_EQ(thrown([&] { state.VScroll1_Change(session, 3); }).number, 6);
  EXPECT_EQ(state.Channel_Count(), 29);  // a failed load leaves the readings shown
}

TEST_F(AuxiliaryTest, TheTableIsRightAlignedOnItsColumns) {
  load({aux_packet({{0, 77, 101, 0x0100}, {0, 78, 131, 0x0200}})});
  const Aux_Page page = show(1);
  const Drawing& d = page.table.drawing;
  const std::pair<const char*, int> headings[] = {{"Component", 0},        {"Reading", 1500}, {"Units", 2300},
                                                  {"Lander time(s)", 2900}, {"Chan. ID", 4400}, {"Word", 5300},
                                                  {"ADC Voltage(V)", 6000}};
  for (const auto& [text, x] : headings) EXPECT_EQ(text_at(d, x, 50), text);
  const int y = 420;  // 220 x 1 + 200
  EXPECT_EQ(text_at(d, 0, y), "Reactor 1");
  const std::pair<std::string, int> right[] = {
      {"101", 4800}, {"256", 5700}, {"77", 3500}, {"0.07813", 6900}, {page.table.rows[0].value_text, 2100}};
  for (const auto& [text, x] : right) {
    const Placed_Text* item = testing::find_text(d, text);
    ASSERT_NE(item, nullptr) << text;
    EXPECT_EQ(*item, (Placed_Text{text, x, y, item->colour, Anchor::Right}));
  }
  EXPECT_EQ(text_at(d, 2300, y - 50), "o");
  EXPECT_EQ(text_at(d, 2385, y), "C");
  EXPECT_EQ(text_at(d, 2300, 640), "V");  // the second row: the +28V rail
}

TEST_F(AuxiliaryTest, OpeningPicksTheCurrentScienceEntry) {
  load({aux_packet({}, 1), testing::hk_packet(2), aux_packet({}, 2), aux_packet({}, 3)});
  session.Current_Science_Index = 2;
  const Aux_Opening opening = state.Form_Load(session);
  EXPECT_EQ(state.Aux_Index, (std::vector<int32_t>{1, 2, 3}));
  EXPECT_EQ(opening.scroll_value, 2);
  EXPECT_EQ(opening.scroll_maximum, 3);
  EXPECT_EQ(opening.packet_count, "3");
  EXPECT_EQ(opening.ad590_text, "0.00");
  const Aux_Page page = state.Update_Auxiliary_Packet_Info(session);
  EXPECT_EQ(page.aux_number, "2");
  EXPECT_EQ(page.sequence, "2");
  EXPECT_EQ(page.lander_time, "2000");
  state.VScroll1_Change(session, 3);
  EXPECT_EQ(session.Current_Science_Index, 2);  // not written back
  session.Current_Science_Index = 0;  // no auxiliary entry: the first packet
  EXPECT_EQ(AuxiliaryState{}.Form_Load(session).scroll_value, 1);
}

TEST_F(AuxiliaryTest, AFileWithoutAuxiliaryPacketsSaysSo) {
  load({testing::hk_packet(2)});
  EXPECT_PRED2(testing::contains, thrown([&] { state.Form_Load(session); }).message, "no auxiliary data packets");
}

TEST_F(AuxiliaryTest, ZebRecordsKeepThePreviousReadings) {
  load_zeb({testing::zeb_record({{5, 1852}, {7, 9}, {9, 300}, {17, 1}})});
  Aux_Page page = show(1);
  EXPECT_TRUE(page.table.rows.empty());
  EXPECT_EQ(page.table.drawing.size(), 7u);  // the headings alone
  EXPECT_EQ(page.sequence, "9");
  EXPECT_EQ(page.lander_time, "300");
  EXPECT_EQ(page.channel_count, "0");
  state.readings = {Aux_Reading{5, 28, 0}};
  page = state.VScroll1_Change(session, 1);
  ASSERT_EQ(page.table.rows.size(), 1u);
  EXPECT_EQ(page.table.rows[0].name, "AD590 Temp");
}

}  // namespace
}  // namespace morvane
