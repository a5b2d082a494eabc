// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

#include "core/packet_entry.h"
#include "core/packet_kinds.h"

namespace morvane::sim {

// One source packet as the instrument sends it: its bytes in transmission order (each word
// high byte first; a byte-reversed file swaps them when it is written), with what the
// catalogue will make of it and the bookkeeping the writers report.
struct SimPacket {
  static constexpr int kMaxLength = 256;  // what a ZEB record holds (items 9..136)

  std::array<uint8_t, kMaxLength> bytes{};
  int length = 0;
  LabelCode label = LabelCode::Unknown;
  int event_class = 0;  // the class byte of events and acceptance reports
  int32_t lander_time = 0;
  bool lost = false;    // lost on the way to the ground: never written
  int test = -1;        // the short form test it belongs to (index of the run), or -1
  int test_packet = 0;  // 1..8 within that test
  int spectrum = -1;    // the isotope spectrum it belongs to (index of the run), or -1

  void put_word(int offset, int word) {
    bytes[static_cast<size_t>(offset)] = static_cast<uint8_t>((word >> 8) & 0xFF);
    bytes[static_cast<size_t>(offset) + 1] = static_cast<uint8_t>(word & 0xFF);
  }
  int word(int offset) const {
    return bytes[static_cast<size_t>(offset)] * 256 + bytes[static_cast<size_t>(offset) + 1];
  }
  int identifier() const { return word(0); }
  PacketKind kind() const { return kind_of(label); }
  int segment_flags() const { return word(2) >> 14; }
  int sequence_count() const { return word(2) & 0x3FFF; }
  int length_field() const { return word(4); }
};

// A packet that the catalogue will label so, with its header filled: the identifier of the
// label's kind, flags and sequence count, length (bytes; the length field is length - 7), lander
// time and a sub-second word at offset 10.
SimPacket start_packet(LabelCode label, int flags, int sequence, int length, int32_t lander_time, int subsecond);

}  // namespace morvane::sim
