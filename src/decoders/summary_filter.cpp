// SPDX-License-Identifier: MIT
#include "decoders/summary_filter.h"

#include <algorithm>
#include <array>

namespace morvane {

std::vector<int32_t> filter_entries(const EntryList& list, const SummaryFilter& filter) {
  std::vector<int32_t> matches;
  filter_entries(list, filter, 1, list.size(), matches);
  return matches;
}

void filter_entries(const EntryList& list, const SummaryFilter& filter, int32_t first, int32_t last,
                    std::vector<int32_t>& matches) {
  // The label choice as a table: a set lookup per entry would dominate a pass over millions.
  std::array<bool, kLabelCount> chosen{};
  for (const LabelCode label : filter.labels) chosen[static_cast<size_t>(label)] = true;
  const bool any_label = filter.labels.empty();
  first = std::max(first, 1);
  last = std::min(last, list.size());
  for (int32_t i = first; i <= last; ++i) {
    const Packet_Entry& e = list[i];
    if ((any_label || chosen[static_cast<size_t>(e.Label)]) && filter.sequence.contains(e.Sequence_Count) &&
        filter.lander_time.contains(e.Lander_Time) && filter.frame.contains(e.Packet_Frame)) {
      matches.push_back(i);
    }
  }
}

int32_t next_match(const std::vector<int32_t>& matches, int32_t after) {
  if (matches.empty()) return 0;
  const auto next = std::upper_bound(matches.begin(), matches.end(), after);
  return next == matches.end() ? matches.front() : *next;
}

std::vector<LabelCode> labels_in(const EntryList& list) {
  std::array<bool, kLabelCount> seen{};
  for (int32_t i = 1; i <= list.size(); ++i) seen[static_cast<size_t>(list[i].Label)] = true;
  std::vector<LabelCode> labels;
  for (int code = 0; code < kLabelCount; ++code) {
    if (seen[static_cast<size_t>(code)]) labels.push_back(static_cast<LabelCode>(code));
  }
  return labels;
}

}  // namespace morvane
