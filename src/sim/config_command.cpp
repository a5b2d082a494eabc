// SPDX-License-Identifier: MIT
// morvane-sim config: a complete configuration base folder.
#include <iostream>
#include <memory>
#include <string>

#include "sim/config_writer.h"
#include "sim_commands.h"

namespace morvane::sim {

void add_config_command(CLI::App& app) {
  struct Options {
    std::string dir;
    bool quiet = false;
  };
  auto options = std::make_shared<Options>();
  auto* command = app.add_subcommand("config", "write a complete configuration base folder");
  command->add_option("DIR", options->dir, "the base folder (created when missing)")->required();
  command->add_flag("-q,--quiet", options->quiet, "print nothing");
  command->callback([options] {
    const std::string base = write_configuration(options->dir);
    if (!options->quiet) std::cout << "Base folder: " << base << '\n';
  });
}

}  // namespace morvane::sim
