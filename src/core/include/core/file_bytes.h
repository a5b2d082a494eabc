// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace morvane {

// One open, read-only telemetry file read with large positioned reads. Bytes past the end read
// as 0, which is what the formats expect of a trailing partial frame. Unlike a memory map it
// cannot fault when another program truncates the file it is following.
// Which file a path or an open file is: a file renamed over another, or deleted and made again,
// is another file.
struct FileIdentity {
  uint64_t device = 0;
  uint64_t inode = 0;  // 0: no file
  bool exists() const { return inode != 0; }
  bool operator==(const FileIdentity&) const = default;
};

class FileBytes {
 public:
  // Opens the file; a missing or unreadable file, or one that is not a regular file (a folder, a
  // named pipe, a device, a socket), is a RuntimeError naming the path. The open never waits.
  explicit FileBytes(const std::string& path);
  ~FileBytes();
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  const std::string& path() const { return path_; }
  // The length found at open or at the last refresh().
  uint64_t size() const { return size_; }
  // Re-reads the file's length (a growing or rewritten file) and forgets cached bytes.
  uint64_t refresh();

  // Copies count bytes from a 0-based offset; what lies past the end of the file is 0.
  // Safe to call from several threads at once.
  void read(uint64_t offset, uint8_t* out, size_t count) const;

  // The byte at a 0-based offset (0 past the end), through a small cache for the views'
  // scattered reads. Not for concurrent use.
  uint8_t byte(uint64_t offset) const;

  // The file open, whatever its path now names.
  FileIdentity identity() const;

 private:
  std::string path_;
  int fd_ = -1;
  uint64_t size_ = 0;
  static constexpr uint64_t kBlock = 64 * 1024;
  mutable std::vector<uint8_t> block_;
  mutable uint64_t block_start_ = UINT64_MAX;
  mutable size_t block_valid_ = 0;  // bytes of the block that came from the file
};

// The length of a file in bytes; a RuntimeError when it cannot be read or is not a regular file.
uint64_t file_length(const std::string& path);

// The file a path names now; no file (inode 0) when there is none.
FileIdentity file_identity(const std::string& path);

// The largest configuration or limit file read (they hold a few kilobytes).
constexpr uint64_t kLargestTextFile = 16 * 1024 * 1024;

// The whole content of a small text file. Fails as FileBytes opens, and without reading when the
// file is larger than limit (naming its size and the limit).
std::string read_whole_file(const std::string& path, uint64_t limit = kLargestTextFile);

}  // namespace morvane
