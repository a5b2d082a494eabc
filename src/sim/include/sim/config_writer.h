// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morvane::sim {

// Writes a complete base folder into dir: Morvane_Files.txt pointing at dir, and EGSE_info/
// with N-Type.txt, Sensors.txt, Pressure Sensors.txt, Default_Pressure Sensors.txt and the limit
// files of Test Ranges/ (see test_ranges.h). Returns the absolute base folder.
std::string write_configuration(const std::string& dir);

}  // namespace morvane::sim
