// SPDX-License-Identifier: MIT
#include "functest/test_ranges.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "short_test_files.h"

namespace morvane {
namespace {

TEST(TestRangesPath, NamesTheFileByTypeAndModeWhateverTheFolderCase) {
  testing::TempDir dir;
  testing::write_file(dir.path("EGSE_info/test ranges/FM Cruise Phase Mode.txt"), "");
  EXPECT_EQ(test_ranges_path(dir.root(), FileFormat::FM, TestMode::CruisePhase),
            dir.path("EGSE_info/test ranges/FM Cruise Phase Mode.txt"));
  EXPECT_EQ(test_ranges_path(dir.root(), FileFormat::ZEB, TestMode::EAFT),
            dir.path("EGSE_info/test ranges/ZEB EAFT Mode.txt"));
}

TEST(ReadTestRanges, ReadsNameAndThreePairsPerRecord) {
  auto records = testing::uniform_limits(-1, 1);
  records[0] = Range_Record{"Pressure, gauge 1", {Limit_Pair{0.5, 1.5}, Limit_Pair{-2, 2}, Limit_Pair{0.9, 1.1}}};
  records[37] = Range_Record{"Injector", {Limit_Pair{1, 2}, Limit_Pair{3, 4}, Limit_Pair{5, 6}}};
  const Test_Ranges ranges = read_test_ranges("r.txt", testing::limit_file_text(records) + "trailing, words\r\n");
  EXPECT_EQ(ranges.record(1).name, "Pressure, gauge 1");
  EXPECT_EQ(ranges.record(1).pair(1), (Limit_Pair{0.5, 1.5}));
  EXPECT_EQ(ranges.Min(3, 1), 0.9);
  EXPECT_EQ(ranges.Max(3, 1), 1.1);
  EXPECT_EQ(ranges.Max(2, 38), 4);
  EXPECT_EQ(ranges.path, "r.txt");
}

TEST(ReadTestRanges, LineBreaksCarryNoMeaning) {
  std::string text;
  for (int r = 1; r <= 38; ++r) text += "R" + std::to_string(r) + "\n1\n2, 3\n4, 5, " + std::to_string(r) + "\n";
  const Test_Ranges ranges = read_test_ranges("r.txt", text);
  EXPECT_EQ(ranges.record(38).name, "R38");
  EXPECT_EQ(ranges.Max(3, 38), 38);
}

TEST(ReadTestRanges, AShortFileNamesThePathAndLine) {
  std::string text = testing::limit_file_text(testing::uniform_limits(0, 1));
  text.resize(text.rfind("\"Item 38\""));
  text += "\"Item 38\", 1, 2, 3\r\n";
  try {
    read_test_ranges("QM EAFT Mode.txt", text);
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 62);
    EXPECT_NE(error.detail().find("QM EAFT Mode.txt line 39"), std::string::npos) << error.detail();
    EXPECT_NE(error.detail().find("Max2 of limit record 38"), std::string::npos) << error.detail();
  }
}

TEST(ReadTestRanges, AMissingFileNamesThePath) {
  testing::TempDir dir;
  try {
    read_test_ranges(dir.path("FM EAFT Mode.txt"));
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 53);
    EXPECT_NE(error.message().find(dir.path("FM EAFT Mode.txt")), std::string::npos);
  }
}

TEST(ReadTestRanges, ALimitThatIsNotANumberIsATypeMismatch) {
  std::string text = testing::limit_file_text(testing::uniform_limits(0, 1));
  text.replace(text.find("\"Item 2\", 0"), 11, "\"Item 2\", low");
  try {
    read_test_ranges("r.txt", text);
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 13);
    EXPECT_NE(error.detail().find("line 2"), std::string::npos) << error.detail();
  }
}

}  // namespace
}  // namespace morvane
