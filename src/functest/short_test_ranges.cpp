// SPDX-License-Identifier: MIT
#include "functest/short_test_ranges.h"

#include "core/free_format_reader.h"
#include "core/windows_path.h"

namespace morvane {

namespace {

TestRanges read_records(FreeFormatReader& reader) {
  TestRanges ranges;
  ranges.path = reader.path();
  static constexpr const char* kFields[] = {"Min1", "Max1", "Min2", "Max2", "Min3", "Max3"};
  for (int r = 1; r <= TestRanges::kRecords; ++r) {
    RangeRecord& record = ranges.records[static_cast<size_t>(r - 1)];
    const std::string of_record = " of limit record " + std::to_string(r) + " (of 38)";
    record.name = reader.read_text("the name" + of_record);
    for (int field = 0; field < 6; ++field) {
      const double value = reader.read_double(std::string(kFields[field]) + of_record);
      LimitPair& pair = record.pairs[static_cast<size_t>(field / 2)];
      (field % 2 == 0 ? pair.min : pair.max) = value;
    }
  }
  return ranges;
}

}  // namespace

std::string test_ranges_path(const std::string& egse_path, FileFormat type, TestMode mode) {
  return config_path(egse_path, "\\EGSE_Info\\Test Ranges\\" + std::string(format_tag(type)) + " " +
                                    std::string(test_mode_text(mode)) + " Mode.txt");
}

TestRanges read_test_ranges(const std::string& path) {
  FreeFormatReader reader(path);
  return read_records(reader);
}

TestRanges read_test_ranges(const std::string& path, std::string text) {
  FreeFormatReader reader(path, std::move(text));
  return read_records(reader);
}

}  // namespace morvane
