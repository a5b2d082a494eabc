// SPDX-License-Identifier: MIT
#include "usage_error.h"

#include <charconv>
#include <cstdint>
#include <limits>

namespace morvane::cli {

namespace {

// The subcommand the user was giving: the deepest one the parser selected.
const CLI::App& command_of(const CLI::App& app) {
  const CLI::App* command = &app;
  while (!command->get_subcommands().empty()) command = command->get_subcommands().front();
  return *command;
}

std::string command_path(const CLI::App& app, const CLI::App& command) {
  std::string path;
  for (const CLI::App* at = &command; at != nullptr && at != &app; at = at->get_parent()) {
    path = " " + at->get_name() + path;
  }
  return app.get_name() + path;
}

// "summary, convert, ... or export".
std::string command_names(const CLI::App& command) {
  const auto subcommands = command.get_subcommands([](const CLI::App*) { return true; });
  std::string names;
  for (size_t i = 0; i < subcommands.size(); ++i) {
    if (i > 0) names += i + 1 == subcommands.size() ? " or " : ", ";
    names += subcommands[i]->get_name();
  }
  return names;
}

// The option a CLI11 message begins with ("--frame: ...", "--type is required"), if it names one.
const CLI::Option* option_named_in(const CLI::App& command, const std::string& message) {
  const std::string name = message.substr(0, message.find_first_of(": "));
  if (name.empty()) return nullptr;
  for (const CLI::Option* option : command.get_options()) {
    if (option->check_name(name)) return option;
  }
  return nullptr;
}

}  // namespace

CLI::Validator whole_number_from_one() {
  return CLI::Validator(
      [](std::string& text) -> std::string {
        int64_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc() && end == text.data() + text.size() && value >= 1 &&
            value <= std::numeric_limits<int32_t>::max()) {
          return {};
        }
        return "\"" + text + "\" is not a whole number from 1 to 2147483647";
      },
      "N>=1");
}

std::string usage_message(const CLI::App& app, const CLI::Error& error) {
  const CLI::App& command = command_of(app);
  const std::string path = command_path(app, command);
  const std::string message = error.what();
  std::string text;
  const bool wants_subcommand = command.get_require_subcommand_min() > 0 && command.get_subcommands().empty();
  if (wants_subcommand && dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    const auto unexpected = command.remaining();
    text = unexpected.empty() ? "error: " + path + " needs a command\n"
                              : "error: unknown command \"" + unexpected.front() + "\" for " + path + "\n";
    text += "  the commands are " + command_names(command) + "\n";
  } else if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr) {
    const auto unexpected = command.remaining();
    const std::string what = unexpected.empty() ? message : unexpected.front();
    text = "error: " + path + " does not take \"" + what + "\"\n";
  } else {
    text = "error: " + message + "\n";
    if (const CLI::Option* option = option_named_in(command, message)) {
      text += "  " + option->get_name(false, true) + ": " + option->get_description() + "\n";
    }
  }
  return text + "See: " + path + " --help\n";
}

}  // namespace morvane::cli
