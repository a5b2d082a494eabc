// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/configuration.h"

namespace morvane {

// The general tests dialog: a sensor number and a voltage typed by hand, converted as every view
// converts its readings.
inline constexpr const char* kTestFormCaption = "Test Form";
inline constexpr const char* kTestFormButton = "Command1";
inline constexpr const char* kSensorFieldLabel = "sensor";
inline constexpr const char* kVoltageFieldLabel = "voltage";
inline constexpr const char* kResultFieldLabel = "result";

// The fields as the dialog opens: sensor "0" and the voltage it keeps ("0" on first use).
struct TestFormFields {
  std::string sensor = "0";
  std::string voltage = "0";
};
TestFormFields test_form_fields(int32_t kept_voltage = 0);

// What the button shows: the value in its default decimal text and the conversion's unit.
struct TestFormResult {
  double value = 0;
  std::string value_text;
  std::string unit;  // empty for a sensor number the conversion does not know
};

// The sensor number text as a 16-bit integer: blanks around it are allowed; a text that is not a
// whole number is "Type mismatch", one outside -32768..32767 "Overflow".
int16_t test_form_sensor(std::string_view text);
// The voltage text as a number; anything else is "Type mismatch".
double test_form_voltage(std::string_view text);

// Converts as the button does. Besides the errors above, a pressure sensor without its record
// in the pressure table is "Subscript out of range".
TestFormResult convert_test_form(const Configuration& config, std::string_view sensor_text,
                                   std::string_view voltage_text);

}  // namespace morvane
