// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>
#include <string_view>

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

struct CommandSetup {
  std::string_view name;
  void (*add)(CLI::App& app);
};

inline constexpr CommandSetup kCommandSetups[] = {
    {"summary", add_summary_command},   {"convert", add_convert_command},     {"functest", add_functest_command},
    {"hk", add_hk_command},             {"aux", add_aux_command},             {"info", add_info_command},
    {"spectrum", add_spectrum_command}, {"raw", add_raw_command},             {"concise", add_concise_command},
    {"trend", add_trend_command},       {"integrity", add_integrity_command}, {"export", add_export_command},
    {"archive", add_archive_command},
};

// When the first argument names a command, only that command is set up: setting up all of them
// and their options was a fifth of the batch tool's start. Anything else (no command, an
// option first, a misspelt command) sets up all, for the help and the usage messages.
inline void add_commands(CLI::App& app, std::string_view first_argument = {}) {
  for (const CommandSetup& command : kCommandSetups) {
    if (command.name == first_argument) {
      command.add(app);
      return;
    }
  }
  for (const CommandSetup& command : kCommandSetups) command.add(app);
}

}  // namespace morvane::cli
