// SPDX-License-Identifier: MIT
// Any bytes as a telemetry file through the batch tool's commands that print a view (summary,
// hk, aux, info, spectrum, raw, concise, trend, integrity, functest), in text and in JSON, run in
// this process as the tool's main runs them. A command may end with the program's run-time
// error, its own command error or a usage error; any other exception is a finding, and so is
// JSON output that does not parse.
#include <CLI/CLI.hpp>
#include <array>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "cli_common.h"
#include "commands.h"
#include "fuzz_support.h"

using namespace morvane;

namespace {

// Each command with the function that adds it: an input builds only the command it runs.
struct Command {
  const char* name;
  void (*add)(CLI::App&);
};
constexpr std::array<Command, 10> kCommands = {{{"summary", cli::add_summary_command},
                                                {"hk", cli::add_hk_command},
                                                {"aux", cli::add_aux_command},
                                                {"info", cli::add_info_command},
                                                {"spectrum", cli::add_spectrum_command},
                                                {"raw", cli::add_raw_command},
                                                {"concise", cli::add_concise_command},
                                                {"trend", cli::add_trend_command},
                                                {"integrity", cli::add_integrity_command},
                                                {"functest", cli::add_functest_command}}};
constexpr std::array<const char*, 5> kTypes = {"CSS", "QM", "GRM", "FM", "ZEB"};

// The options of one command beyond FILE, --type, --base and --byte-reverse.
std::vector<std::string> command_options(const std::string& command, fuzz::Choices& in) {
  const uint8_t pick = in.byte();
  const std::string number = std::to_string(in.byte() % 40 + 1);
  const bool flag = pick & 1;
  if (command == "summary") return flag ? std::vector<std::string>{"--counts"} : std::vector<std::string>{};
  if (command == "hk") {
    std::vector<std::string> options{"--index", number};
    if (flag) options.push_back("--registers");
    return options;
  }
  if (command == "aux") {
    std::vector<std::string> options{"--index", number};
    if (flag) options.insert(options.end(), {"--ad590", std::to_string(static_cast<int>(in.byte()) - 100)});
    return options;
  }
  if (command == "info") return {"--index", number};
  if (command == "spectrum") {
    std::vector<std::string> options{"--number", number};
    if (flag) options.insert(options.end(), {"--sub-packet", std::to_string(in.byte() % 12)});
    return options;
  }
  if (command == "raw" || command == "concise") return {"--frame", number};
  if (command == "trend") {
    return {"--sensors", flag ? "all" : number + "," + std::to_string(in.byte() % 60 + 1), "--cold-junction",
            pick & 2 ? "on" : "off"};
  }
  if (command == "integrity") return {"--time-jump", std::to_string(in.byte() * 16)};
  std::vector<std::string> options{"--mode", flag ? "eaft" : "cruise"};  // functest
  if (pick & 2) options.insert(options.end(), {"--test", std::to_string(in.byte() % 4 + 1)});
  if (pick & 4) options.insert(options.end(), {"--format", pick & 8 ? "html" : "text"});
  return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::Choices in(data, size);
  const uint8_t choice = in.byte();
  const Command& chosen = kCommands[choice % kCommands.size()];
  const std::string command = chosen.name;
  const uint8_t settings = in.byte();
  const bool json = settings & 1;
  std::vector<std::string> arguments{"morvane-cli", command};
  const std::vector<std::string> options = command_options(command, in);
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.insert(arguments.end(), {"-t", kTypes[(settings >> 1) % kTypes.size()], "--base", fuzz::base_folder(),
                                     "--byte-reverse", settings & 32 ? "off" : "on"});
  if (json) arguments.emplace_back("--json");
  arguments.push_back(fuzz::memory_file(in.rest(), in.rest_size()));

  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  CLI::App app{"fuzz", "morvane-cli"};
  app.require_subcommand(1);
  chosen.add(app);

  std::ostringstream printed;
  std::streambuf* const standard_output = std::cout.rdbuf(printed.rdbuf());
  bool completed = false;
  try {
    app.parse(static_cast<int>(argv.size()), argv.data());
    completed = true;
  } catch (const CLI::ParseError&) {
  } catch (const RuntimeError&) {
  } catch (const cli::CommandError&) {
  } catch (...) {
    std::cout.rdbuf(standard_output);
    throw;
  }
  std::cout.rdbuf(standard_output);
  // The hk command prints its page and then ends with the mode's error: only whole runs count.
  if (json && completed && !nlohmann::json::accept(printed.str())) __builtin_trap();
  return 0;
}
