// SPDX-License-Identifier: MIT
#include "text_output.h"

namespace morvane {

namespace {
constexpr size_t kFlushBytes = 1 << 20;
}

Text_Output::Text_Output(const std::string& path, char delimiter)
    : Export_Output(path), file_(path), delimiter_(delimiter) {
  buffer_.reserve(kFlushBytes + 4096);
}

void Text_Output::cell(std::string_view shown) {
  if (line_started_) buffer_ += delimiter_;
  line_started_ = true;
  buffer_ += shown;
}

void Text_Output::text(std::string_view text) { cell(text); }

void Text_Output::number(double, std::string_view shown, std::string_view) { cell(shown); }

void Text_Output::empty() { cell({}); }

void Text_Output::end_line(bool trailing_delimiter) {
  if (trailing_delimiter && line_started_) buffer_ += delimiter_;
  buffer_ += "\r\n";
  line_started_ = false;
  ++lines_;
  line_begin_ = buffer_.size();
  if (buffer_.size() >= kFlushBytes) flush();
}

void Text_Output::flush() {
  file_.write(std::string_view(buffer_).substr(0, line_begin_));
  buffer_.erase(0, line_begin_);
  line_begin_ = 0;
}

void Text_Output::finish() {
  buffer_.resize(line_begin_);
  try {
    flush();
    file_.commit();
  } catch (...) {
    abandon();  // the disk refuses the last lines: the old file stays, what was written is kept
  }
}

void Text_Output::keep_partial() noexcept {
  buffer_.resize(line_begin_);  // a line cut short by the error is not written
  try {
    flush();
  } catch (...) {
    // Whatever whole lines reached the disk are kept.
  }
  partial_path_ = file_.keep_partial(Partial_Content::Whole_Lines);
}

RuntimeError Text_Output::completed(const RuntimeError& error) const {
  return write_failure(error, file_, partial_path_);
}

}  // namespace morvane
