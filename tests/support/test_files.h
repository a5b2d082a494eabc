// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "core/packet_kinds.h"

namespace morvane::testing {

// A fresh folder for one test, removed with everything in it afterwards.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::string& root() const { return root_; }
  std::string path(const std::string& name) const { return root_ + "/" + name; }

 private:
  std::string root_;
};

void write_file(const std::string& path, const std::string& content);
void write_bytes(const std::string& path, const std::vector<uint8_t>& bytes);
std::string read_file(const std::string& path);
// A file of the project's source tree (tests/data/..., say).
std::string source_path(const std::string& relative);

// One source packet to place in a frame: header fields and any further words by byte offset.
struct Packet {
  int32_t identifier = 0;
  int32_t sequence_word = 0;  // segmentation flags in the top two bits
  int32_t length_field = 11;  // the packet is length_field + 7 bytes long
  int32_t time_high = 0;
  int32_t time_low = 0;
  std::map<int, int32_t> words;  // 0-based even packet offset -> word
  std::map<int, uint8_t> bytes;  // 0-based packet offset -> byte (in file order)
};

// Builds binary telemetry: frames of 282 or 280 bytes whose packets follow one another from
// frame byte 22, words written low byte first (the start-up byte order) unless told otherwise.
class FrameWriter {
 public:
  explicit FrameWriter(int stride, bool low_byte_first = true) : stride_(stride), low_first_(low_byte_first) {}
  // Adds a frame holding these packets (the rest of the frame stays zero: an empty slot). A
  // packet may run past its frame into the next one, which starts at its stride all the same.
  void add_frame(const std::vector<Packet>& packets);
  void put_word(size_t offset, int32_t word);
  std::vector<uint8_t>& bytes() { return bytes_; }
  int stride() const { return stride_; }

 private:
  int stride_;
  bool low_first_;
  std::vector<uint8_t> bytes_;
  size_t frames_ = 0;
};

// The identifier of a packet kind as binary packets and ZEB records (item 5) carry it.
constexpr int32_t binary_id(PacketKind kind) { return identifier_of(kind, FormatFamily::Frames282); }
constexpr int32_t zeb_id(PacketKind kind) { return identifier_of(kind, FormatFamily::Zeb); }
inline constexpr int32_t kHousekeepingId = binary_id(PacketKind::Housekeeping);
inline constexpr int32_t kEventId = binary_id(PacketKind::ProgressEvent);
inline constexpr int32_t kAcceptanceId = binary_id(PacketKind::Acceptance);
inline constexpr int32_t kMemoryDumpId = binary_id(PacketKind::MemoryDump);
inline constexpr int32_t kScienceId = binary_id(PacketKind::Science);

// Packets built from the packet-kind table. A selector value the classifier reads as this label:
// the label's own, or for a fallback label one that no other label of its kind takes.
int32_t selector_example(LabelCode label);
// An identifier of no kind in this family (the word just after the housekeeping identifier).
int32_t unknown_identifier(FormatFamily family);
// The packet (binary formats) that the catalogue labels so: its identifier and selector word
// are set from the table, the rest is taken from packet.
Packet labelled(LabelCode label, Packet packet = {});
// The same with these header fields.
Packet labelled(LabelCode label, int32_t sequence_word, int32_t length_field, int32_t time_low);

// A ZEB text file: a header record and one record of 136 items per packet.
std::string zeb_text(const std::vector<std::vector<int32_t>>& records);
// A ZEB record with the given items (1-based item -> value), the rest 0.
std::vector<int32_t> zeb_record(const std::map<int, int32_t>& items);
// A ZEB record that the catalogue labels so (items 5 and 15 or 17 from the table), with these
// further items.
std::vector<int32_t> zeb_record(LabelCode label, std::map<int, int32_t> items = {});

}  // namespace morvane::testing

namespace morvane::testing {

// What a program run printed and how it ended.
struct ProgramRun {
  int status = -1;
  std::string out;
  std::string err;
};
// Runs a program of the build (path relative to the build folder, e.g. "src/cli/morvane-cli")
// with arguments, in the given working folder (or the current one).
ProgramRun run_program(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& working_folder = "");

}  // namespace morvane::testing
