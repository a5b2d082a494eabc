// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace morvane::cli {

// The JSON text of a value, indented by indent (-1: one line). Text that is not valid UTF-8 (a
// sensor or file name in another encoding) shows replacement characters instead of failing.
std::string json_text(const nlohmann::ordered_json& json, int indent = -1);

// The telemetry file the command opened, for naming it in an error that names nothing.
const std::string& opened_file();

}  // namespace morvane::cli
