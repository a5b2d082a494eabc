// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/packet_entry.h"
#include "core/session.h"

namespace morvane {

// The list lines of the summary view, one per catalogue entry (i is the 1-based entry number).
// The columns are fixed: a number wider than its column is "Invalid procedure call or argument".
std::string hk_list_line(int32_t i, const Packet_Entry& entry);
std::string science_list_line(int32_t i, const Packet_Entry& entry);
std::string information_list_line(int32_t i, const Packet_Entry& entry);

// Column headings above each of the three lists.
inline constexpr const char* kSummaryHeadings[] = {"Lander pkt", "Type", "Sequence      Count", "Lander Time (s)"};

// One count of the summary view: its fixed caption and the value text ("- N/A -" where the
// count does not apply to the loaded format).
struct SummaryCount {
  std::string key;      // the batch tool's name for it, "" for captions without a count
  std::string caption;
  std::string value;
};

inline constexpr const char* kNotApplicable = "- N/A -";

// Every count caption with its value, in the order the view lays them out.
std::vector<SummaryCount> summary_counts(const Session& session);

}  // namespace morvane
