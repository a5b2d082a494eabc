// SPDX-License-Identifier: MIT
// The info command's contract: the keys and texts scripts read.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

using nlohmann::json;
using testing::FrameWriter;
using testing::Packet;

constexpr const char* kCli = "src/cli/morvane-cli";

// Word n of an information packet sits at byte 2n - 2.
Packet information(int32_t identifier, int32_t event_class, std::map<int, int32_t> words) {
  Packet packet{identifier, 7, 57, 0, 100, {{14, event_class * 256}}, {}};
  for (const auto& [n, word] : words) packet.words[2 * n - 2] = word;
  return packet;
}

class InfoCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    base = sim::write_configuration(dir.path("base"));
    FrameWriter writer(282);
    // Sensor channel 28 is the AD590 temperature, V x 100 - 273 oC; 0x4000 is 5 V.
    writer.add_frame({information(0x0F37, 2, {{9, 55007}, {10, 28}, {11, 0x4000}, {12, 0x2000}, {13, 0x1000}})});
    writer.add_frame(
        {information(0x0F31, 10, {}), information(0x0F37, 10, {{9, 0x9601}, {10, 1}, {11, 2}, {12, 3}, {13, 4}})});
    testing::write_bytes(dir.path("t.dat"), writer.bytes());
  }
  testing::ProgramRun cli(std::vector<std::string> arguments) { return testing::run_program(kCli, arguments); }
  json info_json(int index) {
    const auto run =
        cli({"info", dir.path("t.dat"), "-t", "CSS", "--base", base, "--index", std::to_string(index), "--json"});
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
  }
  testing::TempDir dir;
  std::string base;
};

TEST_F(InfoCommand, JsonHasTheContractKeys) {
  const json j = info_json(1);
  for (const char* key :
       {"index", "label2", "label3", "label5", "label7", "label9", "words", "translation", "memory"}) {
    EXPECT_TRUE(j.contains(key)) << key;
  }
  EXPECT_EQ(j["index"], 1);
  EXPECT_EQ(j["label2"], "Lander Pkt  1");
  EXPECT_EQ(j["label3"], "Information Pkt 1");
  EXPECT_EQ(j["label5"], " Warning Anomalous Event ");
  EXPECT_EQ(j["label7"], "7");
  EXPECT_EQ(j["label9"], "100");
  ASSERT_EQ(j["words"].size(), 32u);
  EXPECT_EQ(j["words"][8], "D6DF");
  ASSERT_EQ(j["translation"].size(), 5u);
  EXPECT_EQ(j["translation"][0], (json{{"text", "Safe limit violation"}, {"colour", {255, 0, 0}}}));
  EXPECT_EQ(j["translation"][1]["text"], "AD590 Temp reading exceeded safe limit");
  EXPECT_EQ(j["translation"][2]["text"], "Sensor ADC reading 4000    -   227.000 oC");
  EXPECT_TRUE(j["memory"].empty());
}

TEST_F(InfoCommand, MemoryChecksumRowsCarryTheirPlaces) {
  const json checksum = info_json(4);  // entry 2 is the empty slot after the first packet
  EXPECT_EQ(checksum["translation"][0]["text"], "Memory Checksum packet of PROM.    1 Checksum report.");
  ASSERT_EQ(checksum["memory"].size(), 4u);
  EXPECT_EQ(checksum["memory"][1],
            (json{{"text", "Address  0001  0002"}, {"x", 1200}, {"y", 200}, {"colour", {0, 0, 0}}}));
  // The acceptance class of memory checksums has no translation.
  const json acceptance = info_json(3);
  EXPECT_EQ(acceptance["translation"][0], (json{{"text", ""}, {"colour", {0, 0, 0}}}));
}

TEST_F(InfoCommand, TextShowsTheLinesAndAnIndexOutsideTheListFails) {
  const auto text = cli({"info", dir.path("t.dat"), "-t", "CSS", "--base", base, "--index", "1"});
  ASSERT_EQ(text.status, 0) << text.err;
  EXPECT_NE(text.out.find("Minimum safe limit 1000(hex)  -   -148.000 oC"), std::string::npos) << text.out;
  const auto outside = cli({"info", dir.path("t.dat"), "-t", "CSS", "--base", base, "--index", "99"});
  EXPECT_EQ(outside.status, 1);
  EXPECT_EQ(outside.err.rfind("error: ", 0), 0u) << outside.err;
}

TEST_F(InfoCommand, ZebRecordsShowTheirItemsUntranslated) {
  std::vector<std::vector<int32_t>> records;
  records.push_back(testing::zeb_record({{5, 1847}, {7, 3}, {9, 55}, {15, 2}, {17, 55003}}));
  testing::write_file(dir.path("z.txt"), testing::zeb_text(records));
  const auto run = cli({"info", dir.path("z.txt"), "-t", "ZEB", "--base", base, "--index", "1", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const json j = json::parse(run.out);
  ASSERT_EQ(j["words"].size(), 136u);
  EXPECT_EQ(j["words"][4], "1847");
  EXPECT_EQ(j["words"][16], "55003");
  EXPECT_EQ(j["label7"], "3");
  EXPECT_EQ(j["translation"][0]["text"], "");
}

}  // namespace
}  // namespace morvane
