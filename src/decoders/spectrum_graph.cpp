// SPDX-License-Identifier: MIT
#include "decoders/spectrum_graph.h"

#include <algorithm>

#include "core/number_text.h"

namespace morvane {

namespace {

constexpr int kXIntervals = 8;  // a tick at every pan step
constexpr int kYIntervals = 5;  // 1-2-4 scales give whole fifths: 2, 4, 8, 20, ...

}  // namespace

SpectrumGraph spectrum_graph(const Spectrum_Bins& bins, int32_t bin_count, const SpectrumAxis& axis) {
  SpectrumGraph graph;
  const int32_t shown = axis.X_End - axis.X_Start + 1;
  graph.width = shown * axis.X_Zoom;

  const double bins_per_tick = (axis.X_End - axis.X_Start) / static_cast<double>(kXIntervals);
  for (int i = 0; i <= kXIntervals; ++i) {
    graph.x_ticks.push_back({i * bins_per_tick * axis.X_Zoom, general_text(axis.X_Start + i * bins_per_tick)});
  }
  const double top = axis.Y_Max * 1000;
  for (int i = 0; i <= kYIntervals; ++i) {
    graph.y_ticks.push_back({static_cast<double>(i) / kYIntervals, general_text(top * i / kYIntervals)});
  }

  const int32_t first = std::max<int32_t>(axis.X_Start, 0);
  const int32_t last = std::min<int32_t>({axis.X_End, bin_count - 1, kLastBin});
  if (first <= last) graph.outline.reserve(static_cast<size_t>(last - first + 1) * 2);
  for (int32_t b = first; b <= last; ++b) {
    const double y = std::min(bins[static_cast<size_t>(b)] / top, 1.0);
    graph.outline.push_back({(b - axis.X_Start) * axis.X_Zoom, y});
    graph.outline.push_back({(b + 1 - axis.X_Start) * axis.X_Zoom, y});
  }
  return graph;
}

}  // namespace morvane
