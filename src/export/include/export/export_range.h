// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace morvane {

// A range of catalogue entry numbers, From..To inclusive, 1-based.
struct EntryRange {
  int32_t from = 1;
  int32_t to = 0;
  int32_t size() const { return to - from + 1; }
};

// The range controls every export dialog shares: From (Text1), To (Text2) and All (Check2).
class ExportRange {
 public:
  // Form_Load: From "1", To the limit, All checked, so both boxes are disabled.
  explicit ExportRange(int32_t limit);

  int32_t limit() const { return limit_; }
  const std::string& from_text() const { return from_; }
  const std::string& to_text() const { return to_; }
  bool all() const { return all_; }
  bool boxes_enabled() const { return !all_; }

  // What the user typed in the boxes.
  void set_from_text(std::string text) { from_ = std::move(text); }
  void set_to_text(std::string text) { to_ = std::move(text); }

  // All checked: From "1", To the limit, both boxes disabled. Cleared: both enabled, their
  // texts kept.
  void Check2_Click(bool checked);

  // The range the boxes give when both are numeric, whole, within 1..limit, and To is not below
  // From (a range of one entry is valid). Otherwise nothing, and the boxes are reset to "1" and
  // the limit (All keeps its state).
  std::optional<EntryRange> validate();

 private:
  void reset();

  int32_t limit_;
  std::string from_;
  std::string to_;
  bool all_ = true;
};

}  // namespace morvane
