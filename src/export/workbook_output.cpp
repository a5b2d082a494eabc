// SPDX-License-Identifier: MIT
#include "workbook_output.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include "core/error.h"
#include "core/system_error.h"
#include "workbook_library.h"

namespace morvane {

namespace {

// The library reports its own error numbers; a full disk shows through errno.
void check(lxw_error error, const std::string& path, const std::string& folder) {
  if (error == LXW_NO_ERROR) return;
  const int error_number = errno;
  if (error_number == ENOSPC || error_number == EDQUOT || error_number == EFBIG) {
    raise_system_error(error_number, path + ": " + workbook_library().lxw_strerror(error) + ", in the folder " + folder);
  }
  raise(ErrorNumber::DeviceIoError, path + ": " + workbook_library().lxw_strerror(error));
}

// The library writes a sheet's rows to a file of its own without checking those writes, so a
// disk that fills up gives a workbook that closes without error and lacks rows. The sheet's
// size in the zip's directory tells: every cell takes more than kLeastCellBytes of its XML
// (<c r="A1"><v>1</v></c>).
constexpr uint64_t kLeastCellBytes = 16;

uint64_t sheet_size_in_zip(const std::string& zip) {
  std::ifstream in(zip, std::ios::binary | std::ios::ate);
  const auto size = static_cast<uint64_t>(std::max<std::streamoff>(in.tellg(), 0));
  const uint64_t tail = std::min<uint64_t>(size, 1 << 16);  // the directory of a one-sheet workbook
  std::string bytes(tail, '\0');
  in.seekg(static_cast<std::streamoff>(size - tail));
  in.read(bytes.data(), static_cast<std::streamsize>(tail));
  const std::string name = "xl/worksheets/sheet1.xml";
  const size_t at = bytes.rfind(name);
  if (at < 46 || bytes.compare(at - 46, 4, "PK\x01\x02") != 0) return 0;
  const auto byte = [&](size_t k) { return static_cast<uint64_t>(static_cast<unsigned char>(bytes[at - 46 + k])); };
  return byte(24) | byte(25) << 8 | byte(26) << 16 | byte(27) << 24;  // its uncompressed size
}

}  // namespace

WorkbookOutput::WorkbookOutput(const std::string& path, std::string_view sheet_name)
    : ExportOutput(path), file_(path) {
  std::string made_at = file_.temporary_path();
  if (file_.direct()) {
    const std::filesystem::path scratch = std::filesystem::temp_directory_path() / "morvane-workbook.xlsx";
    scratch_ = std::make_unique<ReplacementFile>(scratch.string());
    made_at = scratch_->temporary_path();
  }
  const std::filesystem::path target(made_at);
  folder_ = target.has_parent_path() ? target.parent_path().string() : ".";
  // The sheet's rows wait in a file of the chosen folder, which takes them anyway, rather than
  // in /tmp, which may be memory.
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.tmpdir = folder_.data();
  workbook_ = workbook_library().workbook_new_opt(made_at.c_str(), &options);
  if (workbook_ == nullptr) raise(ErrorNumber::DeviceIoError, path + ": cannot start the workbook");
  sheet_ = workbook_library().workbook_add_worksheet(workbook_, std::string(sheet_name).c_str());
  if (sheet_ == nullptr) {
    workbook_library().lxw_workbook_free(workbook_);
    workbook_ = nullptr;
    raise(ErrorNumber::DeviceIoError, path + ": cannot add the sheet");
  }
}

WorkbookOutput::~WorkbookOutput() {
  // Neither finished nor kept: nothing is written.
  if (workbook_ != nullptr) workbook_library().lxw_workbook_free(workbook_);
}

WorkbookOutput::Cell& WorkbookOutput::next_cell() {
  if (cell_count_ == cells_.size()) cells_.emplace_back();
  return cells_[cell_count_++];
}

void WorkbookOutput::text(std::string_view text) {
  Cell& cell = next_cell();
  cell.kind = Cell::Text;
  cell.text.assign(text);
}

void WorkbookOutput::number(double value, std::string_view, std::string_view pattern) {
  Cell& cell = next_cell();
  cell.kind = Cell::Number;
  cell.value = value;
  cell.text.assign(pattern);
}

void WorkbookOutput::empty() { next_cell().kind = Cell::Empty; }

lxw_format* WorkbookOutput::format_for(const std::string& pattern) {
  if (pattern.empty()) return nullptr;
  auto found = formats_.find(pattern);
  if (found != formats_.end()) return found->second;
  lxw_format* format = workbook_library().workbook_add_format(workbook_);
  workbook_library().format_set_num_format(format, pattern.c_str());
  formats_.emplace(pattern, format);
  return format;
}

void WorkbookOutput::end_line(bool) {
  if (row_ >= LXW_ROW_MAX) {
    raise(ErrorNumber::SubscriptOutOfRange, path() + ": an .xlsx sheet holds at most 1048576 rows");
  }
  if (cell_count_ > LXW_COL_MAX) {
    raise(ErrorNumber::SubscriptOutOfRange, path() + ": an .xlsx sheet holds at most 16384 columns");
  }
  const WorkbookLibrary& library = workbook_library();
  for (size_t c = 0; c < cell_count_; ++c) {
    const Cell& cell = cells_[c];
    if (cell.kind != Cell::Empty) ++cells_written_;
    const auto column = static_cast<lxw_col_t>(c);
    if (cell.kind == Cell::Text) {
      check(library.worksheet_write_string(sheet_, row_, column, cell.text.c_str(), nullptr), path(), folder_);
    } else if (cell.kind == Cell::Number) {
      check(library.worksheet_write_number(sheet_, row_, column, cell.value, format_for(cell.text)), path(), folder_);
    }
  }
  cell_count_ = 0;
  ++row_;
  ++lines_;
}

void WorkbookOutput::close() {
  lxw_workbook* workbook = workbook_;
  workbook_ = nullptr;  // workbook_close frees it, whatever it returns
  check(workbook_library().workbook_close(workbook), path(), folder_);
  const uint64_t sheet = sheet_size_in_zip(scratch_ ? scratch_->temporary_path() : file_.temporary_path());
  if (sheet != 0xFFFFFFFF && sheet < cells_written_ * kLeastCellBytes) {
    raise(kDiskFull, path() + ": the sheet's rows did not all reach the disk, in the folder " + folder_ +
                         " (disk full)");
  }
  closed_whole_ = true;
}

void WorkbookOutput::finish() {
  cell_count_ = 0;
  try {
    close();
    if (scratch_) {
      std::ifstream made(scratch_->temporary_path(), std::ios::binary);
      std::vector<char> buffer(1 << 20);
      while (made.read(buffer.data(), static_cast<std::streamsize>(buffer.size())) || made.gcount() > 0) {
        file_.write(std::string_view(buffer.data(), static_cast<size_t>(made.gcount())));
      }
      if (made.bad()) raise(ErrorNumber::DeviceIoError, path() + ": cannot read back the workbook made for it");
      scratch_.reset();
    }
    file_.commit();
  } catch (...) {
    abandon();  // the disk refuses the workbook: the old file stays
  }
}

void WorkbookOutput::keep_partial() noexcept {
  cell_count_ = 0;
  bool closed = closed_whole_;
  try {
    if (workbook_ != nullptr) close();
    closed = closed_whole_;
  } catch (...) {
    // The disk refuses the workbook: there is nothing whole to keep.
    closed = false;
  }
  scratch_.reset();
  partial_path_ = file_.keep_partial(closed ? PartialContent::Everything : PartialContent::Nothing);
}

RuntimeError WorkbookOutput::completed(const RuntimeError& error) const {
  return write_failure(error, file_, partial_path_);
}

}  // namespace morvane
