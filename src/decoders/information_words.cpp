// SPDX-License-Identifier: MIT
#include "decoders/information_words.h"

#include "core/arithmetic.h"
#include "core/error.h"
#include "core/number_text.h"

namespace morvane {

int32_t InformationWords::word(int n) const {
  if (n < 1 || n > kWordSlots) raise(ErrorNumber::SubscriptOutOfRange, "packet word " + std::to_string(n));
  return words_[static_cast<size_t>(n)];
}

const std::string& InformationWords::hex(int n) const {
  if (n < 0 || n > kWordTexts) raise(ErrorNumber::SubscriptOutOfRange, "packet word " + std::to_string(n));
  return hex_[static_cast<size_t>(n)];
}

void InformationWords::set(int n, int32_t word) {
  if (n < 1 || n > kWordTexts) raise(ErrorNumber::SubscriptOutOfRange, "packet word " + std::to_string(n));
  words_[static_cast<size_t>(n)] = word;
  hex_[static_cast<size_t>(n)] = hex4(word);  // the bytes' texts in the order that composes the word
}

int information_word_count(int32_t length) { return length < 1 ? 0 : static_cast<int>(round_half_even(length / 2.0)); }

void Load_Information(const TelemetryFile& file, const Packet_Entry& entry, bool byte_reverse,
                      InformationWords& words) {
  const int32_t length = entry.Packet_Length;
  if (length > InformationWords::kMaxBytes) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "an information packet of " + std::to_string(length) + " bytes (at most 64 are read)");
  }
  // One byte more than any packet holds: an odd last byte pairs with a zero byte.
  std::array<int32_t, InformationWords::kMaxBytes + 1> bytes{};
  for (int k = 0; k < length; ++k) bytes[static_cast<size_t>(k)] = file.packet_byte(entry, k, false);
  const int count = information_word_count(length);
  for (int n = 1; n <= count; ++n) {
    const int32_t first = bytes[static_cast<size_t>(2 * n - 2)], second = bytes[static_cast<size_t>(2 * n - 1)];
    words.set(n, byte_reverse ? second * 256 + first : first * 256 + second);
  }
  words.set_count(count);
}

GridPosition dump_grid_position(int n, bool gap) {
  const int row = (n - 1) / 8;
  const int column = n - 8 * row;
  // Column c stands at c x 700 - 500; the gap puts columns 5..8 at (c + 0.3) x 700 - 500.
  const int x = column * 700 - 500 + (gap && column > 4 ? 210 : 0);
  return {x, row * 250};
}

Drawing raw_dump_drawing(const InformationWords& words) {
  Drawing dump;
  dump.reserve(static_cast<size_t>(words.count()));
  for (int n = 1; n <= words.count(); ++n) {
    const GridPosition at = dump_grid_position(n, true);
    dump.push_back({words.hex(n), at.x, at.y, kBlue, Anchor::Left});
  }
  return dump;
}

Drawing zeb_dump_drawing(const ZebRecord& record) {
  Drawing dump;
  dump.reserve(kZebItemsPerRecord);
  for (int k = 1; k <= kZebItemsPerRecord; ++k) {
    const GridPosition at = dump_grid_position(k, false);
    dump.push_back({std::to_string(record[static_cast<size_t>(k)]), at.x, at.y, kBlue, Anchor::Left});
  }
  return dump;
}

}  // namespace morvane
