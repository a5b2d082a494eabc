// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace morvane {

// Turns a configuration path written Windows style (backslashes, any letter case) into a path
// of this machine: backslashes become separators, a relative path is taken from the current
// folder, and each component that does not exist as written is matched without regard to
// case ("EGSE_info" finds "EGSE_Info"). Components that match nothing are kept as written, so
// the open that follows fails naming them.
std::string resolve_windows_path(const std::string& path);

// base + relative, the way the configuration joins them ("base" + "\EGSE_info\N-Type.txt").
std::string config_path(const std::string& base, const std::string& relative);

}  // namespace morvane
