// SPDX-License-Identifier: MIT
#include "views/summary_filter.h"

#include <array>

namespace morvane {

std::vector<int32_t> filter_entries(const EntryList& list, const Summary_Filter& filter) {
  std::vector<int32_t> matches;
  for (int32_t i = 1; i <= list.size(); ++i) {
    if (filter.matches(list[i])) matches.push_back(i);
  }
  return matches;
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
