// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

#include "core/huge_buffer.h"

namespace morvane {

// The fixed-width type label of a catalogue entry. An entry stores this small code; the text
// with its blanks comes from label_text().
enum class LabelCode : uint8_t {
  Concise,                // " Concise  "
  Complete,               // " Complete "
  HousekeepingUnknown,    // " Unknown  "
  NormalProgressEvent,    // " Normal Progress Event   "
  WarningAnomalousEvent,  // " Warning Anomalous Event "
  NpeMemoryChecksum,      // " NPE - Memory Checksum   "
  UnknownProgressEvent,   // " Unknown - progress event"
  AcceptanceSuccess,      // " Acceptance Success      "
  AcceptanceFailure,      // " Acceptance Failure      "
  MemoryChecksum,         // " Memory Checksum         "
  UnknownAcceptance,      // " Unknown - acceptance    "
  MemoryDump,             // " Memory Dump             "
  AuxiliaryData,          // " Auxiliary Data   "
  GcSpectrum,             // " GC spectrum      "
  IsotopeSpectrum,        // " Isotope spectrum "
  ScienceUnknown,         // " Unknown          "
  Empty,                  // "  Empty  "
  Unknown,                // " Unknown "
};
constexpr int kLabelCount = 18;

std::string_view label_text(LabelCode label);

// One catalogued packet. Numbers are 32-bit signed as the formats define them; 24 bytes.
struct Packet_Entry {
  int32_t Packet_Frame = 0;     // frame (ZEB: record) in which the packet starts, from 1
  int32_t Packet_Length = 0;    // whole packet length in bytes (ZEB: item 8); -1 for empty/unknown slots
  int32_t Packet_Position = 0;  // 1-based file position of the packet's first byte (ZEB: 0)
  int32_t Sequence_Count = 0;   // 14-bit sequence count (ZEB: item 7); -1 for slots
  int32_t Lander_Time = 0;      // seconds (ZEB: item 9); -1 for slots
  int16_t Segment_Flags = 0;    // science entries only
  LabelCode Label = LabelCode::Empty;  // the text is label_text(Label)
};
static_assert(sizeof(Packet_Entry) == 24);
static_assert(std::is_trivially_copyable_v<Packet_Entry>);

// A catalogue list: 1-based access, grows in fixed chunks so that a list of millions of entries
// never holds a second copy of itself while growing.
class EntryList {
 public:
  int32_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  // Entry i, 1-based; an index outside 1..size() is "Subscript out of range".
  const Packet_Entry& at(int32_t i) const;
  const Packet_Entry& operator[](int32_t i) const { return chunk(i - 1)[(i - 1) & kMask]; }
  void push_back(const Packet_Entry& entry) {
    if (size_ < capacity()) {
      chunk(size_)[size_ & kMask] = entry;
      ++size_;
    } else {
      append(&entry, 1);
    }
  }
  // Appends count entries at once (the classifier's blocks).
  void append(const Packet_Entry* entries, size_t count);
  // Sizes an empty list's first chunk for about expected entries (at most a whole chunk): a load
  // that knows its size copies nothing while the list grows. Pages never written cost nothing.
  void reserve(int32_t expected);
  // Makes room for count more entries and returns the 1-based index of the first; they hold
  // nothing until written. Several threads may then write disjoint ranges at once.
  int32_t grow(size_t count);
  void write(int32_t first, const Packet_Entry* entries, size_t count);
  // Keeps the first n entries (n <= size()).
  void truncate(int32_t n) { size_ = n; }
  void clear();
  size_t memory_bytes() const { return chunks_.size() * kChunkEntries * sizeof(Packet_Entry); }

 private:
  // 2^18 entries of 24 bytes are exactly 6 MiB: whole huge pages.
  static constexpr int kShift = 18;
  static constexpr int32_t kChunkEntries = 1 << kShift;
  static constexpr int32_t kMask = kChunkEntries - 1;
  int64_t capacity() const {
    return chunks_.size() == 1 ? first_capacity_ : static_cast<int64_t>(chunks_.size()) * kChunkEntries;
  }
  Packet_Entry* chunk(int32_t zero_based) const {
    return reinterpret_cast<Packet_Entry*>(chunks_[static_cast<size_t>(zero_based >> kShift)].get());
  }

  std::vector<std::unique_ptr<std::byte[], FreeDeleter>> chunks_;
  int32_t first_capacity_ = 0;  // the first chunk grows by doubling, so small lists stay small
  int32_t size_ = 0;
};

}  // namespace morvane
