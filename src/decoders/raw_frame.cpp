// SPDX-License-Identifier: MIT
#include "decoders/raw_frame.h"

#include <vector>

#include "core/error.h"
#include "core/number_text.h"

namespace morvane {

namespace {

constexpr int kHeaderWords = 11;  // the 22-byte frame header
constexpr int kLastBlueWord = 139;

RawFrame frame_with_labels(const Session& session, int32_t n) {
  if (n < 1) raise(ErrorNumber::InvalidProcedureCall, "frame " + std::to_string(n));
  RawFrame frame;
  frame.frame = n;
  frame.label1 = raw_count_label(session.Packet_Count);
  frame.label2 = raw_frame_label(n);
  return frame;
}

RawFrame display_binary(const Session& session, int32_t n, int length) {
  RawFrame frame = frame_with_labels(session, n);
  const TelemetryFile& file = session.telemetry();
  std::vector<uint8_t> bytes(static_cast<size_t>(length));
  file.bytes().read(static_cast<uint64_t>(n - 1) * static_cast<uint64_t>(length), bytes.data(), bytes.size());
  const int words = length / 2;
  frame.words.reserve(static_cast<size_t>(words));
  for (int k = 1; k <= words; ++k) {
    const std::string first = hex2(bytes[static_cast<size_t>(2 * k - 2)]);
    const std::string second = hex2(bytes[static_cast<size_t>(2 * k - 1)]);
    const bool red = k <= kHeaderWords || k > kLastBlueWord;
    frame.words.push_back({session.Byte_Reverse ? second + first : first + second, raw_word_x(k), raw_word_y(k),
                           red ? kRed : kBlue, Anchor::Left});
  }
  return frame;
}

}  // namespace

int raw_word_x(int k) {
  const int row = (k - 1) / kRawWordsPerRow;
  const int column = k - row * kRawWordsPerRow;
  // Column c sits at c x 700 - 500; from the fifth on c is 0.3 larger (0.3 x 700 = 210).
  return column * kRawColumnWidth - 500 + (column > 4 ? 210 : 0);
}

int raw_word_y(int k) { return (k - 1) / kRawWordsPerRow * kRawRowHeight; }

int raw_grid_height(int count) { return count < 1 ? 0 : raw_word_y(count) + kRawRowHeight; }

std::string raw_count_label(int32_t packet_count) {
  return "Number of Lander packets = " + std::to_string(packet_count);
}

std::string raw_frame_label(int32_t frame) { return "Lander packet number " + std::to_string(frame); }

RawFrame Display_282_Byte_Packet(const Session& session, int32_t n) { return display_binary(session, n, 282); }

RawFrame Display_280_Byte_Packet(const Session& session, int32_t n) { return display_binary(session, n, 280); }

RawFrame Display_ZEB_Packet(const Session& session, int32_t n) {
  RawFrame frame = frame_with_labels(session, n);
  const ZebRecord& items = session.telemetry().zeb().record(n);
  frame.words.reserve(kZebItemsPerRecord);
  for (int k = 1; k <= kZebItemsPerRecord; ++k) {
    frame.words.push_back({std::to_string(items[static_cast<size_t>(k)]), raw_word_x(k), raw_word_y(k), kBlue,
                           Anchor::Left});
  }
  return frame;
}

RawFrame Display_Raw_Frame(const Session& session, int32_t n) {
  if (has_282_byte_frames(session.File_Type)) return Display_282_Byte_Packet(session, n);
  if (has_280_byte_frames(session.File_Type)) return Display_280_Byte_Packet(session, n);
  return Display_ZEB_Packet(session, n);
}

}  // namespace morvane
