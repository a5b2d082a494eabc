// SPDX-License-Identifier: MIT
#include "decoders/raw_mark.h"

#include <algorithm>

#include "core/telemetry_file.h"
#include "core/zeb_text.h"

namespace morvane {

namespace {

constexpr int64_t kZebIdentifierItem = 5;
constexpr int64_t kZebFirstPacketItem = 9;
constexpr int kIdentifierBytes = 2;  // what marks a slot that has no length

}  // namespace

RawMark packet_mark(FileFormat format, const Packet_Entry& entry) {
  RawMark mark;
  mark.frame = entry.Packet_Frame;
  if (!is_binary(format)) {
    mark.packet = {kZebIdentifierItem, kZebItemsPerRecord};
    return mark;
  }
  const int64_t length = entry.Packet_Length > 0 ? entry.Packet_Length : kIdentifierBytes;
  mark.packet = {entry.Packet_Position, static_cast<int64_t>(entry.Packet_Position) + length - 1};
  return mark;
}

RawMark packet_byte_mark(FileFormat format, bool byte_reverse, const Packet_Entry& entry, int k) {
  RawMark mark = packet_mark(format, entry);
  if (k < 0) return mark;
  if (!is_binary(format)) {
    const int64_t item = k / 2 + kZebFirstPacketItem;
    if (item <= kZebItemsPerRecord) mark.byte = {item, item};
    return mark;
  }
  const int64_t position = entry.Packet_Position + (byte_reverse ? swapped_byte_offset(k) : k);
  mark.byte = {position, position};
  return mark;
}

std::vector<MarkedCell> binary_frame_cells(FileFormat format, bool byte_reverse, int32_t n, const RawSpan& span) {
  std::vector<MarkedCell> cells;
  const int64_t length = frame_stride(format);
  if (n < 1 || length == 0) return cells;
  const int64_t frame_first = static_cast<int64_t>(n - 1) * length + 1;
  const int64_t first = std::max(span.first, frame_first) - frame_first;  // 0-based in the frame
  const int64_t last = std::min(span.last, frame_first + length - 1) - frame_first;
  if (span.empty() || first > last) return cells;  // nothing of it in this frame
  for (int64_t word_start = first - first % 2; word_start <= last; word_start += 2) {
    const bool first_byte = word_start >= first;      // the word's first byte is in the span
    const bool second_byte = word_start + 1 <= last;  // and its second
    CellPart part = CellPart::Whole;
    if (!(first_byte && second_byte)) {
      // The word's text shows the second byte first when the order is reversed.
      part = (first_byte != byte_reverse) ? CellPart::Left : CellPart::Right;
    }
    cells.push_back({static_cast<int>(word_start / 2 + 1), part});
  }
  return cells;
}

RawMarkCells raw_mark_cells(FileFormat format, bool byte_reverse, const RawMark& mark, int32_t n) {
  RawMarkCells cells;
  if (is_binary(format)) {
    cells.packet = binary_frame_cells(format, byte_reverse, n, mark.packet);
    cells.byte = binary_frame_cells(format, byte_reverse, n, mark.byte);
    return cells;
  }
  if (n != mark.frame) return cells;  // a record holds its packet whole
  auto items = [](const RawSpan& span, std::vector<MarkedCell>& out) {
    for (int64_t item = std::max<int64_t>(span.first, 1); item <= std::min<int64_t>(span.last, kZebItemsPerRecord);
         ++item) {
      out.push_back({static_cast<int>(item), CellPart::Whole});
    }
  };
  items(mark.packet, cells.packet);
  items(mark.byte, cells.byte);
  return cells;
}

TextRun cell_part_characters(CellPart part, int text_length) {
  const int half = text_length / 2;
  switch (part) {
    case CellPart::Left: return {0, half};
    case CellPart::Right: return {half, text_length - half};
    case CellPart::Whole: break;
  }
  return {0, text_length};
}

}  // namespace morvane
