// SPDX-License-Identifier: MIT
// functest: the selection list and the evaluation of one test, their JSON keys and the report.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "cli_fixture.h"
#include "core/program_version.h"

namespace morvane {
namespace {

using testing::json;
using testing::Packet;

// Packet n of a short form test starting at sequence count 40, lander time 7001: 29 readings
// of 1 V on the detector channel (65), the first packet's with the identifiers the selection list
// looks for.
Packet test_packet(int n) {
  Packet packet{testing::kScienceId, 39 + n, 249, 0, 7000 + n, {{16, 1}, {18, 29}}, {}};
  for (int j = 1; j <= 29; ++j) {
    packet.words[16 + 8 * j] = 65;
    packet.words[18 + 8 * j] = 3277;
  }
  if (n == 1) {
    for (const auto& [offset, identifier] : std::map<int, int32_t>{{24, 23}, {80, 64}, {232, 0}, {248, 144}}) {
      packet.words[offset] = identifier;
    }
  }
  return packet;
}

class FunctestCommand : public testing::CliTest {
 protected:
  void SetUp() override {
    testing::CliTest::SetUp();
    type = "QM";
    testing::FrameWriter writer(282);
    for (const int n : {1, 2, 3, 4, 5, 7, 8}) writer.add_frame({test_packet(n)});  // packet 6 lost
    writer.add_frame({Packet{testing::kEventId, 1, 51, 0, 7010, {{14, 0x0100}, {16, 0xD749}, {56, 100}}, {}}});
    write_frames(writer);
    std::string limits;
    for (int r = 1; r <= 38; ++r) limits += "\"Record " + std::to_string(r) + "\", -2, 2, -2, 2, -2, 2\r\n";
    testing::write_file(base + "/EGSE_info/Test Ranges/QM Cruise Phase Mode.txt", limits);
  }
  testing::ProgramRun functest(const std::vector<std::string>& arguments) { return cli("functest", arguments); }
};

TEST_F(FunctestCommand, ListJsonHasTheLabelsLinesAndScienceIndices) {
  const auto cruise = functest({"--mode", "cruise", "--json"});
  ASSERT_EQ(cruise.status, 0) << cruise.err;
  EXPECT_EQ(json::parse(cruise.out),
            (json{{"label1", "There was 1 Short form test collected during this session"},
                  {"label2", "Double click on test to view or Press 'cancel' to exit"},
                  {"lines", {"1     Short form test       40           7001"}},
                  {"tests", {1}},
                  {"entries", {{{"number", 1}, {"sequence_count", 40}, {"lander_time", 7001}, {"science_index", 1}}}}}));
}

// --verdict-exit gives status 3 for a failed test and changes nothing else; a list has no verdict.
TEST_F(FunctestCommand, TestJsonGivesEveryCellAsItsDisplayTextAndVerdictExitGivesStatus3ForAFailedTest) {
  const auto run = functest({"--mode", "cruise", "--test", "1", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  json j = json::parse(run.out);
  for (const char* key : {"start_label", "mode_title", "sensors", "subsystems", "packet_message"}) {
    EXPECT_TRUE(j.contains(key)) << key;
  }
  for (const char* key : {"name", "rise_28v", "rise_5v", "result"}) {
    EXPECT_TRUE(j["valves"][0].contains(key)) << key;
    EXPECT_TRUE(j["injector_valves"][0].contains(key)) << key;
  }
  for (const char* tab : {"heaters", "large_reactors", "small_reactors", "l_valves"}) {
    for (const char* key : {"name", "rise_28v", "rise_5v", "initial", "final", "increase", "result"}) {
      EXPECT_TRUE(j[tab][0].contains(key)) << tab << " " << key;
    }
  }
  EXPECT_EQ(j["rails"][4], (json{{"name", "RF Frequency"}, {"value", "395.79"}, {"result", "Fail"}, {"unit", "kHz"},
                                 {"result_colour", {255, 0, 0}}, {"record", 36},
                                 {"limits", {{"min", -2}, {"max", 2}}}}));
  EXPECT_EQ(j["overall"], "Fail");

  const auto verdict = functest({"--mode", "cruise", "--test", "1", "--json", "--verdict-exit"});
  EXPECT_EQ(verdict.status, 3) << verdict.err;
  json with_verdict = json::parse(verdict.out);
  for (json* each : {&with_verdict, &j}) each->erase("evaluated_at");  // the two runs' own times
  EXPECT_EQ(with_verdict, j);
  EXPECT_EQ(functest({"--mode", "cruise", "--verdict-exit"}).status, 0);
}

TEST_F(FunctestCommand, ATestBeyondTheListOrAMissingLimitFileIsAnError) {
  const auto beyond = functest({"--mode", "cruise", "--test", "2"});
  EXPECT_EQ(beyond.status, 1);
  EXPECT_EQ(beyond.err, "error: test 2 is beyond the list of 1 test\n");
  std::filesystem::remove(base + "/EGSE_info/Test Ranges/QM Cruise Phase Mode.txt");
  const auto missing = functest({"--mode", "cruise", "--test", "1"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_PRED2(testing::contains, missing.err, "QM Cruise Phase Mode.txt");
}

TEST_F(FunctestCommand, TheReportIsWrittenWhereAskedAndSaysWhenByWhichVersionFromWhichFile) {
  const auto run = functest({"--mode", "cruise", "--test", "1", "--json", "--report", dir.path("r.html")});
  ASSERT_EQ(run.status, 0) << run.err;
  const std::string html = testing::read_file(dir.path("r.html"));
  EXPECT_EQ(html.rfind("<!DOCTYPE html>", 0), 0u);
  EXPECT_NE(html.find("<td>Detector Voltage</td><td>1.00</td><td>1.00</td><td>kV</td><td>-2 .. 2</td>"),
            std::string::npos);
  // The digest of the file as sha256sum gives it.
  const std::string listed = dir.path("sum.txt");
  ASSERT_EQ(std::system(("sha256sum '" + file + "' > '" + listed + "'").c_str()), 0);
  const std::string digest = testing::read_file(listed).substr(0, 64);
  const json j = json::parse(run.out);
  EXPECT_EQ(j["file_sha256"], digest);
  EXPECT_EQ(j["program_version"], kProgramVersion);
  EXPECT_EQ(j["evaluated_at"].get<std::string>().size(), std::string("2026-01-01 00:00:00").size());
  EXPECT_PRED2(testing::contains, html, digest);
  EXPECT_PRED2(testing::contains, functest({"--mode", "cruise", "--test", "1"}).out, digest);
}

}  // namespace
}  // namespace morvane
