// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "decoders/trend_series.h"

namespace morvane {

// The lander-time range a trend plot shows, in seconds.
struct TimeWindow {
  double from = 0;
  double to = 1;
  double span() const { return to - from; }
  bool operator==(const TimeWindow&) const = default;
};

// The narrowest window a zoom reaches: housekeeping comes every few seconds, so a closer look
// shows nothing more.
inline constexpr double kNarrowestTimeWindow = 2;

// The window that holds every point of the series: their earliest to their latest lander time,
// widened about its middle to kNarrowestTimeWindow when narrower; 0..1 when there are no points.
TimeWindow whole_time_window(const std::vector<TrendSeries>& series);

// The window scaled by factor about a time (factor < 1 zooms in), the time staying where it is
// on the axis; never narrower than kNarrowestTimeWindow.
TimeWindow zoom_time_window(const TimeWindow& window, double about, double factor);

// A mark on an axis and its text.
struct AxisTick {
  double value = 0;
  std::string label;
  bool operator==(const AxisTick&) const = default;
};

// Ticks at the multiples of a round step (1, 2 or 5 times a power of ten) between low and high,
// the smallest such step that gives at most `most` of them; each labelled with the decimals
// the step needs ("0.25" steps of 0.05 read "0.25", "0.30"). None when low >= high or most < 1.
std::vector<AxisTick> axis_ticks(double low, double high, int most);

// The limits a sensor's values are held to, drawn across its lane.
struct TrendLimits {
  double low = 0;
  double high = 0;
  bool operator==(const TrendLimits&) const = default;
};

// One band of the plot with its own value axis: a single series on separate axes, all of them
// on a shared one.
struct TrendLane {
  std::vector<size_t> series;  // the series drawn in it, by their index
  double low = 0;              // the values at the bottom and the top of the lane
  double high = 1;
  std::vector<AxisTick> ticks;
};

// What a trend plot draws, in plain numbers: each series decimated to the lowest and highest
// value of every pixel column, the lanes with their ranges, and the ticks of both axes.
struct TrendPlot {
  TimeWindow window;
  int columns = 0;
  std::vector<AxisTick> time_ticks;
  std::vector<TrendLane> lanes;
  std::vector<std::vector<ColumnExtent>> traces;  // of each series, in series order
};

// How a plot is laid out.
struct TrendPlotOptions {
  bool separate_axes = false;  // a lane per series, or one lane for all of them
  int columns = 1;             // pixel columns across the window
  int most_time_ticks = 8;
  int most_value_ticks = 6;  // per lane
  // Set by another thread to stop a plot being made: the plot then returned is incomplete.
  const std::atomic<bool>* stop = nullptr;
};

// The plot of the series over the window. limits[i], when there is one, belongs to series i (a
// shorter vector gives the others none). Each lane's range holds its series' values within the
// window and their limits, with a twentieth of it spare above and below; a lane with nothing
// in view keeps the range of its series over the whole file, and one without points at all is
// 0..1. A range of one value is widened by one unit each way.
TrendPlot make_trend_plot(const std::vector<TrendSeries>& series,
                           const std::vector<std::optional<TrendLimits>>& limits, const TimeWindow& window,
                           const TrendPlotOptions& options);

}  // namespace morvane
