// SPDX-License-Identifier: MIT
#include "export/export_progress.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvane {
namespace {

// The largest gap between two reports while an export of `total` steps runs to its end.
int64_t widest_gap_between_reports(int64_t total) {
  std::vector<int64_t> reported;
  const ExportProgress progress = [&](int64_t done, int64_t) {
    reported.push_back(done);
    return true;
  };
  ProgressTicker ticker(progress, total);
  for (int64_t done = 0; done < total; ++done) ticker.at(done);
  ticker.finished();
  int64_t widest = 0;
  for (size_t k = 1; k < reported.size(); ++k) widest = std::max(widest, reported[k] - reported[k - 1]);
  return widest;
}

TEST(ProgressTicker, ReportsEveryHalfPerCentButNeverFewerThanEveryFewThousandSteps) {
  EXPECT_EQ(widest_gap_between_reports(1000), 5);        // half a per cent
  EXPECT_EQ(widest_gap_between_reports(400'000), 2000);  // half a per cent
  // Millions of rows: half a per cent would hold the window too long between its events.
  EXPECT_EQ(widest_gap_between_reports(8'000'000), ProgressTicker::kMostStepsBetweenReports);
}

TEST(ProgressTicker, ACancelStopsAtTheNextReport) {
  int reports = 0;
  const ExportProgress cancel_at_second = [&](int64_t, int64_t) { return ++reports < 2; };
  ProgressTicker ticker(cancel_at_second, 1'000'000);
  int64_t done = 0;
  while (ticker.at(done)) ++done;
  EXPECT_EQ(done, ProgressTicker::kMostStepsBetweenReports);
}

}  // namespace
}  // namespace morvane
