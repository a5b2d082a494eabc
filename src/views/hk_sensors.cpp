// SPDX-License-Identifier: MIT
#include "views/hk_sensors.h"

#include <cmath>

#include "core/conversion.h"
#include "core/error.h"
#include "core/number_text.h"

namespace morvane {

int32_t hk_signed_reading(int sensor, uint8_t byte) {
  const int32_t raw = byte;
  if (sensor == 28 || sensor == 29) return raw;
  if (sensor >= 32 && sensor <= 36) return raw > 210 ? raw - 256 : raw;
  return raw > 127 ? raw - 256 : raw;
}

double hk_voltage(int32_t raw, int32_t scale_exponent) {
  return std::ldexp(static_cast<double>(raw), scale_exponent) * 10 / 32768;
}

double cold_junction_term(const Configuration& config, double celsius) {
  return config.NType.NType_Reverse_Lookup(celsius) / 1000000;
}

double board_cold_junction_term(const Configuration& config, uint8_t board_byte) {
  return cold_junction_term(config, hk_byte_value(config, 28, board_byte, 0).value);
}

double hk_entry_cold_junction_term(const Configuration& config, const HK_Sensor_Table& bytes, int32_t index) {
  return board_cold_junction_term(config, bytes.at(28, index));
}

Sensor_Value hk_byte_value(const Configuration& config, int sensor, uint8_t byte, double cold_junction) {
  const Sensor_Record& record = config.sensor(sensor);
  Sensor_Value result;
  result.raw = hk_signed_reading(sensor, byte);
  result.voltage = hk_voltage(result.raw, record.Scale_Exponent);
  if (is_thermocouple(sensor)) result.voltage += cold_junction * 100;
  result.unit = record.Sensor_Unit;
  Convert_Sensor(config, sensor, result.voltage, result.value, result.unit);
  return result;
}

Sensor_Value hk_sensor_value(const Configuration& config, const HK_Sensor_Table& bytes, int32_t index, int sensor,
                             double cold_junction) {
  return hk_byte_value(config, sensor, bytes.at(sensor, index), cold_junction);
}

double decode_hk_sensors(Session& session, int32_t index) {
  Configuration& config = session.config;
  session.catalogue.HK_List.at(index);  // an entry outside the list is out of range
  const int count = config.Sensor_Count();
  for (int s = 1; s <= count; ++s) {
    Sensor_Record& record = config.sensor(s);
    record.Raw_Reading = hk_signed_reading(s, session.HK_Sensor_Data.at(s, index));
    record.Voltage = hk_voltage(record.Raw_Reading, record.Scale_Exponent);
    record.Voltage_Upper = hk_voltage(record.Raw_Reading + 1, record.Scale_Exponent);
  }

  Sensor_Record& board = config.sensor(28);
  Convert_Sensor(config, 28, board.Voltage, board.Value, board.Sensor_Unit);
  const double term = cold_junction_term(config, board.Value);

  for (int s = 1; s <= count; ++s) {
    Sensor_Record& record = config.sensor(s);
    if (is_thermocouple(s)) {
      record.Voltage += term * 100;
      record.Voltage_Upper += term * 100;
    }
    // The record's own fields go in: a pressure channel leaves its overwritten voltages there.
    Convert_Sensor(config, s, record.Voltage, record.Value, record.Sensor_Unit);
    Convert_Sensor(config, s, record.Voltage_Upper, record.Value_Upper, record.Sensor_Unit);
  }
  return term;
}

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

Twips_Box sensor_line_box(const Sensor_Line& line) {
  return {kColumnWidth * line.column, kLineHeight * line.row, kColumnWidth, kLineHeight};
}

int sensor_line_at(const std::vector<Sensor_Line>& lines, int x, int y) {
  if (x < 0 || y < 0) return -1;
  for (size_t i = 0; i < lines.size(); ++i) {
    const Twips_Box box = sensor_line_box(lines[i]);
    if (x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height) return static_cast<int>(i);
  }
  return -1;
}

Sensor_Line xPrint_Line(const Configuration& config, int row, int column, int sensor, int decimals, Drawing& drawing) {
  const Sensor_Record& record = config.sensor(sensor);
  const double value = record.Value;
  const double step = std::fabs(value - record.Value_Upper);
  const std::string pattern = sensor_line_pattern(decimals);
  Sensor_Line line{"",
                   row,
                   column,
                   sensor,
                   record.Sensor_Name,
                   pattern.empty() ? general_text(value) : format_pattern(value, pattern),
                   pattern.empty() ? general_text(step) : format_pattern(step, pattern),
                   record.Sensor_Unit};

  const int y = kLineHeight * row;
  auto put = [&](std::string text, int x, int at_y, Anchor anchor) {
    drawing.push_back(Placed_Text{std::move(text), x, at_y, kBlue, anchor});
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

Sensor_Layout draw_sensor_page(const Configuration& config) {
  Sensor_Layout page;
  std::string group;
  auto heading = [&](const char* text, int x, int y) {
    group = text;
    page.drawing.push_back(Placed_Text{text, x, y, kBlue});
  };
  auto line = [&](int row, int column, int sensor, int decimals) {
    page.lines.push_back(xPrint_Line(config, row, column, sensor, decimals, page.drawing));
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
