// SPDX-License-Identifier: MIT
// morvane-sim: the simulated instrument. Writes configuration base folders, telemetry files of
// all five formats and a live log. Exit 0 done, 1 error, 2 usage.
#include <CLI/CLI.hpp>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <iostream>
#include <string>

#include "core/error.h"
#include "core/file_format.h"
#include "sim/config_writer.h"
#include "sim/live_feed.h"
#include "sim/short_form_tests.h"
#include "sim/telemetry_writer.h"

namespace {

using namespace morvane;

std::atomic<bool> stop_requested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set from a signal handler");

extern "C" void request_stop(int) { stop_requested.store(true); }

void print_summary(const std::string& path, const sim::Telemetry_Summary& summary, const sim::Telemetry_Options& o) {
  std::cout << path << ": " << format_tag(summary.format) << ", " << summary.frames
            << (summary.format == FileFormat::ZEB ? " records, " : " frames, ") << summary.bytes << " bytes (seed "
            << o.seed
            << (summary.format == FileFormat::ZEB ? ")"
                : o.byte_reverse                  ? ", byte reverse on)"
                                                  : ", byte reverse off)")
            << '\n';
  std::cout << "  " << summary.count(LabelCode::Complete) + summary.count(LabelCode::Concise) << " housekeeping, "
            << summary.count(LabelCode::AuxiliaryData) << " auxiliary, " << summary.count(LabelCode::GcSpectrum)
            << " GC spectra, " << summary.spectrum_starts << " isotope spectra in "
            << summary.count(LabelCode::IsotopeSpectrum) << " packets\n";
  if (summary.tests.empty()) {
    std::cout << "  no short form test (a file of one cycle, the default, holds four)\n";
    return;
  }
  constexpr size_t kListed = 8;
  std::cout << "  short form tests (sequence count, lander time, frame of the first packet):\n";
  for (size_t i = 0; i < summary.tests.size() && i < kListed; ++i) {
    const sim::Written_Test& t = summary.tests[i];
    const sim::Scripted_Test& s = sim::scripted_tests()[static_cast<size_t>(t.scripted)];
    std::cout << "    " << s.mode << (s.mode == "EAFT" ? "        " : "") << "  " << t.sequence_count << "  "
              << t.lander_time << "  " << t.frame << "  "
              << (s.healthy ? "healthy" : "faulty, packet " + std::to_string(s.missing_packet) + " missing") << '\n';
  }
  if (summary.tests.size() > kListed) std::cout << "    and " << summary.tests.size() - kListed << " more\n";
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Morvane simulated instrument: configuration, telemetry files and a live feed", "morvane-sim"};
  app.require_subcommand(1);
  app.set_version_flag("--version", "morvane-sim 0.1.0");

  bool quiet = false;
  std::string config_dir;
  auto* config = app.add_subcommand("config", "write a complete configuration base folder");
  config->add_option("DIR", config_dir, "the base folder (created when missing)")->required();
  config->add_flag("-q,--quiet", quiet, "print nothing");

  std::string telemetry_path, type = "CSS", byte_reverse = "on";
  sim::Telemetry_Options options;
  auto* telemetry = app.add_subcommand("telemetry", "write a telemetry file of the simulated instrument");
  telemetry->add_option("OUT", telemetry_path, "the file to write")->required();
  telemetry->add_option("-t,--type", type, "CSS, QM, GRM, FM or ZEB")->required();
  auto* frames = telemetry
                     ->add_option("--frames", options.frames,
                                  "frames (ZEB: records) to write (default: one three-hour cycle of the instrument)")
                     ->check(CLI::PositiveNumber);
  auto* size = telemetry->add_option("--size", options.size, "bytes to write (1G, 64MiB, ...)")
                   ->transform(CLI::AsSizeValue(false));
  frames->excludes(size);
  telemetry->add_option("--seed", options.seed, "the seed (the same seed writes the same file)");
  telemetry->add_option("--byte-reverse", byte_reverse, "on: words low byte first (the start-up reading order)")
      ->check(CLI::IsMember({"on", "off"}));
  telemetry->add_flag("-q,--quiet", quiet, "print nothing");

  std::string live_path;
  sim::Live_Options live_options;
  auto* live = app.add_subcommand("live", "append CSS frames to a log file until stopped");
  live->add_option("OUT", live_path, "the log file (started afresh)")->required();
  live->add_option("--rate", live_options.rate, "frames a second")->check(CLI::PositiveNumber);
  live->add_option("--frames", live_options.frames, "stop after this many frames")->check(CLI::PositiveNumber);
  live->add_option("--seed", live_options.seed, "the seed");

  try {
    app.parse(argc, argv);
    if (*config) {
      const std::string base = sim::write_configuration(config_dir);
      if (!quiet) std::cout << "Base folder: " << base << '\n';
    } else if (*telemetry) {
      const auto format = parse_format_tag(type);
      if (!format) throw CLI::ValidationError("--type", "unknown file type " + type);
      options.format = *format;
      options.byte_reverse = byte_reverse == "on";
      const sim::Telemetry_Summary summary = sim::write_telemetry(telemetry_path, options);
      if (!quiet) print_summary(telemetry_path, summary, options);
    } else if (*live) {
      std::signal(SIGINT, request_stop);
      std::signal(SIGTERM, request_stop);
      const int64_t written = sim::run_live_feed(live_path, live_options, stop_requested);
      std::cerr << written << " frames written to " << live_path << '\n';
    }
  } catch (const CLI::ParseError& error) {
    const int status = app.exit(error);
    return status == 0 ? 0 : 2;
  } catch (const RuntimeError& error) {
    std::cerr << "error: " << error.message() << '\n';
    return 1;
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
