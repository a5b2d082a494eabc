// SPDX-License-Identifier: MIT
#include "export/export_output.h"

#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstring>

#include "core/error.h"
#include "text_output.h"
#include "workbook_output.h"

namespace morvane {

ExportFileType export_file_type(std::string_view path) {
  constexpr std::string_view k_extension = ".xlsx";
  if (path.size() < k_extension.size()) return ExportFileType::Delimited_Text;
  const std::string_view end = path.substr(path.size() - k_extension.size());
  for (size_t i = 0; i < end.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(end[i])) != k_extension[i]) return ExportFileType::Delimited_Text;
  }
  return ExportFileType::Workbook;
}

void ExportOutput::abandon() {
  keep_partial();
  try {
    throw;
  } catch (const RuntimeError& error) {
    throw completed(error);
  }
}

std::unique_ptr<ExportOutput> open_export_output(const std::string& path, ExportFileType type, char delimiter,
                                                  std::string_view sheet_name) {
  // The new content is renamed over the old file, which a folder allows whatever the file's
  // own permission; a file that could not be opened for output is refused all the same.
  if (path != "-" && ::access(path.c_str(), F_OK) == 0 && ::access(path.c_str(), W_OK) != 0) {
    raise(ErrorNumber::PermissionDenied, path + ": " + std::strerror(errno));
  }
  if (type == ExportFileType::Workbook) return std::make_unique<WorkbookOutput>(path, sheet_name);
  return std::make_unique<TextOutput>(path, delimiter);
}

}  // namespace morvane
