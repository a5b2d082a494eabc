// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/packet_entry.h"
#include "core/telemetry_file.h"
#include "core/zeb_text.h"
#include "decoders/drawing.h"

namespace morvane {

// The words of the information packet on display: Info_Word 1..64 (only 1..32 are ever filled)
// and their texts Info_Hex 0..32. They keep the last packet's values until a later packet
// overwrites them, so a short packet leaves the higher words of a longer one before it in place.
class InformationWords {
 public:
  static constexpr int kMaxBytes = 64;
  static constexpr int kWordTexts = 32;
  static constexpr int kWordSlots = 64;

  // Info_Word(n), 0..65535; n outside 1..64 is "Subscript out of range".
  int32_t word(int n) const;
  // Info_Hex(n), four upper-case hexadecimal digits ("0F37"), "" until a packet filled it; n
  // outside 0..32 is "Subscript out of range".
  const std::string& hex(int n) const;
  // Words 1..count() came from the last packet loaded.
  int count() const { return count_; }

  // Sets word n (1..32) and its text; the text is the word's two bytes in the order they make it.
  void set(int n, int32_t word);
  void set_count(int count) { count_ = count; }

 private:
  std::array<int32_t, kWordSlots + 1> words_{};
  std::array<std::string, kWordTexts + 1> hex_{};
  int count_ = 0;
};

// The words of a packet of length bytes: length / 2 rounded half to even, so 21 bytes give 10
// words and 23 bytes give 12 (the twelfth pairs the last byte with a zero byte). 0 for slots (-1).
int information_word_count(int32_t length);

// Load_Information: reads the bytes of a binary file's packet one by one and makes its words,
// first byte low when byte_reverse. A packet longer than 64 bytes is "Subscript out of range"
// and leaves the words as they were.
void Load_Information(const TelemetryFile& file, const Packet_Entry& entry, bool byte_reverse,
                      InformationWords& words);

// Twips of item n (1-based) of a dump grid: eight a row 250 twips apart, 700 twips a column from
// x = 200; with gap the columns after the fourth move 210 twips right (x = 5.3 x 700 - 500).
struct GridPosition {
  int x = 0;
  int y = 0;
};
GridPosition dump_grid_position(int n, bool gap);

// Picture1 of a binary packet: the texts of words 1..count() in blue, with the gap.
Drawing raw_dump_drawing(const InformationWords& words);
// Picture1 of a ZEB record: its 136 items as decimal numbers in blue, without the gap.
Drawing zeb_dump_drawing(const ZebRecord& record);

}  // namespace morvane
