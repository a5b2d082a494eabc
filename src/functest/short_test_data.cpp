// SPDX-License-Identifier: MIT
#include "functest/short_test_data.h"

#include <string>

#include "core/arithmetic.h"
#include "core/error.h"
#include "core/packet_kinds.h"

namespace morvane {

namespace {

constexpr int32_t kProgressEventIdentifier = identifier_of(PacketKind::ProgressEvent, FormatFamily::Frames282);
// ZEB records carry the identifier without its top bits (item 5), and their packet words begin
// with the lander time, so a ZEB progress event is recognised by item 5 instead.
constexpr int32_t kZebProgressEventIdentifier = identifier_of(PacketKind::ProgressEvent, FormatFamily::Zeb);
constexpr int32_t kRfFrequencyEvent = 0xD749;

// The end of a test's time window; past the 32-bit range it is an overflow, as in all time sums.
int32_t window_end(int32_t start_time) { return checked_int32(int64_t{start_time} + kTestWindowSeconds); }

bool is_progress_event(const Session& session, const Packet_Entry& entry) {
  const TelemetryFile& file = session.telemetry();
  if (file.format() == FileFormat::ZEB) return file.zeb().record(entry.Packet_Frame)[5] == kZebProgressEventIdentifier;
  return file.packet_word(entry, 0, session.Byte_Reverse) == kProgressEventIdentifier;
}

}  // namespace

TestPackets collect_test_packets(const Catalogue& catalogue, int32_t start) {
  const EntryList& science = catalogue.Science_List;
  TestPackets packets;
  const Packet_Entry& first = science.at(start);
  packets.Start_Sequence = first.Sequence_Count;
  packets.Start_Time = first.Lander_Time;
  const int32_t last_sequence = packets.Start_Sequence + kTestPackets - 1;
  const int32_t last_time = window_end(packets.Start_Time);
  for (int32_t k = start; k <= science.size(); ++k) {
    const Packet_Entry& entry = science[k];
    if (entry.Sequence_Count >= packets.Start_Sequence && entry.Sequence_Count <= last_sequence &&
        entry.Label == LabelCode::AuxiliaryData && entry.Lander_Time >= packets.Start_Time &&
        entry.Lander_Time <= last_time) {
      int32_t& index = packets.Packet_Index[static_cast<size_t>(entry.Sequence_Count - packets.Start_Sequence + 1)];
      if (index == 0) index = k;  // a later packet of the same sequence count is a duplicate
    }
    if (entry.Sequence_Count > last_sequence) break;
  }
  return packets;
}

double test_reading_volts(int32_t word) {
  const int32_t tenfold = signed_word(word) * 10;
  return tenfold / 32768.0;
}

double rf_frequency_of(int32_t word) { return (word & 0x0FFF) * (36.80000000000007 / 512) + 388.6; }

std::optional<double> find_rf_frequency(const Session& session, int32_t start_time) {
  const EntryList& information = session.catalogue.Information_List;
  if (information.empty()) return std::nullopt;
  const TelemetryFile& file = session.telemetry();
  const int32_t end_time = window_end(start_time);
  for (int32_t i = 1; i <= information.size(); ++i) {
    const Packet_Entry& entry = information[i];
    if (!(entry.Lander_Time > start_time && entry.Lander_Time < end_time)) continue;
    if (is_progress_event(session, entry) && file.packet_word(entry, 16, session.Byte_Reverse) == kRfFrequencyEvent) {
      return rf_frequency_of(file.packet_word(entry, 56, session.Byte_Reverse));
    }
  }
  return std::nullopt;
}

TestReadings Load_Test_Data(const Session& session, const TestPackets& packets) {
  TestReadings readings;
  const TelemetryFile& file = session.telemetry();
  const EntryList& science = session.catalogue.Science_List;
  for (int n = 1; n <= kTestPackets; ++n) {
    if (!packets.Packet_Found(n)) continue;
    const Packet_Entry& entry = science.at(packets.Packet_Index[static_cast<size_t>(n)]);
    const auto word = [&](int offset) { return file.packet_word(entry, offset, session.Byte_Reverse); };
    const int32_t count = word(18);
    for (int32_t j = 1; j <= count; ++j) {
      // A count above 29 runs on into the next packet's readings; past the last it is an error.
      const int32_t k = (n - 1) * kReadingsPerPacket + j;
      if (k > kTestReadings) {
        raise(ErrorNumber::SubscriptOutOfRange, "packet " + std::to_string(n) + " of the test claims " +
                                                    std::to_string(count) + " readings, more than the test holds");
      }
      const auto slot = static_cast<size_t>(k);
      readings.Sensor_ID[slot] = Get_Sensor_ID(session.config, word(16 + 8 * j));
      readings.ADC_Reading[slot] = word(18 + 8 * j);
      readings.Voltage[slot] = test_reading_volts(readings.ADC_Reading[slot]);
    }
  }
  if (const auto rf = find_rf_frequency(session, packets.Start_Time)) {
    readings.RF_Frequency = *rf;
    readings.RF_Found = true;
  }
  return readings;
}

}  // namespace morvane
