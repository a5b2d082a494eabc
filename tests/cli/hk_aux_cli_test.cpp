// SPDX-License-Identifier: MIT
// The hk and aux commands' contract: JSON keys that scripts rely on, texts, exit statuses.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "core/telemetry_file.h"
#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

using nlohmann::json;
using testing::FrameWriter;
using testing::Packet;

constexpr const char* kCli = "src/cli/morvane-cli";

// A housekeeping packet of 96 bytes; bytes are placed for the start-up (byte-reversed) order.
Packet hk(int subtype, std::map<int, uint8_t> bytes, std::map<int, int32_t> words = {}) {
  Packet packet{0x0F34, 7, 89, 0, 1000, {{16, subtype}}, {}};
  for (const auto& [k, byte] : bytes) packet.bytes[static_cast<int>(swapped_byte_offset(k))] = byte;
  for (const auto& [k, word] : words) packet.words[k] = word;
  return packet;
}

class HkAuxCliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    base = sim::write_configuration(dir.path("base"));
    FrameWriter writer(282);
    writer.add_frame({hk(2, {{18, 3}, {20, 0}, {21, 9}, {22, 0x80}, {49, 153}}, {{66, 0x8001}})});
    writer.add_frame({hk(1, {{18, 4}, {20, 128}})});
    // An auxiliary packet: two readings, reactor 1 (channel 101) and pressure 1 (channel 23).
    writer.add_frame({Packet{0x0F3C, 12, 29, 0, 2000, {{16, 1}, {18, 2}, {20, 0}, {22, 2001}, {24, 101}, {26, 0},
                                                         {28, 0}, {30, 2002}, {32, 23}, {34, 0x2000}}, {}}});
    testing::write_bytes(dir.path("t.dat"), writer.bytes());
  }
  testing::ProgramRun cli(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin() + 1, {dir.path("t.dat"), "-t", "CSS", "--base", base});
    return testing::run_program(kCli, arguments);
  }
  testing::TempDir dir;
  std::string base;
};

