// SPDX-License-Identifier: MIT
#include "sim/short_test_ranges.h"

#include <gtest/gtest.h>

#include "core/free_format_reader.h"
#include "core/windows_path.h"
#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

TEST(TestRanges, EveryTypeAndModeHasAFileOf38RecordsOfANameAndSixLimits) {
  testing::TempDir dir;
  const std::string base = sim::write_configuration(dir.path("base"));
  for (const char* type : {"CSS", "QM", "GRM", "FM", "ZEB"}) {
    for (const char* mode : {"Cruise Phase", "EAFT"}) {
      // Found the way the evaluation names it, folder letter case and all.
      const std::string relative = std::string("\\EGSE_Info\\Test Ranges\\") + type + " " + mode + " Mode.txt";
      FreeFormatReader reader(resolve_windows_path(config_path(base, relative)));
      const auto records = sim::test_ranges(mode);
      for (const sim::RangeRecord& r : records) {
        EXPECT_EQ(reader.read_text("name"), r.name);
        for (double limit : {r.min1, r.max1, r.min2, r.max2, r.min3, r.max3}) {
          EXPECT_DOUBLE_EQ(reader.read_double("limit"), limit) << type << " " << mode << " " << r.name;
        }
      }
      EXPECT_TRUE(reader.at_end()) << relative;
    }
  }
}

TEST(TestRanges, EveryPairIsARangeAndTheModesDifferWhereTheirSequencesDo) {
  const auto cruise = sim::test_ranges("Cruise Phase");
  const auto eaft = sim::test_ranges("EAFT");
  for (const auto* records : {&cruise, &eaft}) {
    for (const sim::RangeRecord& r : *records) {
      EXPECT_LE(r.min1, r.max1) << r.name;
      EXPECT_LE(r.min2, r.max2) << r.name;
      EXPECT_LE(r.min3, r.max3) << r.name;
    }
  }
  EXPECT_EQ(cruise[36].name, "Valves");
  EXPECT_EQ(cruise[37].name, "Injector Valves");
  for (size_t i = 0; i < cruise.size(); ++i) {
    // Gauges 1 and 2 are read in the other order in "EAFT"; L-valve 7's baselines differ.
    const bool differs = i == 0 || i == 1 || i == 30;
    EXPECT_EQ(cruise[i].min3 != eaft[i].min3 || cruise[i].min1 != eaft[i].min1, differs) << cruise[i].name;
  }
}

}  // namespace
}  // namespace morvane
