// SPDX-License-Identifier: MIT
#include "decoders/raw_frame.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::LoadedFile;
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

TEST(RawFrame, HeaderAndTrailerWordsAreRedTheRestBlue) {
  FrameWriter writer(282);
  writer.add_frame({testing::labelled(LabelCode::Complete, 3, 51, 1000)});
  writer.add_frame({});
  const LoadedFile file(writer, FileFormat::QM);
  const RawFrame frame = Display_Raw_Frame(file.session, 2);
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
  writer.add_frame({testing::labelled(LabelCode::AuxiliaryData, 0, 11, 5)});
  writer.add_frame({});
  const LoadedFile file(writer, FileFormat::GRM);  // 560 bytes counted in 256s: three frames
  ASSERT_EQ(file.session.Packet_Count, 3);
  const RawFrame frame = Display_Raw_Frame(file.session, 1);
  ASSERT_EQ(frame.words.size(), 140u);
  EXPECT_EQ(frame.words[11].text, "0F3C");
  EXPECT_EQ(frame.words[139].colour, kRed);
  EXPECT_EQ(frame.words[138].colour, kBlue);
  // The extra frame lies past the end of the file and shows zeros.
  for (const PlacedText& word : Display_Raw_Frame(file.session, 3).words) EXPECT_EQ(word.text, "0000");
}

}  // namespace
}  // namespace morvane
