// SPDX-License-Identifier: MIT
// A choice byte, a pick byte and any bytes as a telemetry file: the short form tests found in it
// in the mode picked, one of them evaluated and printed as the text or the HTML report.
#include <array>

#include "functest/short_message_load.h"
#include "functest/short_test_report.h"
#include "fuzz_support.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const uint8_t choice = data[0];
  const uint8_t pick = data[1];
  const std::array<FileFormat, 5> formats = {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM,
                                             FileFormat::ZEB};
  Session& session = fuzz::configured_session();
  session.Byte_Reverse = (choice & 1) != 0;
  fuzz::load_input(session, data + 2, size - 2, formats[(choice >> 1) % formats.size()]);
  const TestMode mode = pick & 1 ? TestMode::EAFT : TestMode::CruisePhase;
  session.Test_Mode = test_mode_text(mode);
  fuzz::expect_only_runtime_errors([&] {
    const ShortTestList list = find_short_tests(session, mode);
    if (list.Test_Count() == 0) return;
    const int32_t line = 1 + (pick & 0x7F) / 2 % list.Test_Count();
    session.Current_Science_Index = science_index_of_line(list, line);
    const TestReportSource source{session.File_Name, std::string(format_tag(session.File_Type)), line,
                                    list.Test_Count(), session.Current_Science_Index, "", "", ""};
    const TestReport report = make_test_report(fuzz::evaluate_current_test(session), source);
    if (pick & 0x80) {
      test_report_html(report);
    } else {
      test_report_text(report);
    }
  });
  return 0;
}
