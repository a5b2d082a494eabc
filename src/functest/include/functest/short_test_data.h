// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core/configuration.h"
#include "core/sensor_id.h"
#include "core/session.h"

namespace morvane {

// A short form test is eight auxiliary packets of 29 readings each: reading j of packet n is
// reading k = (n - 1) x 29 + j of the test, 1..232.
inline constexpr int kTestPackets = 8;
inline constexpr int kReadingsPerPacket = 29;
inline constexpr int kTestReadings = kTestPackets * kReadingsPerPacket;
// How long after its first packet a test's packets and its RF frequency event may come, seconds.
inline constexpr int32_t kTestWindowSeconds = 900;

// The packets of one test, placed by sequence count.
struct TestPackets {
  int32_t Start_Sequence = 0;  // sequence count of the first packet
  int32_t Start_Time = 0;      // lander time of the first packet, seconds
  std::array<int32_t, kTestPackets + 1> Packet_Index{};  // [n]: Science_List index of packet n; 0 = missing

  bool Packet_Found(int n) const { return Packet_Index.at(static_cast<size_t>(n)) != 0; }
};

// Collects the test that starts at Science_List entry `start`: from there on, every auxiliary
// packet whose sequence count is one of the test's eight and whose lander time lies in
// Start_Time..Start_Time + 900 (inclusive) fills its place, the first of a sequence count
// winning. The scan stops at the first entry whose sequence count lies beyond the eight.
// An index outside the list is "Subscript out of range".
TestPackets collect_test_packets(const Catalogue& catalogue, int32_t start);

// The raw readings of a test (index 0 unused) and the RF frequency found beside it. Readings of
// missing packets stay 0.
struct TestReadings {
  std::array<int16_t, kTestReadings + 1> Sensor_ID{};    // sensor number, 0 = identifier unknown
  std::array<int32_t, kTestReadings + 1> ADC_Reading{};  // the ADC word as read, 0..65535
  std::array<double, kTestReadings + 1> Voltage{};       // signed count x 10 / 32768
  double RF_Frequency = 0;  // kHz
  bool RF_Found = false;
};

// An ADC word as volts: the word taken as a signed 16-bit count, times 10 (a 32-bit product),
// divided by 32768.
double test_reading_volts(int32_t word);

// Reads the readings of the packets found: for each, the count word at byte 18, then 8-byte
// slots from byte 24 holding the identifier and the ADC word. A count that runs past reading
// 232 is "Subscript out of range". Then looks for the RF frequency.
TestReadings Load_Test_Data(const Session& session, const TestPackets& packets);

// The RF frequency of the first progress event with sub-code 0xD749 whose lander time lies
// strictly inside Start_Time..Start_Time + 900, in kHz: its 12-bit count at byte 56 times
// 36.8 / 512 plus 388.6. nullopt when there is none.
std::optional<double> find_rf_frequency(const Session& session, int32_t start_time);

// The kHz of an RF count (the low 12 bits of the word are used).
double rf_frequency_of(int32_t word);

}  // namespace morvane
