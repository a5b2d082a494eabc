// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "functest/short_test_evaluation.h"

namespace morvane {

// Where an evaluated test came from, for the report's heading.
struct TestReportSource {
  std::string file_name;
  std::string file_type;    // "CSS", "QM", ...
  int32_t test_number = 0;  // its line in the selection list, 1..
  int32_t test_count = 0;   // the lines of the list
  int32_t science_index = 0;
  // How the report was made (report_provenance.h); each left out of the heading when empty.
  std::string evaluated_at;     // local date and time of the evaluation
  std::string program_version;  // of the program that evaluated it
  std::string file_sha256;      // of the telemetry file
};

// One table of the report: a title, column headings and rows of cells (red where the view
// shows red).
struct ReportTable {
  std::string title;
  std::vector<std::string> headings;
  std::vector<std::vector<Cell>> rows;
};

// A printable account of one evaluated test: the heading lines (label, text) and one table per
// tab with every row's values, the limits they were checked against and the verdict. Limits are
// "min .. max" and are left empty where a value is not checked.
struct TestReport {
  std::string title;
  std::vector<std::pair<std::string, Cell>> heading;
  std::vector<ReportTable> tables;
};

TestReport make_test_report(const ShortTestEvaluation& test, const TestReportSource& source);

// The report as plain text in aligned columns, and as a self-contained HTML page for printing.
std::string test_report_text(const TestReport& report);
std::string test_report_html(const TestReport& report);

// "min .. max" of a limit pair, in default decimal text.
std::string limits_text(const LimitPair& limits);

}  // namespace morvane
