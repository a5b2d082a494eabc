// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morvane::sim {

// Writes a complete base folder into dir: Morvane_Files.txt pointing at dir, and EGSE_info/
// with N-Type.txt, Sensors.txt, Pressure Sensors.txt and Default_Pressure Sensors.txt.
// Returns the absolute base folder.
std::string write_configuration(const std::string& dir);

}  // namespace morvane::sim
