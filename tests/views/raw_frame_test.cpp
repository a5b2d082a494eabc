// SPDX-License-Identifier: MIT
#include "views/raw_frame.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "test_files.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

class RawFrame : public ::testing::Test {
 protected:
  // Loads bytes as a file of the given format.
  void load(const std::vector<uint8_t>& bytes, FileFormat format) {
    testing::write_bytes(dir.path("frames"), bytes);
    load_telemetry(session, dir.path("frames"), format);
  }
  testing::TempDir dir;
  Session session;
};

TEST(RawGrid, WordsSitEightARowWithAGapAfterTheFourth) {
  const struct { int k, x, y; } cases[] = {
      {1, 200, 0}, {4, 2300, 0}, {5, 3210, 0}, {8, 5310, 0}, {9, 200, 250}, {13, 3210, 250}, {141, 3210, 4250}};
  for (const auto& c : cases) {
    EXPECT_EQ(raw_word_x(c.k), c.x) << c.k;
    EXPECT_EQ(raw_word_y(c.k), c.y) << c.k;
  }
  EXPECT_EQ(raw_grid_height(141), 18 * 250);
  EXPECT_EQ(raw_grid_height(0), 0);
}

TEST_F(RawFrame, TheFirstWordFollowsTheByteOrder) {
  std::vector<uint8_t> bytes(282, 0);
  bytes[0] = 0x01;
  bytes[1] = 0xAB;
  load(bytes, FileFormat::CSS);
  session.Byte_Reverse = false;
  EXPECT_EQ(Display_282_Byte_Packet(session, 1).words[0].text, "01AB");
  session.Byte_Reverse = true;
  EXPECT_EQ(Display_282_Byte_Packet(session, 1).words[0].text, "AB01");
}

TEST_F(RawFrame, HeaderAndTrailerWordsAreRedTheRestBlue) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F34, 3, 51, 0, 1000, {{16, 2}}, {}}});
  writer.add_frame({});
  load(writer.bytes(), FileFormat::QM);
  const Raw_Frame frame = Display_Raw_Frame(session, 2);
  EXPECT_EQ(frame.label1, "Number of Lander packets = 2");
  EXPECT_EQ(frame.label2, "Lander packet number 2");
  ASSERT_EQ(frame.words.size(), 141u);
  for (int k = 1; k <= 141; ++k) {
    EXPECT_EQ(frame.words[static_cast<size_t>(k - 1)].colour, (k <= 11 || k > 139) ? kRed : kBlue) << k;
    EXPECT_EQ(frame.words[static_cast<size_t>(k - 1)].x, raw_word_x(k));
  }
  // Frame 1's packet: the identifier word is word 12 (frame byte 22).
  EXPECT_EQ(Display_Raw_Frame(session, 1).words[11].text, "0F34");
}

TEST_F(RawFrame, TheShorterFrameHasOneHundredFortyWordsTheLastRed) {
  FrameWriter writer(280);
  writer.add_frame({Packet{0x0F3C, 0, 11, 0, 5, {{16, 1}}, {}}});
  writer.add_frame({});
  load(writer.bytes(), FileFormat::GRM);  // 560 bytes counted in 256s: three frames
  ASSERT_EQ(session.Packet_Count, 3);
  const Raw_Frame frame = Display_Raw_Frame(session, 1);
  ASSERT_EQ(frame.words.size(), 140u);
  EXPECT_EQ(frame.words[11].text, "0F3C");
  EXPECT_EQ(frame.words[139].colour, kRed);
  EXPECT_EQ(frame.words[138].colour, kBlue);
  // The extra frame lies past the end of the file and shows zeros.
  for (const Placed_Text& word : Display_Raw_Frame(session, 3).words) EXPECT_EQ(word.text, "0000");
}

TEST_F(RawFrame, ZebRecordsShowTheirItemsInBlue) {
  testing::write_file(dir.path("z"), testing::zeb_text({testing::zeb_record({{5, 1844}, {17, 1}}),
                                                        testing::zeb_record({{1, -7}, {136, 65535}})}));
  load_telemetry(session, dir.path("z"), FileFormat::ZEB);
  const Raw_Frame frame = Display_Raw_Frame(session, 2);
  ASSERT_EQ(frame.words.size(), 136u);
  EXPECT_EQ(frame.words[0].text, "-7");
  EXPECT_EQ(frame.words[135].text, "65535");
  EXPECT_EQ(frame.words[135].y, raw_word_y(136));
  for (const Placed_Text& word : frame.words) EXPECT_EQ(word.colour, kBlue);
  EXPECT_EQ(Display_Raw_Frame(session, 1).words[4].text, "1844");
}

TEST_F(RawFrame, NoFileOrNoFrameIsAnError) {
  EXPECT_THROW(Display_282_Byte_Packet(session, 1), RuntimeError);
  load(std::vector<uint8_t>(282, 0), FileFormat::CSS);
  EXPECT_THROW(Display_282_Byte_Packet(session, 0), RuntimeError);
}

}  // namespace
}  // namespace morvane
