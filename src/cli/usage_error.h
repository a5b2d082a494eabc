// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace morvane::cli {

// A check for options that count from 1 (frames, tests, seconds): a whole number from 1 to
// 2147483647, said so in its message (CLI11's own PositiveNumber prints its 309-digit bound).
CLI::Validator whole_number_from_one();

// What a usage error prints: "error: " and what was wrong, the option concerned with what it
// takes (its help line names the allowed values), or the commands there are, and the --help of
// the command the user was giving. Several lines, each ending in a newline.
std::string usage_message(const CLI::App& app, const CLI::Error& error);

}  // namespace morvane::cli
