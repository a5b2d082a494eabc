// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "core/configuration.h"

namespace morvane {

// The sensor number whose channel ID equals id (a packet word, 0..65535): every record is
// scanned and the last match wins, so of two sensors sharing an ID the higher number is used.
// Returns 0 when no sensor has the ID.
int16_t Get_Sensor_ID(const Configuration& config, int32_t id);

}  // namespace morvane
