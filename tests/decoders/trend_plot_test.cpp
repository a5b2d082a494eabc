// SPDX-License-Identifier: MIT
#include "decoders/trend_plot.h"

#include <gtest/gtest.h>

#include <cmath>

namespace morvane {
namespace {

TrendSeries series_of(int number, std::vector<std::pair<int32_t, double>> points) {
  return TrendSeries{number, "S" + std::to_string(number), "V", std::move(points)};
}

std::vector<std::string> labels(const std::vector<AxisTick>& ticks) {
  std::vector<std::string> texts;
  for (const auto& tick : ticks) texts.push_back(tick.label);
  return texts;
}

TEST(TrendTimeWindow, HoldsEveryPointAndIsNeverNarrowerThanTheNarrowestWindow) {
  EXPECT_EQ(whole_time_window({}), (TimeWindow{0, 1}));
  EXPECT_EQ(whole_time_window({series_of(1, {})}), (TimeWindow{0, 1}));
  EXPECT_EQ(whole_time_window({series_of(1, {{120, 1}, {100, 2}, {160, 3}})}), (TimeWindow{100, 160}));
  EXPECT_EQ(whole_time_window({series_of(1, {{100, 1}})}), (TimeWindow{99, 101}));
}

TEST(TrendAxisTicks, FallOnRoundStepsWithTheDecimalsTheStepNeeds) {
  EXPECT_EQ(labels(axis_ticks(0, 10, 6)), (std::vector<std::string>{"0", "2", "4", "6", "8", "10"}));
  EXPECT_EQ(labels(axis_ticks(-0.13, 0.32, 5)), (std::vector<std::string>{"-0.1", "0.0", "0.1", "0.2", "0.3"}));
  EXPECT_EQ(labels(axis_ticks(61200000, 61210800, 6)),
            (std::vector<std::string>{"61200000", "61202000", "61204000", "61206000", "61208000", "61210000"}));
  EXPECT_EQ(labels(axis_ticks(0.999, 1.011, 3)), (std::vector<std::string>{"1.000", "1.005", "1.010"}));
  EXPECT_TRUE(axis_ticks(1, 1, 5).empty());
  EXPECT_TRUE(axis_ticks(0, 1, 0).empty());
  EXPECT_TRUE(axis_ticks(0, NAN, 5).empty());
}

TEST(TrendPlot, SeparateAxesHoldOneSeriesEach) {
  const std::vector<TrendSeries> series{series_of(1, {{0, 10}, {10, 30}}), series_of(2, {{0, -5}, {10, -1}})};
  const TrendPlot separate = make_trend_plot(series, {}, {0, 10}, {true, 10, 5, 5});
  ASSERT_EQ(separate.lanes.size(), 2u);
  EXPECT_EQ(separate.lanes[0].series, (std::vector<size_t>{0}));
  EXPECT_DOUBLE_EQ(separate.lanes[0].low, 9);
  EXPECT_DOUBLE_EQ(separate.lanes[0].high, 31);
  EXPECT_EQ(separate.lanes[1].series, (std::vector<size_t>{1}));
  EXPECT_DOUBLE_EQ(separate.lanes[1].low, -5.2);
  EXPECT_DOUBLE_EQ(separate.lanes[1].high, -0.8);
  EXPECT_FALSE(separate.lanes[1].ticks.empty());
}

}  // namespace
}  // namespace morvane
