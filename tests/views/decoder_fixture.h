// SPDX-License-Identifier: MIT
// A session with the simulated instrument's configuration and a file of crafted packets.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/session.h"
#include "core/telemetry_file.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "views/drawing.h"

namespace morvane::testing {

// A housekeeping packet (subtype 1 concise, 2 complete) of 96 bytes, long enough for the
// register words. `bytes` are packet bytes as the decoders read them in a byte-reversed file
// (the start-up order), so each lies at its swapped offset in the file.
inline Packet hk_packet(int subtype, const std::map<int, uint8_t>& bytes = {}, const std::map<int, int32_t>& words = {},
                        int32_t sequence = 1, int32_t time = 1000) {
  Packet packet{0x0F34, sequence, 89, 0, time, {{16, subtype}}, {}};
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

struct Aux_Test_Reading {
  int32_t time_high = 0, time_low = 0, channel = 0, word = 0;
};

// An auxiliary data packet with these readings (count at byte 18, 8 bytes a reading from byte 20).
inline Packet aux_packet(const std::vector<Aux_Test_Reading>& readings, int32_t sequence = 5, int32_t time = 2000,
                         std::optional<int32_t> count = std::nullopt) {
  Packet packet{0x0F3C, sequence, 13 + 8 * static_cast<int32_t>(readings.size()), 0, time, {{16, 1}}, {}};
  packet.words[18] = count.value_or(static_cast<int32_t>(readings.size()));
  for (size_t i = 1; i <= readings.size(); ++i) {
    const auto& r = readings[i - 1];
    const int base = 12 + 8 * static_cast<int>(i);
    packet.words[base] = r.time_high;
    packet.words[base + 2] = r.time_low;
    packet.words[base + 4] = r.channel;
    packet.words[base + 6] = r.word;
  }
  return packet;
}

class DecoderTest : public ::testing::Test {
 protected:
  void SetUp() override { session.config = load_configuration(sim::write_configuration(dir.path("base"))); }

  // One packet a frame, written low byte first (read with Byte_Reverse on) unless told otherwise.
  void load(const std::vector<Packet>& packets, bool low_byte_first = true) {
    FrameWriter writer(282, low_byte_first);
    for (const auto& packet : packets) writer.add_frame({packet});
    write_bytes(dir.path("t.dat"), writer.bytes());
    session.Byte_Reverse = low_byte_first;
    load_telemetry(session, dir.path("t.dat"), FileFormat::CSS);
  }

  TempDir dir;
  Session session;
};

// The text drawn at (x, y), or "(nothing)".
inline std::string text_at(const Drawing& drawing, int x, int y) {
  for (const auto& item : drawing) {
    if (item.x == x && item.y == y && item.anchor != Anchor::Follow) return item.text;
  }
  return "(nothing)";
}

// The first drawn text equal to text.
inline const Placed_Text* find_text(const Drawing& drawing, const std::string& text) {
  for (const auto& item : drawing) {
    if (item.text == text) return &item;
  }
  return nullptr;
}

}  // namespace morvane::testing
