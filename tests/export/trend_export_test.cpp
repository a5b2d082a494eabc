// SPDX-License-Identifier: MIT
#include "export/trend_export.h"

#include "export_fixture.h"

namespace morvane {
namespace {

class TrendExport : public testing::ExportTest {};

TEST_F(TrendExport, WritesTheNamesUnitsAndEveryPacketWithinTheRange) {
  const std::vector<TrendSeries> series{
      {28, "AD590", "oC", {{100, 25}, {108, 25.5}, {116, 26.125}, {124, -0.5}}},
      {29, "Docking Stn", "mm", {{100, 0}, {108, 1.3}, {116, 2.6}, {124, 1e-7}}},
  };
  std::string text = written([&](LineSink& out) { EXPECT_EQ(write_trend_table(series, 108, 124, out), 3); });
  EXPECT_EQ(text,
            "Lander time\tAD590\tDocking Stn\r\ns\toC\tmm\r\n"
            "108\t25.5\t1.3\r\n116\t26.125\t2.6\r\n124\t-0.5\t1E-07\r\n");
  text = written([&](LineSink& out) { EXPECT_EQ(write_trend_table(series, 101.5, 107, out), 0); }, ';');
  EXPECT_EQ(text, "Lander time;AD590;Docking Stn\r\ns;oC;mm\r\n");
  text = written([&](LineSink& out) { EXPECT_EQ(write_trend_table({}, 0, 1000, out), 0); });
  EXPECT_EQ(text, "Lander time\r\ns\r\n");
}

}  // namespace
}  // namespace morvane
