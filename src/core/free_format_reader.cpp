// SPDX-License-Identifier: MIT
#include "core/free_format_reader.h"

#include <charconv>
#include <cmath>

#include "core/arithmetic.h"
#include "core/error.h"
#include "core/file_bytes.h"
#include "core/input_file.h"
#include "core/number_text.h"

namespace morvane {

bool parse_number(std::string_view text, double& value) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty()) return false;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() && std::isfinite(value);
}

FreeFormatReader::FreeFormatReader(const std::string& path) : path_(path), text_(read_whole_file(path)) {}

FreeFormatReader::FreeFormatReader(std::string path, std::string text)
    : path_(std::move(path)), text_(std::move(text)) {}

void FreeFormatReader::fail(int error_number, std::string_view what, std::string_view found) const {
  std::string detail = path_ + " line " + std::to_string(line_) + ": expected " + std::string(what);
  if (error_number == static_cast<int>(ErrorNumber::InputPastEndOfFile)) {
    detail += ", found the end of the file";
  } else {
    detail += ", found \"" + std::string(found) + "\"";
  }
  throw RuntimeError(static_cast<ErrorNumber>(error_number), detail);
}

void FreeFormatReader::skip_blanks() {
  while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
}

bool FreeFormatReader::at_end() {
  size_t p = pos_;
  while (p < text_.size() && (text_[p] == ' ' || text_[p] == '\t' || text_[p] == '\r' || text_[p] == '\n' ||
                              text_[p] == '\x1A')) {
    ++p;
  }
  return p >= text_.size();
}

// After an item: blanks, then at most one comma or one line break.
void FreeFormatReader::finish_item() {
  skip_blanks();
  if (pos_ >= text_.size()) return;
  if (text_[pos_] == ',') {
    ++pos_;
  } else if (text_[pos_] == '\r') {
    ++pos_;
    if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
    ++line_;
  } else if (text_[pos_] == '\n') {
    ++pos_;
    ++line_;
  }
}

// Leading line breaks before an item are skipped: a blank line carries no item.
static void skip_to_item(const std::string& text, size_t& pos, int& line) {
  while (pos < text.size()) {
    const char c = text[pos];
    if (c == ' ' || c == '\t' || c == '\r') {
      ++pos;
    } else if (c == '\n') {
      ++pos;
      ++line;
    } else {
      break;
    }
  }
}

std::string FreeFormatReader::read_text(std::string_view what) {
  skip_to_item(text_, pos_, line_);
  if (pos_ >= text_.size()) fail(static_cast<int>(ErrorNumber::InputPastEndOfFile), what, "");
  std::string item;
  if (text_[pos_] == '"') {
    const size_t close = text_.find('"', pos_ + 1);
    const size_t end = close == std::string::npos ? text_.size() : close;
    item = text_.substr(pos_ + 1, end - pos_ - 1);
    pos_ = close == std::string::npos ? text_.size() : close + 1;
  } else {
    const size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != ',' && text_[pos_] != '\r' && text_[pos_] != '\n') ++pos_;
    item = text_.substr(start, pos_ - start);
    while (!item.empty() && (item.back() == ' ' || item.back() == '\t')) item.pop_back();
  }
  finish_item();
  return item;
}

std::string FreeFormatReader::read_number_token(std::string_view what) {
  skip_to_item(text_, pos_, line_);
  if (pos_ >= text_.size()) fail(static_cast<int>(ErrorNumber::InputPastEndOfFile), what, "");
  std::string token;
  if (text_[pos_] == '"') {
    const size_t close = text_.find('"', pos_ + 1);
    const size_t end = close == std::string::npos ? text_.size() : close;
    token = text_.substr(pos_ + 1, end - pos_ - 1);
    pos_ = close == std::string::npos ? text_.size() : close + 1;
  } else {
    const size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != ',' && text_[pos_] != '\r' && text_[pos_] != '\n' &&
           text_[pos_] != ' ' && text_[pos_] != '\t') {
      ++pos_;
    }
    token = text_.substr(start, pos_ - start);
  }
  return token;
}

double FreeFormatReader::read_double(std::string_view what) {
  const int line = line_;
  const std::string token = read_number_token(what);
  double value = 0;
  if (!parse_number(token, value)) {
    line_ = line;
    fail(static_cast<int>(ErrorNumber::TypeMismatch), what, token);
  }
  finish_item();
  return value;
}

int16_t FreeFormatReader::read_int16(std::string_view what) {
  const int line = line_;
  const double value = read_double(what);
  if (!(value > -32768.5 && value < 32767.5)) {
    line_ = line;
    fail(static_cast<int>(ErrorNumber::Overflow), std::string(what) + " (a whole number from -32768 to 32767)",
         general_text(value));
  }
  return to_int16(value);
}

int32_t FreeFormatReader::read_int32(std::string_view what) {
  const int line = line_;
  const double value = read_double(what);
  if (!(value > -2147483648.5 && value < 2147483647.5)) {
    line_ = line;
    fail(static_cast<int>(ErrorNumber::Overflow), std::string(what) + " (a 32-bit whole number)",
         general_text(value));
  }
  return to_int32(value);
}

bool FreeFormatReader::read_line(std::string& line) {
  if (pos_ >= text_.size()) return false;
  const size_t end = text_.find('\n', pos_);
  const size_t stop = end == std::string::npos ? text_.size() : end;
  line = text_.substr(pos_, stop - pos_);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  pos_ = end == std::string::npos ? text_.size() : end + 1;
  if (end != std::string::npos) ++line_;
  return true;
}

}  // namespace morvane
