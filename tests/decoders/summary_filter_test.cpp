// SPDX-License-Identifier: MIT
#include "decoders/summary_filter.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

EntryList list_of(const std::vector<std::tuple<LabelCode, int32_t, int32_t, int32_t>>& entries) {
  EntryList list;
  for (const auto& [label, sequence, time, frame] : entries) {
    Packet_Entry e;
    e.Label = label;
    e.Sequence_Count = sequence;
    e.Lander_Time = time;
    e.Packet_Frame = frame;
    list.push_back(e);
  }
  return list;
}

TEST(SummaryFilter, EveryConditionMustHold) {
  const EntryList list = list_of({{LabelCode::Complete, 1, 100, 1},
                                  {LabelCode::Concise, 2, 108, 1},
                                  {LabelCode::Complete, 3, 116, 2},
                                  {LabelCode::Complete, 4, 124, 3},
                                  {LabelCode::Concise, 5, 132, 4}});
  SummaryFilter filter;
  EXPECT_TRUE(filter.empty());
  EXPECT_EQ(filter_entries(list, filter).size(), 5u);
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
