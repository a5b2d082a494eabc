// SPDX-License-Identifier: MIT
#include "decoders/drawing_text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace morvane {

namespace {

long nearest_cell(int twips, int cell_twips) { return std::lround(static_cast<double>(twips) / cell_twips); }

// One line of the terminal page: its characters and which cells a text covers (blanks included).
struct TextLine {
  std::string chars;
  std::vector<bool> taken;

  bool is_taken(long cell) const { return cell >= 0 && cell < static_cast<long>(taken.size()) && taken[static_cast<size_t>(cell)]; }

  // The first start at or after `start` where length cells are free.
  long free_start(long start, long length) const {
    for (;;) {
      long last_taken = -1;
      for (long c = start; c < start + length; ++c) {
        if (is_taken(c)) last_taken = c;
      }
      if (last_taken < 0) return start;
      start = last_taken + 2;  // one blank after what is there
    }
  }

  void put(long start, const std::string& text) {
    const size_t end = static_cast<size_t>(start) + text.size();
    if (chars.size() < end) {
      chars.resize(end, ' ');
      taken.resize(end, false);
    }
    chars.replace(static_cast<size_t>(start), text.size(), text);
    std::fill(taken.begin() + start, taken.begin() + static_cast<long>(end), true);
  }
};

}  // namespace

std::string drawing_as_text(const Drawing& drawing, int column_twips, int row_twips) {
  std::map<long, TextLine> lines;
  long previous_end = 0;
  for (const PlacedText& item : drawing) {
    TextLine& line = lines[nearest_cell(item.y, row_twips)];
    const long length = static_cast<long>(item.text.size());
    long start = previous_end;
    if (item.anchor != Anchor::Follow) {
      start = nearest_cell(item.x, column_twips) - (item.anchor == Anchor::Right ? length : 0);
      start = line.free_start(std::max(start, 0L), length);
    }
    line.put(start, item.text);
    previous_end = start + length;
  }
  std::string text;
  if (lines.empty()) return text;
  for (long row = std::min(0L, lines.begin()->first); row <= lines.rbegin()->first; ++row) {
    auto found = lines.find(row);
    if (found != lines.end()) {
      std::string& chars = found->second.chars;
      chars.erase(chars.find_last_not_of(' ') + 1);
      text += chars;
    }
    text += '\n';
  }
  return text;
}

}  // namespace morvane