TEST_F(HkAuxCliTest, HkJsonHasTheContractKeys) {
  const auto run = cli({"hk", "--index", "1", "--registers", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const json j = json::parse(run.out);
  for (const char* key : {"index", "hk_count", "label", "sequence_count", "lander_time", "mode_number", "mode_name",
                          "line_number", "cold_junction_term", "more_visible", "sensors", "lines", "registers"}) {
    EXPECT_TRUE(j.contains(key)) << key;
  }
  EXPECT_EQ(j["index"], 1);
  EXPECT_EQ(j["hk_count"], 2);
  EXPECT_EQ(j["label"], " Complete ");
  EXPECT_EQ(j["sequence_count"], 7);
  EXPECT_EQ(j["lander_time"], 1000);
  EXPECT_EQ(j["mode_number"], 3);
  EXPECT_EQ(j["mode_name"], "Cruise Phase");
  EXPECT_EQ(j["line_number"], 9);
  EXPECT_EQ(j["more_visible"], true);
  EXPECT_GT(j["cold_junction_term"].get<double>(), 0);

  ASSERT_EQ(j["sensors"].size(), 36u);
  const json& reactor = j["sensors"][0];
  for (const char* key : {"number", "name", "raw", "voltage", "voltage_upper", "value", "value_upper", "unit"}) {
    EXPECT_TRUE(reactor.contains(key)) << key;
  }
  EXPECT_EQ(reactor["number"], 1);
  EXPECT_EQ(reactor["raw"], -128);
  EXPECT_EQ(reactor["unit"], "oC");
  // Pressure records hold the conversion's overwritten voltage: 0 V x 10 - 5.
  EXPECT_EQ(j["sensors"][21]["voltage"], -5.0);

  ASSERT_EQ(j["lines"].size(), 36u);
  const json& first = j["lines"][0];
  for (const char* key : {"row", "column", "sensor", "name", "value_text", "step_text", "unit"}) {
    EXPECT_TRUE(first.contains(key)) << key;
  }
  EXPECT_EQ(first["row"], 1);
  EXPECT_EQ(first["column"], 0);
  EXPECT_EQ(first["sensor"], 1);
  EXPECT_EQ(first["name"], "Reactor 1");
  EXPECT_EQ(j["lines"][22]["sensor"], 28);
  EXPECT_EQ(j["lines"][22]["value_text"], "25.8");

  ASSERT_EQ(j["registers"]["words"].size(), 16u);
  EXPECT_EQ(j["registers"]["words"][1], 0x8001);
  const json& heading = j["registers"]["texts"][0];
  EXPECT_EQ(heading, (json{{"text", "Valve enable register    8001"}, {"x", 0}, {"y", 0}}));
}

TEST_F(HkAuxCliTest, HkTextShowsTheLabelsAndThePage) {
  const auto run = cli({"hk", "--index", "1"});
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* text : {"Packet type -  Complete \n", "Mode  3  -  Cruise Phase\n", "Line  9\n", "Reactors\n",
                           "Pressure Sensors", "AD590 Temp"}) {
    EXPECT_NE(run.out.find(text), std::string::npos) << text << "\n" << run.out;
  }
  EXPECT_EQ(run.out.find("Valve enable register"), std::string::npos);
}

TEST_F(HkAuxCliTest, HkReportsAnOverflowingLineAfterThePage) {
  const auto run = cli({"hk", "--index", "2", "--json"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err.rfind("error: Overflow", 0), 0u) << run.err;
  const json j = json::parse(run.out);
  EXPECT_EQ(j["more_visible"], false);
  EXPECT_EQ(j["mode_number"], 0);  // a fresh view: nothing read yet
  EXPECT_EQ(j["mode_name"], "");
  EXPECT_EQ(j["line_number"], 0);
}

TEST_F(HkAuxCliTest, HkRefusesWhatTheViewCannotShow) {
  EXPECT_EQ(cli({"hk", "--index", "3"}).status, 1);
  const auto concise = cli({"hk", "--index", "2", "--registers"});
  EXPECT_EQ(concise.status, 1);
  EXPECT_NE(concise.err.find("complete"), std::string::npos) << concise.err;
  EXPECT_EQ(cli({"hk"}).status, 2);  // no --index
}

TEST_F(HkAuxCliTest, AuxJsonHasTheContractKeys) {
  const auto run = cli({"aux", "--index", "1", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const json j = json::parse(run.out);
  EXPECT_EQ(j["aux_number"], 1);
  EXPECT_EQ(j["auxiliary_count"], 1);
  EXPECT_EQ(j["sequence_count"], 12);
  EXPECT_EQ(j["lander_time"], 2000);
  EXPECT_EQ(j["channel_count"], 2);
  EXPECT_EQ(j["ad590_text"], "0.00");
  ASSERT_EQ(j["readings"].size(), 2u);
  for (const char* key : {"sensor", "name", "channel_id", "word", "time", "adc_voltage_text", "value_text", "unit"}) {
    EXPECT_TRUE(j["readings"][0].contains(key)) << key;
  }
  EXPECT_EQ(j["readings"][0]["sensor"], 1);
  EXPECT_EQ(j["readings"][0]["name"], "Reactor 1");
  EXPECT_EQ(j["readings"][0]["time"], 2001);
  EXPECT_EQ(j["readings"][0]["value_text"], "0.00");
  EXPECT_EQ(j["readings"][1]["channel_id"], 23);
  EXPECT_EQ(j["readings"][1]["word"], 0x2000);
  EXPECT_EQ(j["readings"][1]["adc_voltage_text"], "2.50000");
  EXPECT_EQ(j["readings"][1]["unit"], "bar");
}

TEST_F(HkAuxCliTest, AuxTakesTheAd590TemperatureAsTheDialogDoes) {
  const auto run = cli({"aux", "--index", "1", "--ad590", "25", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const json j = json::parse(run.out);
  EXPECT_EQ(j["ad590_text"], "25.00");
  EXPECT_EQ(j["readings"][0]["value_text"], "25.00");  // reactor 1 reading 0 V shows the junction
  EXPECT_EQ(j["readings"][1]["value_text"], "0.50");   // (2.5 x 10 - 5) / 40, never corrected
  const auto negative = cli({"aux", "--index", "1", "--ad590", "-20", "--json"});
  ASSERT_EQ(negative.status, 0) << negative.err;
  EXPECT_EQ(json::parse(negative.out)["ad590_text"], "-20.00");
  EXPECT_EQ(cli({"aux", "--index", "1", "--ad590", "abc"}).status, 2);
}

TEST_F(HkAuxCliTest, AuxReportsAReadingOfNoSensorAfterTheRowsBeforeIt) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F3C, 12, 29, 0, 2000, {{16, 1}, {18, 2}, {20, 0}, {22, 2001}, {24, 101}, {26, 0},
                                                       {28, 0}, {30, 2002}, {32, 999}, {34, 0}}, {}}});
  testing::write_bytes(dir.path("t.dat"), writer.bytes());
  const auto run = cli({"aux", "--index", "1", "--json"});
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err.rfind("error: Subscript out of range", 0), 0u) << run.err;
  const json j = json::parse(run.out);
  ASSERT_EQ(j["readings"].size(), 1u);
  EXPECT_EQ(j["readings"][0]["name"], "Reactor 1");
  EXPECT_NE(j["table_error"].get<std::string>().find("channel ID 999"), std::string::npos) << j["table_error"];
}

TEST_F(HkAuxCliTest, AuxWithoutAuxiliaryPacketsSaysSo) {
  FrameWriter writer(282);
  writer.add_frame({hk(2, {})});
  testing::write_bytes(dir.path("t.dat"), writer.bytes());
  const auto run = cli({"aux", "--index", "1"});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("no auxiliary data packets"), std::string::npos) << run.err;
  const auto text = cli({"aux", "--index", "2"});
  EXPECT_EQ(text.status, 1);
}

}  // namespace
}  // namespace morvane
