// SPDX-License-Identifier: MIT
// The batch tool's contract: commands, exit statuses and JSON keys that users' scripts rely on.
#include <gtest/gtest.h>

#include "cli_fixture.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::json;

constexpr const char* kCli = "src/cli/morvane-cli";

class BatchTool : public testing::CliTest {
 protected:
  void SetUp() override {
    testing::CliTest::SetUp();
    FrameWriter writer(282);
    writer.add_frame({testing::labelled(LabelCode::Complete, 3, 51, 1000),
                      testing::labelled(LabelCode::IsotopeSpectrum, 0x8000 + 4, 25, 1001)});
    writer.add_frame({testing::labelled(LabelCode::NormalProgressEvent, 5, 11, 1002)});
    write_frames(writer);
  }
  testing::ProgramRun run(const std::vector<std::string>& arguments) { return testing::run_program(kCli, arguments); }
};

TEST_F(BatchTool, SummaryJsonHasTheContractKeysAndCountsLeavesTheListsOut) {
  const json j = cli_json("summary");
  EXPECT_EQ(j["file_name"], file);
  EXPECT_EQ(j["file_type"], "CSS");
  EXPECT_EQ(j["packet_count"], 2);
  for (const char* key : {"hk_count", "science_count", "information_count", "complete_count", "concise_count",
                          "auxiliary_count", "gc_spectrum_count", "isotope_packet_count", "isotope_spectrum_count",
                          "progress_event_count", "warning_event_count", "memory_checksum_count", "memory_dump_count",
                          "acceptance_success_count", "acceptance_failure_count", "unknown_count", "empty_count"}) {
    EXPECT_TRUE(j["counts"].contains(key)) << key;
  }
  EXPECT_EQ(j["counts"]["isotope_spectrum_count"], 1);
  ASSERT_EQ(j["hk"].size(), 1u);
  EXPECT_EQ(j["hk"][0], (json{{"packet_frame", 1}, {"packet_length", 58}, {"packet_position", 23},
                              {"sequence_count", 3}, {"segment_flags", 0}, {"lander_time", 1000},
                              {"label", " Complete "}}));
  EXPECT_EQ(j["lines"]["information"].size(), 3u);

  const auto counts = run({"summary", file, "--type", "css", "--counts", "--json"});  // the type in any case
  ASSERT_EQ(counts.status, 0) << counts.err;
  EXPECT_FALSE(json::parse(counts.out).contains("hk"));
  EXPECT_EQ(json::parse(counts.out)["counts"]["progress_event_count"], 1);
  const auto text = cli("summary", {"--counts"});
  EXPECT_NE(text.out.find("Memory Cheksums  0"), std::string::npos) << text.out;
  // Byte order off reads the words the other way round: no packet is known.
  EXPECT_EQ(cli_json("summary", {"--byte-reverse", "off", "--counts"})["counts"]["hk_count"], 0);
}

TEST_F(BatchTool, ConvertPrintsTheValueAndItsTextWithTheBaseFolderOfThePointerFileHere) {
  const auto convert = run({"convert", "--sensor", "28", "--voltage", "2.98", "--base", base, "--json"});
  ASSERT_EQ(convert.status, 0) << convert.err;
  const json j = json::parse(convert.out);
  EXPECT_EQ(j["sensor"], 28);
  EXPECT_EQ(j["unit"], "oC");
  EXPECT_EQ(j["value_text"], "25");
  EXPECT_NEAR(j["value"].get<double>(), 25, 1e-9);
  // The base folder defaults to the pointer file in the working folder.
  const auto here = testing::run_program(kCli, {"convert", "--sensor", "29", "--voltage", "1"}, base);
  EXPECT_EQ(here.status, 0) << here.err;
  EXPECT_EQ(here.out, "5.2 mm\n");
}

