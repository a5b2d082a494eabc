// SPDX-License-Identifier: MIT
// The export command's contract: OUT is what the dialog writes, what the dialog refuses prints its
// message and writes nothing, exit statuses.
#include <gtest/gtest.h>

#include <filesystem>

#include "cli_fixture.h"
#include "core/telemetry_file.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

// A housekeeping packet whose sensor s byte is given (byte 21 + s, placed for the start-up order).
Packet hk(int32_t time, std::map<int, uint8_t> sensors) {
  Packet packet{testing::kHousekeepingId, 7, 89, 0, time, {{16, 2}}, {}};
  for (const auto& [s, byte] : sensors) packet.bytes[static_cast<int>(swapped_byte_offset(21 + s))] = byte;
  return packet;
}

class ExportCommandTest : public testing::CliTest {
 protected:
  void SetUp() override {
    testing::CliTest::SetUp();
    FrameWriter writer(282);
    writer.add_frame({hk(1000, {{29, 70}, {33, 211}})});
    writer.add_frame({hk(1001, {{29, 0}, {33, 210}})});
    writer.add_frame({hk(1002, {{29, 1}})});
    // An auxiliary packet: a docking-station reading at 0.625 V.
    writer.add_frame({Packet{
        testing::kScienceId, 12, 21, 0, 2000, {{16, 1}, {18, 1}, {20, 0}, {22, 2001}, {24, 29}, {26, 0x0800}}, {}}});
    write_frames(writer);
  }
  // `export KIND FILE -t CSS --base BASE arguments...`
  testing::ProgramRun cli(const std::string& kind, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"export", kind, file, "-t", type, "--base", base});
    return testing::run_program("src/cli/morvane-cli", arguments);
  }
};

TEST_F(ExportCommandTest, WritesWhatTheDialogWrites) {
  const auto run = cli("hk", {"--from", "2", "--to", "3", "--delimiter", "semicolon", "--format", "calibrated",
                              "--sensors", "29,33", "-o", dir.path("hk.csv")});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(testing::read_file(dir.path("hk.csv")),
            "Housekeeping - Calibrated Data (no AD590 correction)\r\n"
            "HK number;Lander time;Docking Stn;+28V Rail;\r\n     ;seconds;mm;V;\r\n\r\n"
            "2;1001;0;82.03125;\r\n3;1002;0.203125;0;\r\n");
}

// The dialogs' own checks (export_presenter_test) reach the tool: their message, status 1, no file.
TEST_F(ExportCommandTest, WhatTheDialogRefusesEndsWithItsMessageAndWritesNothing) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"hk", "--from", "1", "--to", "4", "--format", "raw"}, "Housekeeping packet ranges not valid"},  // 3 packets
      {{"aux", "--all", "--format", "calibrated-ad590", "--ad590", "warm"}, "AD590 temperature not valid"},
      {{"spectra", "--all", "--format", "raw"}, "The EGSE data file contains no spectra"},
  };
  for (const auto& [arguments, message] : cases) {
    std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    rest.insert(rest.end(), {"--delimiter", "tab", "-o", dir.path("out.txt")});
    const auto run = cli(arguments[0], rest);
    EXPECT_EQ(run.status, 1) << message;
    EXPECT_EQ(run.err, std::string("error: ") + message + "\n");
    EXPECT_FALSE(std::filesystem::exists(dir.path("out.txt"))) << message;
  }
}

TEST_F(ExportCommandTest, AnXlsxNameWritesAWorkbook) {
  const auto run = cli("hk", {"--from", "3", "--to", "3", "--delimiter", "tab", "--format", "raw", "--sensors", "29",
                              "-o", dir.path("hk.xlsx"), "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const auto j = testing::json::parse(run.out);
  EXPECT_EQ(j["out"], dir.path("hk.xlsx"));
  EXPECT_EQ(j["file_type"], "xlsx");
  EXPECT_EQ(testing::read_file(dir.path("hk.xlsx")).substr(0, 2), "PK");  // a zip container
}

TEST_F(ExportCommandTest, UsageErrorsExitWithTwo) {
  const std::vector<std::vector<std::string>> usages = {
      {"--delimiter", "tab", "--format", "raw", "-o", "out.txt"},             // no range
      {"--all", "--delimiter", "tab", "--format", "excel", "-o", "out.txt"},  // a spectra format
  };
  for (const auto& arguments : usages) EXPECT_EQ(cli("hk", arguments).status, 2);
}

}  // namespace
}  // namespace morvane
