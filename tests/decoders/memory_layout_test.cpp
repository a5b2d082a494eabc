// SPDX-License-Identifier: MIT
#include "decoders/memory_layout.h"

#include <gtest/gtest.h>

#include <map>

#include "decoder_fixture.h"

namespace morvane {
namespace {

// Words 1..32 as a packet would leave them: every word given, the rest 0.
InformationWords words_of(const std::map<int, int32_t>& given) {
  InformationWords words;
  for (int n = 1; n <= 32; ++n) words.set(n, given.count(n) ? given.at(n) : 0);
  words.set_count(32);
  return words;
}

Drawing dump(const std::map<int, int32_t>& given) {
  Drawing out;
  Display_Memory_Data(words_of(given), out);
  return out;
}

TEST(MemoryLayout, DumpBlocksColourHeaderCountAndData) {
  EXPECT_TRUE(dump({{9, 0x9600}, {12, 3}}).empty());  // no blocks
  // Block 1: words 10, 11, count 12 = 2, data 13-14. Block 2: words 15, 16, count 17 = 0.
  // Block 3 starts right after at word 18.
  const Drawing out = dump({{9, 0x9603}, {10, 0xA}, {11, 0xB}, {12, 2}, {13, 0xD1}, {14, 0xD2}, {15, 0xE}, {16, 0xF},
                            {17, 0}, {18, 0x18}, {19, 0x19}, {20, 1}, {21, 0x21}});
  const std::vector<PlacedText> expected = {
      {"000A", 0, 600, kRed},     {"000B", 700, 600, kRed},  {"0002", 1400, 600, kBlack}, {"00D1", 2100, 600, kBlue},
      {"00D2", 2800, 600, kBlue}, {"000E", 3500, 600, kRed}, {"000F", 4200, 600, kRed},   {"0000", 4900, 600, kBlack},
      // The ninth text wraps to the next row.
      {"0018", 0, 800, kRed},     {"0019", 700, 800, kRed},  {"0001", 1400, 800, kBlack}, {"0021", 2100, 800, kBlue},
  };
  EXPECT_EQ(out, expected);
}

TEST(MemoryLayout, ADumpBeyondWord32StopsAfterTheWordsItPrinted) {
  Drawing out;
  EXPECT_EQ(testing::thrown([&] { Display_Memory_Data(words_of({{9, 0x9601}, {12, 30}}), out); }).number, 9);
  ASSERT_EQ(out.size(), 23u);  // words 10..32
  EXPECT_EQ(out.back(), (PlacedText{"0000", 6 * 700, 600 + 2 * 200, kBlue}));
  // Eleven blocks of three header words need words up to 42.
  out.clear();
  EXPECT_EQ(testing::thrown([&] { Display_Memory_Data(words_of({{9, 0x960B}}), out); }).number, 9);
  EXPECT_EQ(out.size(), 23u);
}

}  // namespace
}  // namespace morvane
