// SPDX-License-Identifier: MIT
#include "core/catalogue.h"

#include <cstring>
#include <string>

#include "core/error.h"

namespace morvane {

void CatalogueCounters::add(const CatalogueCounters& other) {
  for (size_t i = 0; i < by_counter.size(); ++i) by_counter[i] += other.by_counter[i];
}

uint8_t HKSensorTable::at(int sensor, int32_t entry) const {
  if (sensor < 1 || sensor > sensors_ || entry < 1 || entry > entries_) {
    raise(ErrorNumber::SubscriptOutOfRange, "housekeeping byte of sensor " + std::to_string(sensor) +
                                                " in entry " + std::to_string(entry));
  }
  return row(entry)[sensor - 1];
}

HKSensorColumn HKSensorTable::column(int sensor, int32_t entries) const {
  if (entries < 0 || entries > entries_ || (entries > 0 && (sensor < 1 || sensor > sensors_))) {
    raise(ErrorNumber::SubscriptOutOfRange, "housekeeping bytes of sensor " + std::to_string(sensor) + " in entries 1 to " +
                                                std::to_string(entries));
  }
  HKSensorColumn column;
  column.stride_ = static_cast<size_t>(sensors_);
  column.column_ = static_cast<size_t>(sensor - 1);
  column.size_ = static_cast<size_t>(entries);
  const size_t chunks = (static_cast<size_t>(entries) + HKSensorColumn::kChunkRows - 1) >> kShift;
  column.chunks_.assign(chunks_.begin(), chunks_.begin() + static_cast<std::ptrdiff_t>(chunks));
  return column;
}

void HKSensorTable::append_rows(const uint8_t* rows, int32_t count) {
  write_rows(grow_rows(count), rows, count);
}

int32_t HKSensorTable::grow_rows(int32_t count) {
  const int32_t first = entries_ + 1;
  entries_ += count;
  if (sensors_ == 0) return first;
  // Whole chunks from the start: only the pages written become resident, so a small table
  // stays small, and a big one is never copied to grow.
  const size_t width = static_cast<size_t>(sensors_);
  while (static_cast<int64_t>(chunks_.size()) << kShift < entries_) {
    chunks_.emplace_back(allocate_huge(width * (size_t{1} << kShift)));
  }
  return first;
}

void HKSensorTable::write_rows(int32_t first, const uint8_t* rows, int32_t count) {
  const size_t width = static_cast<size_t>(sensors_);
  if (width == 0) return;
  int32_t at = first - 1;
  while (count > 0) {
    const int32_t room = (1 << kShift) - (at & kMask);
    const int32_t n = count < room ? count : room;
    std::memcpy(chunk(at) + static_cast<size_t>(at & kMask) * width, rows, static_cast<size_t>(n) * width);
    at += n;
    rows += static_cast<size_t>(n) * width;
    count -= n;
  }
}

void HKSensorTable::reset(int sensors) {
  chunks_.clear();
  sensors_ = sensors;
  entries_ = 0;
}

}  // namespace morvane
