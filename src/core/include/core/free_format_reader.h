// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace morvane {

// Reads a configuration text file item by item the way its writers expect: items separated by
// commas or line breaks, numbers also ended by a blank, texts optionally in double quotation
// marks. Every failure is a RuntimeError naming the file, the line and what was expected.
class FreeFormatReader {
 public:
  // Reads the whole file; a missing file is "File not found" naming the path.
  explicit FreeFormatReader(const std::string& path);
  // Reads from text already in memory; path only names it in errors.
  FreeFormatReader(std::string path, std::string text);

  // True when nothing but blanks and line breaks is left.
  bool at_end();

  std::string read_text(std::string_view what);
  double read_double(std::string_view what);
  int16_t read_int16(std::string_view what);
  int32_t read_int32(std::string_view what);

  // Whole lines, as a line reader returns them (without the line break).
  bool read_line(std::string& line);

  int line() const { return line_; }
  const std::string& path() const { return path_; }

 private:
  std::string read_number_token(std::string_view what);
  void skip_blanks();
  void finish_item();
  [[noreturn]] void fail(int error_number, std::string_view what, std::string_view found) const;

  std::string path_;
  std::string text_;
  size_t pos_ = 0;
  int line_ = 1;
};

// Parses a whole decimal number text ("12", "-3.5", "1E3"); false for anything else.
bool parse_number(std::string_view text, double& value);

}  // namespace morvane
