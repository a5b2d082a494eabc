// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace morvane {

// Which file a path names: a file renamed over another, or deleted and made again, is another
// file.
struct FileIdentity {
  uint64_t device = 0;
  uint64_t inode = 0;  // 0: no file
  bool exists() const { return inode != 0; }
  bool operator==(const FileIdentity&) const = default;
};

// The file a path names now; no file (inode 0) when there is none.
FileIdentity file_identity(const std::string& path);

// Opens a file for reading as every reader of the program does: the open never waits (a named
// pipe with no writer would block an ordinary open), and anything but a regular file (a folder,
// a named pipe, a device, a socket) is a RuntimeError naming the path and what it is. Returns the
// descriptor and the file's length.
int open_regular_file(const std::string& path, uint64_t& size);

// The largest configuration or limit file read (they hold a few kilobytes).
constexpr uint64_t kLargestTextFile = 16 * 1024 * 1024;

// The whole content of a small text file. Fails as open_regular_file does, and without reading
// when the file is larger than limit (naming its size and the limit).
std::string read_whole_file(const std::string& path, uint64_t limit = kLargestTextFile);

}  // namespace morvane
