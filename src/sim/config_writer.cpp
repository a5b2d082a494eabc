// SPDX-License-Identifier: MIT
#include "sim/config_writer.h"

#include <filesystem>
#include <fstream>

#include "core/error.h"
#include "core/number_text.h"
#include "sim/instrument_model.h"
#include "sim/short_test_ranges.h"

namespace morvane::sim {

namespace fs = std::filesystem;

namespace {

std::ofstream create(const fs::path& path) {
  std::ofstream out(path, std::ios::binary);
  if (!out) raise(ErrorNumber::PathNotFound, path.string());
  return out;
}

void write_pressure_file(const fs::path& path) {
  auto out = create(path);
  out << kPressureSensors.size() << "\r\n";
  for (const auto& p : kPressureSensors) {
    out << p.sensor_number << ", " << general_text(p.atmosphere) << ", " << general_text(p.vacuum) << "\r\n";
  }
}

}  // namespace

std::string write_configuration(const std::string& dir) {
  const fs::path base = fs::absolute(dir);
  const fs::path info = base / "EGSE_info";
  fs::create_directories(info);
  {
    auto out = create(base / "Morvane_Files.txt");
    out << "Morvane EGSE base folder (line 2)\r\n" << base.string() << "\r\n";
  }
  {
    auto out = create(info / "N-Type.txt");
    for (const auto& [microvolts, celsius] : kNTypePoints) {
      out << general_text(microvolts) << ", " << general_text(celsius) << "\r\n";
    }
  }
  {
    auto out = create(info / "Sensors.txt");
    out << kSensors.size() << "\r\n";
    for (const auto& s : kSensors) {
      out << '"' << s.name << "\", " << s.byte_offset << ", " << s.channel_id << ", " << s.scale_exponent << ", \""
          << s.unit << "\"\r\n";
    }
  }
  write_pressure_file(info / "Pressure Sensors.txt");
  write_pressure_file(info / "Default_Pressure Sensors.txt");
  write_test_ranges(base.string());
  return base.string();
}

}  // namespace morvane::sim
