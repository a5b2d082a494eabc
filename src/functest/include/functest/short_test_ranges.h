// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

#include "core/file_format.h"
#include "functest/short_test_mode.h"

namespace morvane {

// One lower and upper limit; both are inclusive.
struct LimitPair {
  double min = 0;
  double max = 0;
  bool holds(double value) const { return !(value < min) && !(value > max); }
  bool operator==(const LimitPair&) const = default;
};

// One record of a limit file: a name (for people only; the program goes by position) and three
// limit pairs. Pair 1 limits the 5 V current rise, pair 2 the 28 V rise, pair 3 a temperature
// rise or a plain value.
struct RangeRecord {
  std::string name;
  std::array<LimitPair, 3> pairs{};
  // Pair p, 1..3.
  const LimitPair& pair(int p) const { return pairs.at(static_cast<size_t>(p - 1)); }
};

// The 38 records of a limit file. Records 1-10 limit the sensors, 11-16 the heaters, 17-21 the
// large and 22-26 the small reactors, 27-31 the L-valves, 32-36 the supply rails and the RF
// frequency, 37 every valve and 38 every injector valve.
struct TestRanges {
  static constexpr int kRecords = 38;
  std::string path;  // the file they were read from
  std::array<RangeRecord, kRecords> records{};
  // Record r, 1..38.
  const RangeRecord& record(int r) const { return records.at(static_cast<size_t>(r - 1)); }
  double Min(int pair, int r) const { return record(r).pair(pair).min; }
  double Max(int pair, int r) const { return record(r).pair(pair).max; }
};

// The limit file of a file type and mode below the base folder:
// Egse_Path + "\EGSE_Info\Test Ranges\" + type + " " + mode + " Mode.txt", resolved on this
// machine (each folder matched without regard to case).
std::string test_ranges_path(const std::string& egse_path, FileFormat type, TestMode mode);

// Reads the 38 records of name and six limits (Min1, Max1, Min2, Max2, Min3, Max3) separated
// by commas or line breaks. A missing file is "File not found" naming the path; a short file
// "Input past end of file" and a limit that is not a number "Type mismatch", each naming the
// path, the line and the record. Anything after record 38 is ignored.
TestRanges read_test_ranges(const std::string& path);
// The same from text already in memory (path only names it in errors).
TestRanges read_test_ranges(const std::string& path, std::string text);

}  // namespace morvane
