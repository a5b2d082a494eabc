// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

namespace morvane::cli {

// Each command adds itself with its options and the callback that runs it.
void add_summary_command(CLI::App& app);
void add_convert_command(CLI::App& app);
void add_functest_command(CLI::App& app);
void add_hk_command(CLI::App& app);
void add_aux_command(CLI::App& app);
void add_info_command(CLI::App& app);
void add_spectrum_command(CLI::App& app);
void add_raw_command(CLI::App& app);
void add_concise_command(CLI::App& app);
void add_trend_command(CLI::App& app);
void add_integrity_command(CLI::App& app);
void add_export_command(CLI::App& app);
void add_archive_command(CLI::App& app);

inline void add_commands(CLI::App& app) {
  add_summary_command(app);
  add_convert_command(app);
  add_functest_command(app);
  add_hk_command(app);
  add_aux_command(app);
  add_info_command(app);
  add_spectrum_command(app);
  add_raw_command(app);
  add_concise_command(app);
  add_trend_command(app);
  add_integrity_command(app);
  add_export_command(app);
  add_archive_command(app);
}

}  // namespace morvane::cli
