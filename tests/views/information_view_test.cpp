// SPDX-License-Identifier: MIT
#include "views/information_view.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::information_packet;
using testing::kEventId;
using testing::Loaded_File;
using testing::Packet;

TEST(InformationView, WordCountRoundsHalfToEven) {
  const std::pair<int32_t, int> cases[] = {{-1, 0}, {0, 0},   {1, 0},   {2, 1},   {3, 2},  {5, 2},
                                           {7, 4},  {21, 10}, {23, 12}, {63, 32}, {64, 32}};
  for (const auto& [length, words] : cases) EXPECT_EQ(information_word_count(length), words) << length;
}

TEST(InformationView, WordsFollowTheByteOrder) {
  for (const bool byte_reverse : {true, false}) {
    Packet packet = information_packet(kEventId, 1, {}, 23);
    packet.bytes = {{16, 0x01}, {17, 0xAB}, {22, 0x5C}};  // the 23rd and last byte pairs with a zero byte
    Loaded_File file(testing::one_a_frame({packet}, 282, byte_reverse), FileFormat::QM, byte_reverse);
    Information_View view;
    view.show(file.session, 1);
    const Information_Words& w = view.words();
    ASSERT_EQ(w.count(), 12);
    EXPECT_EQ(w.hex(9), byte_reverse ? "AB01" : "01AB");
    EXPECT_EQ(w.word(9), byte_reverse ? 0xAB01 : 0x01AB);
    EXPECT_EQ(w.hex(12), byte_reverse ? "005C" : "5C00");
    EXPECT_EQ(w.hex(1), "0F37");  // the identifier reads the same in its own file's order
    EXPECT_EQ(view.raw_dump().size(), 12u);
  }
}

TEST(InformationView, DumpGridLeavesAGapAfterTheFourthWord) {
  const std::tuple<int, bool, int, int> cases[] = {{1, true, 200, 0}, {4, true, 2300, 0},  {5, true, 3210, 0},
                                                   {8, true, 5310, 0}, {9, true, 200, 250}, {5, false, 3000, 0}};
  for (const auto& [k, binary, x, y] : cases) {
    EXPECT_EQ(dump_grid_position(k, binary).x, x) << k;
    EXPECT_EQ(dump_grid_position(k, binary).y, y) << k;
  }
  EXPECT_EQ(dump_grid_position(136, false).y, 16 * 250);
  Loaded_File file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55113}}, 64)}));
  Information_View view;
  view.show(file.session, 1);
  ASSERT_EQ(view.raw_dump().size(), 32u);
  EXPECT_EQ(view.raw_dump()[4], (Placed_Text{"0064", 3210, 0, kBlue, Anchor::Left}));  // the low time word, 100
  EXPECT_EQ(view.raw_dump()[31].y, 750);
}

TEST(InformationView, LabelsNameTheEntry) {
  FrameWriter writer(282);
  writer.add_frame({});
  writer.add_frame({information_packet(kEventId, 2, {{9, 55003}})});
  Loaded_File file(writer);
  Information_View view;
  view.show(file.session, 2);
  EXPECT_EQ(file.session.Current_Information_Index, 2);
  const Information_Labels& l = view.labels();
  EXPECT_EQ(l.Label2, "Lander Pkt  2");
  EXPECT_EQ(l.Label3, "Information Pkt 2");
  EXPECT_EQ(l.Label5, " Warning Anomalous Event ");
  EXPECT_EQ(l.Label7, "7");
  EXPECT_EQ(l.Label9, "100");
  EXPECT_EQ(Information_View::scroll_maximum(file.session), 3);
}

