// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/configuration.h"
#include "decoders/drawing.h"
#include "decoders/hk_decode.h"

namespace morvane {

// One line of the sensor page as the batch tool lists it.
struct SensorLine {
  std::string group;  // the heading the line stands under ("" for the board temperature)
  int row = 0;
  int column = 0;
  int sensor = 0;
  std::string name;
  std::string value_text;
  std::string step_text;  // |value - value upper bound|, in the value's pattern
  std::string unit;
};

// Where a sensor line lies on the page in twips: its row, 200 twips high, across its column,
// 3200 twips wide (the first column from x = 0).
struct TwipsBox {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const TwipsBox&) const = default;
};
TwipsBox sensor_line_box(const SensorLine& line);
// The index in lines of the line whose box holds the point (x, y) in twips, or -1.
int sensor_line_at(const std::vector<SensorLine>& lines, int x, int y);

// The pattern of a sensor line with this many decimals: "###0", "###0.0", "###0.00",
// "###0.000"; empty for any other count (the numbers are then written in their plain text).
std::string sensor_line_pattern(int decimals);

// Draws one sensor line of a decoded packet, named as the table names the sensor: the name at
// (100 + 3200 column, 200 row), the value right-aligned on x = 1800 + 3200 column, then
// "  +/-  ", the step and the unit, "oC" drawn as a raised "o" and a "C". Returns the line; a
// sensor above the table is "Subscript out of range".
SensorLine xPrint_Line(const Configuration& config, const DecodedHousekeeping& decoded, int row, int column,
                        int sensor, int decimals, Drawing& drawing);

// The sensor page of a decoded packet: group headings and lines in page order, blue.
struct SensorLayout {
  Drawing drawing;
  std::vector<SensorLine> lines;
};
SensorLayout draw_sensor_page(const Configuration& config, const DecodedHousekeeping& decoded);

}  // namespace morvane
