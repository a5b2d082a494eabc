// SPDX-License-Identifier: MIT
#include "decoders/hk_mode.h"

#include <gtest/gtest.h>

#include "decoder_fixture.h"

namespace morvane {
namespace {

TEST(HkMode, EveryModeHasItsName) {
  // The names are not the telecommand names: no blank before "(HTO)".
  const std::pair<int, const char*> cases[] = {
      {0, "Standby"}, {12, "Ice Core Analysis(HTO)"}, {16, "Additional Science"}, {17, "Unknown"}, {255, "Safe"}};
  for (const auto& [mode, name] : cases) EXPECT_EQ(mode_name(mode), name) << mode;
}

TEST(HkMode, TheLineHighByteIsClampedExceptAt128WhichOverflows) {
  EXPECT_EQ(line_number(0, 5), 5);
  EXPECT_EQ(line_number(1, 2), 258);
  EXPECT_EQ(line_number(127, 255), 32767);
  EXPECT_EQ(line_number(129, 0), 127 * 256);
  EXPECT_EQ(line_number(255, 1), 127 * 256 + 1);
  const testing::Thrown overflow = testing::thrown([] { line_number(128, 0); });
  EXPECT_EQ(overflow.number, 6);
  EXPECT_EQ(overflow.message, "Overflow: the line number's high byte is 128; Error number 6");
}

}  // namespace
}  // namespace morvane
