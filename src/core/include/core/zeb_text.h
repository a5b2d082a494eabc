// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <string>
#include <vector>

#include "core/file_bytes.h"

namespace morvane {

constexpr int kZebItemsPerRecord = 136;

// Items 1..136 of one ZEB record (index 0 unused).
using ZebRecord = std::array<int32_t, kZebItemsPerRecord + 1>;

// The ZEB text format: numbers separated by commas, blanks and line breaks, grouped in records
// of 136. Record 0 is the header; records 1.. describe one packet each. The constructor scans
// the file once, counting items and noting where each record starts, so that any record can
// be read again later without scanning from the beginning.
class ZebText {
 public:
  explicit ZebText(const FileBytes& file);

  // Scans what was appended since the last scan (the file may have grown).
  void rescan();

  int64_t item_count() const { return item_count_; }
  // Records after the header that hold all their 136 items.
  int32_t complete_records() const;

  // Items of record r (1-based, header not counted), as whole numbers. A record that the file
  // does not hold whole is "Input past end of file"; an item that is not a number is a
  // "Type mismatch" naming the record and item.
  const ZebRecord& record(int32_t r) const;

  // Reads records first..last in file order with large sequential reads and hands each to
  // visit(r, items): the fast way through a whole file. Fails as record() does, after the
  // records before the failure were handed over.
  template <typename Visit>
  void for_each_record(int32_t first, int32_t last, Visit&& visit) const {
    scan_records(first, last, [&](int32_t r, const ZebRecord& items) { visit(r, items); });
  }

  // The packet byte at 0-based offset k of record r: item Int(k/2) + 9, high byte for even k,
  // low byte for odd k, a negative item first taken + 65536.
  uint8_t packet_byte(int32_t r, int k) const;

 private:
  using RecordVisitor = std::function<void(int32_t, const ZebRecord&)>;
  void scan_records(int32_t first, int32_t last, const RecordVisitor& visit) const;
  // An item that is not a plain whole number: a real number rounded, or an error naming it.
  int32_t parse_item_or_raise(const char* begin, const char* end, int32_t r, int item) const;
  [[noreturn]] void raise_not_a_number(int32_t r, int item, std::string_view token) const;

  const FileBytes& file_;
  int64_t item_count_ = 0;
  uint64_t scanned_ = 0;         // bytes scanned so far
  bool in_item_ = false;         // the scan stopped inside an item
  std::vector<uint64_t> starts_; // byte offset of the first item of record 0, 1, 2, ...
  mutable int32_t cached_record_ = -1;
  mutable ZebRecord cache_{};
};

// One item's text as a whole number (rounded half to even); false when it is not a number.
bool parse_zeb_item(const char* begin, const char* end, int32_t& value);

// The high or low byte of a ZEB item; an item outside -65536..65535 is an Overflow.
uint8_t zeb_item_byte(int32_t item, bool high);

}  // namespace morvane
