// SPDX-License-Identifier: MIT
#include "core/zeb_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <memory>
#include <cmath>
#include <string_view>

#include "core/arithmetic.h"
#include "core/error.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace morvane {

namespace {

// Reads of a quarter megabyte: the buffer stays in the core's cache between the kernel's copy
// and the scan (4 MiB reads cost 4 % more).
constexpr size_t kChunk = 256 * 1024;

// A 0 byte also separates: past the end of the file every byte reads as 0.
constexpr std::array<bool, 256> kSeparators = [] {
  std::array<bool, 256> table{};
  for (const char c : {',', ' ', '\t', '\r', '\n', '\0'}) table[static_cast<uint8_t>(c)] = true;
  return table;
}();
inline bool is_separator(uint8_t c) { return kSeparators[c]; }

// Bit i set when bytes[i] (of 64) is not a separator.
inline uint64_t item_bytes(const uint8_t* bytes) {
#ifdef __SSE2__
  uint64_t separators = 0;
  for (int part = 0; part < 4; ++part) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + 16 * part));
    __m128i hit = _mm_cmpeq_epi8(v, _mm_set1_epi8(','));
    hit = _mm_or_si128(hit, _mm_cmpeq_epi8(v, _mm_set1_epi8(' ')));
    hit = _mm_or_si128(hit, _mm_cmpeq_epi8(v, _mm_set1_epi8('\t')));
    hit = _mm_or_si128(hit, _mm_cmpeq_epi8(v, _mm_set1_epi8('\r')));
    hit = _mm_or_si128(hit, _mm_cmpeq_epi8(v, _mm_set1_epi8('\n')));
    hit = _mm_or_si128(hit, _mm_cmpeq_epi8(v, _mm_setzero_si128()));
    separators |= static_cast<uint64_t>(static_cast<uint16_t>(_mm_movemask_epi8(hit))) << (16 * part);
  }
  return ~separators;
#else
  uint64_t items = 0;
  for (int i = 0; i < 64; ++i) items |= static_cast<uint64_t>(!is_separator(bytes[i])) << i;
  return items;
#endif
}

// The common item: an optional sign and up to nine decimal digits. Inlined into the scan.
inline bool parse_whole_number(const char* p, const char* end, int32_t& value) {
  const bool negative = *p == '-';
  if (negative || *p == '+') ++p;
  if (p == end || end - p > 9) return false;
  int32_t v = 0;
  for (; p < end; ++p) {
    const unsigned digit = static_cast<unsigned>(*p - '0');
    if (digit > 9) return false;
    v = v * 10 + static_cast<int32_t>(digit);
  }
  value = negative ? -v : v;
  return true;
}

}  // namespace

bool parse_zeb_item(const char* begin, const char* end, int32_t& value) {
  if (begin < end && parse_whole_number(begin, end, value)) return true;
  double real = 0;
  if (begin < end && *begin == '+') ++begin;
  const auto result = std::from_chars(begin, end, real);
  if (result.ec != std::errc() || result.ptr != end) return false;
  value = to_int32(real);
  return true;
}

uint8_t zeb_item_byte(int32_t item, bool high) {
  int64_t v = item;
  if (v < 0) v += 65536;
  if (v < 0 || v > 65535) raise(ErrorNumber::Overflow, "ZEB item " + std::to_string(item) + " does not fit 16 bits");
  return static_cast<uint8_t>(high ? v / 256 : v % 256);
}

ZebText::ZebText(const FileBytes& file) : file_(file) { rescan(); }

