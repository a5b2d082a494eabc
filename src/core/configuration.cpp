// SPDX-License-Identifier: MIT
#include "core/configuration.h"

#include "core/error.h"
#include "core/free_format_reader.h"
#include "core/windows_path.h"

namespace morvane {

SensorRecord& Configuration::sensor(int s) {
  if (s < 1 || s > Sensor_Count()) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "sensor " + std::to_string(s) + " of a table of " + std::to_string(Sensor_Count()));
  }
  return Sensor_Table[static_cast<size_t>(s - 1)];
}

const SensorRecord& Configuration::sensor(int s) const { return const_cast<Configuration*>(this)->sensor(s); }

const PressureRecord& Configuration::pressure(int k) const {
  if (k < 1 || k > Pressure_Count()) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "pressure sensor " + std::to_string(k) + " of a table of " + std::to_string(Pressure_Count()));
  }
  return Pressure_Table[static_cast<size_t>(k - 1)];
}

std::string read_base_path(const std::string& base_path_file) {
  FreeFormatReader reader(base_path_file);
  std::string line;
  reader.read_line(line);  // line 1 is a comment for people
  if (!reader.read_line(line)) {
    raise(ErrorNumber::InputPastEndOfFile,
          base_path_file + " line 2: expected the base folder, found the end of the file");
  }
  while (!line.empty() && (line.back() == ' ' || line.back() == '\t')) line.pop_back();
  return line;
}

std::vector<std::pair<double, double>> read_ntype_points(const std::string& path) {
  FreeFormatReader reader(path);
  std::vector<std::pair<double, double>> points;
  while (!reader.at_end()) {
    if (points.size() == static_cast<size_t>(NTypeTable::kMaxPoints)) {
      raise(ErrorNumber::SubscriptOutOfRange,
            path + " line " + std::to_string(reader.line()) + ": the table holds at most 100 points");
    }
    const double x = reader.read_double("a thermocouple voltage (x)");
    const double y = reader.read_double("a temperature (y)");
    points.emplace_back(x, y);
  }
  return points;
}

std::vector<SensorRecord> read_sensor_table(const std::string& path) {
  FreeFormatReader reader(path);
  const int16_t count = reader.read_int16("the number of sensors");
  if (count < 0) {
    raise(ErrorNumber::SubscriptOutOfRange, path + " line 1: the number of sensors is negative");
  }
  std::vector<SensorRecord> table(static_cast<size_t>(count));
  for (auto& record : table) {
    record.Sensor_Name = reader.read_text("a sensor name");
    record.Byte_Offset = reader.read_int32("the sensor's byte offset");
    record.Channel_ID = reader.read_int16("the sensor's channel ID");
    record.Scale_Exponent = reader.read_int32("the sensor's scale exponent");
    record.Sensor_Unit = reader.read_text("the sensor's unit");
  }
  return table;
}

static void read_pressure_records(FreeFormatReader& reader, std::vector<PressureRecord>& table) {
  for (auto& record : table) {
    record.Sensor_Number = reader.read_int16("a pressure sensor number");
    record.C1 = reader.read_double("the reading at atmosphere");
    record.C2 = reader.read_double("the reading at vacuum");
  }
}

std::vector<PressureRecord> read_pressure_table(const std::string& path) {
  FreeFormatReader reader(path);
  const int16_t count = reader.read_int16("the number of pressure sensors");
  if (count < 0) {
    raise(ErrorNumber::SubscriptOutOfRange, path + " line 1: the number of pressure sensors is negative");
  }
  std::vector<PressureRecord> table(static_cast<size_t>(count));
  read_pressure_records(reader, table);
  return table;
}

void reread_pressure_table(const std::string& path, std::vector<PressureRecord>& table) {
  FreeFormatReader reader(path);
  reader.read_int16("the number of pressure sensors");
  std::vector<PressureRecord> fresh(table.size());
  read_pressure_records(reader, fresh);
  table = std::move(fresh);
}

Configuration load_configuration(const std::string& egse_path) {
  Configuration config;
  config.Egse_Path = egse_path;
  const std::string ntype_path = config_path(egse_path, kNTypeFile);
  try {
    config.NType.set_points(read_ntype_points(ntype_path));
  } catch (const RuntimeError& error) {
    if (error.detail().rfind(ntype_path, 0) == 0) throw;
    throw RuntimeError(static_cast<ErrorNumber>(error.number()), ntype_path + ": " + error.detail());
  }
  config.Sensor_Table = read_sensor_table(config_path(egse_path, kSensorsFile));
  config.AD590_EMF = 0;
  config.Pressure_Table = read_pressure_table(config_path(egse_path, kPressureFile));
  return config;
}

Configuration load_configuration_from_pointer(const std::string& folder) {
  std::string pointer = folder.empty() ? std::string(kBasePathFile) : folder + "/" + kBasePathFile;
  std::string base = read_base_path(pointer);
  // A relative base folder is taken from the folder that holds the pointer file.
  std::string unix_base = base;
  for (auto& c : unix_base) c = c == '\\' ? '/' : c;
  if (!folder.empty() && !unix_base.empty() && unix_base.front() != '/') base = folder + "/" + base;
  return load_configuration(base);
}

}  // namespace morvane
