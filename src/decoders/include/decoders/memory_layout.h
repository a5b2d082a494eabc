// SPDX-License-Identifier: MIT
#pragma once

#include "decoders/drawing.h"
#include "decoders/information_words.h"

namespace morvane {

// The two tables drawn below the title lines of a memory packet's translation. Both append to
// out text by text; a layout that reaches beyond word 32 is "Subscript out of range", and the
// texts appended before it stay in out.

// Memory dump: the W9 Mod 256 blocks from word 10 on, each two header words in red, its word
// count n in black and its n data words in blue, eight words a row from (0, 600), rows 200
// twips apart. The next block follows at k + 3 + n, n taken as a signed 16-bit count.
void Display_Memory_Data(const InformationWords& words, Drawing& out);

// Memory checksum report: row r (r = 1..W9 Mod 256) at y = 200 r, in black, from words 4r + 6
// to 4r + 9; a sixth report needs word 33.
void Display_Memory_Checksum(const InformationWords& words, Drawing& out);

}  // namespace morvane
