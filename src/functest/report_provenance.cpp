// SPDX-License-Identifier: MIT
#include "functest/report_provenance.h"

#include <array>
#include <ctime>

#include "core/file_digest.h"

namespace morvane {

std::string local_time_now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", &local);
  return text.data();
}

void stamp_report_source(TestReportSource& source, const std::string& program_version) {
  source.evaluated_at = local_time_now();
  source.program_version = program_version;
  source.file_sha256 = file_sha256(source.file_name);
}

}  // namespace morvane
