// SPDX-License-Identifier: MIT
#include "views/trend_series.h"

#include <algorithm>
#include <cmath>

#include "core/error.h"
#include "core/free_format_reader.h"
#include "views/hk_sensors.h"

namespace morvane {

std::vector<Trend_Series> trend_series(const Session& session, const std::vector<int>& sensors, bool cold_junction) {
  std::vector<Trend_Series> series;
  for (int number : sensors) {
    const Sensor_Record& record = session.config.sensor(number);
    series.push_back(Trend_Series{number, record.Sensor_Name, record.Sensor_Unit, {}});
  }
  extend_trend_series(session, series, cold_junction);
  return series;
}

void extend_trend_series(const Session& session, std::vector<Trend_Series>& series, bool cold_junction) {
  if (series.empty()) return;
  const EntryList& list = session.catalogue.HK_List;
  const int32_t first = static_cast<int32_t>(series.front().points.size()) + 1;
  for (auto& one : series) one.points.reserve(static_cast<size_t>(list.size()));
  for (int32_t k = first; k <= list.size(); ++k) {
    const double term = cold_junction ? hk_entry_cold_junction_term(session.config, session.HK_Sensor_Data, k) : 0;
    for (auto& one : series) {
      const Sensor_Value value = hk_sensor_value(session.config, session.HK_Sensor_Data, k, one.number, term);
      one.unit = value.unit;
      one.points.emplace_back(list[k].Lander_Time, value.value);
    }
  }
}

std::vector<Column_Extent> decimate_min_max(const std::vector<std::pair<int32_t, double>>& points, double time_from,
                                            double time_to, int columns) {
  std::vector<Column_Extent> extents;
  if (columns <= 0 || !(time_to > time_from)) return extents;
  const double width = (time_to - time_from) / columns;
  std::vector<Column_Extent> by_column(static_cast<size_t>(columns), Column_Extent{0, INFINITY, -INFINITY});
  for (const auto& [time, value] : points) {
    if (time < time_from || time > time_to || !std::isfinite(value)) continue;
    const int column = std::min(columns - 1, static_cast<int>((time - time_from) / width));
    Column_Extent& extent = by_column[static_cast<size_t>(column)];
    extent.low = std::min(extent.low, value);
    extent.high = std::max(extent.high, value);
  }
  for (int c = 0; c < columns; ++c) {
    const Column_Extent& extent = by_column[static_cast<size_t>(c)];
    if (extent.low <= extent.high) extents.push_back(Column_Extent{c, extent.low, extent.high});
  }
  return extents;
}

std::vector<int> parse_sensor_list(const std::string& text, int sensor_count) {
  std::vector<int> sensors;
  if (text == "all") {
    for (int s = 1; s <= sensor_count; ++s) sensors.push_back(s);
    return sensors;
  }
  size_t start = 0;
  while (start <= text.size()) {
    const size_t comma = std::min(text.find(',', start), text.size());
    const std::string item = text.substr(start, comma - start);
    double number = 0;
    if (!parse_number(item, number) || number != std::floor(number) || number < 1 || number > sensor_count) {
      raise(ErrorNumber::SubscriptOutOfRange, "\"" + item + "\" is not a sensor number from 1 to " +
                                                  std::to_string(sensor_count));
    }
    sensors.push_back(static_cast<int>(number));
    start = comma + 1;
  }
  return sensors;
}

}  // namespace morvane
