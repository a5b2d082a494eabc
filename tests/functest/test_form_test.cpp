// SPDX-License-Identifier: MIT
#include "functest/test_form.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "short_test_files.h"

namespace morvane {
namespace {

TEST(TestForm, OpensWithSensorZeroAndTheKeptVoltage) {
  EXPECT_EQ(test_form_fields().sensor, "0");
  EXPECT_EQ(test_form_fields().voltage, "0");
  EXPECT_EQ(test_form_fields(-3).voltage, "-3");
}

TEST(TestForm, ConvertsAsTheViewsDo) {
  const Configuration config = testing::test_configuration();
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"28", "2.98", "25", "oC"}, {" 29 ", "1", "5.2", "mm"}, {"22", "1", "0.125", "bar"}, {"0", "1", "0", ""}};
  for (const auto& [sensor, voltage, value, unit] : cases) {
    const Test_Form_Result result = convert_test_form(config, sensor, voltage);
    EXPECT_EQ(result.value_text, value) << sensor << " " << voltage;
    EXPECT_EQ(result.unit, unit) << sensor;
  }
}

TEST(TestForm, ASensorNumberMustBeAWhole16BitNumber) {
  const std::pair<const char*, int> cases[] = {{"", 13}, {"abc", 13}, {"2.5", 13}, {"32768", 6}, {"-32769", 6}};
  for (const auto& [text, number] : cases) {
    try {
      test_form_sensor(text);
      ADD_FAILURE() << text;
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), number) << text;
    }
  }
  EXPECT_EQ(test_form_sensor("-32768"), -32768);
  EXPECT_EQ(test_form_sensor("12.0"), 12);
}

TEST(TestForm, AVoltageMustBeANumber) {
  EXPECT_THROW(test_form_voltage("1,5"), RuntimeError);
  EXPECT_THROW(test_form_voltage(""), RuntimeError);
  EXPECT_EQ(test_form_voltage(" -2.5 "), -2.5);
}

}  // namespace
}  // namespace morvane
