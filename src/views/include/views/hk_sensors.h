// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/configuration.h"
#include "core/session.h"
#include "views/drawing.h"

namespace morvane {

// A housekeeping sensor byte as a signed reading. Sensors 28 and 29 are unsigned (0..255);
// sensors 32-36 go negative only above 210 (211..255 are -45..-1, so 128..210 stay positive:
// deliberate); every other sensor is a two's complement byte.
int32_t hk_signed_reading(int sensor, uint8_t byte);

// The reading in volts: raw x 2^n x 10 / 32768, with n the sensor's scale exponent. The upper
// bound of the ADC step is hk_voltage(raw + 1, n).
double hk_voltage(int32_t raw, int32_t scale_exponent);

// The cold-junction term of a packet whose sensor 28 (the board temperature) converts to
// celsius: the N-type voltage of that temperature in microvolts / 1e6.
double cold_junction_term(const Configuration& config, double celsius);

// Decodes housekeeping entry `index` into the shared sensor records: raw reading, both voltages
// (thermocouple channels 1-21 and 27 shifted by 100 x the cold-junction term), both values and
// the unit. The records' own voltage fields are converted, so the pressure sensors (22-26) keep
// the conversion's overwritten voltages (voltage x 10 - C2). Returns the cold-junction term.
// An entry outside the housekeeping list, or a table without sensor 28, is "Subscript out of range".
double decode_hk_sensors(Session& session, int32_t index);

// The cold-junction term of a packet whose board temperature (sensor 28) byte is this, computed
// without touching the shared records: its voltage, its temperature, then cold_junction_term. A
// table without sensor 28 is "Subscript out of range".
double board_cold_junction_term(const Configuration& config, uint8_t board_byte);
// The same for housekeeping entry `index`.
double hk_entry_cold_junction_term(const Configuration& config, const HK_Sensor_Table& bytes, int32_t index);

// The engineering value of one sensor byte as the sensor page computes it, without touching the
// shared records: sign rule, voltage, the cold-junction term x 100 added for the thermocouple
// channels (pass 0 for none), then the conversion (which sets the unit).
struct Sensor_Value {
  int32_t raw = 0;
  double voltage = 0;  // as converted: a pressure channel's holds voltage x 10 - C2
  double value = 0;
  std::string unit;
};
Sensor_Value hk_byte_value(const Configuration& config, int sensor, uint8_t byte, double cold_junction);
// The same for sensor `sensor` of housekeeping entry `index`.
Sensor_Value hk_sensor_value(const Configuration& config, const HK_Sensor_Table& bytes, int32_t index, int sensor,
                             double cold_junction);

// One line of the sensor page as the batch tool lists it.
struct Sensor_Line {
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
struct Twips_Box {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const Twips_Box&) const = default;
};
Twips_Box sensor_line_box(const Sensor_Line& line);
// The index in lines of the line whose box holds the point (x, y) in twips, or -1.
int sensor_line_at(const std::vector<Sensor_Line>& lines, int x, int y);

// The pattern of a sensor line with this many decimals: "###0", "###0.0", "###0.00",
// "###0.000"; empty for any other count (the numbers are then written in their plain text).
std::string sensor_line_pattern(int decimals);

// Draws one sensor line from the sensor's record: the name at (100 + 3200 column, 200 row),
// the value right-aligned on x = 1800 + 3200 column, then "  +/-  ", the step and the unit,
// "oC" drawn as a raised "o" and a "C". Returns the line; a sensor above the table is
// "Subscript out of range".
Sensor_Line xPrint_Line(const Configuration& config, int row, int column, int sensor, int decimals, Drawing& drawing);

// The sensor page of the records as they stand: group headings and lines in page order, blue.
struct Sensor_Layout {
  Drawing drawing;
  std::vector<Sensor_Line> lines;
};
Sensor_Layout draw_sensor_page(const Configuration& config);

}  // namespace morvane
