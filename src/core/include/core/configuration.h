// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/ntype_table.h"

namespace morvane {

// One row of the sensor table, in file order, plus the working fields that hold the last
// housekeeping packet the view showed or the export wrote: decoding only reads the table, and
// one named step (keep_in_sensor_records) leaves the values here, as they have always been left.
struct SensorRecord {
  std::string Sensor_Name;
  int32_t Byte_Offset = 0;     // offset of the sensor's byte in a housekeeping packet
  int16_t Channel_ID = 0;      // the identifier auxiliary and event packets name the sensor by
  int32_t Scale_Exponent = 0;  // the reading is worth 2^n counts
  std::string Sensor_Unit;     // replaced by the unit the conversion returns

  int32_t Raw_Reading = 0;
  double Voltage = 0;
  double Voltage_Upper = 0;
  double Value = 0;
  double Value_Upper = 0;
};

// Pressure sensor k serves sensor 21 + k: C1 is the reading at atmosphere, C2 at vacuum (mV).
struct PressureRecord {
  int16_t Sensor_Number = 0;
  double C1 = 0;
  double C2 = 0;
};

// The instrument's configuration as read from the base folder at start-up.
struct Configuration {
  std::string Egse_Path;
  NTypeTable NType;
  std::vector<SensorRecord> Sensor_Table;      // sensor s is Sensor_Table[s - 1]
  std::vector<PressureRecord> Pressure_Table;  // record k is Pressure_Table[k - 1]
  double AD590_EMF = 0;  // AD590 junction temperature as its N-type voltage, microvolts

  int16_t Sensor_Count() const { return static_cast<int16_t>(Sensor_Table.size()); }
  int16_t Pressure_Count() const { return static_cast<int16_t>(Pressure_Table.size()); }
  // 1-based access; outside the table is "Subscript out of range".
  SensorRecord& sensor(int s);
  const SensorRecord& sensor(int s) const;
  const PressureRecord& pressure(int k) const;
};

// File names below the base folder, written as the configuration writes them.
inline constexpr const char* kNTypeFile = "\\EGSE_info\\N-Type.txt";
inline constexpr const char* kSensorsFile = "\\EGSE_info\\Sensors.txt";
inline constexpr const char* kPressureFile = "\\EGSE_info\\Pressure Sensors.txt";
inline constexpr const char* kDefaultPressureFile = "\\EGSE_info\\Default_Pressure Sensors.txt";
inline constexpr const char* kBasePathFile = "Morvane_Files.txt";

// Line 2 of the base-path file ("Morvane_Files.txt"), the base folder.
std::string read_base_path(const std::string& base_path_file);

std::vector<std::pair<double, double>> read_ntype_points(const std::string& path);
std::vector<SensorRecord> read_sensor_table(const std::string& path);
// Count first, then the records; the count decides how many records are read.
std::vector<PressureRecord> read_pressure_table(const std::string& path);
// Re-reads a pressure file into a table of fixed size (the calibration editor's Cancel): the
// file's count is read, then as many records as the table holds.
void reread_pressure_table(const std::string& path, std::vector<PressureRecord>& table);

// Reads the N-type, sensor and pressure files of a base folder in start-up order and sets
// AD590_EMF to 0. Any failure is a RuntimeError naming the file and line.
Configuration load_configuration(const std::string& egse_path);

// The base folder named by Morvane_Files.txt in folder, then its configuration.
Configuration load_configuration_from_pointer(const std::string& folder);

}  // namespace morvane
