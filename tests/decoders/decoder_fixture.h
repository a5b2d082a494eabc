// SPDX-License-Identifier: MIT
// Crafted packets of every kind, sessions over files of them, and the texts of a drawing.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/session.h"
#include "core/telemetry_file.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"
#include "decoders/drawing.h"

namespace morvane {

// Readable failures for positioned texts.
inline void PrintTo(const PlacedText& t, std::ostream* out) {
  *out << '"' << t.text << "\" at (" << t.x << ", " << t.y << ") rgb(" << int{t.colour.red} << ", "
       << int{t.colour.green} << ", " << int{t.colour.blue} << ")";
}

}  // namespace morvane

namespace morvane::testing {

// A housekeeping packet (subtype 1 concise, 2 complete) of 96 bytes, long enough for the
// register words. `bytes` are packet bytes as the decoders read them in a byte-reversed file
// (the start-up order), so each lies at its swapped offset in the file.
inline Packet hk_packet(int subtype, const std::map<int, uint8_t>& bytes = {}, const std::map<int, int32_t>& words = {},
                        int32_t sequence = 1, int32_t time = 1000) {
  Packet packet{kHousekeepingId, sequence, 89, 0, time, {{selector_offset(Selector::SubType), subtype}}, {}};
  for (const auto& [k, byte] : bytes) packet.bytes[static_cast<int>(swapped_byte_offset(k))] = byte;
  for (const auto& [k, word] : words) packet.words[k] = word;
  return packet;
}

// The housekeeping bytes of sensors s = 1.. (sensor s is packet byte 21 + s in the simulated instrument).
inline std::map<int, uint8_t> sensor_bytes(const std::map<int, uint8_t>& by_sensor) {
  std::map<int, uint8_t> bytes;
  for (const auto& [s, byte] : by_sensor) bytes[21 + s] = byte;
  return bytes;
}

struct AuxTestReading {
  int32_t time_high = 0, time_low = 0, channel = 0, word = 0;
};

// An auxiliary data packet with these readings (count at byte 18, 8 bytes a reading from byte 20).
inline Packet aux_packet(const std::vector<AuxTestReading>& readings, int32_t sequence = 5, int32_t time = 2000,
                         std::optional<int32_t> count = std::nullopt) {
  Packet packet =
      labelled(LabelCode::AuxiliaryData, sequence, 13 + 8 * static_cast<int32_t>(readings.size()), time);
  packet.words[18] = count.value_or(static_cast<int32_t>(readings.size()));
  int at = 20;
  for (const auto& r : readings) {
    for (const int32_t word : {r.time_high, r.time_low, r.channel, r.word}) packet.words[std::exchange(at, at + 2)] = word;
  }
  return packet;
}

// An information packet of length bytes whose words are given by their 1-based numbers (word n
// is packet bytes 2n-2 and 2n-1; W8 is the class word at byte 14, W9 the first word after it).
inline Packet information_packet(int32_t identifier, int32_t event_class, const std::map<int, int32_t>& words,
                                 int32_t length = 64) {
  Packet packet{identifier, 7, length - 7, 0, 100, {{selector_offset(Selector::EventClass), event_class * 256}}, {}};
  for (const auto& [n, word] : words) packet.words[2 * n - 2] = word;
  return packet;
}

// A spectrum sub-packet: segmentation flags (2 starts a spectrum), the flag word at byte 18, the
// four header words at 20..26, the first bin and the bin words from byte 32.
struct SubPacket {
  int flags = 0;
  int32_t first_bin = 0;
  std::vector<int32_t> bins;
  int32_t flag_word = 0;
  std::array<int32_t, 4> header{};
};

inline Packet spectrum_packet(int sub_type, const SubPacket& s) {
  Packet packet{kScienceId, s.flags * 16384, 32 + 2 * static_cast<int32_t>(s.bins.size()) - 7, 0, 0, {}, {}};
  packet.words = {{selector_offset(Selector::SubType), sub_type}, {18, s.flag_word}, {28, s.first_bin},
                  {30, static_cast<int32_t>(s.bins.size())}};
  for (int i = 0; i < 4; ++i) packet.words[20 + 2 * i] = s.header[static_cast<size_t>(i)];
  for (size_t j = 0; j < s.bins.size(); ++j) packet.words[32 + 2 * static_cast<int>(j)] = s.bins[j];
  return packet;
}
inline Packet isotope_packet(const SubPacket& s) { return spectrum_packet(3, s); }
inline Packet gc_packet(const SubPacket& s) { return spectrum_packet(2, s); }

// Frames of one packet each.
inline FrameWriter one_a_frame(const std::vector<Packet>& packets, int stride = 282, bool low_byte_first = true) {
  FrameWriter writer(stride, low_byte_first);
  for (const auto& packet : packets) writer.add_frame({packet});
  return writer;
}

// The simulated instrument's configuration and a file of crafted packets.
class DecoderTest : public ::testing::Test {
 protected:
  void SetUp() override { session.config = load_configuration(sim::write_configuration(dir.path("base"))); }

