// SPDX-License-Identifier: MIT
// Crafted short form tests: a small configuration, the eight auxiliary packets of a test, RF
// frequency events and limit files, written as the instrument and the test team write them.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/configuration.h"
#include "core/session.h"
#include "core/number_text.h"
#include "functest/short_test_data.h"
#include "functest/short_test_mode.h"
#include "functest/short_test_ranges.h"
#include "test_files.h"

namespace morvane::testing {

// Channel identifiers of the crafted sensor table: sensor s is channel 100 + s, except these.
inline int channel_of(int s) {
  static const std::map<int, int> special = {{22, 23}, {23, 24}, {24, 25}, {25, 26}, {26, 27}, {28, 28},
                                             {29, 29}, {30, 64}, {31, 65}, {34, 136}, {35, 144}};
  const auto found = special.find(s);
  return found == special.end() ? 100 + s : found->second;
}

// 36 sensors, five pressure sensors (C1 45, C2 5) and a straight N-type table of 40 uV a degree.
inline Configuration test_configuration() {
  Configuration config;
  std::vector<std::pair<double, double>> points;
  for (int t = -250; t <= 1250; t += 250) points.emplace_back(t * 40.0, t);
  config.NType.set_points(points);
  for (int s = 1; s <= 36; ++s) {
    SensorRecord record;
    record.Sensor_Name = "Sensor " + std::to_string(s);
    record.Channel_ID = static_cast<int16_t>(channel_of(s));
    config.Sensor_Table.push_back(record);
  }
  for (int k = 1; k <= 5; ++k) config.Pressure_Table.push_back(PressureRecord{static_cast<int16_t>(21 + k), 45, 5});
  return config;
}

struct TestReading {
  int32_t identifier = 65;  // sensor 31: the value is the voltage
  int32_t word = 0;
};

// One short form test as the instrument sends it: packet n carries readings (n - 1) x 29 + 1 to
// n x 29. The readings that the selection list checks carry its identifiers.
struct TestDesign {
  int32_t start_sequence = 100;
  int32_t start_time = 5000;
  std::array<TestReading, kTestReadings + 1> readings{};

  TestDesign() {
    readings[1].identifier = 23;
    readings[8].identifier = 64;
    readings[27].identifier = 0;
    readings[29].identifier = 144;
  }
};

// Auxiliary packet n (1..8) of a test, a minute after the one before: 29 reading slots of 8 bytes
// from byte 24.
inline Packet test_packet(const TestDesign& design, int n) {
  const int32_t time = design.start_time + (n - 1) * 60;
  Packet packet{kScienceId, design.start_sequence + n - 1, 16 + 8 * 30 - 7, time >> 16, time & 0xFFFF,
                {{16, 1}, {18, kReadingsPerPacket}}, {}};
  for (int j = 1; j <= kReadingsPerPacket; ++j) {
    const TestReading& reading = design.readings[static_cast<size_t>((n - 1) * kReadingsPerPacket + j)];
    packet.words[16 + 8 * j] = reading.identifier;
    packet.words[18 + 8 * j] = reading.word;
  }
  return packet;
}

// A GC spectrum packet: a science packet that is not auxiliary.
inline Packet gc_science_packet(int32_t sequence, int32_t time) {
  return Packet{kScienceId, sequence, 51, time >> 16, time & 0xFFFF, {{16, 2}}, {}};
}

// The progress event that reports the RF frequency: sub-code 0xD749 and a 12-bit count at byte 56.
inline Packet rf_event(int32_t time, int32_t count, int32_t sub_code = 0xD749) {
  return Packet{kEventId, 1, 51, time >> 16, time & 0xFFFF, {{14, 0x0100}, {16, sub_code}, {56, count}}, {}};
}

// Every limit pair of every record from min to max.
inline std::array<RangeRecord, TestRanges::kRecords> uniform_limits(double min, double max) {
  std::array<RangeRecord, TestRanges::kRecords> records{};
  for (int r = 1; r <= TestRanges::kRecords; ++r) {
    records[static_cast<size_t>(r - 1)].name = "Item " + std::to_string(r);
    records[static_cast<size_t>(r - 1)].pairs = {LimitPair{min, max}, LimitPair{min, max}, LimitPair{min, max}};
  }
  return records;
}

// A limit file as the test team writes it: one record a line, the name quoted.
inline std::string limit_file_text(const std::array<RangeRecord, TestRanges::kRecords>& records) {
  std::ostringstream out;
  for (const RangeRecord& record : records) {
    out << '"' << record.name << '"';
    for (const LimitPair& pair : record.pairs) out << ", " << general_text(pair.min) << ", " << general_text(pair.max);
    out << "\r\n";
  }
  return out.str();
}

// Writes the limit file of a type and mode below a base folder, as the limit files are laid out.
inline void write_limit_file(const std::string& base, const std::string& type, const std::string& mode,
                             const std::string& text) {
  write_file(base + "/EGSE_Info/Test Ranges/" + type + " " + mode + " Mode.txt", text);
}

// A session over crafted packets, each in a frame of its own (a test packet fills most of a
// frame), with the test configuration.
class CraftedPacketsTest : public ::testing::Test {
 protected:
  Session load(const std::vector<Packet>& packets, FileFormat format) {
    FrameWriter writer(282);
    for (const Packet& packet : packets) writer.add_frame({packet});
    write_bytes(dir.path("t.dat"), writer.bytes());
    Session session;
    session.config = test_configuration();
    load_telemetry(session, dir.path("t.dat"), format);
    return session;
  }
  TempDir dir;
};

}  // namespace morvane::testing
