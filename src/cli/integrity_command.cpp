// SPDX-License-Identifier: MIT
// integrity: sequence gaps and repeats, time jumps, packets past their frame, empty frames,
// unknown identifiers and a cut-off end, each with the catalogue entry it concerns.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "usage_error.h"
#include "decoders/integrity.h"

namespace morvane::cli {

namespace {

struct IntegrityCommandOptions {
  FileOptions file;
  IntegrityOptions check;
};

void run_integrity(const IntegrityCommandOptions& options) {
  const Session session = open_session(options.file, false);
  const IntegrityReport report = check_integrity(session, options.check);
  if (options.file.json) {
    Json findings = Json::array();
    for (const auto& f : report.findings) {
      findings.push_back(Json{{"kind", finding_kind_name(f.kind)},
                              {"list", catalogue_list_name(f.list)},
                              {"index", f.index},
                              {"text", f.text}});
    }
    Json counts = Json::object();
    for (int k = 0; k < kFindingKinds; ++k) {
      counts[std::string(finding_kind_name(static_cast<FindingKind>(k)))] = report.counts[static_cast<size_t>(k)];
    }
    print_json(Json{{"findings", findings}, {"counts", counts}, {"truncated", report.truncated}});
    return;
  }
  for (const auto& f : report.findings) {
    std::cout << catalogue_list_name(f.list) << ' ' << f.index << ": " << f.text << '\n';
  }
  if (report.truncated) std::cout << "... further findings not listed\n";
  if (report.findings.empty()) std::cout << "No findings\n";
}

}  // namespace

void add_integrity_command(CLI::App& app) {
  auto options = std::make_shared<IntegrityCommandOptions>();
  CLI::App* command = app.add_subcommand("integrity", "Gaps, repeats, jumps and corruption in a file's packets");
  add_file_options(command, options->file);
  command->add_option("--time-jump", options->check.time_jump_seconds,
                      "Report steps in lander time longer than this many seconds (default 600)")
      ->check(whole_number_from_one());
  command->callback([options] { run_integrity(*options); });
}

}  // namespace morvane::cli
