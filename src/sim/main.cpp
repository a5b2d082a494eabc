// SPDX-License-Identifier: MIT
// morvane-sim: the simulated instrument. Writes configuration base folders, telemetry files of
// all five formats and a live log. Exit 0 done, 1 error, 2 usage.
#include <CLI/CLI.hpp>
#include <iostream>

#include "core/error.h"
#include "sim_commands.h"

int main(int argc, char** argv) {
  CLI::App app{"Morvane simulated instrument: configuration, telemetry files and a live feed", "morvane-sim"};
  app.require_subcommand(1);
  app.set_version_flag("--version", "morvane-sim 0.1.0");
  morvane::sim::add_config_command(app);
  morvane::sim::add_telemetry_command(app);
  morvane::sim::add_live_command(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = app.exit(error);
    return status == 0 ? 0 : 2;
  } catch (const morvane::RuntimeError& error) {
    std::cerr << "error: " << error.message() << '\n';
    return 1;
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
