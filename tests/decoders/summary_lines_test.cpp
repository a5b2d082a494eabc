// SPDX-License-Identifier: MIT
#include "decoders/summary_lines.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "test_files.h"

namespace morvane {
namespace {

Packet_Entry entry(LabelCode label, int32_t sequence, int32_t time, int32_t frame, int16_t flags = 0) {
  Packet_Entry e;
  e.Label = label;
  e.Sequence_Count = sequence;
  e.Lander_Time = time;
  e.Packet_Frame = frame;
  e.Segment_Flags = flags;
  return e;
}

TEST(SummaryLines, ColumnsHaveTheirFixedWidths) {
  EXPECT_EQ(hk_list_line(1, entry(LabelCode::Complete, 12, 3456, 7)),
            "1       " " Complete " "        12" "       3456" "        7");
  EXPECT_EQ(science_list_line(10, entry(LabelCode::AuxiliaryData, 123, -1, 99)),
            "10      " " Auxiliary Data   " "      123" "         -1" "       99");
  EXPECT_EQ(information_list_line(3, entry(LabelCode::NormalProgressEvent, 5, 60, 2)),
            "3       " " Normal Progress Event   " "       5" "       60" "        2");
}

TEST(SummaryLines, IsotopeLinesMarkStartAndEnd) {
  const std::pair<int16_t, const char*> cases[] = {{0, ""}, {1, "   End"}, {2, "   Start"}, {3, "   Start   End"}};
  for (const auto& [flags, marks] : cases) {
    const std::string line = science_list_line(1, entry(LabelCode::IsotopeSpectrum, 1, 1, 1, flags));
    EXPECT_EQ(line.substr(8 + 18 + 9 + 11 + 9), marks) << flags;
  }
  // Only isotope packets carry the marks.
  EXPECT_EQ(science_list_line(1, entry(LabelCode::GcSpectrum, 1, 1, 1, 3)).size(), 8u + 18 + 9 + 11 + 9);
}

TEST(SummaryLines, SlotLinesEndTheFrameInTheSameColumn) {
  const std::string slot = information_list_line(4, entry(LabelCode::Empty, -1, -1, 12));
  const std::string event = information_list_line(4, entry(LabelCode::MemoryDump, 1, 1, 12));
  EXPECT_EQ(slot, "4           " "  Empty  " + std::string(36, ' ') + "12");
  EXPECT_EQ(slot.size(), event.size());
  EXPECT_EQ(information_list_line(5, entry(LabelCode::Unknown, -1, -1, 3)).substr(12, 9), " Unknown ");
}

TEST(SummaryCounts, ChecksumReportsDoNotApplyToZebFiles) {
  Session session;
  auto value_of = [&](const std::string& key) {
    for (const auto& c : summary_counts(session)) {
      if (c.key == key) return c.value;
    }
    return std::string("missing");
  };
  EXPECT_EQ(value_of("memory_checksum_count"), "0");
  EXPECT_EQ(value_of("compact_count"), kNotApplicable);
  testing::TempDir dir;
  testing::write_file(dir.path("z"), testing::zeb_text({testing::zeb_record(LabelCode::Concise)}));
  load_telemetry(session, dir.path("z"), FileFormat::ZEB);
  EXPECT_EQ(value_of("memory_checksum_count"), kNotApplicable);
  EXPECT_EQ(value_of("concise_count"), "1");
  EXPECT_EQ(value_of("packet_count"), "1");
}

}  // namespace
}  // namespace morvane
