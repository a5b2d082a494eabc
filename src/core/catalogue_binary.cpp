// SPDX-License-Identifier: MIT
// The classifier of the binary formats: walks the source packets of every frame by their
// length fields and enters each in its list. Frames are independent of one another, so large
// files are classified in blocks of frames on several threads and merged in frame order.
#include <algorithm>
#include <cstring>
#include <exception>
#include <functional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "catalogue_slot.h"
#include "core/error.h"
#include "core/huge_buffer.h"
#include "core/session.h"
#include "core/telemetry_file.h"

namespace morvane {

namespace {

constexpr int32_t kFirstPacketOffset = 23;  // 1-based in-frame offset of the first packet
constexpr int32_t kLastPacketOffset = 250;  // packets start at most here
constexpr int32_t kHeaderBytes = 18;        // identifier .. sub-type word
constexpr int32_t kBlockFrames = 16384;  // frames a thread classifies at a time
constexpr int32_t kWindowFrames = 2048;  // frames it reads at a time

// What one block's classification gathers: it only grows (a round's block reuses it), an element
// is written once and never zero-filled first, and it lies in huge pages, so that a block's
// megabytes cost a few page faults.
template <typename T>
class BlockBuffer {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  size_t size() const { return size_; }
  const T* data() const { return reinterpret_cast<const T*>(bytes_.get()); }
  void clear() { size_ = 0; }
  void reserve(size_t count) {
    if (count > capacity_) grow(count);
  }
  void push_back(const T& element) { *extend(1) = element; }
  // Room for count more elements at the end, to be written.
  T* extend(size_t count) {
    if (size_ + count > capacity_) grow(std::max(capacity_ * 2, size_ + count));
    T* at = reinterpret_cast<T*>(bytes_.get()) + size_;
    size_ += count;
    return at;
  }

 private:
  void grow(size_t capacity) {
    auto bigger = allocate_huge(capacity * sizeof(T));
    if (size_ > 0) std::memcpy(bigger.get(), bytes_.get(), size_ * sizeof(T));
    bytes_ = std::move(bigger);
    capacity_ = capacity;
  }
  std::unique_ptr<std::byte[], FreeDeleter> bytes_;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

struct BlockResult {
  BlockBuffer<Packet_Entry> hk, science, information;
  BlockBuffer<uint8_t> hk_rows;  // the sensor bytes of each housekeeping entry: hk.size() rows
  CatalogueCounters counters;
  void clear() {
    hk.clear();
    science.clear();
    information.clear();
    hk_rows.clear();
    counters = {};
  }
};

// Where a block's entries go in the catalogue: the 1-based index of its first entry in each list
// and of its first row of sensor bytes.
struct Placement {
  int32_t hk = 0, science = 0, information = 0, rows = 0;
};

// How a housekeeping packet's sensor bytes lie: the demo set's sensors, and most tables, are a
// run of consecutive bytes, read as they are or with each byte pair swapped.
enum class SensorLayout { Scattered, Run, SwappedRun };

struct Walk {
  int32_t stride = 282;
  FormatFamily family = FormatFamily::Frames282;
  bool byte_reverse = true;
  // The housekeeping sensor bytes are copied from the frames in memory when every sensor's
  // byte lies within reach of the block buffer (offsets as read, swapped when byte_reverse).
  bool copy_sensor_bytes = false;
  std::vector<int32_t> sensor_offsets;
  SensorLayout layout = SensorLayout::Scattered;
  int32_t run_start = 0;  // the first offset of a run
  int32_t reach = kHeaderBytes;  // bytes after a packet's start that the block buffer holds
};

// Copies width bytes (an even number) with the bytes of each pair swapped, 16 at a time where
// the processor can: the row of every housekeeping packet of a low-byte-first file.
inline void copy_swapping_pairs(uint8_t* to, const uint8_t* from, size_t width) {
  size_t j = 0;
#ifdef __SSE2__
  for (; j + 16 <= width; j += 16) {
    const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + j));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + j), _mm_or_si128(_mm_slli_epi16(pairs, 8), _mm_srli_epi16(pairs, 8)));
  }
#endif
  for (; j < width; j += 2) {
    to[j] = from[j + 1];
    to[j + 1] = from[j];
  }
}

