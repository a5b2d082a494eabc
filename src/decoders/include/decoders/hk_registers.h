// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/session.h"
#include "decoders/drawing.h"

namespace morvane {

// Upper-case hexadecimal of a word (0..65535), at least four digits: 26 gives "001A".
std::string Convert_to_Hex(int32_t value);

// The sixteen bits of a word, bit 15 first, each "1 " or "0 " (so the text ends with a blank).
std::string binary_text(int32_t word);

// The register page of a complete housekeeping packet: the status and control words W1..W16
// (packet bytes 64..95, high byte first unless the file is byte-reversed) and the page drawn
// from them: enable bits by name (" En" set, "  - " clear), control registers in hex and
// binary, single words in hex. Blue, like the sensor page it replaces.
struct RegisterPage {
  std::array<int32_t, 16> Register_Words{};  // W1 is Register_Words[0]
  Drawing drawing;
};

// Reads W1..W16 of housekeeping entry `index`; an entry outside the list is "Subscript out of range".
std::array<int32_t, 16> read_register_words(const Session& session, int32_t index);

// The page drawn from the words alone.
Drawing draw_register_page(const std::array<int32_t, 16>& words);

RegisterPage Show_HK_Extra(const Session& session, int32_t index);

}  // namespace morvane
