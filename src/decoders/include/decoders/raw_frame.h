// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "core/session.h"
#include "decoders/drawing.h"

namespace morvane {

// The raw view of one frame (ZEB: one record): its two labels and the grid of hexadecimal words
// (ZEB: the record's 136 items), placed in twips.
struct RawFrame {
  int32_t frame = 1;
  std::string label1;  // "Number of Lander packets = " and the frame count
  std::string label2;  // "Lander packet number " and the frame shown
  Drawing words;
};

// The word grid: eight words a row 250 twips apart, 700 twips between columns, and a gap of
// 0.3 column after the fourth word of each row. Word k counts from 1.
inline constexpr int kRawWordsPerRow = 8;
inline constexpr int kRawRowHeight = 250;
inline constexpr int kRawColumnWidth = 700;
int raw_word_x(int k);
int raw_word_y(int k);
// The height in twips of a grid of count words (the bottom of its last row).
int raw_grid_height(int count);

std::string raw_count_label(int32_t packet_count);
std::string raw_frame_label(int32_t frame);

// Frame n of a CSS/QM file (282 bytes), a GRM/FM file (280 bytes) or record n of a ZEB file.
// Words 1-11 (the frame header) and the words past 139 are red, the others blue; the word text
// is the two bytes in hexadecimal, the second byte first when Byte_Reverse. Bytes past the end
// of the file show as "00". A frame below 1 is "Invalid procedure call or argument"; with no
// file loaded "Bad file name or number"; a ZEB record the file does not hold whole is "Input
// past end of file".
RawFrame Display_282_Byte_Packet(const Session& session, int32_t n);
RawFrame Display_280_Byte_Packet(const Session& session, int32_t n);
RawFrame Display_ZEB_Packet(const Session& session, int32_t n);
// The display that fits File_Type.
RawFrame Display_Raw_Frame(const Session& session, int32_t n);

}  // namespace morvane
