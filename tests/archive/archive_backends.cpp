// SPDX-License-Identifier: MIT
#include "archive_backends.h"

#include "postgres_cluster.h"

namespace morvane::testing {

std::vector<ArchiveBackend> archive_backends() {
  return {{"SQLite", [](const TempDir& dir) { return dir.path("campaign.sqlite"); }},
          // A new database of the run's one cluster, made when the first such test starts.
          {"PostgreSQL", [](const TempDir&) { return test_postgres_cluster().create_database(); }}};
}

}  // namespace morvane::testing
