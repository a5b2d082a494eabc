// SPDX-License-Identifier: MIT
#include "core/conversion.h"

#include "core/arithmetic.h"

namespace morvane {

void Convert_Sensor(const Configuration& config, int s, double& voltage, double& value, std::string& unit) {
  value = 0;
  if (is_thermocouple(s)) {
    value = config.NType.NType_Lookup(voltage * 10000);
    unit = "oC";
  } else if (s >= 22 && s <= 25) {
    const Pressure_Record& record = config.pressure(s - 21);
    voltage = voltage * 10 - record.C2;
    value = checked_divide(voltage, record.C1 - record.C2);
    unit = "bar";
  } else if (s == 26) {
    const Pressure_Record& record = config.pressure(5);
    voltage = voltage * 10 - record.C2;
    value = checked_divide(voltage * 1000, record.C1 - record.C2);
    unit = "mbar";
  } else {
    switch (s) {
      case 28: value = voltage * 100 - 273; unit = "oC"; break;
      case 29: value = voltage * 5.2; unit = "mm"; break;
      case 30: value = voltage * 100; unit = "uA"; break;
      case 31: value = voltage; unit = "kV"; break;
      case 32: value = voltage * 2; unit = "V"; break;
      case 33: value = voltage * 10; unit = "V"; break;
      case 34: value = voltage * 1000; unit = "mA"; break;
      case 35: value = voltage * 1000; unit = "mA"; break;
      case 36: value = voltage * 100; unit = "V"; break;
      default: break;
    }
  }
}

}  // namespace morvane