// Copies the sensor bytes of the housekeeping packet just entered (the last of out.hk).
inline void copy_sensor_row(const uint8_t* packet, const Walk& walk, BlockResult& out) {
  const size_t width = walk.sensor_offsets.size();
  uint8_t* row = out.hk_rows.extend(width);
  switch (walk.layout) {
    case SensorLayout::Run:
      std::memcpy(row, packet + walk.run_start, width);
      break;
    case SensorLayout::SwappedRun:
      copy_swapping_pairs(row, packet + walk.run_start, width);
      break;
    case SensorLayout::Scattered:
      for (size_t j = 0; j < width; ++j) row[j] = packet[walk.sensor_offsets[j]];
      break;
  }
}

// Classifies frames first..last from a buffer that starts at 0-based file offset base. The
// family is a template argument so that its lookups fold into the loop.
template <FormatFamily family>
void classify_frames(const uint8_t* buffer, int64_t base, int32_t first, int32_t last, const Walk& walk,
                     BlockResult& out) {
  auto word = [&](int64_t position) -> int32_t {  // position is 1-based in the file
    const uint8_t* b = buffer + (position - 1 - base);
    return walk.byte_reverse ? b[1] * 256 + b[0] : b[0] * 256 + b[1];
  };
  CatalogueCounters& n = out.counters;
  for (int32_t f = first; f <= last; ++f) {
    const int64_t frame_start = static_cast<int64_t>(f - 1) * walk.stride;
    int32_t o = kFirstPacketOffset;
    do {
      const int64_t p = frame_start + o;
      const int32_t identifier = word(p);
      const int32_t sequence_word = word(p + 2);
      const int32_t length_field = word(p + 4);
      int32_t time_high = word(p + 6);
      const int32_t time_low = word(p + 8);
      // A high time word above 32767 counts as -1: keeps the product inside 32 bits.
      if (time_high > 32767) time_high = -1;
      const int32_t flags = (sequence_word & 0xC000) / 16384;

      Packet_Entry entry;
      entry.Packet_Frame = f;
      entry.Packet_Length = length_field + 7;
      entry.Packet_Position = static_cast<int32_t>(p);
      entry.Sequence_Count = sequence_word - flags * 16384;
      entry.Lander_Time = time_high * 65536 + time_low;
      o += length_field + 7;

      auto selector_word = [&](Selector selector) { return word(p + selector_offset(selector)); };
      const Classification kind = classify_packet(identifier, family, selector_word);
      entry.Label = kind.label;
      const Counter counter = counter_of(kind.label);
      if (counter != Counter::None) ++n[counter];
      switch (packet_kind_info(kind.kind).list) {
        case CatalogueList::HK:
          out.hk.push_back(entry);
          if (walk.copy_sensor_bytes && !walk.sensor_offsets.empty()) {
            copy_sensor_row(buffer + (p - 1 - base), walk, out);
          }
          break;
        case CatalogueList::Science:
          entry.Segment_Flags = static_cast<int16_t>(flags);
          if (kind.label == LabelCode::IsotopeSpectrum && (flags & isotope_spectrum_bit(family))) {
            ++n[Counter::IsotopeSpectrum];
          }
          out.science.push_back(entry);
          break;
        case CatalogueList::Information:
          if (packet_kind_info(kind.kind).slot) {
            clear_slot_header(entry);
            o = 282;  // an empty or unknown slot ends the frame
          }
          out.information.push_back(entry);
          break;
      }
    } while (o <= kLastPacketOffset);
  }
}

// A block is read a window of frames at a time: large reads, yet little memory per thread.
void classify_block(const TelemetryFile& file, int32_t first, int32_t last, const Walk& walk,
                    std::vector<uint8_t>& buffer, BlockResult& out) {
  for (int32_t window_first = first; window_first <= last; window_first += kWindowFrames) {
    const int32_t window_last = std::min(last, window_first + kWindowFrames - 1);
    const int64_t base = static_cast<int64_t>(window_first - 1) * walk.stride;
    const size_t length = static_cast<size_t>(static_cast<int64_t>(window_last - window_first) * walk.stride +
                                              kLastPacketOffset + walk.reach);
    buffer.resize(length);
    file.bytes().read(static_cast<uint64_t>(base), buffer.data(), length);
    if (walk.family == FormatFamily::Frames282) {
      classify_frames<FormatFamily::Frames282>(buffer.data(), base, window_first, window_last, walk, out);
    } else {
      classify_frames<FormatFamily::Frames280>(buffer.data(), base, window_first, window_last, walk, out);
    }
  }
}

