// SPDX-License-Identifier: MIT
// The view commands (hk, aux, info, spectrum, trend, integrity): each prints under its keys what
// its decoder returns, ends with the right status, and shows the view's own texts. The decoders'
// tests hold the detail of what they return.
#include <gtest/gtest.h>

#include "cli_fixture.h"
#include "sim/telemetry_writer.h"
#include "decoders/integrity.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::contains;
using testing::hk_packet;
using testing::information_packet;
using testing::json;
using testing::one_a_frame;
using testing::SubPacket;

class ViewCommands : public testing::CliTest {
 protected:
  static void expect_keys(const json& object, std::initializer_list<const char*> keys) {
    for (const char* key : keys) EXPECT_TRUE(object.contains(key)) << key << " in " << object.dump().substr(0, 200);
  }
  // The command fails with exit status 1 and an error line starting with start.
  void expect_error(const std::string& command, const std::vector<std::string>& arguments, const std::string& start) {
    const testing::ProgramRun run = cli(command, arguments);
    EXPECT_EQ(run.status, 1) << command;
    EXPECT_EQ(run.err.rfind("error: " + start, 0), 0u) << run.err;
  }
};

// A complete housekeeping packet in mode 3 on line 9, then one whose mode overflows.
TEST_F(ViewCommands, HkPrintsTheSensorPageAndRegistersAndThePageBeforeItsError) {
  write_frames(one_a_frame({hk_packet(2, {{18, 3}, {20, 0}, {21, 9}, {22, 0x80}, {49, 153}}, {{66, 0x8001}}, 7, 1000),
                            hk_packet(1, {{18, 4}, {20, 128}})}));
  const json j = cli_json("hk", {"--index", "1", "--registers"});
  expect_keys(j, {"index", "hk_count", "label", "sequence_count", "lander_time", "mode_number", "mode_name",
                  "line_number", "cold_junction_term", "more_visible", "header", "sensors", "lines", "registers"});
  expect_keys(j["sensors"][0], {"number", "name", "raw", "voltage", "voltage_upper", "value", "value_upper", "unit"});

  const testing::ProgramRun text = cli("hk", {"--index", "1"});
  ASSERT_EQ(text.status, 0) << text.err;
  EXPECT_PRED2(contains, text.out, "Mode  3  -  Cruise Phase\n");
  EXPECT_FALSE(contains(text.out, "Valve enable register"));

  const testing::ProgramRun overflow = cli("hk", {"--index", "2", "--json"});
  EXPECT_EQ(overflow.status, 1);
  EXPECT_EQ(overflow.err.rfind("error: Overflow", 0), 0u) << overflow.err;
  EXPECT_PRED2(contains, json::parse(overflow.out)["mode_error"].get<std::string>(), "Overflow");
  expect_error("hk", {"--index", "3"}, "--index 3");
}

TEST_F(ViewCommands, AuxPrintsTheReadingsWithTheAd590SetAsTheDialogSetsIt) {
  write_frames(one_a_frame({aux_packet({{0, 2001, 101, 0}, {0, 2002, 23, 0x2000}}, 12, 2000)}));
  const json j = cli_json("aux", {"--index", "1", "--ad590", "25"});
  expect_keys(j, {"aux_number", "auxiliary_count", "sequence_count", "lander_time", "channel_count", "ad590_text",
                  "readings"});
  expect_keys(j["readings"][0],
              {"sensor", "name", "channel_id", "word", "time", "adc_voltage_text", "value_text", "unit"});
  EXPECT_EQ(j["ad590_text"], "25.00");
  EXPECT_EQ(j["readings"][0]["value_text"], "25.00");  // reactor 1 reading 0 V shows the junction
  EXPECT_PRED2(contains, cli("aux", {"--index", "1"}).out, "Aux Data number  1\n");
  EXPECT_EQ(cli("aux", {"--index", "1", "--ad590", "abc"}).status, 2);
  expect_error("aux", {"--index", "2"}, "--index 2");
}

