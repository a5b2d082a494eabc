// SPDX-License-Identifier: MIT
#include "core/number_text.h"

#include <gtest/gtest.h>

#include "thrown.h"

namespace morvane {
namespace {

TEST(NumberText, PatternsRoundHalfAwayFromZeroOnFifteenDigits) {
  const std::tuple<double, const char*, const char*> cases[] = {
      {2.675, "0.00", "2.68"},       {-0.125, "0.00", "-0.13"},    {78.125, "###0.00", "78.13"},
      {-78.125, "###0.00", "-78.13"}, {0.5, "###0", "1"},          {1.5, "###0", "2"},
      {2.5, "###0", "3"},            {-2.5, "###0", "-3"},         {1234.5678, "###0.0", "1234.6"},
      {0.0, "0.000", "0.000"},       {-0.0, "0.00", "0.00"},       {-0.001, "0.00", "-0.00"},
      {9.995, "0.00", "10.00"},      {999.95, "###0.0", "1000.0"}, {0.006, "0.00", "0.01"},
      {0.004, "0.00", "0.00"},       {123.4, "#0.0000", "123.4000"}, {9.99969482421875, "0.00000", "9.99969"},
      {-10, "0.00000", "-10.00000"}, {-0.000305175781, "0.00000", "-0.00031"}, {1e20, "0", "100000000000000000000"},
      {0.05, "0.0", "0.1"},          {1.005, "0.00", "1.01"},      {25.0, "0.00", "25.00"},
  };
  for (const auto& [value, pattern, text] : cases) {
    EXPECT_EQ(format_pattern(value, pattern), text) << value << ' ' << pattern;
  }
}

TEST(NumberText, GeneralTextIsTheShortestFormWithFifteenDigits) {
  const std::pair<double, const char*> cases[] = {
      {0.5, "0.5"},      {-0.5, "-0.5"},           {5, "5"},           {100, "100"},
      {1.5e-7, "1.5E-07"}, {2e15, "2E+15"},        {0.0001, "0.0001"}, {0.1 + 0.2, "0.3"},
      {-0.0, "0"},       {123456789012345.0, "123456789012345"}, {1.0 / 3, "0.333333333333333"},
      {-273.0, "-273"},  {5.2, "5.2"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(general_text(value), text) << value;
}

TEST(NumberText, NumberTextHasABlankForThePlusSign) {
  const std::pair<double, const char*> cases[] = {{5, " 5"}, {56.25, " 56.25"}, {-3, "-3"}, {0, " 0"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(number_text(value), text) << value;
}

TEST(NumberText, ColumnsPadAndRefuseTextsWiderThanTheColumn) {
  EXPECT_EQ(std::tuple(left_in(3, 6), right_in(1234, 9), right_in("abc", 3)), std::tuple("3     ", "     1234", "abc"));
  EXPECT_EQ(testing::thrown([] { right_in(1234567890, 9); }).number, 5);
}

TEST(NumberText, HexTextsHaveFixedWidths) {
  const std::pair<int32_t, const char*> cases[] = {
      {0, "0000"}, {26, "001A"}, {4095, "0FFF"}, {4096, "1000"}, {0xABCD, "ABCD"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(hex4(value), text) << value;
  EXPECT_EQ(hex2(15), "0F");
}

}  // namespace
}  // namespace morvane
