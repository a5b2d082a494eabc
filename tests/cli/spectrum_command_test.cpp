// SPDX-License-Identifier: MIT
// The spectrum command's contract: the keys scripts read, and the window's state after it opened
// on spectrum 1 and moved to the one asked for.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "test_files.h"

namespace morvane {
namespace {

using nlohmann::json;
using testing::FrameWriter;
using testing::Packet;

constexpr const char* kCli = "src/cli/morvane-cli";

// A spectrum sub-packet (sub-type 3) or GC packet (sub-type 2) with its flag word and bins.
Packet spectrum(int sub_type, int flags, int32_t flag_word, int32_t first_bin, std::vector<int32_t> bins) {
  Packet packet{0x0F3C, flags * 16384, 32 + 2 * static_cast<int32_t>(bins.size()) - 7, 0, 0, {}, {}};
  packet.words = {{16, sub_type}, {18, flag_word}, {20, 5}, {28, first_bin}, {30, static_cast<int32_t>(bins.size())}};
  for (size_t j = 0; j < bins.size(); ++j) packet.words[32 + 2 * static_cast<int>(j)] = bins[j];
  return packet;
}

class SpectrumCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    FrameWriter writer(282);
    writer.add_frame({spectrum(3, 2, 0x8000, 0, {0x0100, 0x0013})});  // spectrum 1: 16, 8
    writer.add_frame({spectrum(3, 0, 0x4000, 2, {0x0010})});          // its sub-packet 2: bin 2 = 1
    writer.add_frame({spectrum(2, 0, 0, 0, {0x0FF0})});               // GC spectrum 1
    testing::write_bytes(dir.path("t.dat"), writer.bytes());
  }
  testing::ProgramRun spectrum_run(std::vector<std::string> more) {
    std::vector<std::string> arguments{"spectrum", dir.path("t.dat"), "-t", "CSS"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return testing::run_program(kCli, arguments);
  }
  json spectrum_json(std::vector<std::string> more) {
    more.push_back("--json");
    const auto run = spectrum_run(more);
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
  }
  testing::TempDir dir;
};

TEST_F(SpectrumCommand, JsonHasTheContractKeys) {
  const json j = spectrum_json({"--number", "1"});
  for (const char* key : {"complete_count", "gc_count", "title", "is_complete", "sub_packet_count", "sub_packet_text",
                          "bin_count", "bins", "header"}) {
    EXPECT_TRUE(j.contains(key)) << key;
  }
  for (const char* key : {"bit15", "bit14", "label28", "label29", "label30", "label31", "first_bin", "number_bins"}) {
    EXPECT_TRUE(j["header"].contains(key)) << key;
  }
  EXPECT_EQ(j["complete_count"], 1);
  EXPECT_EQ(j["gc_count"], 1);
  EXPECT_EQ(j["title"], "Complete spectrum number 1");
  EXPECT_EQ(j["is_complete"], true);
  EXPECT_EQ(j["sub_packet_count"], 2);
  EXPECT_EQ(j["sub_packet_text"], "Sub-packet 1 viewed of 2");
  EXPECT_EQ(j["bin_count"], 3);
  ASSERT_EQ(j["bins"].size(), 1025u);
  EXPECT_EQ(j["bins"][0], 16);
  EXPECT_EQ(j["bins"][1], 8);
  EXPECT_EQ(j["bins"][2], 1);
  EXPECT_EQ(j["header"]["bit15"], "YES");
  EXPECT_EQ(j["header"]["bit14"], "No");
  EXPECT_EQ(j["header"]["label28"], "5");
  EXPECT_EQ(j["header"]["first_bin"], 0);
  EXPECT_EQ(j["header"]["number_bins"], 2);
}

TEST_F(SpectrumCommand, SubPacketShowsItsHeader) {
  const json j = spectrum_json({"--number", "1", "--sub-packet", "2"});
  EXPECT_EQ(j["sub_packet_text"], "Sub-packet 2 viewed of 2");
  EXPECT_EQ(j["header"]["bit15"], "No");
  EXPECT_EQ(j["header"]["bit14"], "YES");
  EXPECT_EQ(j["header"]["first_bin"], 2);
}

TEST_F(SpectrumCommand, AGcSpectrumKeepsTheBinsOfSpectrumOne) {
  const json j = spectrum_json({"--number", "2"});
  EXPECT_EQ(j["title"], "GC spectrum number 1");
  EXPECT_EQ(j["is_complete"], false);
  EXPECT_EQ(j["sub_packet_text"], "");
  EXPECT_EQ(j["bin_count"], 3);
  EXPECT_EQ(j["bins"][0], 16);
  EXPECT_EQ(j["header"]["number_bins"], 1);
  EXPECT_EQ(spectrum_run({"--number", "2", "--sub-packet", "1"}).status, 1);
  EXPECT_EQ(spectrum_run({"--number", "3"}).status, 1);
}

TEST_F(SpectrumCommand, AFileWithoutSpectraSaysSo) {
  FrameWriter writer(282);
  writer.add_frame({});
  testing::write_bytes(dir.path("t.dat"), writer.bytes());
  const json j = spectrum_json({});
  EXPECT_EQ(j["complete_count"], 0);
  EXPECT_EQ(j["no_spectra_text"], "No Spectra Acquired");
  EXPECT_EQ(j["bins"].size(), 1025u);
  const auto text = spectrum_run({});
  EXPECT_NE(text.out.find("No Spectra Acquired"), std::string::npos) << text.out;
}

}  // namespace
}  // namespace morvane
