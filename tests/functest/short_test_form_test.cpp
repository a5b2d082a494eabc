// SPDX-License-Identifier: MIT
#include "functest/short_test_form.h"

#include <gtest/gtest.h>

#include "thrown.h"

namespace morvane {
namespace {

TEST(TestForm, ASensorNumberMustBeAWhole16BitNumberAndAVoltageANumber) {
  const std::pair<const char*, int> cases[] = {{"", 13}, {"abc", 13}, {"2.5", 13}, {"32768", 6}, {"-32769", 6}};
  for (const auto& [text, number] : cases) {
    EXPECT_EQ(testing::thrown([&] { test_form_sensor(text); }).number, number) << text;
  }
  EXPECT_EQ(test_form_sensor("-32768"), -32768);
  EXPECT_EQ(test_form_sensor("12.0"), 12);
  EXPECT_NE(testing::thrown([] { test_form_voltage("1,5"); }).number, 0);
  EXPECT_NE(testing::thrown([] { test_form_voltage(""); }).number, 0);
  EXPECT_EQ(test_form_voltage(" -2.5 "), -2.5);
}

}  // namespace
}  // namespace morvane
