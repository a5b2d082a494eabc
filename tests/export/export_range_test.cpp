// SPDX-License-Identifier: MIT
#include "export/export_range.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

// Nothing to export is never a valid range.
TEST(ExportRange, ValidatesAsTheDialogDoes) {
  // From, To and the range they give, if valid.
  const std::tuple<const char*, const char*, std::optional<std::pair<int32_t, int32_t>>> cases[] = {
      {"3", "3", std::pair{3, 3}},   {" 4 ", "12.0", std::pair{4, 12}}, {"1E1", "11", std::pair{10, 11}},
      {"2.5", "3", std::nullopt}, {"0", "3", std::nullopt},           {"1", "13", std::nullopt},
      {"4", "3", std::nullopt},   {"abc", "3", std::nullopt},         {"1", "", std::nullopt},
  };
  for (const auto& [from, to, expected] : cases) {
    SCOPED_TRACE(std::string("From \"") + from + "\", To \"" + to + "\"");
    ExportRange range(12);
    range.Check2_Click(false);
    range.set_from_text(from);
    range.set_to_text(to);
    const auto valid = range.validate();
    ASSERT_EQ(valid.has_value(), expected.has_value());
    if (valid) {
      EXPECT_EQ(std::pair(valid->from, valid->to), *expected);
      EXPECT_EQ(range.from_text(), from);  // a valid range keeps the texts
    } else {
      EXPECT_EQ(range.from_text(), "1");  // reset to every entry
      EXPECT_EQ(range.to_text(), "12");
      EXPECT_TRUE(range.boxes_enabled());
    }
  }
  ExportRange nothing(0);
  EXPECT_EQ(nothing.to_text(), "0");
  EXPECT_FALSE(nothing.validate());
}

}  // namespace
}  // namespace morvane