// Counting the items of each 64 bytes is a population count: the processor's own instruction
// where it has one, a library call on the oldest processors.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
__attribute__((target_clones("default", "popcnt")))
#endif
void ZebText::rescan() {
  const uint64_t size = file_.size();
  // Filled by each read, so never zero-filled first.
  const uint64_t left = size > scanned_ ? size - scanned_ : 0;
  const auto buffer = std::make_unique_for_overwrite<uint8_t[]>(static_cast<size_t>(std::min<uint64_t>(kChunk, left)));
  while (scanned_ < size) {
    const size_t count = static_cast<size_t>(std::min<uint64_t>(kChunk, size - scanned_));
    file_.read(scanned_, buffer.get(), count);
    // 64 bytes at a time: an item starts where a non-separator follows a separator; only the
    // blocks where a record starts are looked at byte by byte.
    size_t i = 0;
    for (; i + 64 <= count; i += 64) {
      const uint64_t items = item_bytes(buffer.get() + i);
      const uint64_t starts = items & ~((items << 1) | (in_item_ ? 1u : 0u));
      in_item_ = (items >> 63) != 0;
      const int found = std::popcount(starts);
      const int64_t into_record = item_count_ % kZebItemsPerRecord;
      const int64_t to_next = into_record == 0 ? 0 : kZebItemsPerRecord - into_record;
      if (found > to_next) {
        uint64_t rest = starts;
        for (int64_t n = item_count_; rest != 0; ++n, rest &= rest - 1) {
          if (n % kZebItemsPerRecord == 0) {
            starts_.push_back(scanned_ + i + static_cast<size_t>(std::countr_zero(rest)));
          }
        }
      }
      item_count_ += found;
    }
    for (; i < count; ++i) {
      const bool separator = is_separator(buffer[i]);
      if (!separator && !in_item_) {
        if (item_count_ % kZebItemsPerRecord == 0) starts_.push_back(scanned_ + i);
        ++item_count_;
      }
      in_item_ = !separator;
    }
    scanned_ += count;
  }
  cached_record_ = -1;
}

int32_t ZebText::complete_records() const {
  const int64_t records = item_count_ / kZebItemsPerRecord - 1;
  return records < 0 ? 0 : static_cast<int32_t>(std::min<int64_t>(records, INT32_MAX));
}

void ZebText::raise_not_a_number(int32_t r, int item, std::string_view token) const {
  raise(ErrorNumber::TypeMismatch, file_.path() + " record " + std::to_string(r) + " item " + std::to_string(item) +
                                       " \"" + std::string(token) + "\" is not a number");
}

int32_t ZebText::parse_item_or_raise(const char* begin, const char* end, int32_t r, int item) const {
  const std::string_view token(begin, static_cast<size_t>(end - begin));
  int32_t value = 0;
  bool parsed = false;
  try {
    parsed = parse_zeb_item(begin, end, value);
  } catch (const RuntimeError&) {
    raise(ErrorNumber::Overflow, file_.path() + " record " + std::to_string(r) + " item " + std::to_string(item) +
                                     ": " + std::string(token) + " does not fit 32 bits");
  }
  if (!parsed) raise_not_a_number(r, item, token);
  return value;
}

