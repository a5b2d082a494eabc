// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace morvane {

// The low-level write of a replacement file: ::write unless a test makes the disk fail.
using Write_Function = std::function<ssize_t(int fd, const void* data, size_t size)>;

// A new content for the file at path, written beside it under a hidden temporary name and renamed
// over it by commit(), so that path holds either its old content or the whole new one, never a
// part. Destroyed without commit(), it removes the temporary file and path is untouched. An
// existing file's permissions carry over (a new file gets 0644). Failures are RuntimeErrors naming
// path: "Permission denied", "Path not found" or "Device I/O error".
class Replacement_File {
 public:
  // Creates the temporary file beside path.
  explicit Replacement_File(std::string path, Write_Function write = {});
  ~Replacement_File();
  Replacement_File(const Replacement_File&) = delete;
  Replacement_File& operator=(const Replacement_File&) = delete;

  const std::string& path() const { return path_; }
  // Where the content goes until commit(), for writers that open the file by name themselves.
  const std::string& temporary_path() const { return temporary_; }

  // Appends data, continuing short writes.
  void write(std::string_view data);
  // Flushes the content to the disk and renames it over path; the rename reaches the disk with
  // the folder. Afterwards the object owns nothing.
  void commit();

 private:
  std::string path_;
  std::string temporary_;  // empty once renamed
  int fd_ = -1;
  Write_Function write_;
};

// Replaces the file at path with content in one step (a Replacement_File written and committed).
void replace_file(const std::string& path, std::string_view content, const Write_Function& write = {});

}  // namespace morvane
