// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/safe_file.h"
#include "export/export_output.h"

struct lxw_workbook;
struct lxw_worksheet;
struct lxw_format;

namespace morvane {

// An .xlsx workbook of one sheet: each line a row, each cell a cell, numbers stored as numbers.
// A line's cells go to the sheet when it ends, so a line cut short by an error is not written.
// Rows are written in order and kept on disk (libxlsxwriter's constant-memory mode), so a sheet
// of a million rows takes little memory; a sheet's limits (1048576 rows, 16384 columns) are
// "Subscript out of range". A workbook for a direct destination (standard output, a pipe) is
// made in the temporary folder and copied there when it is complete.
class WorkbookOutput final : public ExportOutput {
 public:
  WorkbookOutput(const std::string& path, std::string_view sheet_name);
  ~WorkbookOutput() override;

  void text(std::string_view text) override;
  using LineSink::number;
  void number(double value, std::string_view shown, std::string_view pattern) override;
  void empty() override;
  void end_line(bool trailing_delimiter) override;

  void finish() override;
  void keep_partial() noexcept override;

 private:
  RuntimeError completed(const RuntimeError& error) const override;
  struct Cell {
    enum Kind { Text, Number, Empty } kind = Empty;
    double value = 0;
    std::string text;  // the text of a Text cell, the pattern of a Number cell
  };
  Cell& next_cell();
  lxw_format* format_for(const std::string& pattern);
  void close();

  ReplacementFile file_;
  // A workbook for standard output, a pipe or a device is made here first: a zip is written by
  // name and in no fixed order.
  std::unique_ptr<ReplacementFile> scratch_;
  std::string folder_;
  lxw_workbook* workbook_ = nullptr;
  lxw_worksheet* sheet_ = nullptr;
  std::map<std::string, lxw_format*> formats_;
  std::vector<Cell> cells_;
  size_t cell_count_ = 0;
  unsigned row_ = 0;
  bool closed_whole_ = false;  // the workbook closed with every row it was given
  uint64_t cells_written_ = 0;  // cells that are not empty: the sheet's XML holds each
};

}  // namespace morvane
