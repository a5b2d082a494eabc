// SPDX-License-Identifier: MIT
#include "core/packet_entry.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "core/error.h"

namespace morvane {

std::string_view label_text(LabelCode label) {
  switch (label) {
    case LabelCode::Concise: return " Concise  ";
    case LabelCode::Complete: return " Complete ";
    case LabelCode::HousekeepingUnknown: return " Unknown  ";
    case LabelCode::NormalProgressEvent: return " Normal Progress Event   ";
    case LabelCode::WarningAnomalousEvent: return " Warning Anomalous Event ";
    case LabelCode::NpeMemoryChecksum: return " NPE - Memory Checksum   ";
    case LabelCode::UnknownProgressEvent: return " Unknown - progress event";
    case LabelCode::AcceptanceSuccess: return " Acceptance Success      ";
    case LabelCode::AcceptanceFailure: return " Acceptance Failure      ";
    case LabelCode::MemoryChecksum: return " Memory Checksum         ";
    case LabelCode::UnknownAcceptance: return " Unknown - acceptance    ";
    case LabelCode::MemoryDump: return " Memory Dump             ";
    case LabelCode::AuxiliaryData: return " Auxiliary Data   ";
    case LabelCode::GcSpectrum: return " GC spectrum      ";
    case LabelCode::IsotopeSpectrum: return " Isotope spectrum ";
    case LabelCode::ScienceUnknown: return " Unknown          ";
    case LabelCode::Empty: return "  Empty  ";
    case LabelCode::Unknown: return " Unknown ";
  }
  return "";
}

const Packet_Entry& EntryList::at(int32_t i) const {
  if (i < 1 || i > size_) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "entry " + std::to_string(i) + " of a list of " + std::to_string(size_));
  }
  return (*this)[i];
}

void EntryList::append(const Packet_Entry* entries, size_t count) {
  write(grow(count), entries, count);
}

void EntryList::reserve(int32_t expected) {
  if (!chunks_.empty() || expected <= 0) return;
  first_capacity_ = std::clamp<int32_t>(expected, 1024, kChunkEntries);
  chunks_.push_back(allocate_huge(sizeof(Packet_Entry) * static_cast<size_t>(first_capacity_)));
}

int32_t EntryList::grow(size_t count) {
  if (static_cast<int64_t>(size_) + static_cast<int64_t>(count) > INT32_MAX) {
    raise(ErrorNumber::Overflow, "a catalogue list holds at most 2147483647 entries");
  }
  const int32_t first = size_ + 1;
  const int32_t wanted = size_ + static_cast<int32_t>(count);
  if (count > 0 && chunks_.empty()) {
    first_capacity_ = std::clamp<int32_t>(static_cast<int32_t>(count), 1024, kChunkEntries);
    chunks_.push_back(allocate_huge(sizeof(Packet_Entry) * static_cast<size_t>(first_capacity_)));
  }
  if (chunks_.size() == 1 && wanted > first_capacity_ && first_capacity_ < kChunkEntries) {
    // The first chunk grows by doubling, so that small lists stay small.
    int32_t grown = first_capacity_;
    while (grown < wanted && grown < kChunkEntries) grown = std::min<int32_t>(kChunkEntries, grown * 2);
    auto bigger = allocate_huge(sizeof(Packet_Entry) * static_cast<size_t>(grown));
    std::memcpy(bigger.get(), chunks_[0].get(), sizeof(Packet_Entry) * static_cast<size_t>(size_));
    chunks_[0] = std::move(bigger);
    first_capacity_ = grown;
  }
  // Then whole chunks: a list of millions of entries is never copied to grow.
  while (wanted > static_cast<int64_t>(chunks_.size()) * kChunkEntries) {
    chunks_.push_back(allocate_huge(sizeof(Packet_Entry) * static_cast<size_t>(kChunkEntries)));
  }
  size_ = wanted;
  return first;
}

void EntryList::write(int32_t first, const Packet_Entry* entries, size_t count) {
  int32_t at = first - 1;
  while (count > 0) {
    const size_t room = static_cast<size_t>(kChunkEntries - (at & kMask));
    const size_t n = count < room ? count : room;
    std::memcpy(chunk(at) + (at & kMask), entries, n * sizeof(Packet_Entry));
    at += static_cast<int32_t>(n);
    entries += n;
    count -= n;
  }
}

void EntryList::clear() {
  chunks_.clear();
  first_capacity_ = 0;
  size_ = 0;
}

}  // namespace morvane
