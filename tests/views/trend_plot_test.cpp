// SPDX-License-Identifier: MIT
#include "views/trend_plot.h"

#include <gtest/gtest.h>

#include <cmath>

namespace morvane {
namespace {

Trend_Series series_of(int number, std::vector<std::pair<int32_t, double>> points) {
  return Trend_Series{number, "S" + std::to_string(number), "V", std::move(points)};
}

std::vector<std::string> labels(const std::vector<Axis_Tick>& ticks) {
  std::vector<std::string> texts;
  for (const auto& tick : ticks) texts.push_back(tick.label);
  return texts;
}

TEST(TrendTimeWindow, HoldsEveryPointAndIsNeverNarrowerThanTheNarrowestWindow) {
  EXPECT_EQ(whole_time_window({}), (Time_Window{0, 1}));
  EXPECT_EQ(whole_time_window({series_of(1, {})}), (Time_Window{0, 1}));
  EXPECT_EQ(whole_time_window({series_of(1, {{120, 1}, {100, 2}, {160, 3}})}), (Time_Window{100, 160}));
  EXPECT_EQ(whole_time_window({series_of(1, {{100, 1}})}), (Time_Window{99, 101}));
}

TEST(TrendTimeWindow, ZoomKeepsTheTimeUnderTheCursorInPlace) {
  const Time_Window window{100, 200};
  const Time_Window in = zoom_time_window(window, 125, 0.5);
  EXPECT_DOUBLE_EQ(in.from, 112.5);
  EXPECT_DOUBLE_EQ(in.to, 162.5);
  EXPECT_DOUBLE_EQ((125 - in.from) / in.span(), (125 - window.from) / window.span());
  const Time_Window out = zoom_time_window(in, 125, 2);
  EXPECT_DOUBLE_EQ(out.from, 100);
  EXPECT_DOUBLE_EQ(out.to, 200);
  EXPECT_DOUBLE_EQ(zoom_time_window(window, 150, 1e-9).span(), kNarrowestTimeWindow);
}

TEST(TrendAxisTicks, FallOnRoundStepsWithTheDecimalsTheStepNeeds) {
  EXPECT_EQ(labels(axis_ticks(0, 10, 6)), (std::vector<std::string>{"0", "2", "4", "6", "8", "10"}));
  EXPECT_EQ(labels(axis_ticks(-0.13, 0.32, 5)), (std::vector<std::string>{"-0.1", "0.0", "0.1", "0.2", "0.3"}));
  EXPECT_EQ(labels(axis_ticks(61200000, 61210800, 6)),
            (std::vector<std::string>{"61200000", "61202000", "61204000", "61206000", "61208000", "61210000"}));
  EXPECT_EQ(labels(axis_ticks(0.999, 1.011, 3)), (std::vector<std::string>{"1.000", "1.005", "1.010"}));
  for (const auto& [low, high, most] : {std::tuple{0.0, 1.0, 7}, {-3e-5, 7e-4, 4}, {12.0, 13.0, 1}, {-1e9, 1e9, 9}}) {
    const auto ticks = axis_ticks(low, high, most);
    EXPECT_GE(ticks.size(), 1u) << low << ".." << high;
    EXPECT_LE(ticks.size(), static_cast<size_t>(most)) << low << ".." << high;
    for (const auto& tick : ticks) {
      EXPECT_GE(tick.value, low);
      EXPECT_LE(tick.value, high);
    }
  }
  EXPECT_TRUE(axis_ticks(1, 1, 5).empty());
  EXPECT_TRUE(axis_ticks(0, 1, 0).empty());
  EXPECT_TRUE(axis_ticks(0, NAN, 5).empty());
}

TEST(TrendPlot, DecimatesEverySeriesOverTheWindowIntoItsColumns) {
  std::vector<std::pair<int32_t, double>> a, b;
  for (int32_t t = 0; t < 1000; ++t) {
    a.emplace_back(t, std::sin(t / 30.0));
    b.emplace_back(t, t * 2.0);
  }
  const std::vector<Trend_Series> series{series_of(1, a), series_of(2, b)};
  const Time_Window window{200, 400};
  const Trend_Plot plot = make_trend_plot(series, {}, window, {false, 50, 5, 4});
  EXPECT_EQ(plot.window, window);
  EXPECT_EQ(plot.columns, 50);
  ASSERT_EQ(plot.traces.size(), 2u);
  for (size_t s = 0; s < 2; ++s) {
    const auto expected = decimate_min_max(series[s].points, 200, 400, 50);
    ASSERT_EQ(plot.traces[s].size(), expected.size());
    for (size_t c = 0; c < expected.size(); ++c) {
      EXPECT_EQ(plot.traces[s][c].column, expected[c].column);
      EXPECT_EQ(plot.traces[s][c].low, expected[c].low);
      EXPECT_EQ(plot.traces[s][c].high, expected[c].high);
    }
  }
  EXPECT_EQ(labels(plot.time_ticks), (std::vector<std::string>{"200", "250", "300", "350", "400"}));
}

TEST(TrendPlot, SharedAxesHoldEverySeriesAndSeparateAxesOneEach) {
  const std::vector<Trend_Series> series{series_of(1, {{0, 10}, {10, 30}}), series_of(2, {{0, -5}, {10, -1}})};
  const Trend_Plot shared = make_trend_plot(series, {}, {0, 10}, {false, 10, 5, 5});
  ASSERT_EQ(shared.lanes.size(), 1u);
  EXPECT_EQ(shared.lanes[0].series, (std::vector<size_t>{0, 1}));
  EXPECT_DOUBLE_EQ(shared.lanes[0].low, -5 - 1.75);  // a twentieth of 35 spare
  EXPECT_DOUBLE_EQ(shared.lanes[0].high, 30 + 1.75);

  const Trend_Plot separate = make_trend_plot(series, {}, {0, 10}, {true, 10, 5, 5});
  ASSERT_EQ(separate.lanes.size(), 2u);
  EXPECT_EQ(separate.lanes[0].series, (std::vector<size_t>{0}));
  EXPECT_DOUBLE_EQ(separate.lanes[0].low, 9);
  EXPECT_DOUBLE_EQ(separate.lanes[0].high, 31);
  EXPECT_EQ(separate.lanes[1].series, (std::vector<size_t>{1}));
  EXPECT_DOUBLE_EQ(separate.lanes[1].low, -5.2);
  EXPECT_DOUBLE_EQ(separate.lanes[1].high, -0.8);
  EXPECT_FALSE(separate.lanes[1].ticks.empty());
}

TEST(TrendPlot, ALaneMakesRoomForItsLimitsAndKeepsItsRangeWhenNothingIsInView) {
  const std::vector<Trend_Series> series{series_of(1, {{0, 10}, {10, 12}}), series_of(2, {{0, 5}, {10, 5}})};
  const Trend_Plot limited = make_trend_plot(series, {Trend_Limits{0, 20}}, {0, 10}, {true, 10, 5, 5});
  EXPECT_DOUBLE_EQ(limited.lanes[0].low, -1);
  EXPECT_DOUBLE_EQ(limited.lanes[0].high, 21);
  EXPECT_DOUBLE_EQ(limited.lanes[1].low, 4);  // one value: a unit each way
  EXPECT_DOUBLE_EQ(limited.lanes[1].high, 6);

  const Trend_Plot elsewhere = make_trend_plot(series, {}, {100, 200}, {true, 10, 5, 5});
  EXPECT_TRUE(elsewhere.traces[0].empty());
  EXPECT_DOUBLE_EQ(elsewhere.lanes[0].low, 9.9);
  EXPECT_DOUBLE_EQ(elsewhere.lanes[0].high, 12.1);

  const Trend_Plot empty = make_trend_plot({series_of(3, {{0, NAN}})}, {}, {0, 1}, {false, 10, 5, 5});
  EXPECT_DOUBLE_EQ(empty.lanes[0].low, 0);
  EXPECT_DOUBLE_EQ(empty.lanes[0].high, 1);
  EXPECT_EQ(make_trend_plot({}, {}, {0, 1}, {true, 10, 5, 5}).lanes.size(), 1u);
}

}  // namespace
}  // namespace morvane
