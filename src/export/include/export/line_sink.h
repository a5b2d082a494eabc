// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace morvane {

// Where the export writers put their lines, a cell at a time: a delimited text file or a sheet of
// a workbook. A line's cells are separated by the delimiter; end_line(true) also closes the last
// one with it, the pattern of the housekeeping rows ("1<d>61200000<d>"), while end_line(false)
// leaves the line as it is (titles, spectrum rows).
class LineSink {
 public:
  virtual ~LineSink() = default;

  // A text cell (titles, headings, names, units).
  virtual void text(std::string_view text) = 0;
  // A number cell: its value and the text the delimited file shows. A workbook stores the value
  // and, when a pattern such as "0.00" is given, shows it in that pattern.
  virtual void number(double value, std::string_view shown, std::string_view pattern) = 0;
  // A cell left empty.
  virtual void empty() = 0;
  virtual void end_line(bool trailing_delimiter) = 0;

  // A number whose text is its shortest form (entry numbers, times, bytes, general texts).
  void number(double value, std::string_view shown) { number(value, shown, {}); }
};

}  // namespace morvane
