// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "export/line_sink.h"

namespace morvane {

// What an export writes: delimited text, or an .xlsx workbook with the same cells (numbers as
// numbers, texts as texts).
enum class Export_File_Type { Delimited_Text, Workbook };

// Workbook for a name ending in ".xlsx" (any letter case), delimited text otherwise.
Export_File_Type export_file_type(std::string_view path);

// The file an export writes. The content goes to a hidden file beside the chosen one and takes
// the chosen name when the export ends, so an existing file is replaced only by a finished
// export or by the lines written before an error or a cancel, never half-way through a write.
class Export_Output : public Line_Sink {
 public:
  explicit Export_Output(std::string path) : path_(std::move(path)) {}
  const std::string& path() const { return path_; }
  // Lines ended so far.
  long long lines() const { return lines_; }

  // Completes the file under its chosen name; a failing disk is a RuntimeError naming it.
  virtual void finish() = 0;
  // After an error or a cancel: the lines written so far go under the chosen name, as far as
  // the disk lets them. Never throws.
  virtual void keep_partial() noexcept = 0;

 protected:
  long long lines_ = 0;

 private:
  std::string path_;
};

// Opens the output at path: a Delimited_Text file separates its cells with delimiter (Tab, comma
// or semicolon), a Workbook holds one sheet named sheet_name. A file that cannot be created
// there (a missing or locked folder, a read-only file) is a RuntimeError naming the path.
std::unique_ptr<Export_Output> open_export_output(const std::string& path, Export_File_Type type, char delimiter,
                                                  std::string_view sheet_name);

}  // namespace morvane
