// SPDX-License-Identifier: MIT
// The backends the archive suite runs against: every test of the suite is run once per backend.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "test_files.h"

namespace morvane::testing {

struct ArchiveBackend {
  std::string name;  // a test-name suffix: letters and digits only
  // The name (path or URL) of a new, empty archive for one test, whose scratch folder is dir.
  std::function<std::string(const TempDir& dir)> fresh_archive;
};

inline void PrintTo(const ArchiveBackend& backend, std::ostream* out) { *out << backend.name; }

// SQLite always; a server backend where the suite has one.
std::vector<ArchiveBackend> archive_backends();

}  // namespace morvane::testing
