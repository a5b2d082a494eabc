// SPDX-License-Identifier: MIT
#include "functest/short_test_data.h"

#include <gtest/gtest.h>

#include "core/error.h"
#include "short_test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

using testing::Packet;
using testing::TestDesign;

Packet_Entry science(int32_t sequence, int32_t time, LabelCode label = LabelCode::AuxiliaryData) {
  return {.Sequence_Count = sequence, .Lander_Time = time, .Label = label};
}

Catalogue catalogue_of(const std::vector<Packet_Entry>& entries) {
  Catalogue catalogue;
  for (const Packet_Entry& e : entries) catalogue.Science_List.push_back(e);
  return catalogue;
}

std::vector<int32_t> indices(const TestPackets& packets) {
  return std::vector<int32_t>(packets.Packet_Index.begin() + 1, packets.Packet_Index.end());
}

// Packets are placed by sequence count, not list position; the first of two with one count
// wins; other packets and packets 900 counts late are skipped; a count beyond the eight stops.
TEST(CollectTestPackets, PlacesTheTestsPacketsBySequenceCount) {
  const std::tuple<std::vector<Packet_Entry>, int32_t, std::vector<int32_t>> cases[] = {
      {{science(0, 0), science(50, 1000), science(53, 1003), science(51, 1001), science(57, 1007), science(52, 1002),
        science(55, 1005), science(56, 1006), science(54, 1004)},
       2,
       {2, 4, 6, 3, 9, 7, 8, 5}},
      {{science(50, 1000), science(51, 1001), science(51, 1002)}, 1, {1, 2, 0, 0, 0, 0, 0, 0}},
      {{science(50, 1000), science(51, 1001), science(58, 1002), science(52, 1003)}, 1, {1, 2, 0, 0, 0, 0, 0, 0}},
      {{science(50, 1000), science(51, 1001, LabelCode::GcSpectrum), science(51, 1901), science(52, 1900),
        science(53, 999), science(51, 1002), science(49, 1003)},
       1,
       {1, 6, 4, 0, 0, 0, 0, 0}},
  };
  for (const auto& [entries, start, expected] : cases) {
    const TestPackets packets = collect_test_packets(catalogue_of(entries), start);
    EXPECT_EQ(indices(packets), expected);
    EXPECT_EQ(packets.Start_Sequence, 50);
    EXPECT_EQ(packets.Start_Time, 1000);
  }
  EXPECT_NE(testing::thrown([] { collect_test_packets(catalogue_of({science(1, 1)}), 2); }).number, 0);
}

class LoadTestData : public testing::CraftedPacketsTest {
 protected:
  Session load(const std::vector<Packet>& packets) { return CraftedPacketsTest::load(packets, FileFormat::CSS); }
  static TestDesign design() {
    TestDesign d;
    d.readings[2] = {testing::channel_of(28), 9765};
    d.readings[30] = {testing::channel_of(35), 65535};
    d.readings[232] = {101, 32768};
    return d;
  }
};

TEST_F(LoadTestData, ReadsEverySlotOfThePacketsFoundAndNoCountBeyondTheLastReading) {
  std::vector<Packet> packets;
  for (int n = 1; n <= 8; ++n) {
    if (n != 4) packets.push_back(testing::test_packet(design(), n));
  }
  const Session session = load(packets);
  const TestReadings r = Load_Test_Data(session, collect_test_packets(session.catalogue, 1));
  EXPECT_EQ(r.Sensor_ID[1], 22);  // channel 23
  EXPECT_EQ(r.Sensor_ID[2], 28);
  EXPECT_EQ(r.ADC_Reading[2], 9765);
  EXPECT_DOUBLE_EQ(r.Voltage[2], 97650.0 / 32768);
  EXPECT_EQ(r.Sensor_ID[27], 0);
  EXPECT_EQ(r.Sensor_ID[30], 35);
  EXPECT_EQ(r.ADC_Reading[30], 65535);
  EXPECT_DOUBLE_EQ(r.Voltage[30], -10.0 / 32768);
  EXPECT_EQ(r.Sensor_ID[232], 1);
  EXPECT_DOUBLE_EQ(r.Voltage[232], -10.0);
  for (int k = 3 * 29 + 1; k <= 4 * 29; ++k) {  // the missing fourth packet
    EXPECT_EQ(r.Sensor_ID[static_cast<size_t>(k)], 0);
    EXPECT_EQ(r.Voltage[static_cast<size_t>(k)], 0.0);
  }

  // A count beyond the last reading is an error.
  packets.insert(packets.begin() + 3, testing::test_packet(design(), 4));
  packets[7].words[18] = 30;
  const Session beyond = load(packets);
  EXPECT_NE(testing::thrown([&] { Load_Test_Data(beyond, collect_test_packets(beyond.catalogue, 1)); }).number, 0);
}

TEST_F(LoadTestData, TakesTheFirstRfEventStrictlyInsideTheWindow) {
  const TestDesign d = design();
  const int32_t start = d.start_time;
  const std::pair<std::vector<Packet>, double> cases[] = {
      {{}, 0},
      {{testing::rf_event(start, 10), testing::rf_event(start + 900, 20)}, 0},
      {{testing::rf_event(start + 1, 10), testing::rf_event(start + 2, 20)}, rf_frequency_of(10)},
      {{testing::rf_event(start + 1, 10, 0xD748), testing::rf_event(start + 899, 20)}, rf_frequency_of(20)},
  };
  for (const auto& [events, frequency] : cases) {
    std::vector<Packet> packets = {testing::test_packet(d, 1)};
    packets.insert(packets.end(), events.begin(), events.end());
    const Session session = load(packets);
    const TestReadings r = Load_Test_Data(session, collect_test_packets(session.catalogue, 1));
    EXPECT_EQ(r.RF_Found, frequency != 0) << events.size();
    EXPECT_EQ(r.RF_Frequency, frequency);
  }
}

}  // namespace
}  // namespace morvane