  // One packet a frame, written low byte first (read with Byte_Reverse on) unless told otherwise.
  void load(const std::vector<Packet>& packets, bool low_byte_first = true) {
    write_bytes(dir.path("t.dat"), one_a_frame(packets, 282, low_byte_first).bytes());
    session.Byte_Reverse = low_byte_first;
    load_telemetry(session, dir.path("t.dat"), FileFormat::CSS);
  }

  TempDir dir;
  Session session;
};

// 36 sensors: row r is "Sensor r" with channel ID 100 + r; five pressure records.
inline Configuration numbered_configuration() {
  Configuration config;
  for (int r = 1; r <= 36; ++r) {
    config.Sensor_Table.push_back(
        {"Sensor " + std::to_string(r), 21 + r, static_cast<int16_t>(100 + r), 0, "", 0, 0, 0, 0, 0});
  }
  for (int k = 1; k <= 5; ++k) config.Pressure_Table.push_back({static_cast<int16_t>(21 + k), 45.0, 5.0});
  return config;
}

// A telemetry file in a fresh folder, loaded into a session with the numbered configuration.
struct LoadedFile {
  TempDir dir;
  Session session;

  explicit LoadedFile(FrameWriter writer, FileFormat format = FileFormat::CSS, bool byte_reverse = true) {
    session.config = numbered_configuration();
    session.Byte_Reverse = byte_reverse;
    write_bytes(dir.path("t.dat"), writer.bytes());
    load_telemetry(session, dir.path("t.dat"), format);
  }
  explicit LoadedFile(const std::string& zeb, Configuration config = numbered_configuration()) {
    session.config = std::move(config);
    write_file(dir.path("z.txt"), zeb);
    load_telemetry(session, dir.path("z.txt"), FileFormat::ZEB);
  }
};

// The text drawn at (x, y), or "(nothing)".
inline std::string text_at(const Drawing& drawing, int x, int y) {
  const auto at =
      std::ranges::find_if(drawing, [&](const auto& t) { return t.x == x && t.y == y && t.anchor != Anchor::Follow; });
  return at == drawing.end() ? "(nothing)" : at->text;
}

// The labels of a graph's or a plot's ticks.
template <typename Tick>
std::vector<std::string> tick_labels(const std::vector<Tick>& ticks) {
  std::vector<std::string> labels;
  for (const auto& tick : ticks) labels.push_back(tick.label);
  return labels;
}

// The first drawn text equal to text.

inline const PlacedText* find_text(const Drawing& drawing, const std::string& text) {
  const auto at = std::ranges::find(drawing, text, &PlacedText::text);
  return at == drawing.end() ? nullptr : &*at;
}

}  // namespace morvane::testing
