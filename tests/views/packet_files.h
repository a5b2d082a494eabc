// SPDX-License-Identifier: MIT
// Sessions over small crafted telemetry files for the decoder tests.
#pragma once

#include <array>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "core/session.h"
#include "test_files.h"
#include "views/drawing.h"

namespace morvane {

// Readable failures for positioned texts.
inline void PrintTo(const Placed_Text& t, std::ostream* out) {
  *out << '"' << t.text << "\" at (" << t.x << ", " << t.y << ") rgb(" << int{t.colour.red} << ", "
       << int{t.colour.green} << ", " << int{t.colour.blue} << ")";
}

}  // namespace morvane

namespace morvane::testing {

// 36 sensors: row r is "Sensor r" with channel ID 100 + r; five pressure records.
inline Configuration test_configuration() {
  Configuration config;
  for (int r = 1; r <= 36; ++r) {
    Sensor_Record row;
    row.Sensor_Name = "Sensor " + std::to_string(r);
    row.Byte_Offset = 21 + r;
    row.Channel_ID = static_cast<int16_t>(100 + r);
    config.Sensor_Table.push_back(row);
  }
  for (int k = 1; k <= 5; ++k) config.Pressure_Table.push_back({static_cast<int16_t>(21 + k), 45.0, 5.0});
  return config;
}

// A telemetry file in a fresh folder, loaded into a session with the test configuration.
struct Loaded_File {
  TempDir dir;
  Session session;

  explicit Loaded_File(FrameWriter& writer, FileFormat format = FileFormat::CSS, bool byte_reverse = true) {
    session.config = test_configuration();
    session.Byte_Reverse = byte_reverse;
    write_bytes(dir.path("t.dat"), writer.bytes());
    load_telemetry(session, dir.path("t.dat"), format);
  }
  Loaded_File(const std::string& zeb, Configuration config = test_configuration()) {
    session.config = std::move(config);
    write_file(dir.path("z.txt"), zeb);
    load_telemetry(session, dir.path("z.txt"), FileFormat::ZEB);
  }
};

// An information packet of length bytes whose words are given by their 1-based numbers (word n
// is packet bytes 2n-2 and 2n-1; W8 is the class word at byte 14, W9 the first word after it).
inline Packet information_packet(int32_t identifier, int32_t event_class, const std::map<int, int32_t>& words,
                                 int32_t length = 64) {
  Packet packet;
  packet.identifier = identifier;
  packet.sequence_word = 7;
  packet.length_field = length - 7;
  packet.time_low = 100;
  packet.words[14] = event_class * 256;
  for (const auto& [n, word] : words) packet.words[2 * n - 2] = word;
  return packet;
}

inline constexpr int32_t kEventId = 0x0F37;
inline constexpr int32_t kAcceptanceId = 0x0F31;
inline constexpr int32_t kMemoryDumpId = 0x0F39;
inline constexpr int32_t kScienceId = 0x0F3C;

// A spectrum sub-packet: segmentation flags (2 starts a spectrum), the flag word at byte 18, the
// four header words at 20..26, the first bin and the bin words from byte 32.
struct Sub_Packet {
  int flags = 0;
  int32_t first_bin = 0;
  std::vector<int32_t> bins;
  int32_t flag_word = 0;
  std::array<int32_t, 4> header{};
};

inline Packet spectrum_packet(int sub_type, const Sub_Packet& s) {
  Packet packet;
  packet.identifier = kScienceId;
  packet.sequence_word = s.flags * 16384;
  packet.length_field = 32 + 2 * static_cast<int32_t>(s.bins.size()) - 7;
  packet.words[16] = sub_type;
  packet.words[18] = s.flag_word;
  for (int i = 0; i < 4; ++i) packet.words[20 + 2 * i] = s.header[static_cast<size_t>(i)];
  packet.words[28] = s.first_bin;
  packet.words[30] = static_cast<int32_t>(s.bins.size());
  for (size_t j = 0; j < s.bins.size(); ++j) packet.words[32 + 2 * static_cast<int>(j)] = s.bins[j];
  return packet;
}
inline Packet isotope_packet(const Sub_Packet& s) { return spectrum_packet(3, s); }
inline Packet gc_packet(const Sub_Packet& s) { return spectrum_packet(2, s); }

}  // namespace morvane::testing
