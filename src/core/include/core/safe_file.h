// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/error.h"

namespace morvane {

// The low-level write of a replacement file: ::write unless a test makes the disk fail.
using WriteFunction = std::function<ssize_t(int fd, const void* data, size_t size)>;

// What a failed write keeps beside the file it was to replace.
enum class PartialContent {
  Whole_Lines,  // the bytes written, up to the last line break that reached the disk
  Everything,   // the whole temporary file (a workbook closed after its last whole row)
  Nothing,      // a binary file a part of which is of no use (a PDF)
};

// A new content for the file at path. Every writer of the program goes through it, so every
// destination follows the same rules:
// - "-" is standard output, written in place;
// - a symbolic link is followed (the link stays; the file it names is replaced);
// - a pipe, a device or a socket is written in place, in order;
// - a folder is "Bad file name or number";
// - a regular file, or a new one, is written beside its target under a temporary name
//   (".NAME.morvane-tmp-PID-XXXXXX") and renamed over it by commit(), so that the target holds
//   either its old content or the whole new one, never a part.
// Destroyed without commit(), the temporary file goes and the target is untouched. An existing
// file's permissions carry over (a new file gets 0644). Each write is checked, short writes are
// continued, and commit() checks fsync and close. Failures are RuntimeErrors naming the path:
// "Permission denied", "Path not found", "Disk full" (with the folder) or "Device I/O error".
// Opening a destination removes the temporaries of earlier writers to it whose process is gone.
class ReplacementFile {
 public:
  explicit ReplacementFile(std::string path, WriteFunction write = {});
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  const std::string& path() const { return path_; }
  // The file replaced: path with its symbolic links followed.
  const std::string& target() const { return target_; }
  // Written in place (standard output, a pipe, a device): nothing is renamed and nothing kept.
  bool direct() const { return direct_; }
  // Where the content goes until commit(), for writers that open the file by name themselves;
  // empty for a direct destination.
  const std::string& temporary_path() const { return temporary_; }
  uint64_t written() const { return written_; }

  // Appends data, continuing short writes.
  void write(std::string_view data);
  // Flushes the content to the disk and renames it over the target; the rename reaches the disk
  // with the folder. Afterwards the object owns nothing.
  void commit();
  // After an error or a cancel: what was written goes beside the target as NAME.partial.EXT
  // (replacing an older one) and its path is returned; the target is untouched. Returns empty
  // when nothing is kept (nothing written, a direct destination, a disk that refuses even that).
  // Never throws.
  std::string keep_partial(PartialContent what = PartialContent::Whole_Lines) noexcept;

 private:
  void open_temporary();
  [[noreturn]] void fail(const char* what, int error) const;

  std::string path_;
  std::string target_;
  std::string temporary_;  // empty once renamed, kept or removed
  int fd_ = -1;
  int slot_ = -1;  // where the signal handlers find the temporary file
  bool direct_ = false;
  bool owns_fd_ = true;  // false for standard output
  uint64_t written_ = 0;
  uint64_t line_end_ = 0;  // bytes written up to and including the last line break
  WriteFunction write_;
};

// "out.txt" -> "out.partial.txt", "out" -> "out.partial" (only the file name's last extension).
std::string partial_path(const std::string& path);

// The run-time error of a write that failed, saying that the target is unchanged and where the
// lines written so far are (when partial is not empty). A direct destination's error is returned
// as it was.
RuntimeError write_failure(const RuntimeError& error, const ReplacementFile& file, const std::string& partial);

// Replaces the file at path with content in one step. On a failure the old file stays, the whole
// lines written so far are kept as NAME.partial.EXT, and the error names both.
void replace_file(const std::string& path, std::string_view content, const WriteFunction& write = {},
                  PartialContent keep = PartialContent::Whole_Lines);

// Makes SIGINT, SIGTERM and SIGHUP remove the temporary files of the writes under way before
// the process ends by the signal as it would have. A signal the process ignores stays ignored.
void remove_temporary_files_on_signals();

}  // namespace morvane