TEST_F(BatchTool, AFailureExitsOneWithItsErrorLine) {
  const auto missing = run({"summary", dir.path("none.dat"), "-t", "CSS"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err.rfind("error: File not found", 0), 0u) << missing.err;
  const auto broken = run({"convert", "--sensor", "22", "--voltage", "1", "--base", dir.path("nowhere")});
  EXPECT_EQ(broken.status, 1);
  EXPECT_NE(broken.err.find("N-Type.txt"), std::string::npos) << broken.err;
}

TEST_F(BatchTool, UsageErrorsNameTheOptionItsValuesAndTheCommandsHelp) {
  struct Case {
    std::vector<std::string> arguments;
    std::vector<std::string> said;
  };
  const std::vector<Case> cases = {
      {{"raw", file, "-t", "CSS", "--frame", "0"},
       {"error: --frame: \"0\" is not a whole number from 1 to 2147483647\n", "Frame (ZEB: record) number, from 1",
        "See: morvane-cli raw --help\n"}},
      {{"raw", file, "-t", "XYZ"}, {"--type", "CSS,QM,GRM,FM,ZEB", "See: morvane-cli raw --help"}},
      {{"summary", file}, {"--type is required", "CSS, QM, GRM, FM or ZEB", "See: morvane-cli summary --help"}},
      {{"nonsense"},
       {"error: unknown command \"nonsense\" for morvane-cli\n", "summary, convert, functest", "export or archive\n",
        "See: morvane-cli --help\n"}},
      {{}, {"error: morvane-cli needs a command\n", "See: morvane-cli --help"}},
      {{"export"}, {"morvane-cli export needs a command", "hk, aux, dscal or spectra", "See: morvane-cli export --help"}},
      {{"raw", file, "-t", "CSS", "--bogus"}, {"morvane-cli raw does not take \"--bogus\"", "See: morvane-cli raw --help"}},
      {{"functest", file, "-t", "CSS", "--mode", "x"}, {"cruise,eaft", "See: morvane-cli functest --help"}},
  };
  for (const Case& c : cases) {
    const auto run = testing::run_program(kCli, c.arguments);
    EXPECT_EQ(run.status, 2) << run.err;
    for (const std::string& text : c.said) EXPECT_PRED2(testing::contains, run.err, text);
    EXPECT_EQ(run.err.find("subcommand"), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("179769"), std::string::npos) << run.err;
  }
}

TEST_F(BatchTool, AFileWithoutAKnownPacketGetsAWarningButTheSameOutputAndStatus) {
  std::string text;
  for (int k = 0; k < 3000; ++k) text += std::to_string(k % 997) + ", ";
  testing::write_file(dir.path("wrong.qm"), text);
  const auto run = testing::run_program(kCli, {"summary", dir.path("wrong.qm"), "-t", "QM", "--counts", "--base", base});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err.rfind("warning: no known packet identifier in the first 16 frames: this may not be a QM file", 0), 0u)
      << run.err;
  EXPECT_PRED2(testing::contains, run.out, "Unknown Packets");
  EXPECT_EQ(testing::run_program(kCli, {"summary", file, "-t", "CSS", "--counts", "--base", base}).err, "");
}

TEST_F(BatchTool, RawJsonHasTheWordsWithPlaceAndColourAndConciseJsonTheEightSlots) {
  const json j = cli_json("raw", {"--frame", "2"});
  EXPECT_EQ(j["frame"], 2);
  EXPECT_TRUE(j.contains("label1") && j.contains("label2"));
  ASSERT_EQ(j["words"].size(), 141u);
  EXPECT_EQ(j["words"][11], (json{{"text", "0F37"}, {"x", 2300}, {"y", 250}, {"colour", {0, 0, 255}}}));
  EXPECT_EQ(cli("raw", {"--frame", "3"}).status, 1);
  const json concise = cli_json("concise", {"--frame", "1"});
  EXPECT_EQ(concise["frame"], 1);
  ASSERT_EQ(concise["slots"].size(), 8u);
  EXPECT_EQ(concise["slots"][1], " Isotope spectrum ");
  EXPECT_EQ(cli("concise", {"--frame", "3"}).status, 1);
}

}  // namespace
}  // namespace morvane
