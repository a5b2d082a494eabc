// SPDX-License-Identifier: MIT
// The simulated instrument's day as data: what the timeline plans for the tests and spectra that
// the files are checked against (each test's readings and lost packet are checked where the
// simulated tests are evaluated, tests/functest/simulated_tests_test.cpp).
#include "cycle_timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <variant>

namespace morvane::sim {
namespace {

template <typename T>
std::vector<std::pair<int64_t, T>> all_of(const CycleTimeline& timeline) {
  std::vector<std::pair<int64_t, T>> found;
  for (const TimedHappening& h : timeline.happenings) {
    if (const T* what = std::get_if<T>(&h.what)) found.emplace_back(h.offset, *what);
  }
  return found;
}

TEST(CycleTimeline, RunsInTimeOrderAndNumbersTestsAndSpectraOverTheWholeFile) {
  const CycleTimeline timeline = cycle_timeline(1, 4, 5);
  EXPECT_TRUE(std::is_sorted(timeline.happenings.begin(), timeline.happenings.end(),
                             [](const TimedHappening& a, const TimedHappening& b) { return a.offset < b.offset; }));
  EXPECT_EQ(timeline.test_runs, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(timeline.spectra, 5);
  std::map<int, int> packets_of_run;
  for (const auto& [offset, packet] : all_of<happen::TestPacket>(timeline)) ++packets_of_run[packet.run];
  EXPECT_EQ(packets_of_run, (std::map<int, int>{{4, 8}, {5, 8}, {6, 8}, {7, 8}}));
  for (const auto& [offset, sub_packet] : all_of<happen::IsotopeSubPacket>(timeline)) {
    EXPECT_GE(sub_packet.spectrum, 5);
    EXPECT_LT(sub_packet.spectrum, 10);
  }
}

TEST(CycleTimeline, AnIsotopeSpectrumsSubPacketsFollowItsScanAndHoldEveryBin) {
  const CycleTimeline timeline = cycle_timeline(0, 0, 0);
  const auto scans = all_of<happen::IsotopeScan>(timeline);
  const auto sub_packets = all_of<happen::IsotopeSubPacket>(timeline);
  ASSERT_EQ(scans.size(), 5u);
  for (size_t s = 0; s < scans.size(); ++s) {
    int bins = 0;
    for (const auto& [offset, p] : sub_packets) {
      if (p.spectrum != static_cast<int>(s)) continue;
      EXPECT_EQ(offset, scans[s].first + 4 * p.number);
      bins += std::min(kMaxBins, p.first_bin + p.bins - (p.first_bin + kMaxBins * (p.number - 1)));
    }
    EXPECT_EQ(bins, scans[s].second.bins) << "spectrum " << s;
  }
}

}  // namespace
}  // namespace morvane::sim
