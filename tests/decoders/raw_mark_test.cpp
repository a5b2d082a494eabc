// SPDX-License-Identifier: MIT
#include "decoders/raw_mark.h"

#include <gtest/gtest.h>

#include "core/number_text.h"
#include "decoder_fixture.h"
#include "decoders/raw_frame.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::LoadedFile;
using testing::Packet;

using Cells = std::vector<MarkedCell>;
constexpr CellPart W = CellPart::Whole;
constexpr CellPart L = CellPart::Left;
constexpr CellPart R = CellPart::Right;

TEST(RawMarkCells, ASpanMarksTheWordsOfTheFrameItCovers) {
  const struct {
    const char* what;
    FileFormat format;
    bool byte_reverse;
    int32_t frame;
    RawSpan span;
    Cells cells;
  } cases[] = {
      {"whole words", FileFormat::CSS, true, 1, {23, 26}, {{12, W}, {13, W}}},
      {"odd start and end, reversed", FileFormat::CSS, true, 1, {24, 27}, {{12, L}, {13, W}, {14, R}}},
      {"one first byte, reversed", FileFormat::QM, true, 1, {23, 23}, {{12, R}}},
      {"stops at the frame's end", FileFormat::CSS, true, 1, {279, 300}, {{140, W}, {141, W}}},
      {"goes on in the next frame", FileFormat::CSS, true, 2, {279, 287}, {{1, W}, {2, W}, {3, R}}},
      {"before the frame", FileFormat::CSS, true, 2, {23, 282}, {}},
      {"280-byte frames", FileFormat::GRM, false, 2, {279, 284}, {{1, W}, {2, W}}},
      {"an empty span", FileFormat::CSS, true, 1, {}, {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(binary_frame_cells(c.format, c.byte_reverse, c.frame, c.span), c.cells) << c.what;
  }
}

// The marked half of a word shows exactly the byte the decoders read, in either byte order.
TEST(RawMark, TheMarkedHalfShowsTheByteTheDecodersRead) {
  for (const bool reversed : {true, false}) {
    FrameWriter writer(282, reversed);
    Packet hk{testing::kHousekeepingId, 1, 89, 0, 1000, {{16, 2}}, {}};
    for (int k = 22; k < 58; ++k) hk.bytes[k] = static_cast<uint8_t>(0xA0 + k);
    writer.add_frame({hk});
    LoadedFile file(writer, FileFormat::CSS, reversed);
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

}  // namespace
}  // namespace morvane