void ZebText::scan_records(int32_t first, int32_t last, const RecordVisitor& visit) const {
  if (first > last) return;
  if (first < 1 || last > complete_records()) {
    const int32_t missing = first < 1 ? first : std::max(first, complete_records() + 1);
    // Records before the incomplete one are still handed over.
    if (first >= 1 && first <= complete_records()) scan_records(first, complete_records(), visit);
    raise(ErrorNumber::InputPastEndOfFile,
          file_.path() + " (ZEB record " + std::to_string(missing) + " is not complete)");
  }
  // One large buffer at a time, no larger than what is left of the file; a token cut by the
  // buffer's end is carried into the next.
  const uint64_t start = starts_[static_cast<size_t>(first)];
  const uint64_t left = file_.size() > start ? file_.size() - start : 0;
  const size_t chunk = last - first < 64 ? 8192 : static_cast<size_t>(std::clamp<uint64_t>(left, 8192, kChunk));
  const auto buffer = std::make_unique_for_overwrite<char[]>(chunk);
  std::string carried;
  ZebRecord items{};
  int32_t r = first;
  int item = 0;
  uint64_t offset = start;
  auto take = [&](const char* begin, const char* end) {
    int32_t& value = items[static_cast<size_t>(++item)];
    const auto single = static_cast<unsigned>(*begin - '0');
    if (end - begin == 1 && single <= 9) {
      value = static_cast<int32_t>(single);
    } else if (!parse_whole_number(begin, end, value)) [[unlikely]] {
      value = parse_item_or_raise(begin, end, r, item);
    }
    if (item == kZebItemsPerRecord) {
      visit(r, items);
      ++r;
      item = 0;
    }
  };
  while (r <= last) {
    // A file cut short since it was scanned would otherwise read as endless separators.
    if (offset >= file_.size() && carried.empty()) {
      raise(ErrorNumber::InputPastEndOfFile,
            file_.path() + " (ZEB record " + std::to_string(r) + " is not complete)");
    }
    const size_t count = chunk;
    file_.read(offset, reinterpret_cast<uint8_t*>(buffer.get()), count);
    const char* p = buffer.get();
    const char* end = p + count;
    if (!carried.empty()) {  // finish the token the last buffer ended in
      const char* stop = p;
      while (stop < end && !is_separator(static_cast<uint8_t>(*stop))) ++stop;
      carried.append(p, stop);
      p = stop;
      if (p < end) {
        take(carried.data(), carried.data() + carried.size());
        carried.clear();
      }
    }
    // Whole 64-byte blocks by their masks: an item starts at a set bit after a clear one and ends
    // at the clear bit after a set one. Each item is taken from its start, its length from the
    // next end; one that runs past the block is finished in the next.
    bool in_item = false;
    const char* item_begin = p;
    while (end - p >= 64 && r <= last) {
      const uint64_t items = item_bytes(reinterpret_cast<const uint8_t*>(p));
      const uint64_t before = (items << 1) | (in_item ? 1u : 0u);
      const uint64_t ends = ~items & before;
      if (in_item) {
        if (ends == 0) {  // the item goes on through the whole block
          p += 64;
          continue;
        }
        take(item_begin, p + std::countr_zero(ends));
      }
      in_item = false;
      for (uint64_t starts = items & ~before; starts != 0 && r <= last; starts &= starts - 1) {
        const int bit = std::countr_zero(starts);
        const uint64_t ends_after = ends >> bit;
        if (ends_after == 0) {  // runs past the block
          item_begin = p + bit;
          in_item = true;
          break;
        }
        take(p + bit, p + bit + std::countr_zero(ends_after));
      }
      p += 64;
    }
    if (in_item && r <= last) {  // the item the blocks ended in
      while (p < end && !is_separator(static_cast<uint8_t>(*p))) ++p;
      if (p == end) {
        carried.assign(item_begin, p);
        offset += count;
        continue;
      }
      take(item_begin, p);
    }
    while (p < end && r <= last) {
      while (p < end && is_separator(static_cast<uint8_t>(*p))) ++p;
      const char* begin = p;
      while (p < end && !is_separator(static_cast<uint8_t>(*p))) ++p;
      if (begin == p) break;
      if (p == end) {
        carried.assign(begin, p);  // may go on in the next buffer
        break;
      }
      take(begin, p);
    }
    offset += count;
  }
}

const ZebRecord& ZebText::record(int32_t r) const {
  if (r == cached_record_) return cache_;
  cached_record_ = -1;
  scan_records(r, r, [&](int32_t, const ZebRecord& items) { cache_ = items; });
  cached_record_ = r;
  return cache_;
}

uint8_t ZebText::packet_byte(int32_t r, int k) const {
  if (k < 0 || k / 2 + 9 > kZebItemsPerRecord) {
    raise(ErrorNumber::SubscriptOutOfRange, "packet byte " + std::to_string(k) + " lies beyond the ZEB record");
  }
  const int item = k / 2 + 9;
  const int32_t value = record(r)[static_cast<size_t>(item)];
  if (value < -65536 || value > 65535) {
    raise(ErrorNumber::Overflow, file_.path() + " record " + std::to_string(r) + " item " + std::to_string(item) +
                                     ": " + std::to_string(value) + " does not fit 16 bits");
  }
  return zeb_item_byte(value, k % 2 == 0);
}

}  // namespace morvane
