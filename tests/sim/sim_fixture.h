// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

#include "core/session.h"
#include "sim/config_writer.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane::testing {

// A base folder and one telemetry file of the simulated instrument, loaded through the core as
// the File menu loads it.
struct SimulatedFile {
  TempDir dir;
  Session session;
  sim::TelemetrySummary written;

  explicit SimulatedFile(sim::TelemetryOptions options) {
    session.config = load_configuration(sim::write_configuration(dir.path("base")));
    session.Byte_Reverse = options.byte_reverse || options.format == FileFormat::ZEB;
    written = sim::write_telemetry(dir.path("t.dat"), options);
    load_telemetry(session, dir.path("t.dat"), options.format);
  }
  explicit SimulatedFile(FileFormat format) : SimulatedFile(options_for(format)) {}

  static sim::TelemetryOptions options_for(FileFormat format) {
    sim::TelemetryOptions options;
    options.format = format;
    return options;
  }
  const Catalogue& catalogue() const { return session.catalogue; }
  int32_t word(const Packet_Entry& entry, int offset) const {
    return session.telemetry().packet_word(entry, offset, session.Byte_Reverse);
  }
};

// Catalogue entries of each label, over the three lists.
inline std::array<int64_t, kLabelCount> label_counts(const Catalogue& catalogue) {
  std::array<int64_t, kLabelCount> counts{};
  for (const EntryList* list : {&catalogue.HK_List, &catalogue.Science_List, &catalogue.Information_List}) {
    for (int32_t i = 1; i <= list->size(); ++i) ++counts[static_cast<size_t>((*list)[i].Label)];
  }
  return counts;
}

}  // namespace morvane::testing
