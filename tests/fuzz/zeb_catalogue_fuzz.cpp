// SPDX-License-Identifier: MIT
// Any text as a ZEB file: counting, cataloguing and reading packet bytes through the records.
#include "fuzz_support.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Session& session = fuzz::configured_session();
  fuzz::load_input(session, data, size, FileFormat::ZEB);
  fuzz::expect_only_runtime_errors([&] {
    const TelemetryFile& file = session.telemetry();
    for (int32_t i = 1; i <= session.catalogue.Information_Count(); ++i) {
      const Packet_Entry& entry = session.catalogue.Information_List[i];
      for (int k = 0; k < 40; k += 2) file.packet_word(entry, k, true);
    }
  });
  return 0;
}
