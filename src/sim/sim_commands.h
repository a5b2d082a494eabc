// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

namespace morvane::sim {

// Each command of morvane-sim adds itself with its options and the callback that runs it.
void add_config_command(CLI::App& app);
void add_telemetry_command(CLI::App& app);
void add_live_command(CLI::App& app);

}  // namespace morvane::sim
