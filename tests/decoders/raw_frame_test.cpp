// SPDX-License-Identifier: MIT
// The frame views: a frame's raw words, the bytes a packet marks in them, the concise slots.
#include "decoders/raw_frame.h"

#include "core/number_text.h"
#include "decoder_fixture.h"
#include "decoders/concise_frame.h"
#include "decoders/raw_mark.h"

namespace morvane::testing {
namespace {

TEST(RawGrid, WordsSitEightARowWithAGapAfterTheFourth) {
  const std::tuple<int, int, int> cases[] = {{1, 200, 0},   {4, 2300, 0},    {5, 3210, 0},    {8, 5310, 0},
                                             {9, 200, 250}, {13, 3210, 250}, {141, 3210, 4250}};
  for (const auto& [k, x, y] : cases) EXPECT_EQ(std::tuple(raw_word_x(k), raw_word_y(k)), std::tuple(x, y)) << k;
  EXPECT_EQ(std::pair(raw_grid_height(141), raw_grid_height(0)), std::pair(18 * 250, 0));
}

TEST(RawFrame, HeaderAndTrailerWordsAreRedTheRestBlue) {
  FrameWriter writer(282);
  writer.add_frame({testing::labelled(LabelCode::Complete, 3, 51, 1000)});
  writer.add_frame({});
  const LoadedFile file(writer, FileFormat::QM);
  const RawFrame frame = Display_Raw_Frame(file.session, 2);
  EXPECT_EQ(std::tuple(frame.label1, frame.label2), std::tuple("Number of Lander packets = 2", "Lander packet number 2"));
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
  EXPECT_EQ(std::tuple(frame.words[11].text, frame.words[139].colour, frame.words[138].colour),
            std::tuple("0F3C", kRed, kBlue));


  // The extra frame lies past the end of the file and shows zeros.
  for (const PlacedText& word : Display_Raw_Frame(file.session, 3).words) EXPECT_EQ(word.text, "0000");
}

using Cells = std::vector<MarkedCell>;
constexpr CellPart W = CellPart::Whole;
constexpr CellPart L = CellPart::Left;
constexpr CellPart R = CellPart::Right;

TEST(RawMarkCells, ASpanMarksTheWordsOfTheFrameItCovers) {
  // What, the format, Byte_Reverse, the frame, the span and its cells.
  const std::tuple<const char*, FileFormat, bool, int32_t, RawSpan, Cells> cases[] = {
      {"whole words", FileFormat::CSS, true, 1, {23, 26}, {{12, W}, {13, W}}},
      {"odd start and end, reversed", FileFormat::CSS, true, 1, {24, 27}, {{12, L}, {13, W}, {14, R}}},
      {"one first byte, reversed", FileFormat::QM, true, 1, {23, 23}, {{12, R}}},
      {"stops at the frame's end", FileFormat::CSS, true, 1, {279, 300}, {{140, W}, {141, W}}},
      {"goes on in the next frame", FileFormat::CSS, true, 2, {279, 287}, {{1, W}, {2, W}, {3, R}}},
      {"before the frame", FileFormat::CSS, true, 2, {23, 282}, {}},
      {"280-byte frames", FileFormat::GRM, false, 2, {279, 284}, {{1, W}, {2, W}}},
      {"an empty span", FileFormat::CSS, true, 1, {}, {}},
  };
  for (const auto& [what, format, reverse, frame, span, cells] : cases) {
    EXPECT_EQ(binary_frame_cells(format, reverse, frame, span), cells) << what;
  }
}

// The marked half of a word shows exactly the byte the decoders read, in either byte order.
TEST(RawMark, TheMarkedHalfShowsTheByteTheDecodersRead) {
  for (const bool reversed : {true, false}) {
    Packet hk{kHousekeepingId, 1, 89, 0, 1000, {{16, 2}}, {}};
    for (int k = 22; k < 58; ++k) hk.bytes[k] = static_cast<uint8_t>(0xA0 + k);
    LoadedFile file(one_a_frame({hk}, 282, reversed), FileFormat::CSS, reversed);
    const Packet_Entry& entry = file.session.catalogue.HK_List[1];
    const RawFrame frame = Display_Raw_Frame(file.session, 1);
    for (int k = 22; k < 58; ++k) {
      const RawMark mark = packet_byte_mark(FileFormat::CSS, reversed, entry, k);
      const RawMarkCells cells = raw_mark_cells(FileFormat::CSS, reversed, mark, 1);
      ASSERT_EQ(cells.byte.size(), 1u) << k;
      const std::string& text = frame.words[static_cast<size_t>(cells.byte[0].word - 1)].text;
      const TextRun run = cell_part_characters(cells.byte[0].part, static_cast<int>(text.size()));
      EXPECT_EQ(text.substr(static_cast<size_t>(run.first), static_cast<size_t>(run.count)),
                hex2(file.session.telemetry().packet_byte(entry, k, reversed)))
          << "byte " << k << (reversed ? " reversed" : " normal");
    }
  }
}

TEST(ConciseSlotText, EachIdentifierAndSelectorHasItsText) {
  // The identifier, the class word, the sub-type, whether the frames are of 282 bytes, the text.
  const std::tuple<int32_t, int32_t, int32_t, bool, const char*> cases[] = {
      {3892, 0, 1, true, " Concise HK "},         {3892, 0, 2, true, " Complete HK"},
      {3892, 0, 7, true, " Unknown  "},           {3895, 0x0100, 0, true, " Normal Progress Event   "},
      {3895, 0x0200, 0, true, " Warning Anomalous Event "}, {3895, 0x0101, 0, true, " Unknown - progress event"},
      {3889, 0x0100, 0, true, " Acceptance Success      "}, {3889, 0x0200, 0, true, " Acceptance Failure      "},
      {3889, 0x0300, 0, true, " Unknown - acceptance    "}, {3897, 0, 0, true, " Memory Dump "},
      {3900, 0, 1, true, " Auxiliary Data   "},   {3900, 0, 2, true, " GC spectrum      "},
      {3900, 0, 3, true, " Isotope spectrum "},   {3900, 0, 4, true, " Unknown          "},
      {0, 0, 0, true, " Empty "},                 {1234, 0, 0, true, " Unknown "},
      // Class ten is a memory checksum crosswise: an event in 282-byte frames, an acceptance in 280.
      {3895, 0x0A00, 0, true, " NPE - Memory Checksum   "}, {3895, 0x0A00, 0, false, " Unknown - progress event"},
      {3889, 0x0A00, 0, false, " NPE - Memory Checksum   "}, {3889, 0x0A00, 0, true, " Unknown - acceptance    "},
  };
  for (const auto& [identifier, class_word, sub_type, frame_282, text] : cases) {
    EXPECT_EQ(concise_slot_text(identifier, class_word, sub_type, frame_282), text) << identifier;
  }
}

TEST(ConciseFrame, EmptyPacketsDoNotEndTheWalkButTheEighthSlotDoes) {
  std::vector<Packet> packets(9, Packet{testing::kScienceId, 0, 0, 0, 0, {}, {}});  // seven bytes each
  packets[1].identifier = 0;
  packets[7].words = {{14, 0}};
  packets[8].identifier = testing::kMemoryDumpId;  // the ninth is never examined
  FrameWriter writer(282);
  writer.add_frame(packets);
  const ConciseSlots slots = Show_Lander_Packet(LoadedFile(writer).session, 1);
  EXPECT_EQ(std::tie(slots[0], slots[1], slots[2], slots[7]),
            std::tuple(" Unknown          ", " Empty ", " Unknown          ", " Unknown          "));
}

TEST(ConciseFrame, AFrameStartingPastTheEndOfTheFileIsInputPastEnd) {
  FrameWriter writer(280);
  writer.add_frame({});
  writer.add_frame({});
  const LoadedFile file(writer, FileFormat::FM);  // 560 bytes: frame 3 starts at the end
  ASSERT_EQ(file.session.Packet_Count, 3);
  EXPECT_EQ(Show_Lander_Packet(file.session, 2)[0], " Empty ");
  EXPECT_EQ(testing::thrown([&] { Show_Lander_Packet(file.session, 3); }).number, 62);
}

}  // namespace
}  // namespace morvane::testing
