// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "core/session.h"
#include "decoders/drawing.h"

namespace morvane {

// What the raw view marks when a decoded view sends a packet to it: the packet's bytes and,
// when the user chose one (a housekeeping sensor line), one byte of it.

// A closed run of file bytes (binary formats: 1-based file positions) or of a ZEB record's items.
struct RawSpan {
  int64_t first = 0;
  int64_t last = -1;
  bool empty() const { return last < first; }
  bool operator==(const RawSpan&) const = default;
};

struct RawMark {
  int32_t frame = 0;  // where the packet starts, the frame (ZEB: record) the raw view opens on
  RawSpan packet;    // the packet's bytes, however many frames they run into (ZEB: items of `frame`)
  RawSpan byte;      // one byte of the packet, or empty
  bool operator==(const RawMark&) const = default;
};

// The colours painted behind the marked words: the packet's, and its chosen byte's.
inline constexpr Colour kPacketMarkColour{255, 236, 140};
inline constexpr Colour kByteMarkColour{255, 160, 60};

// The mark of a catalogued packet. Binary: its Packet_Length bytes from Packet_Position (a slot
// without a length marks its first word). ZEB: the record is the packet, so its items from the
// identifier (item 5) to the last; items 1-4 are the record's own.
RawMark packet_mark(FileFormat format, const Packet_Entry& entry);
// The same mark with the packet's byte at 0-based offset k chosen, at the position it is read
// from: in a binary file the offset is swapped within its word when byte_reverse (the byte
// lies at Packet_Position + Int(k/2) x 4 + 1 - k); in a ZEB record it is item Int(k/2) + 9.
RawMark packet_byte_mark(FileFormat format, bool byte_reverse, const Packet_Entry& entry, int k);

// Which characters of a word's text a mark covers. A binary word shows two bytes as four hex
// digits, the second byte first when byte_reverse; a ZEB item is marked whole.
enum class CellPart : uint8_t { Whole, Left, Right };

struct MarkedCell {
  int word = 0;  // 1-based, the raw view's word k
  CellPart part = CellPart::Whole;
  bool operator==(const MarkedCell&) const = default;
};

// The word cells of binary frame n that a span of file positions covers, in word order: a byte
// of each cell marks its half, both bytes the whole cell. Only what lies in the frame is given:
// a packet that runs into the next frame is marked there when that frame is shown.
std::vector<MarkedCell> binary_frame_cells(FileFormat format, bool byte_reverse, int32_t n, const RawSpan& span);

// The cells of frame (ZEB: record) n that hold the packet and the byte of a mark.
struct RawMarkCells {
  std::vector<MarkedCell> packet;
  std::vector<MarkedCell> byte;
};
RawMarkCells raw_mark_cells(FileFormat format, bool byte_reverse, const RawMark& mark, int32_t n);

// The characters of a word text that a part covers: first character and count.
struct TextRun {
  int first = 0;
  int count = 0;
};
TextRun cell_part_characters(CellPart part, int text_length);

}  // namespace morvane
