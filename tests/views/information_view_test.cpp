// SPDX-License-Identifier: MIT
#include "views/information_view.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "packet_files.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::information_packet;
using testing::kEventId;
using testing::Loaded_File;
using testing::Packet;

std::vector<std::string> texts(const Drawing& drawing) {
  std::vector<std::string> out;
  for (const auto& t : drawing) out.push_back(t.text);
  return out;
}

TEST(InformationView, WordCountRoundsHalfToEven) {
  const std::pair<int32_t, int> cases[] = {{-1, 0}, {0, 0},   {1, 0},   {2, 1},   {3, 2},  {5, 2},
                                           {7, 4},  {21, 10}, {23, 12}, {63, 32}, {64, 32}};
  for (const auto& [length, words] : cases) EXPECT_EQ(information_word_count(length), words) << length;
}

TEST(InformationView, WordsFollowTheByteOrder) {
  for (const bool byte_reverse : {true, false}) {
    Packet packet = information_packet(kEventId, 1, {}, 23);
    packet.bytes[16] = 0x01;
    packet.bytes[17] = 0xAB;
    packet.bytes[22] = 0x5C;  // the 23rd and last byte pairs with a zero byte
    FrameWriter writer(282, byte_reverse);
    writer.add_frame({packet});
    Loaded_File file(writer, FileFormat::QM, byte_reverse);
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
  EXPECT_EQ(dump_grid_position(1, true).x, 200);
  EXPECT_EQ(dump_grid_position(4, true).x, 2300);
  EXPECT_EQ(dump_grid_position(5, true).x, 3210);
  EXPECT_EQ(dump_grid_position(8, true).x, 5310);
  EXPECT_EQ(dump_grid_position(9, true).x, 200);
  EXPECT_EQ(dump_grid_position(9, true).y, 250);
  EXPECT_EQ(dump_grid_position(5, false).x, 3000);
  EXPECT_EQ(dump_grid_position(136, false).y, 16 * 250);

  FrameWriter writer(282);
  writer.add_frame({information_packet(kEventId, 1, {{9, 55113}}, 64)});
  Loaded_File file(writer);
  Information_View view;
  view.show(file.session, 1);
  ASSERT_EQ(view.raw_dump().size(), 32u);
  // Word 5 is the low time word, 100.
  EXPECT_EQ(view.raw_dump()[4], (Placed_Text{"0064", 3210, 0, kBlue, Anchor::Left}));
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
  FrameWriter writer(282);
  writer.add_frame({information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}, {28, 5}, {29, 6}}, 64)});
  writer.add_frame({information_packet(kEventId, 1, {{9, 55001}, {10, 0xAA00}}, 20)});
  Loaded_File file(writer);
  Information_View view;
  view.show(file.session, 1);
  view.show(file.session, 3);  // entry 2 is the empty slot after the long packet
  EXPECT_EQ(view.words().count(), 10);
  EXPECT_EQ(view.raw_dump().size(), 10u);
  EXPECT_EQ(view.translation()[2].text, "Selected RAM data page  5");
  EXPECT_EQ(view.translation()[3].text, "Selected RAM code page 6");
}

TEST(InformationView, APacketLongerThan64BytesIsAnErrorThatKeepsTheView) {
  FrameWriter writer(282);
  writer.add_frame({information_packet(kEventId, 1, {{9, 55113}}, 64)});
  writer.add_frame({information_packet(kEventId, 1, {{9, 55114}}, 65)});
  Loaded_File file(writer);
  Information_View view;
  view.show(file.session, 1);
  try {
    view.show(file.session, 3);
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 9);
  }
  EXPECT_EQ(view.labels().Label3, "Information Pkt 3");
  EXPECT_EQ(view.words().word(9), 55113);
  EXPECT_EQ(view.raw_dump().size(), 32u);
  EXPECT_EQ(view.translation()[0].text, "RF Calibration report");
}

TEST(InformationView, AMemoryTableBeyondWord32KeepsItsRowsButNotTheLines) {
  FrameWriter writer(282);
  // One block of 30 data words: words 13..42, of which only 13..32 exist.
  writer.add_frame({information_packet(testing::kMemoryDumpId, 0, {{9, 0x9601}, {12, 30}}, 64)});
  Loaded_File file(writer);
  Information_View view;
  EXPECT_THROW(view.show(file.session, 1), RuntimeError);
  EXPECT_EQ(view.memory().size(), 23u);  // words 10..32
  EXPECT_EQ(view.translation()[0].text, "");
}

TEST(InformationView, ZebEntriesShowTheirRecordAndKeepTheTranslation) {
  FrameWriter writer(282);
  writer.add_frame({information_packet(kEventId, 1, {{9, 55113}})});
  Loaded_File binary(writer);
  std::vector<std::vector<int32_t>> records;
  records.push_back(testing::zeb_record({{5, 1844}, {17, 2}}));
  std::map<int, int32_t> event{{5, 1847}, {7, 12}, {9, 345}, {15, 2}, {17, 55003}};
  for (int k = 20; k <= 136; ++k) event[k] = k;
  records.push_back(testing::zeb_record(event));
  Loaded_File zeb(testing::zeb_text(records));

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
  EXPECT_EQ(dump[4].text, "1847");
  EXPECT_EQ(dump[16].text, "55003");
  EXPECT_EQ(dump[135].text, "136");
  EXPECT_EQ(dump[4], (Placed_Text{"1847", 3000, 0, kBlue, Anchor::Left}));
  EXPECT_EQ(view.translation(), before);
  EXPECT_EQ(view.translation()[0].text, "RF Calibration report");
}

TEST(InformationView, ThePictureHoldsTheLinesAboveTheMemoryTable) {
  FrameWriter writer(282);
  writer.add_frame({information_packet(kEventId, 10, {{9, 0x9601}, {10, 1}, {11, 2}, {12, 3}, {13, 4}})});
  Loaded_File file(writer);
  Information_View view;
  view.show(file.session, 1);
  const Drawing picture = view.translation_drawing();
  ASSERT_EQ(picture.size(), 9u);
  EXPECT_EQ(picture[0],
            (Placed_Text{"Memory Checksum packet of PROM.    1 Checksum report.", 0, 0, kBlack, Anchor::Left}));
  EXPECT_EQ(picture[4].y, 800);
  EXPECT_EQ(texts(view.memory()),
            (std::vector<std::string>{"Checksum 1", "Address  0001  0002", "Words 0003", "Checksum  =  0004"}));
}

}  // namespace
}  // namespace morvane