// Makes room in the catalogue for a block and says where it goes; blocks are placed in file order.
Placement place(Session& session, const BlockResult& block, const Walk& walk) {
  Catalogue& catalogue = session.catalogue;
  HKSensorTable& table = session.HK_Sensor_Data;
  const Placement before{catalogue.HK_Count() + 1, catalogue.Science_Count() + 1, catalogue.Information_Count() + 1,
                         table.entries() + 1};
  Placement at;
  try {
    at.hk = catalogue.HK_List.grow(block.hk.size());
    at.science = catalogue.Science_List.grow(block.science.size());
    at.information = catalogue.Information_List.grow(block.information.size());
    if (walk.copy_sensor_bytes) at.rows = table.grow_rows(static_cast<int32_t>(block.hk.size()));
  } catch (...) {
    // No list may keep room that nothing fills: the blocks before this one stay as they were.
    catalogue.HK_List.truncate(before.hk - 1);
    catalogue.Science_List.truncate(before.science - 1);
    catalogue.Information_List.truncate(before.information - 1);
    table.truncate_rows(before.rows - 1);
    throw;
  }
  catalogue.counters.add(block.counters);
  return at;
}

// Copies a placed block into the catalogue; blocks in disjoint places are copied at once.
void copy_block(Session& session, const BlockResult& block, const Placement& at, const Walk& walk) {
  Catalogue& catalogue = session.catalogue;
  catalogue.HK_List.write(at.hk, block.hk.data(), block.hk.size());
  catalogue.Science_List.write(at.science, block.science.data(), block.science.size());
  catalogue.Information_List.write(at.information, block.information.data(), block.information.size());
  if (walk.copy_sensor_bytes) {
    session.HK_Sensor_Data.write_rows(at.rows, block.hk_rows.data(), static_cast<int32_t>(block.hk.size()));
  }
}