TEST(InformationView, AShortPacketKeepsTheHigherWordsOfTheOneBefore) {
  Loaded_File file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}, {28, 5}, {29, 6}}),
                                         information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}}, 20)}));
  Information_View view;
  view.show(file.session, 1);
  view.show(file.session, 3);  // entry 2 is the empty slot after the long packet
  EXPECT_EQ(view.words().count(), 10);
  EXPECT_EQ(view.raw_dump().size(), 10u);
  EXPECT_EQ(view.translation()[2].text, "Selected RAM data page  5");
  EXPECT_EQ(view.translation()[3].text, "Selected RAM code page 6");
}

TEST(InformationView, AnErrorKeepsWhatTheViewShowed) {
  Loaded_File file(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55113}}, 64),
                                         information_packet(kEventId, 1, {{9, 55114}}, 65),
                                         // One block of 30 data words: words 13..42, of which only 13..32 exist.
                                         information_packet(testing::kMemoryDumpId, 0, {{9, 0x9601}, {12, 30}})}));
  Information_View view;
  view.show(file.session, 1);
  EXPECT_EQ(testing::thrown([&] { view.show(file.session, 3); }).number, 9);  // longer than 64 bytes
  EXPECT_EQ(view.labels().Label3, "Information Pkt 3");
  EXPECT_EQ(view.words().word(9), 55113);
  EXPECT_EQ(view.raw_dump().size(), 32u);
  EXPECT_EQ(view.translation()[0].text, "RF Calibration report");
  // A memory table beyond word 32 keeps its rows but not the lines.
  EXPECT_EQ(testing::thrown([&] { view.show(file.session, 5); }).number, 9);
  EXPECT_EQ(view.memory().size(), 23u);  // words 10..32
  EXPECT_EQ(view.translation()[0].text, "");
}

TEST(InformationView, ZebEntriesShowTheirRecordAndKeepTheTranslation) {
  Loaded_File binary(testing::one_a_frame({information_packet(kEventId, 1, {{9, 55113}})}));
  std::map<int, int32_t> event{{5, 1847}, {7, 12}, {9, 345}, {15, 2}, {17, 55003}};
  for (int k = 20; k <= 136; ++k) event[k] = k;
  Loaded_File zeb(testing::zeb_text({testing::zeb_record({{5, 1844}, {17, 2}}), testing::zeb_record(event)}));
  Information_View view;
  view.show(binary.session, 1);
  const Translation before = view.translation();
  ASSERT_EQ(zeb.session.catalogue.Information_Count(), 1);
  view.show(zeb.session, 1);
  EXPECT_EQ(view.labels().Label2, "Lander Pkt  2");  // the second record after the header
  EXPECT_EQ(view.labels().Label5, " Warning Anomalous Event ");
  EXPECT_EQ(view.labels().Label7, "12");
  const Drawing& dump = view.raw_dump();
  ASSERT_EQ(dump.size(), 136u);
  EXPECT_EQ(dump[4], (Placed_Text{"1847", 3000, 0, kBlue, Anchor::Left}));
  EXPECT_EQ(dump[16].text, "55003");
  EXPECT_EQ(dump[135].text, "136");
  EXPECT_EQ(view.translation(), before);
}

TEST(InformationView, ThePictureHoldsTheLinesAboveTheMemoryTable) {
  Loaded_File file(
      testing::one_a_frame({information_packet(kEventId, 10, {{9, 0x9601}, {10, 1}, {11, 2}, {12, 3}, {13, 4}})}));
  Information_View view;
  view.show(file.session, 1);
  const Drawing picture = view.translation_drawing();
  ASSERT_EQ(picture.size(), 9u);
  EXPECT_EQ(picture[0],
            (Placed_Text{"Memory Checksum packet of PROM.    1 Checksum report.", 0, 0, kBlack, Anchor::Left}));
  EXPECT_EQ(picture[4].y, 800);
  std::vector<std::string> memory;
  for (const auto& t : view.memory()) memory.push_back(t.text);
  EXPECT_EQ(memory, (std::vector<std::string>{"Checksum 1", "Address  0001  0002", "Words 0003", "Checksum  =  0004"}));
}

}  // namespace
}  // namespace morvane
