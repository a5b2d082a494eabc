// SPDX-License-Identifier: MIT
#include "export/export_range.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

TEST(ExportRange, ValidatesAsTheDialogDoes) {
  struct Case {
    const char* from;
    const char* to;
    std::optional<std::pair<int32_t, int32_t>> range;
  };
  const Case cases[] = {
      {"3", "3", std::pair{3, 3}},   {" 4 ", "12.0", std::pair{4, 12}}, {"1E1", "11", std::pair{10, 11}},
      {"2.5", "3", std::nullopt}, {"0", "3", std::nullopt},           {"1", "13", std::nullopt},
      {"4", "3", std::nullopt},   {"abc", "3", std::nullopt},         {"1", "", std::nullopt},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string("From \"") + c.from + "\", To \"" + c.to + "\"");
    ExportRange range(12);
    range.Check2_Click(false);
    range.set_from_text(c.from);
    range.set_to_text(c.to);
    const auto valid = range.validate();
    ASSERT_EQ(valid.has_value(), c.range.has_value());
    if (valid) {
      EXPECT_EQ(valid->from, c.range->first);
      EXPECT_EQ(valid->to, c.range->second);
      EXPECT_EQ(range.from_text(), c.from);  // a valid range keeps the texts
    } else {
      EXPECT_EQ(range.from_text(), "1");  // reset to every entry
      EXPECT_EQ(range.to_text(), "12");
      EXPECT_TRUE(range.boxes_enabled());
    }
  }
}

TEST(ExportRange, NothingToExportIsNeverAValidRange) {
  ExportRange range(0);
  EXPECT_EQ(range.to_text(), "0");
  EXPECT_FALSE(range.validate());
}

}  // namespace
}  // namespace morvane
