// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/file_bytes.h"
#include "core/file_format.h"
#include "core/packet_entry.h"
#include "core/zeb_text.h"

namespace morvane {

// A loaded telemetry file: its bytes, its format and, for ZEB, where each record lies. Every
// decoder reads packets through it, by the one rule of each format.
class TelemetryFile {
 public:
  TelemetryFile(const std::string& path, FileFormat format);
  // A telemetry file whose bytes are already in memory, named for messages.
  TelemetryFile(std::string name, std::vector<uint8_t> bytes, FileFormat format);

  const std::string& path() const { return bytes_.path(); }
  FileFormat format() const { return format_; }
  const FileBytes& bytes() const { return bytes_; }
  // The ZEB record index; "Bad file name or number" for a binary file.
  const ZebText& zeb() const;

  // Frames (ZEB: records) as the file's current length or item count gives them.
  int32_t Get_Packet_Count() const;
  // Takes notice of a file that grew or shrank.
  void refresh();

  // The byte at a 1-based file position; 0 before the start or past the end of the file.
  uint8_t byte_at(int64_t position) const {
    return position < 1 ? 0 : bytes_.byte(static_cast<uint64_t>(position - 1));
  }
  // The 16-bit word whose first byte is at a 1-based position: first byte low when
  // byte_reverse (the start-up setting), first byte high otherwise. 0..65535.
  int32_t Get_Word(int64_t position, bool byte_reverse) const {
    const int32_t a = byte_at(position), b = byte_at(position + 1);
    return byte_reverse ? b * 256 + a : a * 256 + b;
  }

  // The byte at 0-based offset k of a catalogued packet. Binary files read it at the packet's
  // position, the offset swapped within its word when byte_reverse (so that a reversed file
  // yields the same bytes); ZEB files take it from the packet's record, whatever the order.
  uint8_t packet_byte(const Packet_Entry& entry, int k, bool byte_reverse) const;
  // The word at 0-based offset k of a catalogued packet: Get_Word at the packet's position in
  // binary files; bytes k (high) and k + 1 (low) of the record in ZEB files.
  int32_t packet_word(const Packet_Entry& entry, int k, bool byte_reverse) const;

 private:
  FileFormat format_;
  FileBytes bytes_;
  std::unique_ptr<ZebText> zeb_;
};

// The swapped offset of a single byte in a byte-reversed binary file: Int(k/2) x 4 + 1 - k.
inline int64_t swapped_byte_offset(int64_t k) {
  const int64_t half = k >= 0 ? k / 2 : -((1 - k) / 2);  // Int(k / 2), the floor
  return half * 4 + 1 - k;
}

// The largest file of a binary format whose packet positions fit 32-bit arithmetic.
int64_t largest_supported_size(FileFormat format);

}  // namespace morvane
