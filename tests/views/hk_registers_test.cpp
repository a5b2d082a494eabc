// SPDX-License-Identifier: MIT
#include "views/hk_registers.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::text_at;

TEST(HkRegisters, WordTextsAreFourHexDigitsAndSixteenBitsBit15First) {
  const std::pair<int32_t, const char*> hex[] = {{0, "0000"},    {26, "001A"},   {255, "00FF"},
                                                 {4095, "0FFF"}, {4096, "1000"}, {0xABCD, "ABCD"}};
  for (const auto& [value, text] : hex) EXPECT_EQ(Convert_to_Hex(value), text) << value;
  EXPECT_EQ(binary_text(0xA001), "1 0 1 0 0 0 0 0 0 0 0 0 0 0 0 1 ");
  EXPECT_EQ(binary_text(0xFFFF), "1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 ");
}

std::array<int32_t, 16> words(std::initializer_list<std::pair<int, int32_t>> set) {
  std::array<int32_t, 16> w{};
  for (const auto& [i, value] : set) w[static_cast<size_t>(i - 1)] = value;
  return w;
}

TEST(HkRegisters, ValveAndPwmBitsAreNamedBit15First) {
  const Drawing page = draw_register_page(words({{2, 0x8001}, {4, 0x0100}}));
  const std::tuple<int, int, const char*> texts[] = {
      {0, 0, "Valve enable register    8001"}, {600, 200, "VC"}, {600, 400, " En"}, {1200, 200, "VB"},
      {1200, 400, "  - "}, {600, 600, "V10"}, {600, 800, "  - "},
      {4800, 600, "V1"}, {4800, 800, " En"},  // i = 16: 600 x 16 - 4800
      {0, 2000, "PWM enable register    0100"}, {600, 2600, "R9/14"}, {600, 2800, "  - "},
      {4800, 2200, "R13"}, {4800, 2400, " En"},  // bit 8 is the eighth name
  };
  for (const auto& [x, y, text] : texts) EXPECT_EQ(text_at(page, x, y), text) << x << ", " << y;
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
  const char* names[] = {"Ds Up", "Ds Dn", "HT", "SMA2", "SMA1"};
  for (const auto& [w, states] : cases) {
    const Drawing page = draw_register_page(w);
    EXPECT_EQ(text_at(page, 0, 1200), "Critical functions enable register    " + Convert_to_Hex(w[2]));
    for (int i = 1; i <= 5; ++i) {
      EXPECT_EQ(text_at(page, 1000 * i - 400, 1400), names[i - 1]);
      EXPECT_EQ(text_at(page, 1000 * i - 400, 1600), states[static_cast<size_t>(i - 1)]) << names[i - 1] << " " << w[1];
    }
  }
}

TEST(HkRegisters, ControlRegistersAndSingleWordsAreShownInHex) {
  std::array<int32_t, 16> w{};
  for (int i = 1; i <= 16; ++i) w[static_cast<size_t>(i - 1)] = 0x1100 * i % 0x10000 + i;
  const Drawing page = draw_register_page(w);
  EXPECT_EQ(text_at(page, 0, 3200), "Control Register Contents:         Word(Hex)                  Binary");
  const char* controls[] = {"DAC control", "Valve control", "CF control", "PWM control"};
  for (int i = 1; i <= 4; ++i) {
    const int y = 3200 + 200 * i;
    EXPECT_EQ(text_at(page, 500, y), controls[i - 1]);
    EXPECT_EQ(text_at(page, 2500, y), Convert_to_Hex(w[static_cast<size_t>(i + 3)]));
    EXPECT_EQ(text_at(page, 3500, y), binary_text(w[static_cast<size_t>(i + 3)]));
  }
  const std::tuple<const char*, int, int, int, int> singles[] = {  // label, x, y, word, x of the hex
      {"Background task ", 0, 4400, 1, 2400},
      {"RIU status word  ", 3300, 4400, 9, 5700},
      {"Mode event sequence state", 0, 4600, 12, 2400},
      {"Last service request word ", 3300, 4600, 10, 5700},
      {"Science data transmission state   ", 0, 4800, 13, 2400},
      {"Last service request word sent ", 3300, 4800, 11, 5700},
      {"Current memory test address  ", 0, 5000, 14, 2400},
      {"Number TC verify packets waiting transmission  ", 0, 5200, 15, 3500},
      {"Number TC event packets waiting transmission ", 0, 5400, 16, 3500},
  };
  for (const auto& [label, x, y, word, hex_x] : singles) {
    EXPECT_EQ(text_at(page, x, y), label);
    EXPECT_EQ(text_at(page, hex_x, y), Convert_to_Hex(w[static_cast<size_t>(word - 1)])) << label;
  }
  for (const auto& item : page) EXPECT_EQ(item.colour, kBlue);
}

class HkRegisterFileTest : public testing::DecoderTest {};

TEST_F(HkRegisterFileTest, WordsAreReadFromBytes64To95InTheFilesOrder) {
  std::map<int, int32_t> set;
  for (int i = 1; i <= 16; ++i) set[62 + 2 * i] = 0x0100 * i + 0x20 + i;
  load({testing::hk_packet(2, {}, set)}, /*low_byte_first=*/false);
  Register_Page page = Show_HK_Extra(session, 1);
  for (int i = 1; i <= 16; ++i) EXPECT_EQ(page.Register_Words[static_cast<size_t>(i - 1)], 0x0100 * i + 0x20 + i) << i;
  EXPECT_EQ(page.drawing, draw_register_page(page.Register_Words));
  session.Byte_Reverse = true;
  page = Show_HK_Extra(session, 1);
  EXPECT_EQ(page.Register_Words[0], 0x2101);
  EXPECT_EQ(page.Register_Words[15], 0x3010);
}

}  // namespace
}  // namespace morvane
