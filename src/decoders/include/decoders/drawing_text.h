// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "decoders/drawing.h"

namespace morvane {

// A drawing as plain text for a terminal: each text goes to the character cell nearest its
// position (x / column_twips, y / row_twips, rounded), right-anchored texts end at theirs and
// following texts continue the previous one. A text that would overwrite another on its line
// starts one blank after it. Lines end in "\n"; trailing blanks are dropped.
std::string drawing_as_text(const Drawing& drawing, int column_twips = 90, int row_twips = 200);

}  // namespace morvane
