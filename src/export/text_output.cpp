// SPDX-License-Identifier: MIT
#include "text_output.h"

namespace morvane {

namespace {
constexpr size_t kFlushBytes = 1 << 20;
}

TextOutput::TextOutput(const std::string& path, char delimiter)
    : ExportOutput(path), file_(path), delimiter_(delimiter) {
  buffer_.reserve(kFlushBytes + 4096);
}

void TextOutput::cell(std::string_view shown) {
  if (line_started_) buffer_ += delimiter_;
  line_started_ = true;
  buffer_ += shown;
}

void TextOutput::text(std::string_view text) { cell(text); }

void TextOutput::number(double, std::string_view shown, std::string_view) { cell(shown); }

void TextOutput::empty() { cell({}); }

void TextOutput::end_line(bool trailing_delimiter) {
  if (trailing_delimiter && line_started_) buffer_ += delimiter_;
  buffer_ += "\r\n";
  line_started_ = false;
  ++lines_;
  line_begin_ = buffer_.size();
  if (buffer_.size() >= kFlushBytes) flush();
}

void TextOutput::flush() {
  file_.write(std::string_view(buffer_).substr(0, line_begin_));
  buffer_.erase(0, line_begin_);
  line_begin_ = 0;
}

void TextOutput::finish() {
  buffer_.resize(line_begin_);
  try {
    flush();
    file_.commit();
  } catch (...) {
    abandon();  // the disk refuses the last lines: the old file stays, what was written is kept
  }
}

void TextOutput::keep_partial() noexcept {
  buffer_.resize(line_begin_);  // a line cut short by the error is not written
  try {
    flush();
  } catch (...) {
    // Whatever whole lines reached the disk are kept.
  }
  partial_path_ = file_.keep_partial(PartialContent::Whole_Lines);
}

RuntimeError TextOutput::completed(const RuntimeError& error) const {
  return write_failure(error, file_, partial_path_);
}

}  // namespace morvane
