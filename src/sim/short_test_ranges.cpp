// SPDX-License-Identifier: MIT
#include "sim/short_test_ranges.h"

#include <filesystem>
#include <fstream>

#include "core/error.h"
#include "core/file_format.h"
#include "core/number_text.h"

namespace morvane::sim {

namespace fs = std::filesystem;

std::array<RangeRecord, 38> test_ranges(std::string_view mode) {
  const bool eaft = mode == "EAFT";
  // The supply gauge reads about 1.86 bar, the manifold lines a few tenths at most; the "EAFT"
  // sequence reads the manifold gauge first.
  const RangeRecord supply_gauge{"", 0, 0, 0, 0, 1.6, 2.1};
  const RangeRecord line_gauge{"", 0, 0, 0, 0, -0.05, 0.5};
  const RangeRecord first = eaft ? line_gauge : supply_gauge;
  const RangeRecord second = eaft ? supply_gauge : line_gauge;
  // L-valve 7 in mode "Cruise Phase": its "after" samples are the final readings of gauges 1
  // and 2 (pressures, not currents), so its baselines come out near half the supply currents and
  // its rises near 85 mA.
  const RangeRecord l_valve_7 =
      eaft ? RangeRecord{"L-Valve 7", 3.5, 11, 15, 38, 15, 50} : RangeRecord{"L-Valve 7", 70, 105, 65, 100, 15, 50};
  return {{
      {"Pressure Gauge 1", 0, 0, 0, 0, first.min3, first.max3},
      {"Pressure Gauge 2", 0, 0, 0, 0, second.min3, second.max3},
      {"Pressure Gauge 3", 0, 0, 0, 0, -0.05, 0.5},
      {"Pressure Gauge 4", 0, 0, 0, 0, -0.05, 0.5},
      {"Pressure Gauge 5", 0, 0, 0, 0, 0, 25},  // mbar
      {"AD590 Temperature", 0, 0, 0, 0, 10, 40},
      {"Docking Station", 0, 0, 0, 0, 12, 17},
      {"Nanotip Current", 0, 0, 0, 0, 1.5, 3},
      {"Detector Voltage", 0, 0, 0, 0, 1.8, 2.5},
      {"RF Calibration", 0, 0, 0, 0, 550, 750},
      // Heaters: 5 V rise, 28 V rise (mA), temperature rise over about 46 s on.
      {"Manifold 1", 2.5, 8, 18, 48, 6, 21},
      {"Manifold 2", 2.5, 8, 18, 48, 6, 21},
      {"GC heater", 2.5, 8, 18, 48, 8, 27},
      {"Ion Trap", 2.5, 8, 18, 48, 4.5, 15},
      {"Transfer Pipe", 2.5, 8, 18, 48, 7, 23},
      {"Reactor 8", 2.5, 8, 18, 48, 17, 57},
      // Reactors: temperature rise after a minute on.
      {"Reactor 1", 0, 0, 0, 0, 70, 190},
      {"Reactor 2", 0, 0, 0, 0, 70, 190},
      {"Reactor 4", 0, 0, 0, 0, 70, 190},
      {"Reactor 5", 0, 0, 0, 0, 70, 190},
      {"Reactor 6", 0, 0, 0, 0, 70, 190},
      {"Reactor 7", 0, 0, 0, 0, 90, 240},
      {"Reactor 9", 0, 0, 0, 0, 90, 240},
      {"Reactor 13", 0, 0, 0, 0, 90, 240},
      {"Reactor 14", 0, 0, 0, 0, 90, 240},
      {"Reactor 15", 0, 0, 0, 0, 90, 240},
      // L-valves: 5 V rise, 28 V rise, temperature rise over about half a minute.
      {"L-Valve 1", 3.5, 11, 15, 38, 15, 50},
      {"L-Valve 2", 3.5, 11, 15, 38, 15, 50},
      {"L-Valve 5", 3.5, 11, 15, 38, 15, 50},
      {"L-Valve 6", 3.5, 11, 15, 38, 15, 50},
      l_valve_7,
      // Supply rails, their baseline currents (mA) and the RF frequency (kHz).
      {"5V Voltage", 0, 0, 0, 0, 4.9, 5.1},
      {"5V Current", 0, 0, 0, 0, 145, 180},
      {"28V Voltage", 0, 0, 0, 0, 27.8, 28.6},
      {"28V Current", 0, 0, 0, 0, 100, 125},
      {"RF Frequency", 0, 0, 0, 0, 520, 545},
      {"Valves", 5, 12, 15, 35, 0, 0},
      {"Injector Valves", 3, 10, 12, 30, 0, 0},
  }};
}

void write_test_ranges(const std::string& base) {
  const fs::path folder = fs::path(base) / "EGSE_info" / "Test Ranges";
  fs::create_directories(folder);
  for (FileFormat format : {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM, FileFormat::ZEB}) {
    for (std::string_view mode : {"Cruise Phase", "EAFT"}) {
      const fs::path path = folder / (std::string(format_tag(format)) + " " + std::string(mode) + " Mode.txt");
      std::ofstream out(path, std::ios::binary);
      if (!out) raise(ErrorNumber::PathNotFound, path.string());
      for (const RangeRecord& r : test_ranges(mode)) {
        out << '"' << r.name << '"';
        for (double limit : {r.min1, r.max1, r.min2, r.max2, r.min3, r.max3}) out << ", " << general_text(limit);
        out << "\r\n";
      }
    }
  }
}

}  // namespace morvane::sim
