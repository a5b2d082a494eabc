// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "decoders/drawing.h"
#include "decoders/spectrum_axis.h"
#include "decoders/spectrum_table.h"

namespace morvane {

inline constexpr const char* kBinAxisTitle = "Bin number";

// A point of the plot area. x runs in plot units: bin b starts at (b - X_Start) x X_Zoom, so the
// 1024 / X_Zoom + 1 visible bins fill width units whatever the zoom. y runs 0 (axis) to 1 (the
// scale maximum, Y_Max x 1000 counts); counts above the maximum stay at 1.
struct GraphPoint {
  double x = 0;
  double y = 0;
  bool operator==(const GraphPoint&) const = default;
};

// A tick of an axis: its place (x in plot units, or y 0..1) and its label.
struct GraphTick {
  double at = 0;
  std::string label;
  bool operator==(const GraphTick&) const = default;
};

// What the graph view draws: the axes with their ticks, the X-axis title and, in red, the step
// outline of the visible bins (one horizontal run per bin joined by verticals, two points a bin).
struct SpectrumGraph {
  double width = 0;                 // plot units across
  std::vector<GraphTick> x_ticks;  // 9 ticks: every eighth of the range, labelled with bin numbers
  std::vector<GraphTick> y_ticks;  // 6 ticks: every fifth of the scale, labelled in counts
  std::string x_title = kBinAxisTitle;
  Colour outline_colour = kRed;
  std::vector<GraphPoint> outline;
};

// The graph of bins 0..bin_count - 1 as far as they lie in the axis range. With nothing to draw
// (no bins, or none in range) the outline is empty and the axes are still there.
SpectrumGraph spectrum_graph(const Spectrum_Bins& bins, int32_t bin_count, const SpectrumAxis& axis);

}  // namespace morvane
