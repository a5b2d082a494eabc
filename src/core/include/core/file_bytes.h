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
class FileBytes {
 public:
  // Opens the file; a missing or unreadable file is a RuntimeError naming the path.
  explicit FileBytes(const std::string& path);
  // Bytes already in memory, named for messages (a test's or a fuzzer's input): no file is
  // opened, and refresh() finds the same length.
  FileBytes(std::string name, std::vector<uint8_t> bytes);
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

 private:
  std::string path_;
  int fd_ = -1;
  uint64_t size_ = 0;
  std::vector<uint8_t> memory_;  // the bytes when there is no file (fd_ < 0)
  void read_memory(uint64_t offset, uint8_t* out, size_t count) const;
  static constexpr uint64_t kBlock = 64 * 1024;
  mutable std::vector<uint8_t> block_;
  mutable uint64_t block_start_ = UINT64_MAX;
  mutable size_t block_valid_ = 0;  // bytes of the block that came from the file
};

// The length of a file in bytes; a RuntimeError when it cannot be read.
uint64_t file_length(const std::string& path);

}  // namespace morvane
