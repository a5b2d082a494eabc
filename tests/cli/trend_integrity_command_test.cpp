// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "sim/config_writer.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

using nlohmann::json;

class TrendIntegrityCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    base = sim::write_configuration(dir.path("base"));
    sim::write_telemetry(dir.path("t.css"), sim::Telemetry_Options{});
  }
  testing::ProgramRun cli(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {dir.path("t.css"), "-t", "CSS", "--base", base});
    return testing::run_program("src/cli/morvane-cli", arguments);
  }
  testing::TempDir dir;
  std::string base;
};

TEST_F(TrendIntegrityCommands, TrendGivesOnePointPerHousekeepingPacket) {
  const auto run = cli({"trend", "--sensors", "1,28", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const json j = json::parse(run.out);
  ASSERT_EQ(j["sensors"].size(), 2u);
  const json& reactor = j["sensors"][0];
  EXPECT_EQ(reactor["number"], 1);
  EXPECT_EQ(reactor["name"], "Reactor 1");
  EXPECT_EQ(reactor["unit"], "oC");
  const auto summary = json::parse(cli({"summary", "--counts", "--json"}).out);
  EXPECT_EQ(reactor["points"].size(), summary["counts"]["hk_count"].get<size_t>());
  EXPECT_TRUE(reactor["points"][0][0].is_number_integer());
  EXPECT_TRUE(reactor["points"][0][1].is_number());
  const auto cold = json::parse(cli({"trend", "--sensors", "1", "--cold-junction", "off", "--json"}).out);
  EXPECT_NE(cold["sensors"][0]["points"][0][1], reactor["points"][0][1]);
  EXPECT_EQ(cli({"trend", "--sensors", "99"}).status, 1);
}

TEST_F(TrendIntegrityCommands, IntegrityListsFindingsWithTheirEntries) {
  const auto run = cli({"integrity", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const json j = json::parse(run.out);
  ASSERT_FALSE(j["findings"].empty());  // the simulated link loses a few packets
  for (const auto& finding : j["findings"]) {
    EXPECT_TRUE(finding.contains("kind"));
    const std::string list = finding["list"];
    EXPECT_TRUE(list == "hk" || list == "science" || list == "information") << list;
    EXPECT_GE(finding["index"].get<int>(), 1);
    EXPECT_FALSE(finding["text"].get<std::string>().empty());
  }
  EXPECT_GT(j["counts"]["sequence_gap"].get<int>(), 0);
}

}  // namespace
}  // namespace morvane
