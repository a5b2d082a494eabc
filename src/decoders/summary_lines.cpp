// SPDX-License-Identifier: MIT
#include "decoders/summary_lines.h"

#include "core/number_text.h"

namespace morvane {

std::string hk_list_line(int32_t i, const Packet_Entry& e) {
  return left_in(i, 8) + std::string(label_text(e.Label)) + right_in(e.Sequence_Count, 10) +
         right_in(e.Lander_Time, 11) + right_in(e.Packet_Frame, 9);
}

std::string science_list_line(int32_t i, const Packet_Entry& e) {
  std::string line = left_in(i, 8) + std::string(label_text(e.Label)) + right_in(e.Sequence_Count, 9) +
                     right_in(e.Lander_Time, 11) + right_in(e.Packet_Frame, 9);
  if (e.Label == LabelCode::IsotopeSpectrum) {
    if (e.Segment_Flags & 2) line += "   Start";
    if (e.Segment_Flags & 1) line += "   End";
  }
  return line;
}

std::string information_list_line(int32_t i, const Packet_Entry& e) {
  // Slots have no sequence count or time: a shorter line whose frame ends in the same column.
  if (e.Label == LabelCode::Empty || e.Label == LabelCode::Unknown) {
    return left_in(i, 12) + std::string(label_text(e.Label)) + right_in(e.Packet_Frame, 38);
  }
  return left_in(i, 8) + std::string(label_text(e.Label)) + right_in(e.Sequence_Count, 8) +
         right_in(e.Lander_Time, 9) + right_in(e.Packet_Frame, 9);
}

std::vector<SummaryCount> summary_counts(const Session& session) {
  const Catalogue& c = session.catalogue;
  const CatalogueCounters& n = c.counters;
  const bool zeb = session.loaded() && session.File_Type == FileFormat::ZEB;
  auto count = [](int64_t v) { return std::to_string(v); };
  const int64_t total =
      static_cast<int64_t>(c.HK_Count()) + c.Science_Count() + c.Information_Count() - n.Empty_Count();
  return {
      {"total_count", "Total Morvane packets  ", count(total)},
      {"hk_count", "Housekeeping packets", count(c.HK_Count())},
      {"science_count", "Science packets", count(c.Science_Count())},
      {"information_count", "Information packets", count(c.Information_Count())},
      {"packet_count", "Lander packets ", count(session.Packet_Count)},
      {"", "Number of :", ""},
      {"concise_count", "Number of Concise packets", count(n.Concise_Count())},
      {"complete_count", "Number of Complete packets  ", count(n.Complete_Count())},
      // No format carries compact housekeeping packets.
      {"compact_count", "Number of Compact packets =", kNotApplicable},
      {"progress_event_count", "Normal Progress Events", count(n.Progress_Event_Count())},
      {"warning_event_count", "Warning Events ", count(n.Warning_Event_Count())},
      {"memory_dump_count", "Memory Dumps", count(n.Memory_Dump_Count())},
      // ZEB records have no class 10, so memory checksum reports cannot occur in them.
      {"memory_checksum_count", "Memory Cheksums", zeb ? kNotApplicable : count(n.Memory_Checksum_Count())},
      {"acceptance_success_count", "Acceptance Success ", count(n.Acceptance_Success_Count())},
      {"acceptance_failure_count", "Acceptance Failure ", count(n.Acceptance_Failure_Count())},
      {"unknown_count", "Unknown Packets", count(n.Unknown_Count())},
      {"empty_count", "Empty Packets", count(n.Empty_Count())},
      {"isotope_spectrum_count", "Number of Complete Spectra", count(n.Isotope_Spectrum_Count())},
      {"isotope_packet_count", "Complete Spectra Packets", count(n.Isotope_Packet_Count())},
      {"gc_spectrum_count", "Compact Spectra Packets", count(n.GC_Spectrum_Count())},
      {"auxiliary_count", "Auxiliary Data Packets", count(n.Auxiliary_Count())},
  };
}

}  // namespace morvane
