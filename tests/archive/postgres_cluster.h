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
  ~PostgresCluster();  // stops the server at once and removes its folder
  PostgresCluster(const PostgresCluster&) = delete;
  PostgresCluster& operator=(const PostgresCluster&) = delete;

  // Creates a new empty database and returns its postgresql:// URL.
  std::string create_database();

 private:
  std::string url(const std::string& database) const;
  std::string folder_;
  FILE* watchdog_ = nullptr;  // its closing, by the destructor or by the kernel at exit, stops the server
  int databases_ = 0;
};

// The cluster of this test program run, started on first use (one per run, not per test) and
// stopped after the last test, at exit, or when the program is killed. Rethrows the start failure
// to every later caller.
PostgresCluster& test_postgres_cluster();

}  // namespace morvane::testing
