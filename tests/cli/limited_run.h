// SPDX-License-Identifier: MIT
// The batch tool run under limits the shell sets first (a file-size limit, a CPU-time limit).
#pragma once

#include <string>
#include <vector>

#include "test_files.h"

namespace morvane::testing {

// A program of the build (run_program's path), after the shell commands of setup: the program
// inherits what they set. Defined beside run_program.
ProgramRun run_program_after(const std::string& setup, const std::string& program,
                             const std::vector<std::string>& arguments, const std::string& working_folder = "");

// morvane-cli with arguments, after the shell commands of setup ("ulimit -f 128", say).
inline ProgramRun run_cli_limited(const std::string& setup, const std::vector<std::string>& arguments) {
  return run_program_after(setup, "src/cli/morvane-cli", arguments);
}

}  // namespace morvane::testing
