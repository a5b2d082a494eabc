// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "core/session.h"

namespace morvane {

// How many frames (ZEB: records) at the start of a file the format check looks at.
inline constexpr int32_t kFormatCheckFrames = 16;

// A word of doubt about the format the user chose: when the first frames (records) of the
// loaded file hold slots with identifiers no table knows and not one known packet, the file is
// most likely of another format (or, for a binary file, of the other byte order). Frames of
// nothing but empty slots read the same in every format and raise no doubt. The format is never
// guessed: this only says that the choice looks wrong. nullopt when nothing is in doubt.
std::optional<std::string> format_warning(const Session& session);

}  // namespace morvane
