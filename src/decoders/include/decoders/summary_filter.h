// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "core/packet_entry.h"

namespace morvane {

// An inclusive range of whole numbers; either end may be open.
struct NumberRange {
  std::optional<int64_t> from;
  std::optional<int64_t> to;
  bool contains(int64_t value) const { return (!from || value >= *from) && (!to || value <= *to); }
  bool open() const { return !from && !to; }
};

// What the summary lists are narrowed to: entries of the chosen labels (all when none is chosen)
// whose sequence count, lander time and frame lie in their ranges. Every condition must hold.
struct SummaryFilter {
  std::set<LabelCode> labels;
  NumberRange sequence;
  NumberRange lander_time;
  NumberRange frame;

  bool empty() const { return labels.empty() && sequence.open() && lander_time.open() && frame.open(); }
  bool matches(const Packet_Entry& entry) const {
    return (labels.empty() || labels.count(entry.Label) > 0) && sequence.contains(entry.Sequence_Count) &&
           lander_time.contains(entry.Lander_Time) && frame.contains(entry.Packet_Frame);
  }
};

// The 1-based entry numbers of the list that match, in list order.
std::vector<int32_t> filter_entries(const EntryList& list, const SummaryFilter& filter);
// Appends to matches the numbers of the entries first..last (1-based, inclusive) that match: a
// window filters a long list a slice at a time between its events. Nothing when last < first.
void filter_entries(const EntryList& list, const SummaryFilter& filter, int32_t first, int32_t last,
                    std::vector<int32_t>& matches);

// The first match after entry `after`, going round to the first match when there is none after
// it: what Enter selects. 0 when nothing matches. matches are ascending entry numbers.
int32_t next_match(const std::vector<int32_t>& matches, int32_t after);

// The labels that occur in a list, in label order: what a label choice offers.
std::vector<LabelCode> labels_in(const EntryList& list);

}  // namespace morvane
