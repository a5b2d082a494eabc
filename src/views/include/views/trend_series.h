// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/session.h"

namespace morvane {

// One sensor over every housekeeping packet of the file: (lander time, value) in catalogue order,
// each value as the housekeeping page computes it for that packet.
struct Trend_Series {
  int number = 0;
  std::string name;
  std::string unit;
  std::vector<std::pair<int32_t, double>> points;
};

// The series of each sensor (numbers of the sensor table; outside it is "Subscript out of
// range"), with or without the cold-junction term on the thermocouple channels.
std::vector<Trend_Series> trend_series(const Session& session, const std::vector<int>& sensors, bool cold_junction);

// Appends the points of housekeeping entries past those the series hold (live follow).
void extend_trend_series(const Session& session, std::vector<Trend_Series>& series, bool cold_junction);

// What one pixel column of a plot shows: the lowest and highest value of the points whose time
// falls in it. A million points draw as a few thousand line segments.
struct Column_Extent {
  int column = 0;
  double low = 0;
  double high = 0;
};
// The columns of [time_from, time_to] (columns > 0) that hold points, in column order.
std::vector<Column_Extent> decimate_min_max(const std::vector<std::pair<int32_t, double>>& points, double time_from,
                                            double time_to, int columns);

// Parses a sensor list as users type it: "all", or numbers separated by commas ("1,22,28").
// Anything else is a RuntimeError saying what was wrong.
std::vector<int> parse_sensor_list(const std::string& text, int sensor_count);

}  // namespace morvane
