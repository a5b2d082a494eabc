// SPDX-License-Identifier: MIT
#include "decoders/trend_series.h"
#include "decoders/trend_plot.h"

#include <cmath>

#include "core/conversion.h"
#include "decoder_fixture.h"
#include "decoders/hk_sensors.h"

namespace morvane::testing {
namespace {

class TrendSeriesTest : public DecoderTest {};

TrendSeries series_of(int number, std::vector<std::pair<int32_t, double>> points) {
  return TrendSeries{number, "S" + std::to_string(number), "V", std::move(points)};
}

std::vector<std::tuple<int, double, double>> extents(const std::vector<ColumnExtent>& columns) {
  std::vector<std::tuple<int, double, double>> out;
  for (const auto& c : columns) out.emplace_back(c.column, c.low, c.high);
  return out;
}

TEST_F(TrendSeriesTest, ValuesEqualTheHousekeepingPagesOfTheSamePackets) {
  load({hk_packet(2, sensor_bytes({{1, 40}, {22, 0xF0}, {28, 160}, {33, 211}}), {}, 1, 100),
        hk_packet(1, sensor_bytes({{1, 90}, {22, 0x20}, {28, 140}, {33, 72}}), {}, 2, 108),
        hk_packet(2, sensor_bytes({{1, 0xF0}, {22, 0x7F}, {28, 255}, {33, 210}}), {}, 3, 116)});
  for (const bool cold_junction : {true, false}) {
    const auto series = trend_series(session, {1, 22, 28, 33}, cold_junction);
    ASSERT_EQ(series.size(), 4u);
    for (int32_t k = 1; k <= 3; ++k) {
      const DecodedHousekeeping page = decode_housekeeping(session.config, session.HK_Sensor_Data, k);
      const double term = page.cold_junction_term;
      for (const auto& one : series) {
        const DecodedSensor& decoded = page.sensor(one.number);
        const auto [time, value] = one.points()[static_cast<size_t>(k - 1)];
        EXPECT_EQ(time, session.catalogue.HK_List[k].Lander_Time);
        if (cold_junction || !is_thermocouple(one.number)) {
          EXPECT_DOUBLE_EQ(value, decoded.value) << "sensor " << one.number << " entry " << k;
        } else {
          EXPECT_NE(value, decoded.value) << "the page adds " << term * 100 << " V to a thermocouple";
        }
        EXPECT_EQ(one.unit, decoded.unit);
      }
    }
    // Decimated together, each series gives the columns it gives alone.
    const auto together = decimate_min_max(series, 99, 117, 7);
    for (size_t s = 0; s < series.size(); ++s) {
      EXPECT_EQ(extents(together[s]), extents(decimate_min_max(series[s], 99, 117, 7))) << s;
    }
  }
}

TEST_F(TrendSeriesTest, KeepTheirValuesWhenTheNextFileIsLoaded) {
  // Series read the loaded bytes in place: a new load must not change what they show.
  load({hk_packet(2, sensor_bytes({{1, 40}, {28, 160}}), {}, 1, 100),
        hk_packet(1, sensor_bytes({{1, 90}, {28, 140}}), {}, 2, 108)});
  const auto series = trend_series(session, {1, 28}, true);
  const auto before = std::vector{series[0].points(), series[1].points()};
  load({hk_packet(2, sensor_bytes({{1, 7}, {28, 9}}), {}, 1, 300),
        hk_packet(1, sensor_bytes({{1, 8}, {28, 10}}), {}, 2, 308)});
  EXPECT_EQ((std::vector{series[0].points(), series[1].points()}), before);
  EXPECT_NE(trend_series(session, {1}, true)[0].points(), before[0]);
}

TEST(TrendDecimation, StopsWhenAskedAndOtherwiseGivesTheSameColumns) {
  std::vector<std::pair<int32_t, double>> points;
  for (int32_t t = 0; t < 10000; ++t) points.emplace_back(t, t % 13);
  const std::vector<TrendSeries> series{series_of(1, points)};
  const std::atomic<bool> go{false}, stop{true};
  EXPECT_EQ(extents(decimate_min_max(series, 0, 9999, 50, &go)[0]), extents(decimate_min_max(series, 0, 9999, 50)[0]));
  EXPECT_TRUE(decimate_min_max(series, 0, 9999, 50, &stop)[0].empty());
}

TEST(TrendDecimation, EachColumnKeepsItsLowestAndHighestValue) {
  std::vector<std::pair<int32_t, double>> points;
  for (int32_t t = 0; t < 1000; ++t) points.emplace_back(t, t % 10 == 0 ? -5.0 : static_cast<double>(t % 7));
  const TrendSeries series = series_of(1, points);
  const auto columns = decimate_min_max(series, 0, 999, 10);
  ASSERT_EQ(columns.size(), 10u);
  for (const auto& c : columns) EXPECT_EQ(std::pair(c.low, c.high), std::pair(-5.0, 6.0)) << c.column;
  EXPECT_TRUE(decimate_min_max(series, 2000, 3000, 10).empty());
  EXPECT_EQ(decimate_min_max(series, 0, 9, 3).size(), 3u);
}

TEST(TrendSensorList, AcceptsAllOrNumbersWithinTheTable) {
  EXPECT_EQ(parse_sensor_list("all", 3), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(parse_sensor_list("1,22, 28", 36), (std::vector<int>{1, 22, 28}));
  for (const char* bad : {"", "0", "37", "1.5", "a", "1,,2"}) EXPECT_THROW(parse_sensor_list(bad, 36), RuntimeError) << bad;
}


TEST(TrendTimeWindow, HoldsEveryPointAndIsNeverNarrowerThanTheNarrowestWindow) {
  EXPECT_EQ(whole_time_window({}), (TimeWindow{0, 1}));
  EXPECT_EQ(whole_time_window({series_of(1, {})}), (TimeWindow{0, 1}));
  EXPECT_EQ(whole_time_window({series_of(1, {{120, 1}, {100, 2}, {160, 3}})}), (TimeWindow{100, 160}));
  EXPECT_EQ(whole_time_window({series_of(1, {{100, 1}})}), (TimeWindow{99, 101}));
}

TEST(TrendAxisTicks, FallOnRoundStepsWithTheDecimalsTheStepNeeds) {
  EXPECT_EQ(tick_labels(axis_ticks(0, 10, 6)), (std::vector<std::string>{"0", "2", "4", "6", "8", "10"}));
  EXPECT_EQ(tick_labels(axis_ticks(-0.13, 0.32, 5)),
            (std::vector<std::string>{"-0.1", "0.0", "0.1", "0.2", "0.3"}));

  EXPECT_EQ(tick_labels(axis_ticks(61200000, 61210800, 6)),
            (std::vector<std::string>{"61200000", "61202000", "61204000", "61206000", "61208000", "61210000"}));
  EXPECT_EQ(tick_labels(axis_ticks(0.999, 1.011, 3)), (std::vector<std::string>{"1.000", "1.005", "1.010"}));
  EXPECT_TRUE(axis_ticks(1, 1, 5).empty() && axis_ticks(0, 1, 0).empty() && axis_ticks(0, NAN, 5).empty());
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
}  // namespace morvane::testing
