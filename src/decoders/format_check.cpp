// SPDX-License-Identifier: MIT
#include "decoders/format_check.h"

#include <algorithm>

namespace morvane {

namespace {

bool starts_within(const EntryList& list, int32_t frames) { return !list.empty() && list[1].Packet_Frame <= frames; }

}  // namespace

std::optional<std::string> format_warning(const Session& session) {
  if (!session.loaded() || session.Packet_Count <= 0) return std::nullopt;
  const int32_t frames = std::min(session.Packet_Count, kFormatCheckFrames);
  const Catalogue& c = session.catalogue;
  // The lists are in file order: a known packet in the first frames is at the head of its list.
  if (starts_within(c.HK_List, frames) || starts_within(c.Science_List, frames)) return std::nullopt;
  bool unknown = false;
  for (int32_t i = 1; i <= c.Information_List.size() && c.Information_List[i].Packet_Frame <= frames; ++i) {
    const LabelCode label = c.Information_List[i].Label;
    if (label == LabelCode::Unknown) {
      unknown = true;
    } else if (label != LabelCode::Empty) {
      return std::nullopt;
    }
  }
  if (!unknown) return std::nullopt;

  const bool binary = is_binary(session.File_Type);
  const std::string unit = binary ? "frame" : "record";
  const std::string where = frames == 1 ? "the first " + unit : "the first " + std::to_string(frames) + " " + unit + "s";
  std::string text = "no known packet identifier in " + where + ": this may not be a " +
                     std::string(format_tag(session.File_Type)) + " file";
  if (binary) text += " (or the byte order is the other one)";
  return text;
}

}  // namespace morvane
