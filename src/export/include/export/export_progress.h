// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>

namespace morvane {

// Told now and then how far a long export is (done of total steps: rows, or spectra read and
// rows); returns false to cancel it. The lines written before a cancel stay in the file.
using ExportProgress = std::function<bool(int64_t done, int64_t total)>;

// What an export wrote.
struct ExportResult {
  int64_t rows = 0;  // data rows (spectra: bin rows), the heading lines not counted
  bool cancelled = false;
};

// Reports about every half per cent, so a dialog's bar moves smoothly without costing the loop,
// and at least every 4096 steps: the window serves its events at each report, and half a per
// cent of millions of rows would hold it for a third of a second.
class ProgressTicker {
 public:
  static constexpr int64_t kMostStepsBetweenReports = 4096;

  ProgressTicker(const ExportProgress& progress, int64_t total)
      : progress_(progress),
        total_(total),
        step_(std::clamp<int64_t>(total / 200, 1, kMostStepsBetweenReports)),
        next_(0) {}

  // False when the user cancelled; reports when done has reached the next step.
  bool at(int64_t done) {
    if (!progress_ || done < next_) return true;
    next_ = done + step_;
    return progress_(done, total_);
  }
  // The last report (done = total); everything is written by then, so a cancel changes nothing.
  void finished() {
    if (progress_) progress_(total_, total_);
  }

 private:
  const ExportProgress& progress_;
  int64_t total_;
  int64_t step_;
  int64_t next_;
};

}  // namespace morvane
