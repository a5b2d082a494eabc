// SPDX-License-Identifier: MIT
// Damaged files of every format through the batch tool's commands: each ends done or with one
// "error: ..." line, never by a signal and never hanging.
#include <gtest/gtest.h>

#include <filesystem>

#include "mutated_files.h"
#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace testing {
// A program of the build (run_program's path) after the shell commands of setup, whose limits it
// inherits. Defined beside run_program.
ProgramRun run_program_after(const std::string& setup, const std::string& program,
                             const std::vector<std::string>& arguments, const std::string& working_folder = "");
}  // namespace testing

namespace {

TEST(MutatedFiles, EveryCommandEndsDoneOrWithOneErrorLine) {
  testing::TempDir dir;
  const std::string base = sim::write_configuration(dir.path("base"));
  std::filesystem::create_directory(dir.path("files"));
  for (const FileFormat format : testing::kAllFormats) {
    for (const testing::Mutant& mutant : testing::write_mutants(dir.path("files"), format, 5)) {
      const std::string type(format_tag(format));
      const std::vector<std::vector<std::string>> commands = {
          {"summary", "--json"},
          {"raw", "--frame", "2"},
          {"hk", "--index", "1", "--json"},
          {"integrity"},
          {"functest", "--mode", "cruise"},
          {"export", "hk", "--all", "--delimiter", "tab", "--format", "calibrated", "-o", dir.path("out.txt")},
      };
      for (std::vector<std::string> arguments : commands) {
        const size_t file_at = arguments[0] == "export" ? 2 : 1;
        arguments.insert(arguments.begin() + static_cast<long>(file_at), {mutant.path, "-t", type, "--base", base});
        // A CPU-time limit turns an endless loop into a failure rather than a stuck test.
        const auto run = testing::run_program_after("ulimit -t 20", "src/cli/morvane-cli", arguments);
        const std::string what = mutant.how + ": " + arguments[0];
        EXPECT_TRUE(run.status == 0 || run.status == 1) << what << " ended with " << run.status << ": " << run.err;
        if (run.status == 1) {
          EXPECT_EQ(run.err.rfind("error: ", 0), 0u) << what << ": " << run.err;
          EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << what << ": " << run.err;
        }
      }
    }
  }
}

}  // namespace
}  // namespace morvane
