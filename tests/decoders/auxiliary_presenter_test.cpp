// SPDX-License-Identifier: MIT
#include "decoders/auxiliary_presenter.h"

#include "decoder_fixture.h"

namespace morvane::testing {
namespace {

TEST(AuxiliaryDecoding, AdcWordsAreSignedTenVoltCounts) {
  const std::pair<int32_t, double> cases[] = {
      {0x8000, -10.0}, {0x7FFF, 32767 * 10.0 / 32768}, {0xFFFF, -10.0 / 32768}, {0, 0}};
  for (const auto& [word, volts] : cases) EXPECT_DOUBLE_EQ(ADC_Voltage(word), volts) << word;
}

class AuxiliaryTest : public testing::DecoderTest {
 protected:
  AuxPage show(int32_t number) {
    state.Form_Load(session);
    return state.VScroll1_Change(session, number);
  }
  AuxiliaryPresenter state;
};

TEST_F(AuxiliaryTest, ThermocouplesAreCorrectedByTheAd590Temperature) {
  // Word 0 on reactor 1 (channel 101) shows the junction temperature itself; pressure 1
  // (channel 23) is never corrected; the printed ADC voltage is the uncorrected one.
  load({aux_packet({{0, 1, 101, 0}, {0, 1, 23, 0x2000}})});
  EXPECT_EQ(show(1).table.rows[0].value_text, "0.00");
  session.config.AD590_EMF = session.config.NType.NType_Reverse_Lookup(25);
  const AuxPage page = state.VScroll1_Change(session, 1);  // the setting is read at every redraw
  EXPECT_NEAR(page.table.rows[0].value, 25, 0.01);
  const auto& row = page.table.rows[0];
  EXPECT_EQ(std::tie(row.value_text, row.adc_voltage_text, row.unit), std::tuple("25.00", "0.00000", "oC"));
  EXPECT_DOUBLE_EQ(page.table.rows[1].value, (2.5 * 10 - 5) / 40);
}

TEST_F(AuxiliaryTest, AtMost29ReadingsFit) {
  const AuxTestReading reading{0, 1, 28, 0};
  load({aux_packet(std::vector(29, reading)), aux_packet(std::vector(30, reading)), aux_packet({}, 5, 2000, 40000)});
  EXPECT_EQ(show(1).table.rows.size(), 29u);
  EXPECT_EQ(std::pair(thrown([&] { state.VScroll1_Change(session, 2); }).number,
                      thrown([&] { state.VScroll1_Change(session, 3); }).number), std::pair(9, 6));

  EXPECT_EQ(state.Channel_Count(), 29);  // a failed load leaves the readings shown
}

}  // namespace
}  // namespace morvane::testing
