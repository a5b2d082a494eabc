// SPDX-License-Identifier: MIT
#include "cli_common.h"
#include "json_text.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

#include "decoders/format_check.h"

namespace morvane::cli {

namespace {
int command_exit_status = 0;
}  // namespace

int exit_status() { return command_exit_status; }

void set_exit_status(int status) { command_exit_status = status; }

void add_base_option(CLI::App* command, std::string& base) {
  command->add_option("--base", base, "Base folder of the configuration (default: line 2 of Morvane_Files.txt)");
}

void add_file_options(CLI::App* command, FileOptions& options) {
  command->add_option("FILE", options.file, "Telemetry file")->required();
  command->add_option("-t,--type", options.type, "File format: CSS, QM, GRM, FM or ZEB")
      ->required()
      ->check(CLI::IsMember({"CSS", "QM", "GRM", "FM", "ZEB"}, CLI::ignore_case));
  add_base_option(command, options.base);
  command->add_option("--byte-reverse", options.byte_reverse, "Byte order: on (first byte low) or off")
      ->check(CLI::IsMember({"on", "off"}));
  command->add_flag("--json", options.json, "Print JSON for scripts");
}

Configuration load_cli_configuration(const std::string& base, bool configuration_required) {
  if (!base.empty()) return load_configuration(base);
  // A pointer file that cannot be examined (a loop of links, a folder that cannot be read) is
  // read all the same, so that its error is the reader's, naming it.
  std::error_code error;
  if (std::filesystem::exists(kBasePathFile, error) || error) return load_configuration_from_pointer("");
  if (configuration_required) {
    throw CommandError("no configuration: give --base DIR or run where Morvane_Files.txt is");
  }
  return {};
}

namespace {
std::string g_opened_file;
}

const std::string& opened_file() { return g_opened_file; }

Session open_session(const FileOptions& options, bool configuration_required) {
  g_opened_file = options.file;
  Session session;
  session.config = load_cli_configuration(options.base, configuration_required);
  session.Byte_Reverse = options.byte_reverse == "on";
  load_telemetry(session, options.file, *parse_format_tag(options.type));
  // A doubt about the format goes to stderr only: what the command prints and its exit status
  // stay the same.
  if (const auto warning = format_warning(session)) std::cerr << "warning: " << *warning << '\n';
  return session;
}

void check_frame_number(const Session& session, int32_t frame) {
  if (frame > std::max(session.Packet_Count, 1)) {
    throw CommandError("frame " + std::to_string(frame) + " is beyond the file's " +
                       std::to_string(session.Packet_Count) + " frames");
  }
}

Json colour_json(int red, int green, int blue) { return Json::array({red, green, blue}); }

std::string json_text(const Json& json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

void print_json(const Json& json) { std::cout << json_text(json, 2) << '\n'; }

}  // namespace morvane::cli
