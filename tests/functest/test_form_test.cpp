// SPDX-License-Identifier: MIT
#include "functest/test_form.h"

#include <gtest/gtest.h>

#include "short_test_files.h"
#include "thrown.h"

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
    EXPECT_EQ(testing::thrown([&] { test_form_sensor(text); }).number, number) << text;
  }
  EXPECT_EQ(test_form_sensor("-32768"), -32768);
  EXPECT_EQ(test_form_sensor("12.0"), 12);
}

TEST(TestForm, AVoltageMustBeANumber) {
  EXPECT_NE(testing::thrown([] { test_form_voltage("1,5"); }).number, 0);
  EXPECT_NE(testing::thrown([] { test_form_voltage(""); }).number, 0);
  EXPECT_EQ(test_form_voltage(" -2.5 "), -2.5);
}

}  // namespace
}  // namespace morvane
