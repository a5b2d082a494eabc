// SPDX-License-Identifier: MIT
#include "decoders/trend_series.h"

#include <gtest/gtest.h>

#include "core/conversion.h"
#include "core/error.h"
#include "decoder_fixture.h"
#include "decoders/hk_sensors.h"

namespace morvane::testing {
namespace {

class TrendSeriesTest : public DecoderTest {};

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
      const auto alone = decimate_min_max(series[s], 99, 117, 7);
      ASSERT_EQ(together[s].size(), alone.size());
      for (size_t c = 0; c < alone.size(); ++c) {
        EXPECT_EQ(together[s][c].column, alone[c].column);
        EXPECT_EQ(together[s][c].low, alone[c].low);
        EXPECT_EQ(together[s][c].high, alone[c].high);
      }
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
  EXPECT_EQ(series[0].points(), before[0]);
  EXPECT_EQ(series[1].points(), before[1]);
  EXPECT_NE(trend_series(session, {1}, true)[0].points(), before[0]);
}

TEST(TrendDecimation, StopsWhenAskedAndOtherwiseGivesTheSameColumns) {
  std::vector<std::pair<int32_t, double>> points;
  for (int32_t t = 0; t < 10000; ++t) points.emplace_back(t, t % 13);
  const std::vector<TrendSeries> series{TrendSeries{1, "S", "V", points}};
  const std::atomic<bool> go{false}, stop{true};
  const auto plain = decimate_min_max(series, 0, 9999, 50);
  const auto watched = decimate_min_max(series, 0, 9999, 50, &go);
  ASSERT_EQ(watched[0].size(), plain[0].size());
  for (size_t c = 0; c < plain[0].size(); ++c) EXPECT_EQ(watched[0][c].high, plain[0][c].high);
  EXPECT_TRUE(decimate_min_max(series, 0, 9999, 50, &stop)[0].empty());
}

TEST(TrendDecimation, EachColumnKeepsItsLowestAndHighestValue) {
  std::vector<std::pair<int32_t, double>> points;
  for (int32_t t = 0; t < 1000; ++t) points.emplace_back(t, t % 10 == 0 ? -5.0 : static_cast<double>(t % 7));
  const auto columns = decimate_min_max(TrendSeries{1, "S", "V", points}, 0, 999, 10);
  ASSERT_EQ(columns.size(), 10u);
  for (const auto& c : columns) {
    EXPECT_EQ(c.low, -5.0);
    EXPECT_EQ(c.high, 6.0);
  }
  EXPECT_TRUE(decimate_min_max(TrendSeries{1, "S", "V", points}, 2000, 3000, 10).empty());
  EXPECT_EQ(decimate_min_max(TrendSeries{1, "S", "V", points}, 0, 9, 3).size(), 3u);
}

TEST(TrendSensorList, AcceptsAllOrNumbersWithinTheTable) {
  EXPECT_EQ(parse_sensor_list("all", 3), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(parse_sensor_list("1,22, 28", 36), (std::vector<int>{1, 22, 28}));
  for (const char* bad : {"", "0", "37", "1.5", "a", "1,,2"}) EXPECT_THROW(parse_sensor_list(bad, 36), RuntimeError) << bad;
}

}  // namespace
}  // namespace morvane::testing
