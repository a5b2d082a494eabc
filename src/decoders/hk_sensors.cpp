// SPDX-License-Identifier: MIT
#include "decoders/hk_sensors.h"

#include <cmath>

#include "core/number_text.h"

namespace morvane {

std::string sensor_line_pattern(int decimals) {
  switch (decimals) {
    case 0: return "###0";
    case 1: return "###0.0";
    case 2: return "###0.00";
    case 3: return "###0.000";
    default: return "";
  }
}

namespace {
constexpr int kLineHeight = 200;
constexpr int kColumnWidth = 3200;
}  // namespace

TwipsBox sensor_line_box(const SensorLine& line) {
  return {kColumnWidth * line.column, kLineHeight * line.row, kColumnWidth, kLineHeight};
}

int sensor_line_at(const std::vector<SensorLine>& lines, int x, int y) {
  if (x < 0 || y < 0) return -1;
  for (size_t i = 0; i < lines.size(); ++i) {
    const TwipsBox box = sensor_line_box(lines[i]);
    if (x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height) return static_cast<int>(i);
  }
  return -1;
}

SensorLine xPrint_Line(const Configuration& config, const DecodedHousekeeping& decoded, int row, int column,
                        int sensor, int decimals, Drawing& drawing) {
  const SensorRecord& record = config.sensor(sensor);
  const DecodedSensor& reading = decoded.sensor(sensor);
  const double value = reading.value;
  const double step = std::fabs(value - reading.value_upper);
  const std::string pattern = sensor_line_pattern(decimals);
  SensorLine line{"",
                   row,
                   column,
                   sensor,
                   record.Sensor_Name,
                   pattern.empty() ? general_text(value) : format_pattern(value, pattern),
                   pattern.empty() ? general_text(step) : format_pattern(step, pattern),
                   reading.unit};

  const int y = kLineHeight * row;
  auto put = [&](std::string text, int x, int at_y, Anchor anchor) {
    drawing.push_back(PlacedText{std::move(text), x, at_y, kBlue, anchor});
  };
  put(line.name, 100 + kColumnWidth * column, y, Anchor::Left);
  put(line.value_text, 1800 + kColumnWidth * column, y, Anchor::Right);  // right-aligned on the value edge
  put("  +/-  ", 0, y, Anchor::Follow);
  put(line.step_text, 0, y, Anchor::Follow);
  put("  ", 0, y, Anchor::Follow);
  if (line.unit == "oC") {
    put("o", 0, y - 40, Anchor::Follow);  // the degree sign, raised
    put("C", 0, y, Anchor::Follow);
  } else {
    put(line.unit, 0, y, Anchor::Follow);
  }
  return line;
}

SensorLayout draw_sensor_page(const Configuration& config, const DecodedHousekeeping& decoded) {
  SensorLayout page;
  std::string group;
  auto heading = [&](const char* text, int x, int y) {
    group = text;
    page.drawing.push_back(PlacedText{text, x, y, kBlue});
  };
  auto line = [&](int row, int column, int sensor, int decimals) {
    page.lines.push_back(xPrint_Line(config, decoded, row, column, sensor, decimals, page.drawing));
    page.lines.back().group = group;
  };

  heading("Reactors", 0, 0);
  for (int r = 1; r <= 9; ++r) line(r, 0, r, 0);
  line(10, 0, 27, 0);
  line(11, 0, 10, 0);
  line(12, 0, 20, 0);
  heading("Vessin Valves", 0, 2800);
  for (int s = 11; s <= 15; ++s) line(s + 4, 0, s, 1);
  heading("Heaters", 0, 4200);
  for (int s = 16; s <= 19; ++s) line(s + 6, 0, s, 1);
  line(26, 0, 21, 1);
  group.clear();
  line(1, 1, 28, 1);
  heading("Pressure Sensors", 3200, 600);
  for (int s = 22; s <= 26; ++s) line(s - 18, 1, s, 2);
  heading("Ion trap", 3200, 2200);
  line(12, 1, 31, 2);
  line(13, 1, 30, 2);
  line(14, 1, 36, 2);
  heading("Supply rails", 3200, 3200);
  line(17, 1, 33, 2);
  line(18, 1, 35, 2);
  line(19, 1, 32, 2);
  line(20, 1, 34, 2);
  heading("Docking Station Position", 3200, 4400);
  line(23, 1, 29, 2);
  return page;
}

}  // namespace morvane
