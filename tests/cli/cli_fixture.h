// SPDX-License-Identifier: MIT
// The batch tool run on a crafted file with the simulated instrument's configuration, and the
// decoders' session over the same file to compare what it prints with what they return.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "../decoders/decoder_fixture.h"

namespace morvane::testing {

using nlohmann::json;

class CliTest : public ::testing::Test {
 protected:
  void SetUp() override { base = sim::write_configuration(dir.path("base")); }

  void write_frames(FrameWriter writer) { write_bytes(file, writer.bytes()); }
  // `command FILE -t TYPE --base BASE arguments...`
  ProgramRun cli(const std::string& command, std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.begin(), {command, file, "-t", type, "--base", base});
    return run_program("src/cli/morvane-cli", arguments);
  }
  // What the command prints with --json; a failure unless it ends with status 0.
  json cli_json(const std::string& command, std::vector<std::string> arguments = {}) {
    arguments.push_back("--json");
    const ProgramRun run = cli(command, arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return json::parse(run.out);
  }
  // The file opened as the tool opens it.
  Session session() const {
    Session opened;
    opened.config = load_configuration(base);
    load_telemetry(opened, file, *parse_format_tag(type));
    return opened;
  }

  TempDir dir;
  std::string base;
  std::string file = dir.path("t.dat");
  std::string type = "CSS";
};

}  // namespace morvane::testing
