// SPDX-License-Identifier: MIT
#include "core/windows_path.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <system_error>
#include <vector>

namespace morvane {

namespace fs = std::filesystem;

static bool same_ignoring_case(const std::string& a, const std::string& b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](unsigned char x, unsigned char y) {
           return std::tolower(x) == std::tolower(y);
         });
}

std::string resolve_windows_path(const std::string& path) {
  std::string unix_path = path;
  std::replace(unix_path.begin(), unix_path.end(), '\\', '/');
  fs::path given(unix_path);
  fs::path result = given.is_absolute() ? fs::path("/") : fs::current_path();
  for (const auto& component : given.relative_path()) {
    const std::string name = component.string();
    if (name.empty() || name == ".") continue;
    if (name == "..") {
      result = result.parent_path();
      continue;
    }
    fs::path candidate = result / name;
    std::error_code error;
    if (!fs::exists(candidate, error)) {
      for (const auto& entry : fs::directory_iterator(result, error)) {
        if (same_ignoring_case(entry.path().filename().string(), name)) {
          candidate = entry.path();
          break;
        }
      }
    }
    result = candidate;
  }
  return result.string();
}

std::string config_path(const std::string& base, const std::string& relative) {
  std::string joined = base;
  while (!joined.empty() && (joined.back() == '\\' || joined.back() == '/')) joined.pop_back();
  return resolve_windows_path(joined + relative);
}

}  // namespace morvane
