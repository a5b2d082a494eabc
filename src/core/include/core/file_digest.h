// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace morvane {

// The SHA-256 of a file's content as 64 lower-case hexadecimal digits, read in large blocks.
// progress gets the bytes read so far and may throw to stop. A file that cannot be read is "File
// not found" (or the read's error); a cryptography library that cannot be loaded is a device I/O
// error naming it.
std::string file_sha256(const std::string& path, const std::function<void(int64_t)>& progress = {});

}  // namespace morvane