TEST_F(ViewCommands, InfoPrintsTheLabelsWordsTranslationAndMemory) {
  // A safe-limit event on the AD590 temperature, then a memory checksum report.
  write_frames(one_a_frame(
      {information_packet(testing::kEventId, 2, {{9, 55007}, {10, 28}, {11, 0x4000}, {12, 0x2000}, {13, 0x1000}}),
       information_packet(testing::kEventId, 10, {{9, 0x9601}, {10, 1}, {11, 2}, {12, 3}, {13, 4}})}));
  const json j = cli_json("info", {"--index", "1"});
  expect_keys(j, {"index", "label2", "label3", "label5", "label7", "label9", "words", "translation", "memory"});
  EXPECT_EQ(j["translation"][0], (json{{"text", "Safe limit violation"}, {"colour", {255, 0, 0}}}));
  EXPECT_EQ(cli_json("info", {"--index", "3"})["memory"][0]["text"], "Checksum 1");
  EXPECT_PRED2(contains, cli("info", {"--index", "1"}).out, "Safe limit violation");
  expect_error("info", {"--index", "99"}, "--index 99");
}

TEST_F(ViewCommands, SpectrumPrintsTheWindowAfterItMovedToTheSpectrumAsked) {
  write_frames(one_a_frame({testing::isotope_packet(SubPacket{2, 0, {0x0100, 0x0013}, 0x8000, {5, 0, 0, 0}}),
                            testing::isotope_packet(SubPacket{0, 2, {0x0010}, 0x4000}),
                            testing::gc_packet(SubPacket{0, 0, {0x0FF0}})}));
  const json j = cli_json("spectrum", {"--sub-packet", "2"});
  expect_keys(j, {"complete_count", "gc_count", "title", "is_complete", "sub_packet_count", "sub_packet_text",
                  "bin_count", "bins", "header", "axis", "buttons"});
  expect_keys(j["header"], {"bit15", "bit14", "label28", "label29", "label30", "label31", "first_bin", "number_bins"});
  EXPECT_EQ(j["sub_packet_text"], "Sub-packet 2 viewed of 2");  // --sub-packet reached the decoder
  expect_error("spectrum", {"--number", "3"}, "--number 3");

  write_frames(one_a_frame({hk_packet(2)}));
  EXPECT_EQ(cli_json("spectrum")["no_spectra_text"], "No Spectra Acquired");
}

TEST_F(ViewCommands, TrendAndIntegrityPrintWhatTheirDecodersFindInTheSimulatedFile) {
  sim::write_telemetry(file, sim::TelemetryOptions{});
  const Session decoded = session();

  const json trend = cli_json("trend", {"--sensors", "1,28"});
  ASSERT_EQ(trend["sensors"].size(), 2u);
  expect_keys(trend["sensors"][0], {"number", "name", "unit", "points"});
  EXPECT_EQ(trend["sensors"][0]["points"].size(), static_cast<size_t>(decoded.catalogue.HK_Count()));
  const json cold = cli_json("trend", {"--sensors", "1", "--cold-junction", "off"});
  EXPECT_NE(cold["sensors"][0]["points"][0][1], trend["sensors"][0]["points"][0][1]);
  EXPECT_EQ(cli("trend", {"--sensors", "99"}).status, 1);
  EXPECT_EQ(cli("trend", {"--sensors", "1"}).out.rfind("Lander time\tReactor 1 (oC)\n", 0), 0u);

  const json integrity = cli_json("integrity");
  const IntegrityReport report = check_integrity(decoded);
  ASSERT_FALSE(report.findings.empty());  // the simulated link loses a few packets
  ASSERT_EQ(integrity["findings"].size(), report.findings.size());
  expect_keys(integrity["findings"][0], {"kind", "list", "index", "text"});
  EXPECT_EQ(integrity["counts"].size(), static_cast<size_t>(kFindingKinds));
  EXPECT_PRED2(contains, cli("integrity").out, report.findings[0].text);
}

}  // namespace
}  // namespace morvane
