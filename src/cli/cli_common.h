// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "core/session.h"

namespace morvane::cli {

using Json = nlohmann::ordered_json;

// The options every file command takes.
struct FileOptions {
  std::string file;
  std::string type;
  std::string base;
  std::string byte_reverse = "on";
  bool json = false;
};

// A failure of a command that is not a run-time error of the decoders (a bad argument value
// found after parsing, an index beyond a list): printed as "error: ..." with exit status 1.
class CommandError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The exit status of a command that ran to its end: 0 unless it set another (functest
// --verdict-exit gives kVerdictFailedStatus for a failed test).
inline constexpr int kVerdictFailedStatus = 3;
int exit_status();
void set_exit_status(int status);

// Adds FILE, -t/--type, --base, --byte-reverse and --json to a command.
void add_file_options(CLI::App* command, FileOptions& options);
// Adds --base only (commands that need the configuration but no telemetry file).
void add_base_option(CLI::App* command, std::string& base);

// The configuration of --base, or of Morvane_Files.txt in the current folder. When neither is
// there and required is false, empty tables.
Configuration load_cli_configuration(const std::string& base, bool configuration_required);

// A session with the configuration and the telemetry file loaded as the File menu loads it. A
// format that looks wrong (format_warning) is said on stderr as "warning: ...".
Session open_session(const FileOptions& options, bool configuration_required = true);

// A frame (ZEB: record) number the loaded file holds, from 1; a file without frames still
// shows frame 1 empty. Beyond it is a CommandError naming the frame count.
void check_frame_number(const Session& session, int32_t frame);

// The RGB triple of a colour as JSON.
Json colour_json(int red, int green, int blue);

void print_json(const Json& json);

}  // namespace morvane::cli
