// SPDX-License-Identifier: MIT
#include "views/raw_frame.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Loaded_File;
using testing::Packet;

TEST(RawGrid, WordsSitEightARowWithAGapAfterTheFourth) {
  const std::tuple<int, int, int> cases[] = {{1, 200, 0},   {4, 2300, 0},    {5, 3210, 0},    {8, 5310, 0},
                                             {9, 200, 250}, {13, 3210, 250}, {141, 3210, 4250}};
  for (const auto& [k, x, y] : cases) {
    EXPECT_EQ(raw_word_x(k), x) << k;
    EXPECT_EQ(raw_word_y(k), y) << k;
  }
  EXPECT_EQ(raw_grid_height(141), 18 * 250);
  EXPECT_EQ(raw_grid_height(0), 0);
}

TEST(RawFrame, TheFirstWordFollowsTheByteOrder) {
  FrameWriter writer(282);
  writer.bytes().assign(282, 0);
  writer.bytes()[0] = 0x01;
  writer.bytes()[1] = 0xAB;
  Loaded_File file(writer, FileFormat::CSS, false);
  EXPECT_EQ(Display_282_Byte_Packet(file.session, 1).words[0].text, "01AB");
  file.session.Byte_Reverse = true;
  EXPECT_EQ(Display_282_Byte_Packet(file.session, 1).words[0].text, "AB01");
}

TEST(RawFrame, HeaderAndTrailerWordsAreRedTheRestBlue) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F34, 3, 51, 0, 1000, {{16, 2}}, {}}});
  writer.add_frame({});
  const Loaded_File file(writer, FileFormat::QM);
  const Raw_Frame frame = Display_Raw_Frame(file.session, 2);
  EXPECT_EQ(frame.label1, "Number of Lander packets = 2");
  EXPECT_EQ(frame.label2, "Lander packet number 2");
  ASSERT_EQ(frame.words.size(), 141u);
  for (int k = 1; k <= 141; ++k) {
    EXPECT_EQ(frame.words[static_cast<size_t>(k - 1)].colour, (k <= 11 || k > 139) ? kRed : kBlue) << k;
    EXPECT_EQ(frame.words[static_cast<size_t>(k - 1)].x, raw_word_x(k));
  }
  EXPECT_EQ(Display_Raw_Frame(file.session, 1).words[11].text, "0F34");  // frame byte 22 is word 12
}

TEST(RawFrame, TheShorterFrameHasOneHundredFortyWordsTheLastRed) {
  FrameWriter writer(280);
  writer.add_frame({Packet{0x0F3C, 0, 11, 0, 5, {{16, 1}}, {}}});
  writer.add_frame({});
  const Loaded_File file(writer, FileFormat::GRM);  // 560 bytes counted in 256s: three frames
  ASSERT_EQ(file.session.Packet_Count, 3);
  const Raw_Frame frame = Display_Raw_Frame(file.session, 1);
  ASSERT_EQ(frame.words.size(), 140u);
  EXPECT_EQ(frame.words[11].text, "0F3C");
  EXPECT_EQ(frame.words[139].colour, kRed);
  EXPECT_EQ(frame.words[138].colour, kBlue);
  // The extra frame lies past the end of the file and shows zeros.
  for (const Placed_Text& word : Display_Raw_Frame(file.session, 3).words) EXPECT_EQ(word.text, "0000");
}

TEST(RawFrame, ZebRecordsShowTheirItemsInBlue) {
  const Loaded_File file(
      testing::zeb_text({testing::zeb_record({{5, 1844}, {17, 1}}), testing::zeb_record({{1, -7}, {136, 65535}})}));
  const Raw_Frame frame = Display_Raw_Frame(file.session, 2);
  ASSERT_EQ(frame.words.size(), 136u);
  EXPECT_EQ(frame.words[0].text, "-7");
  EXPECT_EQ(frame.words[135].text, "65535");
  EXPECT_EQ(frame.words[135].y, raw_word_y(136));
  for (const Placed_Text& word : frame.words) EXPECT_EQ(word.colour, kBlue);
  EXPECT_EQ(Display_Raw_Frame(file.session, 1).words[4].text, "1844");
}

TEST(RawFrame, NoFileOrNoFrameIsAnError) {
  EXPECT_NE(testing::thrown([] { Display_282_Byte_Packet(Session{}, 1); }).number, 0);
  FrameWriter writer(282);
  writer.add_frame({});
  EXPECT_NE(testing::thrown([&] { Display_282_Byte_Packet(Loaded_File(writer).session, 0); }).number, 0);
}

}  // namespace
}  // namespace morvane
