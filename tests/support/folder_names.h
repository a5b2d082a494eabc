// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace morvane::testing {

// The names in a folder, sorted: what a write left behind.
inline std::vector<std::string> names_in(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace morvane::testing
