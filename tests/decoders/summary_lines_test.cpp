// SPDX-License-Identifier: MIT
#include "decoders/summary_lines.h"
#include "decoders/summary_filter.h"

#include <gtest/gtest.h>

#include "test_files.h"

namespace morvane {
namespace {

Packet_Entry entry(LabelCode label, int32_t sequence, int32_t time, int32_t frame, int16_t flags = 0) {
  return Packet_Entry{frame, 0, 0, sequence, time, flags, label};
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
  EXPECT_EQ(slot, "4           " "  Empty  " + std::string(36, ' ') + "12");
  EXPECT_EQ(slot.size(), information_list_line(4, entry(LabelCode::MemoryDump, 1, 1, 12)).size());
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
  EXPECT_EQ(std::tuple(value_of("memory_checksum_count"), value_of("compact_count")), std::tuple("0", kNotApplicable));
  testing::TempDir dir;
  testing::write_file(dir.path("z"), testing::zeb_text({testing::zeb_record(LabelCode::Concise)}));
  load_telemetry(session, dir.path("z"), FileFormat::ZEB);
  EXPECT_EQ(std::tuple(value_of("memory_checksum_count"), value_of("concise_count"), value_of("packet_count")),
            std::tuple(kNotApplicable, "1", "1"));
}

TEST(SummaryFilter, EveryConditionMustHold) {
  EntryList list;
  for (const auto& e : {entry(LabelCode::Complete, 1, 100, 1), entry(LabelCode::Concise, 2, 108, 1),
                        entry(LabelCode::Complete, 3, 116, 2), entry(LabelCode::Complete, 4, 124, 3),
                        entry(LabelCode::Concise, 5, 132, 4)}) {
    list.push_back(e);
  }
  SummaryFilter filter;
  EXPECT_EQ(std::pair(filter.empty(), filter_entries(list, filter).size()), std::pair(true, size_t{5}));

  filter.labels = {LabelCode::Complete};
  EXPECT_EQ(filter_entries(list, filter), (std::vector<int32_t>{1, 3, 4}));
  filter.sequence = {2, std::nullopt};
  EXPECT_EQ(filter_entries(list, filter), (std::vector<int32_t>{3, 4}));
  filter.lander_time = {std::nullopt, 120};
  EXPECT_EQ(filter_entries(list, filter), (std::vector<int32_t>{3}));
  filter.frame = {3, 3};
  EXPECT_TRUE(filter_entries(list, filter).empty());
  filter = {};
  filter.frame = {1, 1};  // inclusive at both ends
  EXPECT_EQ(filter_entries(list, filter), (std::vector<int32_t>{1, 2}));
}

TEST(SummaryFilter, NextMatchGoesForwardAndRoundToTheFirst) {
  const std::vector<int32_t> matches = {3, 7, 12};
  const struct { int32_t after, next; } cases[] = {{0, 3}, {3, 7}, {5, 7}, {7, 12}, {12, 3}, {40, 3}};
  for (const auto& c : cases) EXPECT_EQ(next_match(matches, c.after), c.next) << c.after;
  EXPECT_EQ(next_match({}, 4), 0);
}

}  // namespace
}  // namespace morvane
