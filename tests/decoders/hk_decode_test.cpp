// SPDX-License-Identifier: MIT
#include "decoders/hk_decode.h"

#include <bit>
#include <functional>

#include "decoder_fixture.h"

namespace morvane::testing {
namespace {

TEST(HkDecode, SignRulesDependOnTheSensor) {
  const std::tuple<int, uint8_t, int32_t> cases[] = {
      {1, 0x7F, 127},  {1, 0x80, -128}, {1, 0xFF, -1},   {22, 0xC0, -64}, {30, 0x90, -112},
      {28, 0xFF, 255}, {29, 0x80, 128}, {33, 0xD2, 210}, {33, 0xD3, -45}, {32, 0x80, 128},
      {36, 0xFF, -1},  {37, 0x80, -128},
  };
  for (const auto& [s, byte, raw] : cases) EXPECT_EQ(hk_signed_reading(s, byte), raw) << s << ' ' << int{byte};
}

class HkDecodeTest : public testing::DecoderTest {
 protected:
  DecodedHousekeeping decoded(int32_t index) { return decode_housekeeping(session.config, session.HK_Sensor_Data, index); }
};

TEST_F(HkDecodeTest, ThermocouplesAreShiftedByTheBoardTemperature) {
  // Sensor 28 byte 153, exponent 6: 2.98828125 V, 25.828125 degrees C. Thermocouples reading 0
  // then show the board temperature; the other channels are not shifted.
  load({hk_packet(2, sensor_bytes({{28, 153}, {27, 0}, {1, 0}, {33, 0xD3}}))});
  const DecodedHousekeeping packet = decoded(1);
  const double term = packet.cold_junction_term;
  EXPECT_EQ(packet.index, 1);
  EXPECT_DOUBLE_EQ(packet.sensor(28).value, 2.98828125 * 100 - 273);
  EXPECT_DOUBLE_EQ(term, session.config.NType.NType_Reverse_Lookup(25.828125) / 1e6);
  for (int s : {1, 27}) {
    EXPECT_DOUBLE_EQ(packet.sensor(s).voltage, term * 100) << s;
    EXPECT_DOUBLE_EQ(packet.sensor(s).voltage_upper, 64 * 10.0 / 32768 + term * 100) << s;
    EXPECT_NEAR(packet.sensor(s).value, 25.828125, 0.01) << s;
    EXPECT_GT(packet.sensor(s).value_upper, packet.sensor(s).value) << s;
    EXPECT_EQ(packet.sensor(s).unit, "oC");
  }
  EXPECT_EQ(packet.sensor(33).raw, -45);
  EXPECT_DOUBLE_EQ(packet.sensor(33).voltage, -45 * 128 * 10.0 / 32768);  // no shift
  EXPECT_DOUBLE_EQ(packet.sensor(33).value, packet.sensor(33).voltage * 10);
  EXPECT_DOUBLE_EQ(packet.sensor(33).value_upper, -44 * 128 * 10.0 / 32768 * 10);
}

TEST_F(HkDecodeTest, PressureChannelsHoldTheOverwrittenVoltages) {
  load({hk_packet(2, sensor_bytes({{22, 80}, {26, 0xF0}}))});
  const DecodedHousekeeping packet = decoded(1);
  const DecodedSensor& p1 = packet.sensor(22);
  const double volts = 80 * 256 * 10.0 / 32768;  // exponent 8
  EXPECT_EQ(std::tie(p1.raw, p1.unit), std::tuple(80, "bar"));
  EXPECT_DOUBLE_EQ(p1.voltage, volts * 10 - 5);
  EXPECT_DOUBLE_EQ(p1.voltage_upper, (81 * 256 * 10.0 / 32768) * 10 - 5);
  EXPECT_DOUBLE_EQ(p1.value, (volts * 10 - 5) / 40);
  EXPECT_DOUBLE_EQ(p1.value_upper, p1.voltage_upper / 40);
  const DecodedSensor& p5 = packet.sensor(26);
  EXPECT_EQ(std::tie(p5.raw, p5.unit), std::tuple(-16, "mbar"));
  EXPECT_DOUBLE_EQ(p5.value, p5.voltage * 1000 / 40);
}

// The per-byte path (trend, export, archive) and the packet decode give the same bits, with and
// without the cold-junction term, for every sensor and a spread of bytes.
uint64_t bits(double value) { return std::bit_cast<uint64_t>(value); }

TEST_F(HkDecodeTest, EveryByteConvertsAsThePacketDecodesIt) {
  const uint8_t boards[] = {0, 153, 255};
  const uint8_t bytes[] = {0, 1, 0x7F, 0x80, 0xD2, 0xD3, 0xFF};
  std::vector<testing::Packet> packets;
  for (const uint8_t board : boards) {
    for (const uint8_t byte : bytes) {
      std::map<int, uint8_t> by_sensor;
      for (int s = 1; s <= 36; ++s) by_sensor[s] = s == 28 ? board : byte;
      packets.push_back(hk_packet(2, sensor_bytes(by_sensor)));
    }
  }
  load(packets);
  const Configuration& config = session.config;
  for (int32_t k = 1; k <= static_cast<int32_t>(packets.size()); ++k) {
    const DecodedHousekeeping packet = decoded(k);
    const double term = board_cold_junction_term(config, session.HK_Sensor_Data.at(28, k));
    EXPECT_EQ(bits(packet.cold_junction_term), bits(term)) << k;
    for (int s = 1; s <= 36; ++s) {
      const SensorValue one = hk_byte_value(config, s, session.HK_Sensor_Data.at(s, k), term);
      const DecodedSensor& decoded = packet.sensor(s);
      EXPECT_EQ(std::tuple(bits(decoded.value), bits(decoded.voltage), decoded.raw, decoded.unit),
                std::tuple(bits(one.value), bits(one.voltage), one.raw, one.unit))
          << "sensor " << s << " entry " << k;
    }
  }
}

TEST_F(HkDecodeTest, ATableOrEntryItCannotReachIsOutOfRange) {
  load({hk_packet(2)});
  Configuration short_table = session.config;
  short_table.Sensor_Table.resize(27);
  const std::pair<std::function<void()>, const char*> cases[] = {
      {[&] { decoded(2); }, "in entry 2"},
      {[&] { decode_housekeeping(short_table, session.HK_Sensor_Data, 1); }, "sensor 28 of a table of 27"},
      {[&] { decoded(1).sensor(37); }, "sensor 37 of a table of 36"},
  };
  for (const auto& [call, detail] : cases) {
    const testing::Thrown error = testing::thrown(call);
    EXPECT_EQ(error.number, 9) << detail;
    EXPECT_PRED2(testing::contains, error.message, detail);
  }
}

// What the records hold after the view decoded into them.
TEST_F(HkDecodeTest, KeepingAPacketFillsTheRecordsAndTheExportKeepsItsFields) {
  load({hk_packet(2, sensor_bytes({{22, 80}, {29, 70}}))});
  session.config.sensor(29).Sensor_Unit = "millimetres";
  const DecodedHousekeeping packet = decoded(1);
  EXPECT_EQ(session.config.sensor(29).Sensor_Unit, "millimetres") << "decoding only reads";

  Configuration kept = session.config;
  keep_in_sensor_records(kept, packet);
  for (int s = 1; s <= 36; ++s) {
    const SensorRecord& r = kept.sensor(s);
    const DecodedSensor& d = packet.sensor(s);
    EXPECT_EQ(std::tie(r.Raw_Reading, r.Voltage, r.Voltage_Upper, r.Value, r.Value_Upper, r.Sensor_Unit),
              std::tie(d.raw, d.voltage, d.voltage_upper, d.value, d.value_upper, d.unit)) << s;
  }
  EXPECT_EQ(kept.sensor(29).Sensor_Unit, "mm");

  // The export keeps its cells through the same call (its own test) and writes no upper bounds.
  Configuration exported = session.config;
  exported.sensor(22).Voltage_Upper = 7;
  exported.sensor(22).Value_Upper = 8;
  keep_in_sensor_records(exported, 22, hk_byte_value(exported, 22, 80, 0));
  EXPECT_EQ(std::tuple(exported.sensor(22).Voltage_Upper, exported.sensor(22).Value_Upper), std::tuple(7, 8));
}

}  // namespace
}  // namespace morvane::testing
