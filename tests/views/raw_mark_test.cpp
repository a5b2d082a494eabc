// SPDX-License-Identifier: MIT
#include "views/raw_mark.h"

#include <gtest/gtest.h>

#include "core/number_text.h"
#include "decoder_fixture.h"
#include "views/raw_frame.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Loaded_File;
using testing::Packet;

using Cells = std::vector<Marked_Cell>;
constexpr Cell_Part W = Cell_Part::Whole;
constexpr Cell_Part L = Cell_Part::Left;
constexpr Cell_Part R = Cell_Part::Right;

TEST(RawMarkCells, ASpanMarksTheWordsOfTheFrameItCovers) {
  const struct {
    const char* what;
    FileFormat format;
    bool byte_reverse;
    int32_t frame;
    Raw_Span span;
    Cells cells;
  } cases[] = {
      {"whole words", FileFormat::CSS, true, 1, {23, 26}, {{12, W}, {13, W}}},
      {"odd start and end, normal order", FileFormat::CSS, false, 1, {24, 27}, {{12, R}, {13, W}, {14, L}}},
      {"odd start and end, reversed", FileFormat::CSS, true, 1, {24, 27}, {{12, L}, {13, W}, {14, R}}},
      {"one first byte, reversed", FileFormat::QM, true, 1, {23, 23}, {{12, R}}},
      {"one second byte, reversed", FileFormat::QM, true, 1, {24, 24}, {{12, L}}},
      {"stops at the frame's end", FileFormat::CSS, true, 1, {279, 300}, {{140, W}, {141, W}}},
      {"goes on in the next frame", FileFormat::CSS, true, 2, {279, 287}, {{1, W}, {2, W}, {3, R}}},
      {"before the frame", FileFormat::CSS, true, 2, {23, 282}, {}},
      {"after the frame", FileFormat::CSS, true, 1, {283, 290}, {}},
      {"280-byte frames", FileFormat::GRM, false, 2, {279, 284}, {{1, W}, {2, W}}},
      {"the last word of a 280-byte frame", FileFormat::FM, false, 1, {279, 280}, {{140, W}}},
      {"an empty span", FileFormat::CSS, true, 1, {}, {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(binary_frame_cells(c.format, c.byte_reverse, c.frame, c.span), c.cells) << c.what;
  }
}

TEST(RawMarkCells, APartIsHalfTheWordText) {
  EXPECT_EQ(cell_part_characters(Cell_Part::Left, 4).first, 0);
  EXPECT_EQ(cell_part_characters(Cell_Part::Left, 4).count, 2);
  EXPECT_EQ(cell_part_characters(Cell_Part::Right, 4).first, 2);
  EXPECT_EQ(cell_part_characters(Cell_Part::Right, 4).count, 2);
  EXPECT_EQ(cell_part_characters(Cell_Part::Whole, 5).count, 5);
}

TEST(RawMark, APacketMarksItsBytesAndASlotItsIdentifier) {
  Packet_Entry packet;
  packet.Packet_Frame = 3;
  packet.Packet_Position = 2 * 282 + 81;
  packet.Packet_Length = 58;
  EXPECT_EQ(packet_mark(FileFormat::QM, packet), (Raw_Mark{3, {645, 702}, {}}));
  Packet_Entry slot = packet;
  slot.Packet_Length = -1;
  EXPECT_EQ(packet_mark(FileFormat::QM, slot).packet, (Raw_Span{645, 646}));
  // A ZEB record is the packet: its items from the identifier on.
  EXPECT_EQ(packet_mark(FileFormat::ZEB, packet), (Raw_Mark{3, {5, 136}, {}}));
  EXPECT_EQ(packet_byte_mark(FileFormat::ZEB, true, packet, 24).byte, (Raw_Span{21, 21}));
  EXPECT_EQ(packet_byte_mark(FileFormat::ZEB, false, packet, 25).byte, (Raw_Span{21, 21}));
  EXPECT_TRUE(packet_byte_mark(FileFormat::ZEB, true, packet, 256).byte.empty());
}

// The marked half of a word shows exactly the byte the decoders read, in either byte order.
TEST(RawMark, TheMarkedHalfShowsTheByteTheDecodersRead) {
  for (const bool reversed : {true, false}) {
    FrameWriter writer(282, reversed);
    Packet hk{0x0F34, 1, 89, 0, 1000, {{16, 2}}, {}};
    for (int k = 22; k < 58; ++k) hk.bytes[k] = static_cast<uint8_t>(0xA0 + k);
    writer.add_frame({hk});
    Loaded_File file(writer, FileFormat::CSS, reversed);
    const Packet_Entry& entry = file.session.catalogue.HK_List[1];
    const Raw_Frame frame = Display_Raw_Frame(file.session, 1);
    for (int k = 22; k < 58; ++k) {
      const Raw_Mark mark = packet_byte_mark(FileFormat::CSS, reversed, entry, k);
      const Raw_Mark_Cells cells = raw_mark_cells(FileFormat::CSS, reversed, mark, 1);
      ASSERT_EQ(cells.byte.size(), 1u) << k;
      const std::string& text = frame.words[static_cast<size_t>(cells.byte[0].word - 1)].text;
      const Text_Run run = cell_part_characters(cells.byte[0].part, static_cast<int>(text.size()));
      EXPECT_EQ(text.substr(static_cast<size_t>(run.first), static_cast<size_t>(run.count)),
                hex2(file.session.telemetry().packet_byte(entry, k, reversed)))
          << "byte " << k << (reversed ? " reversed" : " normal");
    }
  }
}

TEST(RawMark, APacketRunningPastItsFrameIsMarkedInBoth) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F39, 1, 293, 0, 1000, {}, {}}});  // 300 bytes from byte 22
  writer.add_frame({});
  Loaded_File file(writer);
  const Raw_Mark mark = packet_mark(FileFormat::CSS, file.session.catalogue.Information_List[1]);
  EXPECT_EQ(mark.frame, 1);
  const Raw_Mark_Cells first = raw_mark_cells(FileFormat::CSS, true, mark, 1);
  ASSERT_EQ(first.packet.size(), 130u);  // words 12..141
  EXPECT_EQ(first.packet.front(), (Marked_Cell{12, W}));
  EXPECT_TRUE(first.byte.empty());
  const Raw_Mark_Cells second = raw_mark_cells(FileFormat::CSS, true, mark, 2);
  ASSERT_EQ(second.packet.size(), 20u);  // bytes 0..39 of frame 2
  EXPECT_EQ(second.packet.back(), (Marked_Cell{20, W}));
  EXPECT_TRUE(raw_mark_cells(FileFormat::CSS, true, mark, 3).packet.empty());
}

TEST(RawMark, AZebMarkCoversItsRecordOnly) {
  Packet_Entry record;
  record.Packet_Frame = 2;
  const Raw_Mark mark = packet_byte_mark(FileFormat::ZEB, true, record, 30);
  const Raw_Mark_Cells cells = raw_mark_cells(FileFormat::ZEB, true, mark, 2);
  ASSERT_EQ(cells.packet.size(), 132u);
  EXPECT_EQ(cells.packet.front(), (Marked_Cell{5, W}));
  EXPECT_EQ(cells.packet.back(), (Marked_Cell{136, W}));
  EXPECT_EQ(cells.byte, (Cells{{24, W}}));
  EXPECT_TRUE(raw_mark_cells(FileFormat::ZEB, true, mark, 1).packet.empty());
}

}  // namespace
}  // namespace morvane
