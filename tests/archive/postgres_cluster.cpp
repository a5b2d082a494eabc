// SPDX-License-Identifier: MIT
#include "postgres_cluster.h"

#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <mutex>
#include <stdexcept>

#include "test_files.h"

namespace morvane::testing {

namespace fs = std::filesystem;

namespace {

constexpr const char* kServerUser = "postgres";  // made by Debian's postgresql package
constexpr const char* kRole = "morvane";         // the superuser initdb makes

// The bin folder of the newest server under /usr/lib/postgresql/<version>/bin.
std::string find_server_binaries() {
  std::string best;
  int best_version = -1;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", error)) {
    const std::string version = entry.path().filename().string();
    if (version.empty() || version.find_first_not_of("0123456789") != std::string::npos) continue;
    const fs::path bin = entry.path() / "bin";
    if (fs::exists(bin / "initdb") && fs::exists(bin / "pg_ctl") && fs::exists(bin / "postgres") &&
        std::stoi(version) > best_version) {
      best_version = std::stoi(version);
      best = bin.string();
    }
  }
  if (best.empty()) {
    throw std::runtime_error(
        "the PostgreSQL server (initdb, pg_ctl, postgres under /usr/lib/postgresql/<version>/bin) is not "
        "installed: run make deps");
  }
  return best;
}

bool running_as_root() { return ::geteuid() == 0; }

std::string shell_quoted(const std::string& text) {
  std::string out = "'";
  for (char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return out + "'";
}

// A fresh folder the server user owns, short enough for a Unix socket path inside it.
std::string make_cluster_folder() {
  // The server user must reach it (TMPDIR may be below root's home), and a socket path is short.
  std::string base = fs::temp_directory_path().string();
  if (running_as_root() || base.size() > 60) base = "/tmp";
  std::string pattern = base + "/morvane-pg-XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make the PostgreSQL cluster's folder");
  const passwd* user = running_as_root() ? ::getpwnam(kServerUser) : nullptr;
  if (running_as_root() && (user == nullptr || ::chown(pattern.c_str(), user->pw_uid, user->pw_gid) != 0)) {
    fs::remove_all(pattern);
    throw std::runtime_error(std::string("the tests run as root and need the system user \"") + kServerUser +
                             "\" (Debian's postgresql package makes it) to run the server: run make deps");
  }
  return pattern;
}

}  // namespace

PostgresCluster::PostgresCluster() : folder_(make_cluster_folder()) {
  // As root the server programs run as the server user (root may not run them).
  const std::string program = (running_as_root() ? std::string("runuser -u ") + kServerUser + " -- " : "") +
                              shell_quoted(find_server_binaries()) + "/";
  const std::string data = " -D " + shell_quoted(folder_ + "/data");
  const std::string log = " >>" + shell_quoted(folder_ + "/setup.log") + " 2>&1";
  const std::string stop = program + "pg_ctl" + data + " -m immediate stop >/dev/null 2>&1";
  const std::string cleanup = stop + "; rm -rf -- " + shell_quoted(folder_);
  // Only a socket in our own folder: no TCP address at all. Durability is not wanted here.
  const std::string settings = "listen_addresses = ''\nunix_socket_directories = '" + folder_ +
                               "'\nfsync = off\nsynchronous_commit = off\nfull_page_writes = off\n";
  const std::string setup = "cd " + shell_quoted(folder_) + " && " + program + "initdb" + data + " -U " + kRole +
                            " -A trust --no-sync -E UTF8 --locale=C" + log + " && printf %s " +
                            shell_quoted(settings) + " >>" + shell_quoted(folder_ + "/data/postgresql.conf") +
                            " && " + program + "pg_ctl" + data + " -l " + shell_quoted(folder_ + "/server.log") +
                            " -w -t 60 start" + log;
  if (std::system(setup.c_str()) != 0) {
    const std::string details = read_file(folder_ + "/setup.log") + read_file(folder_ + "/server.log");
    (void)!std::system(cleanup.c_str());
    throw std::runtime_error("the test PostgreSQL cluster did not start:\n" + details);
  }
  // A watchdog in a session of its own (Ctrl-C ends the tests, not it) waits for the end of a
  // pipe only this process writes: the kernel closes it however the process ends (even SIGKILL
  // by a test timeout), so the server never outlives the tests. The destructor closes it on purpose.
  const std::string watchdog = "setsid -w sh -c " + shell_quoted("read _; " + cleanup) + " >/dev/null 2>&1";
  watchdog_ = ::popen(watchdog.c_str(), "we");  // "e": no program started later holds the pipe
  if (watchdog_ == nullptr) {
    (void)!std::system(cleanup.c_str());
    throw std::runtime_error("cannot start the cluster watchdog");
  }
}

// Ends the watchdog's read and waits while it stops the server.
PostgresCluster::~PostgresCluster() { ::pclose(watchdog_); }

std::string PostgresCluster::url(const std::string& database) const {
  return "postgresql:///" + database + "?host=" + folder_ + "&user=" + kRole;
}

std::string PostgresCluster::create_database() {
  const std::string name = "archive_" + std::to_string(++databases_);
  const std::unique_ptr<PGconn, decltype(&PQfinish)> connection(PQconnectdb(url("postgres").c_str()), &PQfinish);
  if (PQstatus(connection.get()) != CONNECTION_OK) {
    throw std::runtime_error("cannot reach the test cluster: " + std::string(PQerrorMessage(connection.get())));
  }
  const std::unique_ptr<PGresult, decltype(&PQclear)> result(
      PQexec(connection.get(), ("CREATE DATABASE " + name).c_str()), &PQclear);
  if (PQresultStatus(result.get()) != PGRES_COMMAND_OK) {
    throw std::runtime_error("cannot create a test database: " + std::string(PQerrorMessage(connection.get())));
  }
  return url(name);
}

namespace {

struct SharedCluster {
  std::mutex mutex;
  std::unique_ptr<PostgresCluster> cluster;  // its destructor stops the server at exit
  std::string failure;
} shared;

// Stops the shared cluster after the last test, before static destruction.
class ClusterEnvironment : public ::testing::Environment {
 public:
  void TearDown() override {
    const std::lock_guard lock(shared.mutex);
    shared.cluster.reset();
  }
};

[[maybe_unused]] const auto* const cluster_environment =
    ::testing::AddGlobalTestEnvironment(new ClusterEnvironment);

}  // namespace

PostgresCluster& test_postgres_cluster() {
  const std::lock_guard lock(shared.mutex);
  if (!shared.cluster) {
    if (!shared.failure.empty()) throw std::runtime_error(shared.failure);
    try {
      shared.cluster = std::make_unique<PostgresCluster>();
    } catch (const std::exception& error) {
      shared.failure = error.what();
      throw;
    }
  }
  return *shared.cluster;
}

}  // namespace morvane::testing
