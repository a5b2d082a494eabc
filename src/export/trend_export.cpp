// SPDX-License-Identifier: MIT
#include "export/trend_export.h"

#include <algorithm>

#include "core/number_text.h"

namespace morvane {

int64_t write_trend_table(const std::vector<TrendSeries>& series, double from, double to, LineSink& out) {
  out.text("Lander time");
  for (const TrendSeries& one : series) out.text(one.name);
  out.end_line(false);
  out.text("s");
  for (const TrendSeries& one : series) out.text(one.unit);
  out.end_line(false);
  if (series.empty()) return 0;
  size_t packets = series.front().size();
  for (const TrendSeries& one : series) packets = std::min(packets, one.size());
  int64_t written = 0;
  for (size_t p = 0; p < packets; ++p) {
    const int32_t time = series.front().time(p);
    if (time < from || time > to) continue;
    out.number(time, std::to_string(time));
    for (const TrendSeries& one : series) {
      const double value = one.value(p);
      out.number(value, general_text(value));
    }
    out.end_line(false);
    ++written;
  }
  return written;
}

}  // namespace morvane
