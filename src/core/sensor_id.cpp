// SPDX-License-Identifier: MIT
#include "core/sensor_id.h"

namespace morvane {

int16_t Get_Sensor_ID(const Configuration& config, int32_t id) {
  int16_t found = 0;
  for (int16_t s = 1; s <= config.Sensor_Count(); ++s) {
    if (config.sensor(s).Channel_ID == id) found = s;  // no early exit: the last match wins
  }
  return found;
}

}  // namespace morvane
