// SPDX-License-Identifier: MIT
// A throwaway PostgreSQL server for the tests: a cluster made in a temporary folder, reachable
// only through a Unix socket in that folder, and gone when the test program ends however it ends.
#pragma once

#include <cstdio>
#include <string>

namespace morvane::testing {

class PostgresCluster {
 public:
  // Makes and starts the cluster with the newest server installed under /usr/lib/postgresql.
  // As root the server runs as the system user "postgres" (root may not run it). Throws
  // std::runtime_error saying what is missing or what the server logged when it cannot start.
  PostgresCluster();
  // Stops the server and removes its folder.
  ~PostgresCluster();
  PostgresCluster(const PostgresCluster&) = delete;
  PostgresCluster& operator=(const PostgresCluster&) = delete;

  // Creates a new empty database and returns its postgresql:// URL.
  std::string create_database();
  // The URL of a database of this cluster (which need not exist).
  std::string url(const std::string& database) const;
  const std::string& folder() const { return folder_; }
  // Stops the server at once (immediate shutdown) and removes the folder; idempotent.
  void stop();

 private:
  std::string bin_;
  std::string folder_;
  FILE* watchdog_ = nullptr;  // its closing, by stop() or by the kernel at exit, stops the server
  int databases_ = 0;
};

// The cluster of this test program run, started on first use (one per run, not per test) and
// stopped after the last test, at exit, or when the program is killed. Rethrows the start failure
// to every later caller.
PostgresCluster& test_postgres_cluster();

}  // namespace morvane::testing
