// SPDX-License-Identifier: MIT
// morvane-sim's commands and exit statuses.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/configuration.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

constexpr const char* kSim = "src/sim/morvane-sim";

TEST(SimCli, ConfigWritesABaseFolderThatLoadsAndTelemetryTheFramesAskedForListingTheTests) {
  testing::TempDir dir;
  const auto run = testing::run_program(kSim, {"config", dir.path("base")});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(dir.path("base")), std::string::npos);
  EXPECT_EQ(load_configuration_from_pointer(dir.path("base")).Sensor_Count(), 36);

  const auto telemetry = testing::run_program(
      kSim, {"telemetry", "--type", "qm", dir.path("t.qm"), "--frames", "600", "--seed", "3", "--byte-reverse", "off"});
  ASSERT_EQ(telemetry.status, 0) << telemetry.err;
  EXPECT_EQ(std::filesystem::file_size(dir.path("t.qm")), 600u * 282);
  EXPECT_PRED2(testing::contains, telemetry.out, "QM, 600 frames, 169200 bytes (seed 3, byte reverse off)");
  EXPECT_PRED2(testing::contains, telemetry.out, "faulty, packet 3 missing");
  const auto sized = testing::run_program(kSim, {"telemetry", "-t", "ZEB", dir.path("t.zeb"), "--size", "64KiB", "-q"});
  ASSERT_EQ(sized.status, 0) << sized.err;
  EXPECT_EQ(sized.out, "");
  EXPECT_GE(std::filesystem::file_size(dir.path("t.zeb")), 65536u);
}

TEST(SimCli, UsageErrorsExitWithStatus2AndFailuresWith1) {
  testing::TempDir dir;
  EXPECT_EQ(
      testing::run_program(kSim, {"telemetry", "-t", "CSS", dir.path("a"), "--frames", "5", "--size", "9000"}).status,
      2);
  EXPECT_EQ(testing::run_program(kSim, {"telemetry", "-t", "XYZ", dir.path("a")}).status, 2);
  EXPECT_EQ(testing::run_program(kSim, {"telemetry", "-t", "CSS", dir.path("a"), "--byte-reverse", "maybe"}).status, 2);
  const auto failed = testing::run_program(kSim, {"telemetry", "-t", "CSS", dir.path("no/such/folder/a")});
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(failed.err.rfind("error: ", 0), 0u) << failed.err;
}

}  // namespace
}  // namespace morvane
