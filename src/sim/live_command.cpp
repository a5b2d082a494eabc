// SPDX-License-Identifier: MIT
// morvane-sim live: CSS frames appended to a log file until stopped, as a ground station writes.
#include <atomic>
#include <csignal>
#include <iostream>
#include <memory>
#include <string>

#include "sim/live_feed.h"
#include "sim_commands.h"

namespace morvane::sim {

namespace {

std::atomic<bool> stop_requested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set from a signal handler");

extern "C" void request_stop(int) { stop_requested.store(true); }

}  // namespace

void add_live_command(CLI::App& app) {
  struct Options {
    std::string path;
    LiveOptions live;
  };
  auto options = std::make_shared<Options>();
  auto* command = app.add_subcommand("live", "append CSS frames to a log file until stopped");
  command->add_option("OUT", options->path, "the log file (started afresh)")->required();
  command->add_option("--rate", options->live.rate, "frames a second")->check(CLI::PositiveNumber);
  command->add_option("--frames", options->live.frames, "stop after this many frames")->check(CLI::PositiveNumber);
  command->add_option("--seed", options->live.seed, "the seed");
  command->callback([options] {
    std::signal(SIGINT, request_stop);
    std::signal(SIGTERM, request_stop);
    const int64_t written = run_live_feed(options->path, options->live, stop_requested);
    std::cerr << written << " frames written to " << options->path << '\n';
  });
}

}  // namespace morvane::sim
