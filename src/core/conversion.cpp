// SPDX-License-Identifier: MIT
#include "core/conversion.h"

#include "core/arithmetic.h"
#include "core/windows_path.h"

namespace morvane {

namespace {

// (C1 - C2) divides every reading of a pressure sensor: equal readings are named with their line.
double pressure_divide(const Configuration& config, int k, double numerator) {
  const PressureRecord& record = config.pressure(k);
  if (record.C1 == record.C2) {
    raise(ErrorNumber::DivisionByZero,
          config_path(config.Egse_Path, kPressureFile) + " line " + std::to_string(k + 1) + ": pressure sensor " +
              std::to_string(k) + " has the same reading at atmosphere and at vacuum");
  }
  return numerator / (record.C1 - record.C2);
}

}  // namespace

void Convert_Sensor(const Configuration& config, int s, double& voltage, double& value, std::string& unit) {
  value = 0;
  if (is_thermocouple(s)) {
    value = config.NType.NType_Lookup(voltage * 10000);
    unit = "oC";
  } else if (s >= 22 && s <= 25) {
    voltage = voltage * 10 - config.pressure(s - 21).C2;
    value = pressure_divide(config, s - 21, voltage);
    unit = "bar";
  } else if (s == 26) {
    voltage = voltage * 10 - config.pressure(5).C2;
    value = pressure_divide(config, 5, voltage * 1000);
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
