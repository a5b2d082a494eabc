// SPDX-License-Identifier: MIT
// The classifier of the ZEB text format: one packet a record, its header fields given as items.
#include <string>

#include "core/error.h"
#include "core/session.h"

namespace morvane {

namespace {

constexpr int32_t kProgressRecords = 65536;

void classify_record(const ZebRecord& item, int32_t r, Catalogue& catalogue) {
  Catalogue_Counters& n = catalogue.counters;
  Packet_Entry entry;
  entry.Packet_Frame = r;
  entry.Packet_Position = 0;
  entry.Packet_Length = item[8];
  entry.Sequence_Count = item[7];
  entry.Lander_Time = item[9];
  const int32_t selector = item[17];
  const int32_t event_class = item[15];  // compared whole; class 10 does not exist here
  switch (item[5]) {
    case 1844:
      entry.Label = selector == 1 ? LabelCode::Concise : selector == 2 ? LabelCode::Complete
                                                                       : LabelCode::HousekeepingUnknown;
      if (selector == 1) ++n.Concise_Count;
      if (selector == 2) ++n.Complete_Count;
      catalogue.HK_List.push_back(entry);
      return;
    case 1847:
      switch (event_class) {
        case 1: entry.Label = LabelCode::NormalProgressEvent; ++n.Progress_Event_Count; break;
        case 2: entry.Label = LabelCode::WarningAnomalousEvent; ++n.Warning_Event_Count; break;
        default: entry.Label = LabelCode::UnknownProgressEvent; ++n.Unknown_Count; break;
      }
      catalogue.Information_List.push_back(entry);
      return;
    case 1841:
      switch (event_class) {
        case 1: entry.Label = LabelCode::AcceptanceSuccess; ++n.Acceptance_Success_Count; break;
        case 2: entry.Label = LabelCode::AcceptanceFailure; ++n.Acceptance_Failure_Count; break;
        default: entry.Label = LabelCode::UnknownAcceptance; ++n.Unknown_Count; break;
      }
      catalogue.Information_List.push_back(entry);
      return;
    case 1849:
      entry.Label = LabelCode::MemoryDump;
      ++n.Memory_Dump_Count;
      catalogue.Information_List.push_back(entry);
      return;
    case 1852: {
      if (item[6] < INT16_MIN || item[6] > INT16_MAX) {
        raise(ErrorNumber::Overflow, "ZEB record " + std::to_string(r) + ": segmentation flags " +
                                         std::to_string(item[6]) + " do not fit 16 bits");
      }
      entry.Segment_Flags = static_cast<int16_t>(item[6]);
      switch (selector) {
        case 1: entry.Label = LabelCode::AuxiliaryData; ++n.Auxiliary_Count; break;
        case 2: entry.Label = LabelCode::GcSpectrum; ++n.GC_Spectrum_Count; break;
        case 3:
          entry.Label = LabelCode::IsotopeSpectrum;
          ++n.Isotope_Packet_Count;
          if (item[6] & 1) ++n.Isotope_Spectrum_Count;
          break;
        default: entry.Label = LabelCode::ScienceUnknown; break;
      }
      catalogue.Science_List.push_back(entry);
      return;
    }
    default:
      entry.Packet_Length = -1;
      entry.Sequence_Count = -1;
      entry.Lander_Time = -1;
      if (item[5] == 0) {
        entry.Label = LabelCode::Empty;
        ++n.Empty_Count;
      } else {
        entry.Label = LabelCode::Unknown;
        ++n.Unknown_Count;
      }
      catalogue.Information_List.push_back(entry);
      return;
  }
}

}  // namespace

void Catalogue_ZEB_File(Session& session, const ProgressFunction& progress) {
  const ZebText& zeb = session.telemetry().zeb();
  // Not incremental: the ZEB classifier always starts at record 1.
  for (int32_t r = 1; r <= session.Packet_Count; ++r) {
    classify_record(zeb.record(r), r, session.catalogue);
    if (progress && r % kProgressRecords == 0) progress(r, session.Packet_Count);
  }
  if (progress) progress(session.Packet_Count, session.Packet_Count);
}

}  // namespace morvane
