// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace morvane::archive {

// The SHA-256 of a file's content in lower-case hex, read in large blocks. progress gets the
// bytes read so far and may throw to stop; a file that cannot be read is a RuntimeError.
std::string file_sha256(const std::string& path, const std::function<void(int64_t)>& progress = {});

}  // namespace morvane::archive
