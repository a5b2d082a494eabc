// SPDX-License-Identifier: MIT
#include "functest/short_test_ranges.h"

#include <gtest/gtest.h>

#include "short_test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

TEST(ReadTestRanges, ReadsNameAndThreePairsPerRecord) {
  auto records = testing::uniform_limits(-1, 1);
  records[0] = RangeRecord{"Pressure, gauge 1", {LimitPair{0.5, 1.5}, LimitPair{-2, 2}, LimitPair{0.9, 1.1}}};
  records[37] = RangeRecord{"Injector", {LimitPair{1, 2}, LimitPair{3, 4}, LimitPair{5, 6}}};
  const TestRanges ranges = read_test_ranges("r.txt", testing::limit_file_text(records) + "trailing, words\r\n");
  EXPECT_EQ(ranges.record(1).name, "Pressure, gauge 1");
  EXPECT_EQ(ranges.record(1).pair(1), (LimitPair{0.5, 1.5}));
  EXPECT_EQ(ranges.Min(3, 1), 0.9);
  EXPECT_EQ(ranges.Max(3, 1), 1.1);
  EXPECT_EQ(ranges.Max(2, 38), 4);
  EXPECT_EQ(ranges.path, "r.txt");

  std::string loose;  // line breaks carry no meaning
  for (int r = 1; r <= 38; ++r) loose += "R" + std::to_string(r) + "\n1\n2, 3\n4, 5, " + std::to_string(r) + "\n";
  const TestRanges broken = read_test_ranges("r.txt", loose);
  EXPECT_EQ(broken.record(38).name, "R38");
  EXPECT_EQ(broken.Max(3, 38), 38);
}

// Errors name the file and the line: a record cut short is past the end of the file, a file
// that is not there is not found, a limit that is not a number is a type mismatch.
TEST(ReadTestRanges, ErrorsNameTheFileAndLine) {
  const std::string whole = testing::limit_file_text(testing::uniform_limits(0, 1));
  std::string cut = whole.substr(0, whole.rfind("\"Item 38\"")) + "\"Item 38\", 1, 2, 3\r\n";
  testing::Thrown error = testing::thrown([&] { read_test_ranges("QM EAFT Mode.txt", cut); });
  EXPECT_EQ(error.number, 62);
  EXPECT_PRED2(testing::contains, error.message, "QM EAFT Mode.txt line 39");
  EXPECT_PRED2(testing::contains, error.message, "Max2 of limit record 38");

  std::string low = whole;
  low.replace(low.find("\"Item 2\", 0"), 11, "\"Item 2\", low");
  error = testing::thrown([&] { read_test_ranges("r.txt", low); });
  EXPECT_EQ(error.number, 13);
  EXPECT_PRED2(testing::contains, error.message, "line 2");

  testing::TempDir dir;
  error = testing::thrown([&] { read_test_ranges(dir.path("FM EAFT Mode.txt")); });
  EXPECT_EQ(error.number, 53);
  EXPECT_PRED2(testing::contains, error.message, dir.path("FM EAFT Mode.txt"));
}

}  // namespace
}  // namespace morvane
