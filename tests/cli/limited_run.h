// SPDX-License-Identifier: MIT
// The batch tool run under limits the shell sets first (a file-size limit, a CPU-time limit).
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "test_files.h"

namespace morvane::testing {

inline std::string shell_quoted(const std::string& text) {
  std::string out = "'";
  for (const char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return out + "'";
}

// morvane-cli with arguments, after the shell commands of setup ("ulimit -f 128", say).
inline ProgramRun run_cli_limited(const std::string& setup, const std::vector<std::string>& arguments) {
  TempDir scratch;
  std::string program = MORVANE_BINARY_DIR;
  program += "/src/cli/morvane-cli";
  std::string command = setup;
  command += "; exec ";
  command += shell_quoted(program);
  for (const std::string& argument : arguments) command += " " + shell_quoted(argument);
  command += " >" + shell_quoted(scratch.path("out")) + " 2>" + shell_quoted(scratch.path("err"));
  const int raw = std::system(command.c_str());
  ProgramRun run;
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.out = read_file(scratch.path("out"));
  run.err = read_file(scratch.path("err"));
  return run;
}

}  // namespace morvane::testing
