// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/configuration.h"

namespace morvane {

// Turns the voltage of sensor number s into an engineering value and its unit text. The
// pressure channels (22-26) overwrite the caller's voltage with voltage x 10 - C2 on purpose:
// a caller that converts the same variable twice sees the changed voltage the second time.
// A sensor number outside 1..36 gives 0 and leaves the unit as it was. A pressure record
// missing from the table is "Subscript out of range"; C1 = C2 is "Division by zero".
void Convert_Sensor(const Configuration& config, int s, double& voltage, double& value, std::string& unit);

// Whether sensor s is a thermocouple channel (1-21 and 27), the channels that take a
// cold-junction correction.
inline bool is_thermocouple(int s) { return (s >= 1 && s <= 21) || s == 27; }

}  // namespace morvane