// Runs job(0) .. job(workers - 1), the first on the calling thread, and rethrows the first failure.
void run_on_threads(int workers, const std::function<void(int)>& job) {
  std::vector<std::exception_ptr> failures(static_cast<size_t>(workers));
  auto guarded = [&](int w) {
    try {
      job(w);
    } catch (...) {
      failures[static_cast<size_t>(w)] = std::current_exception();
    }
  };
  std::vector<std::thread> threads;
  for (int w = 1; w < workers; ++w) threads.emplace_back(guarded, w);
  guarded(0);
  for (auto& thread : threads) thread.join();
  for (auto& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

// Sensor bytes can be copied during the walk when the table is level with the list and every
// offset lies a little way into the packet.
void plan_sensor_bytes(Session& session, Walk& walk) {
  HKSensorTable& table = session.HK_Sensor_Data;
  const int sensors = session.config.Sensor_Count();
  if (table.sensors() != sensors && session.catalogue.HK_Count() == 0) table.reset(sensors);
  if (table.sensors() != sensors || table.entries() != session.catalogue.HK_Count()) return;
  constexpr int32_t kFurthestOffset = 1024;
  for (const auto& sensor : session.config.Sensor_Table) {
    const int64_t k = walk.byte_reverse ? swapped_byte_offset(sensor.Byte_Offset) : sensor.Byte_Offset;
    if (k < 0 || k > kFurthestOffset) return;
    walk.sensor_offsets.push_back(static_cast<int32_t>(k));
    walk.reach = std::max(walk.reach, static_cast<int32_t>(k) + 1);
  }
  walk.copy_sensor_bytes = true;
  const std::vector<int32_t>& offsets = walk.sensor_offsets;
  if (offsets.empty()) return;
  const int32_t start = *std::min_element(offsets.begin(), offsets.end());
  auto follows = [&](auto position_of) {
    for (size_t j = 0; j < offsets.size(); ++j) {
      if (offsets[j] != start + position_of(static_cast<int32_t>(j))) return false;
    }
    return true;
  };
  walk.run_start = start;
  if (follows([](int32_t j) { return j; })) {
    walk.layout = SensorLayout::Run;
  } else if (offsets.size() % 2 == 0 && follows([](int32_t j) { return j ^ 1; })) {
    walk.layout = SensorLayout::SwappedRun;
  }
}

void check_positions_fit(const Session& session, int stride) {
  const int64_t last_position = static_cast<int64_t>(session.Packet_Count - 1) * stride + kLastPacketOffset;
  if (last_position > INT32_MAX) {
    raise(ErrorNumber::Overflow,
          session.File_Name + " holds " + std::to_string(session.telemetry().bytes().size()) +
              " bytes; the largest " + std::string(format_tag(session.File_Type)) + " file that can be read is " +
              std::to_string(largest_supported_size(session.File_Type)) + " bytes");
  }
}

void catalogue_binary(Session& session, int32_t stride, FormatFamily family, const ProgressFunction& progress) {
  const int32_t first = session.catalogue.Previous_Packet_Count + 1;
  const int32_t last = session.Packet_Count;
  if (first > last) return;
  check_positions_fit(session, stride);
  const TelemetryFile& file = session.telemetry();
  Walk walk;
  walk.stride = stride;
  walk.family = family;
  walk.byte_reverse = session.Byte_Reverse;
  plan_sensor_bytes(session, walk);
  const int32_t total = last - first + 1;
  const int workers = total <= kBlockFrames ? 1 : static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1u, 4u));

  // Room for about four packets a frame, so that the lists of a new load are not copied as they
  // grow: it is only address space until written.
  const int32_t most_entries = static_cast<int32_t>(std::min<int64_t>(static_cast<int64_t>(total) * 4, INT32_MAX));
  session.catalogue.HK_List.reserve(most_entries);
  session.catalogue.Science_List.reserve(most_entries);
  session.catalogue.Information_List.reserve(most_entries);

  std::vector<BlockResult> results(static_cast<size_t>(workers));
  // Room for a busy block, so the vectors rarely grow; no more than the frames to do need, since
  // a pass of live follow or a small file would otherwise claim megabytes for a few frames.
  const size_t block_frames = static_cast<size_t>(std::min(total, kBlockFrames));
  for (auto& result : results) {
    result.hk.reserve(block_frames * 4);
    result.science.reserve(block_frames);
    result.information.reserve(block_frames * 4);
    result.hk_rows.reserve(block_frames * 4 * walk.sensor_offsets.size());
  }
  std::vector<std::vector<uint8_t>> buffers(static_cast<size_t>(workers));
  std::vector<Placement> places(static_cast<size_t>(workers));
  for (int64_t start = first; start <= last; start += static_cast<int64_t>(kBlockFrames) * workers) {
    const int blocks = static_cast<int>(std::min<int64_t>(workers, (last - start) / kBlockFrames + 1));
    run_on_threads(blocks, [&](int w) {
      const int64_t block_first = start + static_cast<int64_t>(w) * kBlockFrames;
      const int64_t block_last = std::min<int64_t>(block_first + kBlockFrames - 1, last);
      auto& result = results[static_cast<size_t>(w)];
      result.clear();
      classify_block(file, static_cast<int32_t>(block_first), static_cast<int32_t>(block_last), walk,
                     buffers[static_cast<size_t>(w)], result);
    });
    for (int w = 0; w < blocks; ++w) places[static_cast<size_t>(w)] = place(session, results[static_cast<size_t>(w)], walk);
    run_on_threads(blocks, [&](int w) {
      copy_block(session, results[static_cast<size_t>(w)], places[static_cast<size_t>(w)], walk);
    });
    if (progress) {
      const int64_t done = std::min<int64_t>(start + static_cast<int64_t>(kBlockFrames) * workers, last + 1) - first;
      progress(done, total);
    }
  }
}

}  // namespace

void Catalogue_282_Byte_File(Session& session, const ProgressFunction& progress) {
  catalogue_binary(session, 282, FormatFamily::Frames282, progress);
}

void Catalogue_280_Byte_File(Session& session, const ProgressFunction& progress) {
  catalogue_binary(session, 280, FormatFamily::Frames280, progress);
}

}  // namespace morvane
