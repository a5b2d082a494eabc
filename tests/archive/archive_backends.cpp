// SPDX-License-Identifier: MIT
#include "archive_backends.h"

namespace morvane::testing {

std::vector<Archive_Backend> archive_backends() {
  return {{"SQLite", [](const TempDir& dir) { return dir.path("campaign.sqlite"); }}};
}

}  // namespace morvane::testing
