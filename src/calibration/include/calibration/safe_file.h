// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace morvane {

// The low-level write of replace_file: ::write unless a test makes the disk fail.
using Write_Function = std::function<ssize_t(int fd, const void* data, size_t size)>;

// Replaces the file at path with content: a new file beside it is written completely, flushed
// to the disk and renamed over the old one, so path holds either its old or its whole new
// content, never a part. An existing file's permissions carry over. A failure removes the new
// file and is a RuntimeError naming path: "Permission denied", "Path not found" or "Device I/O
// error".
void replace_file(const std::string& path, std::string_view content, const Write_Function& write = {});

}  // namespace morvane
