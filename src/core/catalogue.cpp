// SPDX-License-Identifier: MIT
#include "core/catalogue.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "core/error.h"

namespace morvane {

void Catalogue_Counters::add(const Catalogue_Counters& o) {
  Complete_Count += o.Complete_Count;
  Concise_Count += o.Concise_Count;
  Auxiliary_Count += o.Auxiliary_Count;
  GC_Spectrum_Count += o.GC_Spectrum_Count;
  Isotope_Packet_Count += o.Isotope_Packet_Count;
  Isotope_Spectrum_Count += o.Isotope_Spectrum_Count;
  Progress_Event_Count += o.Progress_Event_Count;
  Warning_Event_Count += o.Warning_Event_Count;
  Memory_Checksum_Count += o.Memory_Checksum_Count;
  Memory_Dump_Count += o.Memory_Dump_Count;
  Acceptance_Success_Count += o.Acceptance_Success_Count;
  Acceptance_Failure_Count += o.Acceptance_Failure_Count;
  Unknown_Count += o.Unknown_Count;
  Empty_Count += o.Empty_Count;
}

uint8_t HK_Sensor_Table::at(int sensor, int32_t entry) const {
  if (sensor < 1 || sensor > sensors_ || entry < 1 || entry > entries_) {
    raise(ErrorNumber::SubscriptOutOfRange, "housekeeping byte of sensor " + std::to_string(sensor) +
                                                " in entry " + std::to_string(entry));
  }
  return row(entry)[sensor - 1];
}

void HK_Sensor_Table::append_rows(const uint8_t* rows, int32_t count) {
  const size_t width = static_cast<size_t>(sensors_);
  if (width == 0) {
    entries_ += count;
    return;
  }
  while (count > 0) {
    if (static_cast<size_t>(entries_ >> kShift) == chunks_.size()) {
      const bool first = chunks_.empty();
      first_capacity_ = first ? std::clamp<int32_t>(count, 1024, 1 << kShift) : (1 << kShift);
      chunks_.push_back(allocate_huge(width * static_cast<size_t>(first_capacity_)));
    } else if (chunks_.size() == 1 && entries_ == first_capacity_) {
      const int32_t grown = std::min<int32_t>(1 << kShift, first_capacity_ * 2);
      auto bigger = allocate_huge(width * static_cast<size_t>(grown));
      std::memcpy(bigger.get(), chunks_[0].get(), width * static_cast<size_t>(entries_));
      chunks_[0] = std::move(bigger);
      first_capacity_ = grown;
    }
    const int32_t capacity = chunks_.size() == 1 ? first_capacity_ : (1 << kShift);
    const int32_t room = capacity - (entries_ & kMask);
    const int32_t n = count < room ? count : room;
    std::memcpy(chunk(entries_) + static_cast<size_t>(entries_ & kMask) * width, rows, static_cast<size_t>(n) * width);
    entries_ += n;
    rows += static_cast<size_t>(n) * width;
    count -= n;
  }
}

void HK_Sensor_Table::reset(int sensors) {
  chunks_.clear();
  first_capacity_ = 0;
  sensors_ = sensors;
  entries_ = 0;
}

}  // namespace morvane
