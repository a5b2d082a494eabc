// SPDX-License-Identifier: MIT
#include "core/packet_kinds.h"

#include <gtest/gtest.h>

#include <iterator>
#include <utility>
#include <string>

#include "core/session.h"
#include "test_files.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::TempDir;

struct Family {
  FileFormat format;
  FormatFamily family;
};
constexpr Family kFamilies[] = {
    {FileFormat::CSS, FormatFamily::Frames282}, {FileFormat::QM, FormatFamily::Frames282},
    {FileFormat::GRM, FormatFamily::Frames280}, {FileFormat::FM, FormatFamily::Frames280},
    {FileFormat::ZEB, FormatFamily::Zeb},
};

// The label a family gives to a packet built for `label`: ZEB knows no class 10.
LabelCode expected_label(LabelCode label, FormatFamily family) {
  if (!label_rule(label).binary_only || family != FormatFamily::Zeb) return label;
  return kind_of(label) == PacketKind::ProgressEvent ? LabelCode::UnknownProgressEvent : LabelCode::UnknownAcceptance;
}

const EntryList& list_of(const Catalogue& catalogue, PacketKind kind) {
  switch (packet_kind_info(kind).list) {
    case CatalogueList::HK: return catalogue.HK_List;
    case CatalogueList::Science: return catalogue.Science_List;
    case CatalogueList::Information: return catalogue.Information_List;
  }
  return catalogue.Information_List;
}

// One file of the family holding one packet built from the table for `label`, whole (flags 3).
void load_one_packet(Session& session, const TempDir& dir, LabelCode label, const Family& f) {
  const std::string path = dir.path("one." + std::string(format_tag(f.format)));
  if (f.family == FormatFamily::Zeb) {
    testing::write_file(path, testing::zeb_text({testing::zeb_record(label, {{6, 3}, {7, 21}, {8, 11}, {9, 400}})}));
  } else {
    FrameWriter writer(frame_stride(f.format));
    writer.add_frame({testing::labelled(label, 0xC000 + 21, 11, 400)});
    testing::write_bytes(path, writer.bytes());
  }
  load_telemetry(session, path, f.format);
}

TEST(PacketKinds, EveryLabelOfTheTableIsClassifiedAsSuchByEveryFormatFamily) {
  TempDir dir;
  for (const Family& f : kFamilies) {
    for (const LabelRule& rule : kLabelRules) {
      const std::string context = std::string(format_tag(f.format)) + " \"" + std::string(label_text(rule.label)) + "\"";
      Session session;
      load_one_packet(session, dir, rule.label, f);
      const LabelCode label = expected_label(rule.label, f.family);
      const PacketKindInfo& kind = packet_kind_info(kind_of(label));
      const EntryList& list = list_of(session.catalogue, kind.kind);
      ASSERT_GE(list.size(), 1) << context;
      EXPECT_EQ(list[1].Label, label) << context;
      // Binary lengths are the length field + 7; ZEB gives the field as it stands.
      EXPECT_EQ(list[1].Packet_Length, kind.slot ? -1 : f.family == FormatFamily::Zeb ? 11 : 18) << context;
      EXPECT_EQ(list[1].Sequence_Count, kind.slot ? -1 : 21) << context;
      EXPECT_EQ(list[1].Segment_Flags, kind.list == CatalogueList::Science ? 3 : 0) << context;

      // A binary frame with one packet ends in an empty slot, unless the packet is a slot itself.
      const bool trailing_empty = f.family != FormatFamily::Zeb && !kind.slot;
      // GRM/FM frames are counted in 256-byte units: the frame past the end reads as empty.
      const int32_t empty_frames = session.Packet_Count - 1;
      const int32_t entries = session.catalogue.HK_Count() + session.catalogue.Science_Count() +
                              session.catalogue.Information_Count();
      EXPECT_EQ(entries, 1 + trailing_empty + empty_frames) << context;
      for (int c = 0; c < kCounterCount; ++c) {
        const auto counter = static_cast<Counter>(c);
        int32_t expected = counter_of(label) == counter;
        if (counter == Counter::Empty) expected += trailing_empty + empty_frames;
        // Flags 3 make a whole isotope spectrum in every family.
        if (counter == Counter::IsotopeSpectrum && label == LabelCode::IsotopeSpectrum) ++expected;
        EXPECT_EQ(session.catalogue.counters[counter], expected) << context << " counter " << c;
      }
    }
  }
}

TEST(PacketKinds, CountersAddUpAndKeepTheirNames) {
  CatalogueCounters a, b;
  for (int c = 0; c < kCounterCount; ++c) {
    a[static_cast<Counter>(c)] = c + 1;
    b[static_cast<Counter>(c)] = 100 * (c + 1);
  }
  a.add(b);
  const std::pair<int32_t, Counter> named[] = {
      {a.Complete_Count(), Counter::Complete},
      {a.Concise_Count(), Counter::Concise},
      {a.Auxiliary_Count(), Counter::Auxiliary},
      {a.GC_Spectrum_Count(), Counter::GcSpectrum},
      {a.Isotope_Packet_Count(), Counter::IsotopePacket},
      {a.Isotope_Spectrum_Count(), Counter::IsotopeSpectrum},
      {a.Progress_Event_Count(), Counter::ProgressEvent},
      {a.Warning_Event_Count(), Counter::WarningEvent},
      {a.Memory_Checksum_Count(), Counter::MemoryChecksum},
      {a.Memory_Dump_Count(), Counter::MemoryDump},
      {a.Acceptance_Success_Count(), Counter::AcceptanceSuccess},
      {a.Acceptance_Failure_Count(), Counter::AcceptanceFailure},
      {a.Unknown_Count(), Counter::Unknown},
      {a.Empty_Count(), Counter::Empty},
  };
  static_assert(std::size(named) == kCounterCount);
  for (const auto& [value, counter] : named) {
    EXPECT_EQ(value, 101 * (static_cast<int>(counter) + 1)) << static_cast<int>(counter);
  }
}

TEST(PacketKinds, SelectorValuesOutsideTheRulesFallBackToTheKindsOtherLabel) {
  struct Case {
    PacketKind kind;
    int32_t value;
    FormatFamily family;
    LabelCode label;
  };
  const Case cases[] = {
      {PacketKind::ProgressEvent, 10, FormatFamily::Frames280, LabelCode::NpeMemoryChecksum},
      {PacketKind::ProgressEvent, 10, FormatFamily::Zeb, LabelCode::UnknownProgressEvent},
      {PacketKind::Acceptance, -1, FormatFamily::Frames282, LabelCode::UnknownAcceptance},
      {PacketKind::Acceptance, 0, FormatFamily::Zeb, LabelCode::UnknownAcceptance},
      {PacketKind::Housekeeping, 65535, FormatFamily::Frames282, LabelCode::HousekeepingUnknown},
      {PacketKind::Science, -2147483647 - 1, FormatFamily::Zeb, LabelCode::ScienceUnknown},
      {PacketKind::Science, 11, FormatFamily::Zeb, LabelCode::ScienceUnknown},
      {PacketKind::MemoryDump, 7, FormatFamily::Frames282, LabelCode::MemoryDump},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(label_of(c.kind, c.value, c.family), c.label) << c.value;
  }
  // A class word with a low byte is no class at all.
  EXPECT_EQ(event_class_of_word(0x0A00), 10);
  EXPECT_EQ(event_class_of_word(0x0101), -1);
}

}  // namespace
}  // namespace morvane
