// SPDX-License-Identifier: MIT
// Where the batch tool writes: "-" is standard output with the account on the error stream; a
// signal leaves the previous file and no temporary file; JSON stays valid whatever the bytes of a
// name. The rules of every destination and input are the core's (safe_file_test, error_battery_test).
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <thread>

#include "core/configuration.h"
#include "core/windows_path.h"
#include "sim/config_writer.h"
#include "sim/telemetry_writer.h"
#include "folder_names.h"
#include "test_files.h"

extern char** environ;

namespace morvane {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCli = "src/cli/morvane-cli";
constexpr const char* kOld = "the previous export\r\n";

using testing::names_in;

class WriteDestinations : public ::testing::Test {
 protected:
  void SetUp() override {
    base = sim::write_configuration(dir.path("base"));
    sim::write_telemetry(file, {.format = FileFormat::QM, .frames = 4000});
    fs::create_directory(dir.path("out"));
  }
  std::vector<std::string> export_arguments(const std::string& out) const {
    return {"export", "hk", file, "-t", "QM", "--base", base, "--all", "--delimiter", "tab", "--format", "raw",
            "-o", out};
  }
  testing::ProgramRun export_to(const std::string& out) const { return testing::run_program(kCli, export_arguments(out)); }

  testing::TempDir dir;
  std::string base;
  std::string file = dir.path("t.qm");
};

TEST_F(WriteDestinations, ADashIsStandardOutputAndTheAccountGoesToTheErrorStream) {
  const auto to_file = export_to(dir.path("out/hk.txt"));
  ASSERT_EQ(to_file.status, 0) << to_file.err;
  const auto to_stdout = export_to("-");
  ASSERT_EQ(to_stdout.status, 0) << to_stdout.err;
  EXPECT_EQ(to_stdout.out, testing::read_file(dir.path("out/hk.txt")));
  EXPECT_EQ(to_stdout.err.rfind("-: ", 0), 0u) << to_stdout.err;
  EXPECT_FALSE(fs::exists("-"));
}

TEST_F(WriteDestinations, ASignalEndsTheToolWithoutATemporaryFile) {
  const std::string out = dir.path("out/hk.xlsx");  // a workbook: slow enough to be caught under way
  testing::write_file(out, kOld);
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
    std::vector<std::string> arguments = export_arguments(out);
    arguments.insert(arguments.begin(), std::string(MORVANE_BINARY_DIR) + "/" + kCli);
    std::vector<char*> argv;
    for (std::string& argument : arguments) argv.push_back(argument.data());
    argv.push_back(nullptr);
    // The tool starts with the signals' default actions, as from a terminal (a test run in the
    // background would otherwise hand down an ignored SIGINT).
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, signal_number);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    pid_t pid = 0;
    ASSERT_EQ(::posix_spawn(&pid, argv[0], nullptr, &attributes, argv.data(), environ), 0);
    posix_spawnattr_destroy(&attributes);
    // Waits for its temporary file, then interrupts it.
    const auto give_up = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (names_in(dir.path("out")).size() < 2 && std::chrono::steady_clock::now() < give_up) {
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));  // well into its rows
    ::kill(pid, signal_number);
    int status = 0;
    ::waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal_number) << "status " << status;
    EXPECT_EQ(names_in(dir.path("out")), std::vector<std::string>{"hk.xlsx"});
    EXPECT_EQ(testing::read_file(out), kOld);
  }
}

TEST_F(WriteDestinations, JsonTurnsTextThatIsNotUtf8IntoReplacementCharacters) {
  const std::string sensors = config_path(base, kSensorsFile);
  std::string table = testing::read_file(sensors);
  table.replace(table.find("\"Docking Stn\""), 13, "\"Dock\xff\xfe Stn\"");
  testing::write_file(sensors, table);
  const std::string odd_name = dir.path("t\xe9.qm");  // a Latin-1 file name
  fs::copy_file(file, odd_name);
  const auto run = testing::run_program(kCli, {"hk", odd_name, "-t", "QM", "--base", base, "--index", "1", "--json"});
  ASSERT_EQ(run.status, 0) << run.err;
  const auto json = nlohmann::json::parse(run.out);  // valid UTF-8 throughout
  EXPECT_NE(run.out.find("Dock\xef\xbf\xbd\xef\xbf\xbd Stn"), std::string::npos);
  const auto summary = testing::run_program(kCli, {"summary", odd_name, "-t", "QM", "--base", base, "--counts", "--json"});
  ASSERT_EQ(summary.status, 0) << summary.err;
  EXPECT_EQ(nlohmann::json::parse(summary.out)["file_name"], dir.path("t\xef\xbf\xbd.qm"));
}

}  // namespace
}  // namespace morvane
