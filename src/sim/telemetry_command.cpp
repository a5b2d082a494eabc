// SPDX-License-Identifier: MIT
// morvane-sim telemetry: one telemetry file of the simulated instrument, and what it holds.
#include <iostream>
#include <memory>
#include <string>

#include "core/file_format.h"
#include "sim/short_form_tests.h"
#include "sim/telemetry_writer.h"
#include "sim_commands.h"

namespace morvane::sim {

namespace {

void print_summary(const std::string& path, const TelemetrySummary& summary, const TelemetryOptions& o) {
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
    const WrittenTest& t = summary.tests[i];
    const ScriptedTest& s = scripted_tests()[static_cast<size_t>(t.scripted)];
    std::cout << "    " << s.mode << (s.mode == "EAFT" ? "        " : "") << "  " << t.sequence_count << "  "
              << t.lander_time << "  " << t.frame << "  "
              << (s.healthy ? "healthy" : "faulty, packet " + std::to_string(s.missing_packet) + " missing") << '\n';
  }
  if (summary.tests.size() > kListed) std::cout << "    and " << summary.tests.size() - kListed << " more\n";
}

}  // namespace

void add_telemetry_command(CLI::App& app) {
  struct Options {
    std::string path;
    std::string type = "CSS";
    std::string byte_reverse = "on";
    bool quiet = false;
    TelemetryOptions telemetry;
  };
  auto options = std::make_shared<Options>();
  auto* command = app.add_subcommand("telemetry", "write a telemetry file of the simulated instrument");
  command->add_option("OUT", options->path, "the file to write")->required();
  command->add_option("-t,--type", options->type, "CSS, QM, GRM, FM or ZEB")->required();
  auto* frames = command
                     ->add_option("--frames", options->telemetry.frames,
                                  "frames (ZEB: records) to write (default: one three-hour cycle of the instrument)")
                     ->check(CLI::PositiveNumber);
  auto* size = command->add_option("--size", options->telemetry.size, "bytes to write (1G, 64MiB, ...)")
                   ->transform(CLI::AsSizeValue(false));
  frames->excludes(size);
  command->add_option("--seed", options->telemetry.seed, "the seed (the same seed writes the same file)");
  command
      ->add_option("--byte-reverse", options->byte_reverse, "on: words low byte first (the start-up reading order)")
      ->check(CLI::IsMember({"on", "off"}));
  command->add_flag("-q,--quiet", options->quiet, "print nothing");
  command->callback([options] {
    const auto format = parse_format_tag(options->type);
    if (!format) throw CLI::ValidationError("--type", "unknown file type " + options->type);
    options->telemetry.format = *format;
    options->telemetry.byte_reverse = options->byte_reverse == "on";
    const TelemetrySummary summary = write_telemetry(options->path, options->telemetry);
    if (!options->quiet) print_summary(options->path, summary, options->telemetry);
  });
}

}  // namespace morvane::sim
