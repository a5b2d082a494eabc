// SPDX-License-Identifier: MIT
#include "core/packet_kinds.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

// Each label of every format family is classified in the simulator's test of what it writes
// (every label, every format) and in the catalogue tests (each identifier and selector word).
TEST(PacketKinds, SelectorValuesOutsideTheRulesFallBackToTheKindsOtherLabel) {
  const std::tuple<PacketKind, int32_t, FormatFamily, LabelCode> cases[] = {
      {PacketKind::ProgressEvent, 10, FormatFamily::Frames280, LabelCode::NpeMemoryChecksum},
      {PacketKind::ProgressEvent, 10, FormatFamily::Zeb, LabelCode::UnknownProgressEvent},
      {PacketKind::Acceptance, -1, FormatFamily::Frames282, LabelCode::UnknownAcceptance},
      {PacketKind::Acceptance, 0, FormatFamily::Zeb, LabelCode::UnknownAcceptance},
      {PacketKind::Housekeeping, 65535, FormatFamily::Frames282, LabelCode::HousekeepingUnknown},
      {PacketKind::Science, -2147483647 - 1, FormatFamily::Zeb, LabelCode::ScienceUnknown},
      {PacketKind::Science, 11, FormatFamily::Zeb, LabelCode::ScienceUnknown},
      {PacketKind::MemoryDump, 7, FormatFamily::Frames282, LabelCode::MemoryDump},
  };
  for (const auto& [kind, value, family, label] : cases) EXPECT_EQ(label_of(kind, value, family), label) << value;
  // A class word with a low byte is no class at all.
  EXPECT_EQ(std::pair(event_class_of_word(0x0A00), event_class_of_word(0x0101)), std::pair(10, -1));

}

}  // namespace
}  // namespace morvane
