// SPDX-License-Identifier: MIT
#include "views/summary_filter.h"

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
  Summary_Filter filter;
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

TEST(SummaryFilter, OffersTheLabelsOfTheList) {
  const EntryList list = list_of({{LabelCode::Empty, -1, -1, 1}, {LabelCode::MemoryDump, 1, 1, 1},
                                  {LabelCode::Empty, -1, -1, 2}});
  EXPECT_EQ(labels_in(list), (std::vector<LabelCode>{LabelCode::MemoryDump, LabelCode::Empty}));
}

TEST(SummaryFilter, ASlicedPassFindsWhatTheWholePassFinds) {
  EntryList list;
  for (int32_t i = 1; i <= 1000; ++i) {
    Packet_Entry e;
    e.Label = i % 3 == 0 ? LabelCode::Complete : LabelCode::Concise;
    e.Sequence_Count = i % 16384;
    e.Lander_Time = 10 * i;
    e.Packet_Frame = (i + 3) / 4;
    list.push_back(e);
  }
  Summary_Filter filter;
  filter.labels = {LabelCode::Complete};
  filter.lander_time = {2000, 8000};
  std::vector<int32_t> sliced;
  for (int32_t first = 1; first <= list.size(); first += 97) filter_entries(list, filter, first, first + 96, sliced);
  EXPECT_EQ(sliced, filter_entries(list, filter));
  EXPECT_EQ(sliced.front(), 201);
  EXPECT_EQ(sliced.back(), 798);
  // Slices reaching outside the list add nothing beyond it.
  std::vector<int32_t> outside;
  filter_entries(list, filter, -5, 5000, outside);
  EXPECT_EQ(outside, sliced);
  outside.clear();
  filter_entries(list, filter, 900, 899, outside);
  EXPECT_TRUE(outside.empty());
}

TEST(SummaryFilter, NextMatchGoesForwardAndRoundToTheFirst) {
  const std::vector<int32_t> matches = {3, 7, 12};
  const struct { int32_t after, next; } cases[] = {{0, 3}, {3, 7}, {5, 7}, {7, 12}, {12, 3}, {40, 3}};
  for (const auto& c : cases) EXPECT_EQ(next_match(matches, c.after), c.next) << c.after;
  EXPECT_EQ(next_match({}, 4), 0);
}

}  // namespace
}  // namespace morvane
