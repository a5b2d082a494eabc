// SPDX-License-Identifier: MIT
#include "functest/short_message_load.h"

#include <gtest/gtest.h>

#include <functional>

#include "short_test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

using testing::Packet;
using testing::TestDesign;
using testing::thrown;

TEST(ShortTestLine, ColumnsAreSixNineAndFifteenWideAndAWiderNumberIsError5) {
  EXPECT_EQ(short_test_line(3, 1234, 56789012), "3     Short form test     1234       56789012");
  EXPECT_EQ(short_test_line(123456, 123456789, -2147483647), "123456Short form test123456789    -2147483647");
  EXPECT_EQ(thrown([] { short_test_line(1234567, 1, 1); }).number, 5);
  EXPECT_EQ(thrown([] { short_test_line(1, 1234567890, 1); }).number, 5);
}

TEST(ShortTestLabels, SayHowManyTestsWereFound) {
  const std::tuple<int, const char*, const char*> cases[] = {
      {0, "There were no Short form tests collected during this session", "Press 'cancel' to exit"},
      {1, "There was 1 Short form test collected during this session",
       "Double click on test to view or Press 'cancel' to exit"},
      {12, "There were 12 Short form tests collected during this session",
       "Double click on test to view or Press 'cancel' to exit"},
  };
  for (const auto& [count, label1, label2] : cases) {
    EXPECT_EQ(short_test_count_label(count), label1);
    EXPECT_EQ(short_test_hint_label(count), label2);
  }
}

class ShortTestListTest : public testing::CraftedPacketsTest {
 protected:
  Session load(const std::vector<Packet>& packets) { return CraftedPacketsTest::load(packets, FileFormat::QM); }
};

// A start needs its five words, and no packet but the test's within the eight sequence counts.
TEST_F(ShortTestListTest, WhatMakesAStart) {
  TestDesign later;
  later.start_sequence = 103;
  const std::pair<std::function<void(std::vector<Packet>&)>, std::vector<int32_t>> cases[] = {
      {[](auto& p) { p[0].words[18] = 28; }, {}},  // each of the five words must match
      {[](auto& p) { p[0].words[24] = 24; }, {}},
      {[](auto& p) { p[0].words[80] = 65; }, {}},
      {[](auto& p) { p[0].words[232] = 1; }, {}},
      {[](auto& p) { p[0].words[248] = 136; }, {}},
      // A packet of another kind at sequence count s + 7 spoils the test; at s + 8 it ends the look-ahead.
      {[](auto& p) { p.insert(p.begin() + 3, testing::gc_science_packet(107, 5100)); }, {}},
      {[](auto& p) {
         p.insert(p.begin() + 3, testing::gc_science_packet(108, 5100));
         p.insert(p.begin() + 4, testing::gc_science_packet(103, 5100));  // never looked at
       },
       {1}},
      {[](auto& p) { p = {testing::gc_science_packet(1, 1), p[0]}; }, {2}},  // near the end of the list
      {[&](auto& p) { p.insert(p.begin() + 3, testing::test_packet(later, 1)); }, {1, 4}},  // overlapping starts
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    std::vector<Packet> packets;
    for (int n = 1; n <= 8; ++n) packets.push_back(testing::test_packet(TestDesign{}, n));
    cases[i].first(packets);
    EXPECT_EQ(find_short_tests(load(packets), TestMode::CruisePhase).Test_Index, cases[i].second) << "case " << i;
  }
}

}  // namespace
}  // namespace morvane
