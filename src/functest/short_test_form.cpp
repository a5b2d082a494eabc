// SPDX-License-Identifier: MIT
#include "functest/short_test_form.h"

#include <cmath>

#include "core/conversion.h"
#include "core/error.h"
#include "core/free_format_reader.h"
#include "core/number_text.h"

namespace morvane {

TestFormFields test_form_fields(int32_t kept_voltage) { return TestFormFields{"0", std::to_string(kept_voltage)}; }

int16_t test_form_sensor(std::string_view text) {
  double value = 0;
  if (!parse_number(text, value) || value != std::floor(value)) {
    raise(ErrorNumber::TypeMismatch, "the sensor number \"" + std::string(text) + "\" is not a whole number");
  }
  if (value < -32768 || value > 32767) {
    raise(ErrorNumber::Overflow, "the sensor number " + std::string(text) + " lies outside -32768 to 32767");
  }
  return static_cast<int16_t>(value);
}

double test_form_voltage(std::string_view text) {
  double value = 0;
  if (!parse_number(text, value)) {
    raise(ErrorNumber::TypeMismatch, "the voltage \"" + std::string(text) + "\" is not a number");
  }
  return value;
}

TestFormResult convert_test_form(const Configuration& config, std::string_view sensor_text,
                                   std::string_view voltage_text) {
  const int16_t sensor = test_form_sensor(sensor_text);
  double voltage = test_form_voltage(voltage_text);
  TestFormResult result;
  Convert_Sensor(config, sensor, voltage, result.value, result.unit);
  result.value_text = general_text(result.value);
  return result;
}

}  // namespace morvane
