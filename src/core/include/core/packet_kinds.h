// SPDX-License-Identifier: MIT
#pragma once

// The one table of packet kinds: what identifies each kind of source packet in a frame or a ZEB
// record, which word selects its label, the list it is entered in and the counter each label
// raises, with the differences between the format families. The classifiers, the simulator,
// the integrity check and the tests all take these facts from here.

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "core/file_format.h"
#include "core/packet_entry.h"

namespace morvane {

enum class PacketKind : uint8_t { Housekeeping, ProgressEvent, Acceptance, MemoryDump, Science, Empty, Unknown };
inline constexpr int kPacketKindCount = 7;

// The catalogue's three lists.
enum class CatalogueList : uint8_t { HK, Science, Information };

// The classifier variants: the binary families differ in frame stride and the isotope flag bit;
// ZEB gives the header as items and knows no event class 10.
enum class FormatFamily : uint8_t { Frames282, Frames280, Zeb };

inline FormatFamily format_family(FileFormat format) {
  return has_282_byte_frames(format) ? FormatFamily::Frames282
         : has_280_byte_frames(format) ? FormatFamily::Frames280
                                       : FormatFamily::Zeb;
}

// The word that selects a kind's label: the sub-type (housekeeping, science) or the class of
// events and acceptance reports.
enum class Selector : uint8_t { None, SubType, EventClass };

// Where the selector lies: a byte offset in a binary packet, an item of a ZEB record.
constexpr int selector_offset(Selector selector) { return selector == Selector::SubType ? 16 : 14; }
constexpr int selector_item(Selector selector) { return selector == Selector::SubType ? 17 : 15; }

// The per-type counters of a catalogue, in the order they are kept.
enum class Counter : uint8_t {
  Complete,
  Concise,
  Auxiliary,
  GcSpectrum,
  IsotopePacket,
  IsotopeSpectrum,  // not raised by a label: by the isotope flag rule
  ProgressEvent,
  WarningEvent,
  MemoryChecksum,
  MemoryDump,
  AcceptanceSuccess,
  AcceptanceFailure,
  Unknown,
  Empty,
  None,  // a label that raises no counter
};
inline constexpr int kCounterCount = 14;

struct PacketKindInfo {
  PacketKind kind;
  const char* name;
  int32_t binary_identifier;  // the word at packet offset 0; 0 for an empty slot, -1 for any unknown word
  int32_t zeb_identifier;     // ZEB item 5, likewise
  CatalogueList list;
  Selector selector;
  bool slot;  // an empty or unknown slot: no header is read, and it ends its frame
};

inline constexpr std::array<PacketKindInfo, kPacketKindCount> kPacketKinds{{
    {PacketKind::Housekeeping, "housekeeping", 0x0F34, 1844, CatalogueList::HK, Selector::SubType, false},
    {PacketKind::ProgressEvent, "progress event", 0x0F37, 1847, CatalogueList::Information, Selector::EventClass,
     false},
    {PacketKind::Acceptance, "acceptance report", 0x0F31, 1841, CatalogueList::Information, Selector::EventClass,
     false},
    {PacketKind::MemoryDump, "memory dump", 0x0F39, 1849, CatalogueList::Information, Selector::None, false},
    {PacketKind::Science, "science", 0x0F3C, 1852, CatalogueList::Science, Selector::SubType, false},
    {PacketKind::Empty, "empty slot", 0, 0, CatalogueList::Information, Selector::None, true},
    {PacketKind::Unknown, "unknown identifier", -1, -1, CatalogueList::Information, Selector::None, true},
}};

// A selector value no other rule of the kind takes.
inline constexpr int32_t kAnyOtherValue = std::numeric_limits<int32_t>::min();

// How a label is chosen and what it counts, one rule per label in LabelCode order.
struct LabelRule {
  LabelCode label;
  PacketKind kind;
  int32_t selector_value;  // kAnyOtherValue for the fallback; ignored for kinds without a selector
  bool binary_only;        // class 10 exists only in the binary formats
  Counter counter;
};

inline constexpr std::array<LabelRule, kLabelCount> kLabelRules{{
    {LabelCode::Concise, PacketKind::Housekeeping, 1, false, Counter::Concise},
    {LabelCode::Complete, PacketKind::Housekeeping, 2, false, Counter::Complete},
    {LabelCode::HousekeepingUnknown, PacketKind::Housekeeping, kAnyOtherValue, false, Counter::None},
    {LabelCode::NormalProgressEvent, PacketKind::ProgressEvent, 1, false, Counter::ProgressEvent},
    {LabelCode::WarningAnomalousEvent, PacketKind::ProgressEvent, 2, false, Counter::WarningEvent},
    {LabelCode::NpeMemoryChecksum, PacketKind::ProgressEvent, 10, true, Counter::ProgressEvent},
    {LabelCode::UnknownProgressEvent, PacketKind::ProgressEvent, kAnyOtherValue, false, Counter::Unknown},
    {LabelCode::AcceptanceSuccess, PacketKind::Acceptance, 1, false, Counter::AcceptanceSuccess},
    {LabelCode::AcceptanceFailure, PacketKind::Acceptance, 2, false, Counter::AcceptanceFailure},
    {LabelCode::MemoryChecksum, PacketKind::Acceptance, 10, true, Counter::MemoryChecksum},
    {LabelCode::UnknownAcceptance, PacketKind::Acceptance, kAnyOtherValue, false, Counter::Unknown},
    {LabelCode::MemoryDump, PacketKind::MemoryDump, kAnyOtherValue, false, Counter::MemoryDump},
    {LabelCode::AuxiliaryData, PacketKind::Science, 1, false, Counter::Auxiliary},
    {LabelCode::GcSpectrum, PacketKind::Science, 2, false, Counter::GcSpectrum},
    {LabelCode::IsotopeSpectrum, PacketKind::Science, 3, false, Counter::IsotopePacket},
    {LabelCode::ScienceUnknown, PacketKind::Science, kAnyOtherValue, false, Counter::None},
    {LabelCode::Empty, PacketKind::Empty, kAnyOtherValue, false, Counter::Empty},
    {LabelCode::Unknown, PacketKind::Unknown, kAnyOtherValue, false, Counter::Unknown},
}};

constexpr bool rules_follow_label_codes() {
  for (size_t i = 0; i < kLabelRules.size(); ++i) {
    if (static_cast<size_t>(kLabelRules[i].label) != i) return false;
  }
  for (size_t i = 0; i < kPacketKinds.size(); ++i) {
    if (static_cast<size_t>(kPacketKinds[i].kind) != i) return false;
  }
  return true;
}
static_assert(rules_follow_label_codes());

constexpr const PacketKindInfo& packet_kind_info(PacketKind kind) { return kPacketKinds[static_cast<size_t>(kind)]; }
constexpr const LabelRule& label_rule(LabelCode label) { return kLabelRules[static_cast<size_t>(label)]; }
constexpr PacketKind kind_of(LabelCode label) { return label_rule(label).kind; }
constexpr Counter counter_of(LabelCode label) { return label_rule(label).counter; }
// The identifier of a kind in a format family (0 for an empty slot; -1, no word, for unknown).
constexpr int32_t identifier_of(PacketKind kind, FormatFamily family) {
  return family == FormatFamily::Zeb ? packet_kind_info(kind).zeb_identifier
                                     : packet_kind_info(kind).binary_identifier;
}

// The isotope rule: an isotope packet whose segmentation flags have this bit set counts as a
// whole spectrum. The two binary families test different bits on purpose.
constexpr int32_t isotope_spectrum_bit(FormatFamily family) { return family == FormatFamily::Frames282 ? 2 : 1; }

// The class of an event or acceptance report in a binary packet: the class word / 256 compared
// exactly, so a non-zero low byte makes the class "other" (-1).
constexpr int32_t event_class_of_word(int32_t class_word) { return class_word % 256 == 0 ? class_word / 256 : -1; }

namespace packet_kind_lookup {

// Identifiers of each family lie within a few words of one another: a small table maps them.
inline constexpr int kIdentifierSpan = 16;
// Selector values 0..kOtherIndex - 1 are looked up; anything else is "other".
inline constexpr int kOtherIndex = 11;

struct IdentifierTable {
  int32_t base = 0;
  std::array<PacketKind, kIdentifierSpan> kinds{};
};

constexpr IdentifierTable identifier_table(FormatFamily family) {
  IdentifierTable table;
  table.base = std::numeric_limits<int32_t>::max();
  for (const PacketKindInfo& k : kPacketKinds) {
    if (!k.slot && identifier_of(k.kind, family) < table.base) table.base = identifier_of(k.kind, family);
  }
  table.kinds.fill(PacketKind::Unknown);
  for (const PacketKindInfo& k : kPacketKinds) {
    if (k.slot) continue;
    const int32_t at = identifier_of(k.kind, family) - table.base;
    if (at >= kIdentifierSpan) throw "identifiers of a family lie too far apart";
    table.kinds[static_cast<size_t>(at)] = k.kind;
  }
  return table;
}

using LabelTable = std::array<std::array<LabelCode, kOtherIndex + 1>, kPacketKindCount>;

constexpr LabelTable label_table(FormatFamily family) {
  LabelTable table{};
  for (const LabelRule& rule : kLabelRules) {
    if (rule.selector_value != kAnyOtherValue) continue;
    table[static_cast<size_t>(rule.kind)].fill(rule.label);
  }
  for (const LabelRule& rule : kLabelRules) {
    if (rule.selector_value == kAnyOtherValue) continue;
    if (rule.binary_only && family == FormatFamily::Zeb) continue;
    if (rule.selector_value < 0 || rule.selector_value >= kOtherIndex) throw "selector value out of the table";
    table[static_cast<size_t>(rule.kind)][static_cast<size_t>(rule.selector_value)] = rule.label;
  }
  return table;
}

inline constexpr std::array<IdentifierTable, 3> kIdentifiers{
    identifier_table(FormatFamily::Frames282), identifier_table(FormatFamily::Frames280),
    identifier_table(FormatFamily::Zeb)};
inline constexpr std::array<LabelTable, 3> kLabels{label_table(FormatFamily::Frames282),
                                                   label_table(FormatFamily::Frames280),
                                                   label_table(FormatFamily::Zeb)};

}  // namespace packet_kind_lookup

// The kind of a packet from its identifier (binary word at offset 0, ZEB item 5).
constexpr PacketKind kind_of_identifier(int32_t identifier, FormatFamily family) {
  const auto& table = packet_kind_lookup::kIdentifiers[static_cast<size_t>(family)];
  const uint32_t at = static_cast<uint32_t>(identifier) - static_cast<uint32_t>(table.base);
  if (at < packet_kind_lookup::kIdentifierSpan) return table.kinds[at];
  return identifier == 0 ? PacketKind::Empty : PacketKind::Unknown;
}

// The label of a packet of this kind whose selector holds value (already the class, for events).
constexpr LabelCode label_of(PacketKind kind, int32_t value, FormatFamily family) {
  const uint32_t v = static_cast<uint32_t>(value);
  const size_t at = v < packet_kind_lookup::kOtherIndex ? v : packet_kind_lookup::kOtherIndex;
  return packet_kind_lookup::kLabels[static_cast<size_t>(family)][static_cast<size_t>(kind)][at];
}

// The label that a packet built for `label` gets in a family: where the family lacks the
// label's selector value (ZEB has no class 10) it gets its kind's fallback.
constexpr LabelCode label_in_family(LabelCode label, FormatFamily family) {
  const LabelRule& rule = label_rule(label);
  if (rule.selector_value == kAnyOtherValue) return label;
  return label_of(rule.kind, rule.selector_value, family);
}

struct Classification {
  PacketKind kind;
  LabelCode label;
};

// Classifies a packet from its identifier; read(selector) gives the raw word or item at the
// selector's place (selector_offset, selector_item) and is called only for kinds that have one.
template <class ReadSelector>
inline Classification classify_packet(int32_t identifier, FormatFamily family, ReadSelector&& read) {
  const PacketKind kind = kind_of_identifier(identifier, family);
  const Selector selector = packet_kind_info(kind).selector;
  int32_t value = 0;
  if (selector != Selector::None) {
    value = read(selector);
    // ZEB items hold the class itself, compared whole.
    if (selector == Selector::EventClass && family != FormatFamily::Zeb) value = event_class_of_word(value);
  }
  return {kind, label_of(kind, value, family)};
}

}  // namespace morvane
