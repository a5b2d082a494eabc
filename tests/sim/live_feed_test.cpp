// SPDX-License-Identifier: MIT
#include "sim/live_feed.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

TEST(LiveFeed, WritesTheFramesOfTheTelemetryFileOfItsSeed) {
  testing::TempDir dir;
  std::atomic<bool> stop{false};
  const sim::LiveOptions live{.rate = 1000, .frames = 30, .seed = 5, .half_written_chance = 0.5};
  EXPECT_EQ(sim::run_live_feed(dir.path("log.dat"), live, stop), 30);
  sim::write_telemetry(dir.path("file.css"), {.frames = 30, .seed = 5});
  EXPECT_EQ(testing::read_file(dir.path("log.dat")), testing::read_file(dir.path("file.css")));
}

TEST(LiveFeed, StopsOnAWholeFrameWhenAskedAndStartsTheFileAfresh) {
  testing::TempDir dir;
  testing::write_file(dir.path("log.dat"), std::string(1000, 'x'));
  std::atomic<bool> stop{false};
  std::thread stopper([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    stop = true;
  });
  const int64_t frames = sim::run_live_feed(dir.path("log.dat"), {.rate = 50}, stop);
  stopper.join();
  EXPECT_GT(frames, 0);
  EXPECT_EQ(std::filesystem::file_size(dir.path("log.dat")), static_cast<uintmax_t>(frames) * 282);
}

}  // namespace
}  // namespace morvane
