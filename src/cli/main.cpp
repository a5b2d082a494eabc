// SPDX-License-Identifier: MIT
// morvane-cli: every decoder of the workstation from the command line, printing the texts the
// views show, for people or (--json) for scripts. Exit 0 done, 1 error, 2 usage, 3 a failed
// test with functest --verdict-exit.
#include <CLI/CLI.hpp>
#include <iostream>

#include "cli_common.h"
#include "json_text.h"
#include "commands.h"
#include "usage_error.h"
#include "core/error.h"
#include "core/program_version.h"
#include "core/system_error.h"
#include "core/safe_file.h"

int main(int argc, char** argv) {
  CLI::App app{"Morvane EGSE batch tool: decode telemetry files as the workstation shows them", "morvane-cli"};
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string("morvane-cli ") + morvane::kProgramVersion);
  morvane::cli::add_commands(app, argc > 1 ? argv[1] : "");
  // An interrupted export or report leaves no temporary file behind.
  morvane::remove_temporary_files_on_signals();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) return app.exit(error);  // --help, --version
    std::cerr << morvane::cli::usage_message(app, error);
    return 2;
  } catch (const morvane::RuntimeError& error) {
    // A decoder's error that names nothing (an overflow deep in a conversion) names the file.
    const std::string& file = morvane::cli::opened_file();
    std::cerr << "error: " << (error.detail().empty() ? morvane::naming_file(error, file) : error).message() << '\n';
    return 1;
  } catch (const std::filesystem::filesystem_error& error) {
    std::cerr << "error: " << morvane::from_filesystem_error(error).message() << '\n';
    return 1;
  } catch (const std::exception& error) {
    std::cerr << "error: " << error.what() << '\n';
    return 1;
  }
  return morvane::cli::exit_status();
}
