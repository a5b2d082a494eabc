// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/huge_buffer.h"

#include "core/packet_entry.h"
#include "core/packet_kinds.h"

namespace morvane {

// The per-type counters of a catalogue, one per Counter. The accessors keep the counters'
// names; code that counts goes by Counter.
struct CatalogueCounters {
  std::array<int32_t, kCounterCount> by_counter{};

  int32_t& operator[](Counter counter) { return by_counter[static_cast<size_t>(counter)]; }
  int32_t operator[](Counter counter) const { return by_counter[static_cast<size_t>(counter)]; }

  // Counts one catalogued packet: its label's counter, and a whole isotope spectrum when its
  // segmentation flags pass the family's bit test.
  void count(LabelCode label, int32_t segment_flags, FormatFamily family) {
    const Counter counter = counter_of(label);
    if (counter != Counter::None) ++(*this)[counter];
    if (label == LabelCode::IsotopeSpectrum && (segment_flags & isotope_spectrum_bit(family))) {
      ++(*this)[Counter::IsotopeSpectrum];
    }
  }
  void add(const CatalogueCounters& other);

  int32_t Complete_Count() const { return (*this)[Counter::Complete]; }
  int32_t Concise_Count() const { return (*this)[Counter::Concise]; }
  int32_t Auxiliary_Count() const { return (*this)[Counter::Auxiliary]; }
  int32_t GC_Spectrum_Count() const { return (*this)[Counter::GcSpectrum]; }
  int32_t Isotope_Packet_Count() const { return (*this)[Counter::IsotopePacket]; }
  // Isotope packets that start or make a whole spectrum.
  int32_t Isotope_Spectrum_Count() const { return (*this)[Counter::IsotopeSpectrum]; }
  int32_t Progress_Event_Count() const { return (*this)[Counter::ProgressEvent]; }
  int32_t Warning_Event_Count() const { return (*this)[Counter::WarningEvent]; }
  // Never reset: it accumulates over every load of a run.
  int32_t Memory_Checksum_Count() const { return (*this)[Counter::MemoryChecksum]; }
  int32_t Memory_Dump_Count() const { return (*this)[Counter::MemoryDump]; }
  int32_t Acceptance_Success_Count() const { return (*this)[Counter::AcceptanceSuccess]; }
  int32_t Acceptance_Failure_Count() const { return (*this)[Counter::AcceptanceFailure]; }
  int32_t Unknown_Count() const { return (*this)[Counter::Unknown]; }
  int32_t Empty_Count() const { return (*this)[Counter::Empty]; }
};

// The catalogue of the loaded file: three lists of packets and their counters, plus the copy
// of the state after the last pass, from which real-time collection extends it.
struct Catalogue {
  EntryList HK_List;
  EntryList Science_List;
  EntryList Information_List;
  CatalogueCounters counters;

  int32_t Previous_Packet_Count = 0;
  int32_t Previous_HK_Count = 0;
  int32_t Previous_Science_Count = 0;
  int32_t Previous_Information_Count = 0;
  CatalogueCounters previous;

  int32_t HK_Count() const { return HK_List.size(); }
  int32_t Science_Count() const { return Science_List.size(); }
  int32_t Information_Count() const { return Information_List.size(); }
};

// One sensor's bytes in rows 1..size() of a housekeeping byte table, read where the table keeps
// them: the table's chunks are shared, so a column stays readable (and unchanged) whatever the
// table does next, a reset or a new load included. Element p is the byte of entry p + 1.
class HKSensorColumn {
 public:
  // Rows a chunk holds; a run of rows that starts at a multiple of a power of two no larger
  // than this lies within one chunk.
  static constexpr int kChunkShift = 21;
  static constexpr size_t kChunkRows = size_t{1} << kChunkShift;

  size_t size() const { return size_; }
  // The bytes of elements p, p + 1, ... up to the end of p's chunk are at(p)[0], at(p)[stride()], ...
  const uint8_t* at(size_t p) const {
    return reinterpret_cast<const uint8_t*>(chunks_[p >> kChunkShift].get()) + (p & (kChunkRows - 1)) * stride_ +
           column_;
  }
  size_t stride() const { return stride_; }
  uint8_t operator[](size_t p) const { return *at(p); }
  // Keeps the first n elements (n <= size()).
  void truncate(size_t n) { size_ = n; }

 private:
  friend class HKSensorTable;
  std::vector<std::shared_ptr<const std::byte[]>> chunks_;
  size_t stride_ = 0;
  size_t column_ = 0;
  size_t size_ = 0;
};

// The raw sensor bytes of every housekeeping packet, copied at load: one row of sensors()
// bytes per housekeeping entry, rows 1..entries() filled. Kept in large chunks, like the lists.
class HKSensorTable {
 public:
  int sensors() const { return sensors_; }
  int32_t entries() const { return entries_; }
  // The byte of sensor s in entry k; out of range is "Subscript out of range".
  uint8_t at(int sensor, int32_t entry) const;
  const uint8_t* row(int32_t entry) const { return chunk(entry - 1) + static_cast<size_t>((entry - 1) & kMask) * static_cast<size_t>(sensors_); }
  // Sensor s in entries 1..entries, read in place (no copy); out of range is "Subscript out of
  // range".
  HKSensorColumn column(int sensor, int32_t entries) const;
  // Appends count rows of sensors() bytes each.
  void append_rows(const uint8_t* rows, int32_t count);
  // Makes room for count more rows and returns the number of the first; they hold nothing until
  // written. Several threads may then write disjoint ranges at once.
  int32_t grow_rows(int32_t count);
  void write_rows(int32_t first, const uint8_t* rows, int32_t count);
  // Keeps the first n rows (n <= entries()).
  void truncate_rows(int32_t n) { entries_ = n; }
  // Empties the table and sets the row width.
  void reset(int sensors);

 private:
  // 2^21 rows make a whole number of huge pages whatever the row width; only the rows
  // written become resident.
  static constexpr int kShift = HKSensorColumn::kChunkShift;
  static constexpr int32_t kMask = (1 << kShift) - 1;
  uint8_t* chunk(int32_t zero_based) const {
    return reinterpret_cast<uint8_t*>(chunks_[static_cast<size_t>(zero_based >> kShift)].get());
  }
  int sensors_ = 0;
  int32_t entries_ = 0;
  // Shared with the columns read from them; rows once written never change.
  std::vector<std::shared_ptr<std::byte[]>> chunks_;
};

}  // namespace morvane
