// SPDX-License-Identifier: MIT
#include "export/export_range.h"

#include <cmath>

#include "core/free_format_reader.h"

namespace morvane {

namespace {

// A box's entry number: numeric, whole and within 1..limit.
std::optional<int32_t> entry_number(const std::string& text, int32_t limit) {
  double value = 0;
  if (!parse_number(text, value)) return std::nullopt;
  if (value < 1 || value > limit || std::floor(value) != value) return std::nullopt;
  return static_cast<int32_t>(value);
}

}  // namespace

ExportRange::ExportRange(int32_t limit) : limit_(limit) { Check2_Click(true); }

void ExportRange::reset() {
  from_ = std::string("1");  // a move: GCC 12 warns (falsely, -Wrestrict) on assigning the literal
  to_ = std::to_string(limit_);
}

void ExportRange::Check2_Click(bool checked) {
  all_ = checked;
  if (checked) reset();
}

std::optional<EntryRange> ExportRange::validate() {
  const auto from = entry_number(from_, limit_);
  const auto to = entry_number(to_, limit_);
  if (from && to && *to >= *from) return EntryRange{*from, *to};
  reset();
  return std::nullopt;
}

}  // namespace morvane
