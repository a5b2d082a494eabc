// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/file_digest.h"
#include "functest/short_test_report.h"

namespace morvane {

// The local date and time now, "YYYY-MM-DD HH:MM:SS".
std::string local_time_now();

// Fills what says how a report was made: when the test was evaluated, by which version of the
// program, and the SHA-256 of the telemetry file (source.file_name).
void stamp_report_source(TestReportSource& source, const std::string& program_version);

}  // namespace morvane
