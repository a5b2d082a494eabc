// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/error.h"
#include "export/line_sink.h"

namespace morvane {

// What an export writes: delimited text, or an .xlsx workbook with the same cells (numbers as
// numbers, texts as texts).
enum class ExportFileType { Delimited_Text, Workbook };

// Workbook for a name ending in ".xlsx" (any letter case), delimited text otherwise.
ExportFileType export_file_type(std::string_view path);

// The file an export writes, by the destination rules of ReplacementFile: "-" is standard
// output, a link is followed, a pipe or a device is written in place, a regular file is written
// beside its target under a temporary name and takes the target's name only when the export
// ends. An error or a cancel never touches the target: the whole lines written so far are kept
// beside it as NAME.partial.EXT.
class ExportOutput : public LineSink {
 public:
  explicit ExportOutput(std::string path) : path_(std::move(path)) {}
  const std::string& path() const { return path_; }
  // Lines ended so far.
  long long lines() const { return lines_; }

  // Completes the file under its chosen name; a failing disk is a RuntimeError naming it.
  virtual void finish() = 0;
  // After an error or a cancel: the lines written so far go beside the chosen file as
  // NAME.partial.EXT, as far as the disk lets them (see partial_path()). Never throws.
  virtual void keep_partial() noexcept = 0;
  // Where keep_partial() kept the lines, or empty when it kept none.
  const std::string& partial_path() const { return partial_path_; }

  // Called in a catch block: keeps the lines written so far and throws the error again; a
  // run-time error then also says that the chosen file is unchanged and where the lines are.
  [[noreturn]] void abandon();

 protected:
  // The run-time error of a failed export, completed as abandon() completes it.
  virtual RuntimeError completed(const RuntimeError& error) const = 0;

  long long lines_ = 0;
  std::string partial_path_;

 private:
  std::string path_;
};

// Opens the output at path: a Delimited_Text file separates its cells with delimiter (Tab, comma
// or semicolon), a Workbook holds one sheet named sheet_name. A file that cannot be created
// there (a missing or locked folder, a read-only file) is a RuntimeError naming the path.
std::unique_ptr<ExportOutput> open_export_output(const std::string& path, ExportFileType type, char delimiter,
                                                  std::string_view sheet_name);

}  // namespace morvane
