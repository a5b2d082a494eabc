// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "core/safe_file.h"
#include "export/export_output.h"

namespace morvane {

// Delimited text: lines end in CR LF, as the instrument's spreadsheets (and RFC 4180) expect.
// Lines are gathered in a large buffer, so an export of millions of cells makes few writes; only
// whole lines reach the file.
class TextOutput final : public ExportOutput {
 public:
  TextOutput(const std::string& path, char delimiter);

  void text(std::string_view text) override;
  using LineSink::number;
  void number(double value, std::string_view shown, std::string_view pattern) override;
  void empty() override;
  void end_line(bool trailing_delimiter) override;

  void finish() override;
  void keep_partial() noexcept override;

 private:
  RuntimeError completed(const RuntimeError& error) const override;
  void cell(std::string_view shown);
  void flush();

  ReplacementFile file_;
  char delimiter_;
  bool line_started_ = false;
  std::string buffer_;
  size_t line_begin_ = 0;  // where the line being built starts in buffer_
};

}  // namespace morvane
