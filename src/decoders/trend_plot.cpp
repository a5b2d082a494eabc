// SPDX-License-Identifier: MIT
#include "decoders/trend_plot.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/number_text.h"

namespace morvane {

namespace {

// The lowest and highest of some values, empty until one is added.
struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();
  void add(double value) {
    if (!std::isfinite(value)) return;
    low = std::min(low, value);
    high = std::max(high, value);
  }
  bool empty() const { return low > high; }
};

Extent values_in_view(const std::vector<std::vector<ColumnExtent>>& traces, const std::vector<size_t>& lane) {
  Extent extent;
  for (const size_t s : lane) {
    for (const ColumnExtent& column : traces[s]) {
      extent.add(column.low);
      extent.add(column.high);
    }
  }
  return extent;
}

Extent values_in_file(const std::vector<TrendSeries>& series, const std::vector<size_t>& lane) {
  Extent extent;
  for (const size_t s : lane) {
    extent.add(series[s].lowest_value());
    extent.add(series[s].highest_value());
  }
  return extent;
}

TrendLane make_lane(std::vector<size_t> members, const std::vector<TrendSeries>& series,
                     const std::vector<std::optional<TrendLimits>>& limits,
                     const std::vector<std::vector<ColumnExtent>>& traces, int most_ticks) {
  Extent extent = values_in_view(traces, members);
  if (extent.empty()) extent = values_in_file(series, members);
  for (const size_t s : members) {
    if (s < limits.size() && limits[s]) {
      extent.add(limits[s]->low);
      extent.add(limits[s]->high);
    }
  }
  TrendLane lane;
  lane.series = std::move(members);
  if (extent.empty()) {
    lane.low = 0;
    lane.high = 1;
  } else if (extent.low == extent.high) {
    lane.low = extent.low - 1;
    lane.high = extent.high + 1;
  } else {
    const double spare = (extent.high - extent.low) / 20;
    lane.low = extent.low - spare;
    lane.high = extent.high + spare;
  }
  lane.ticks = axis_ticks(lane.low, lane.high, most_ticks);
  return lane;
}

}  // namespace

TimeWindow whole_time_window(const std::vector<TrendSeries>& series) {
  // Series made together share their packets: their times are looked through once.
  Extent times;
  std::vector<std::pair<const TrendPackets*, size_t>> seen;
  for (const TrendSeries& one : series) {
    const std::pair<const TrendPackets*, size_t> packets{one.packets().get(), one.size()};
    if (std::find(seen.begin(), seen.end(), packets) != seen.end()) continue;
    seen.push_back(packets);
    for (size_t p = 0; p < one.size(); ++p) times.add(one.time(p));
  }
  if (times.empty()) return {};
  TimeWindow window{times.low, times.high};
  if (window.span() < kNarrowestTimeWindow) {
    const double middle = (window.from + window.to) / 2;
    window = {middle - kNarrowestTimeWindow / 2, middle + kNarrowestTimeWindow / 2};
  }
  return window;
}

TimeWindow zoom_time_window(const TimeWindow& window, double about, double factor) {
  const double span = window.span();
  const double wanted = std::max(span * factor, kNarrowestTimeWindow);
  const double from = about - (about - window.from) * (wanted / span);
  return {from, from + wanted};
}

std::vector<AxisTick> axis_ticks(double low, double high, int most) {
  std::vector<AxisTick> ticks;
  if (!(high > low) || most < 1 || !std::isfinite(low) || !std::isfinite(high)) return ticks;
  const double magnitude = std::pow(10.0, std::floor(std::log10((high - low) / most)));
  double step = 0;
  double first = 0;
  double last = 0;
  for (const double multiple : {1.0, 2.0, 5.0, 10.0, 20.0}) {
    step = multiple * magnitude;
    first = std::ceil(low / step);
    last = std::floor(high / step);
    if (last - first + 1 <= most) break;
  }
  const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
  for (double k = first; k <= last; ++k) {
    const double value = k == 0 ? 0.0 : k * step;
    ticks.push_back(AxisTick{value, format_fixed(value, decimals)});
  }
  return ticks;
}

TrendPlot make_trend_plot(const std::vector<TrendSeries>& series,
                           const std::vector<std::optional<TrendLimits>>& limits, const TimeWindow& window,
                           const TrendPlotOptions& options) {
  TrendPlot plot;
  plot.window = window;
  plot.columns = std::max(1, options.columns);
  plot.time_ticks = axis_ticks(window.from, window.to, options.most_time_ticks);
  plot.traces = decimate_min_max(series, window.from, window.to, plot.columns, options.stop);
  if (options.separate_axes && !series.empty()) {
    for (size_t s = 0; s < series.size(); ++s) {
      plot.lanes.push_back(make_lane({s}, series, limits, plot.traces, options.most_value_ticks));
    }
  } else {
    std::vector<size_t> all(series.size());
    for (size_t s = 0; s < series.size(); ++s) all[s] = s;
    plot.lanes.push_back(make_lane(std::move(all), series, limits, plot.traces, options.most_value_ticks));
  }
  return plot;
}

}  // namespace morvane
