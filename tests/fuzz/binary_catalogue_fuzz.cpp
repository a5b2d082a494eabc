// SPDX-License-Identifier: MIT
// Any bytes as a telemetry file of the four binary formats, both byte orders: the catalogue,
// the housekeeping bytes and the summary lines must come out or a run-time error, nothing else.
#include "fuzz_support.h"
#include "decoders/summary_lines.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const uint8_t choice = data[0];
  Session& session = fuzz::configured_session();
  session.Byte_Reverse = (choice & 1) != 0;
  fuzz::load_input(session, data + 1, size - 1, (choice & 2) ? FileFormat::GRM : FileFormat::CSS);
  fuzz::expect_only_runtime_errors([&] {
    const Catalogue& c = session.catalogue;
    for (int32_t i = 1; i <= c.HK_Count(); ++i) hk_list_line(i, c.HK_List[i]);
    for (int32_t i = 1; i <= c.Science_Count(); ++i) science_list_line(i, c.Science_List[i]);
    for (int32_t i = 1; i <= c.Information_Count(); ++i) information_list_line(i, c.Information_List[i]);
    summary_counts(session);
  });
  return 0;
}
