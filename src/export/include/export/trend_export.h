// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "export/line_sink.h"
#include "decoders/trend_series.h"

namespace morvane {

// Writes what a trend plot shows between two lander times, both included: the line "Lander
// time" followed by the sensor names, the line "s" followed by their units, then one line per
// housekeeping packet in that range: its lander time and each sensor's value in its shortest
// general text. The series hold one point per packet, in catalogue order. Returns the packets
// written.
int64_t write_trend_table(const std::vector<TrendSeries>& series, double from, double to, LineSink& out);

}  // namespace morvane
